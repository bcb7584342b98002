#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace belvor {

/// Base of every object that the two threads share: it counts its handles, and the last
/// one to go deletes it, on whichever thread that is. The count starts at 0, so a
/// constructor must never hand out a counted handle to `this`.
class TSHandlable {
public:
    TSHandlable() noexcept = default;
    TSHandlable(const TSHandlable&) = delete;
    TSHandlable& operator=(const TSHandlable&) = delete;
    virtual ~TSHandlable() = default;

    void addReference() const noexcept { references.fetch_add(1, std::memory_order_relaxed); }

    void release() const noexcept
    {
        if (references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
        // A temporary handle taken while the object is being destroyed must not delete it again.
        references.store(1, std::memory_order_relaxed);
        delete this;
    }

private:
    mutable std::atomic<std::uint32_t> references{0};
};

/// An owning reference to a TSHandlable, or none.
template <class T>
class Handle {
public:
    Handle() noexcept = default;
    Handle(T* target) noexcept : object(target)
    {
        acquire();
    }   // NOLINT: a pointer is a handle in the making
    Handle(const Handle& other) noexcept : object(other.object) { acquire(); }
    Handle(Handle&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    template <class U>
    Handle(const Handle<U>& other) noexcept : object(other.get())
    {
        acquire();
    }
    Handle& operator=(Handle other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }
    ~Handle()
    {
        if (object) object->release();
    }

    T* get() const noexcept { return object; }
    T* operator->() const noexcept { return object; }
    T& operator*() const noexcept { return *object; }
    explicit operator bool() const noexcept { return object != nullptr; }
    friend bool operator==(const Handle&, const Handle&) noexcept = default;

private:
    void acquire() const noexcept
    {
        if (object) object->addReference();
    }
    T* object = nullptr;
};

template <class T, class... Arguments>
Handle<T> makeHandle(Arguments&&... arguments)
{
    return Handle<T>(new T(std::forward<Arguments>(arguments)...));
}

}   // namespace belvor
