#pragma once

#include "platform/Thread.h"
#include "readers/common/FreshPages.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <string_view>

namespace belvor {

/// While one thread reads a large file from its first byte to its last, another provides the pages that come
/// next: those of the file, and those that the model grows into. Both take time when they are first touched.
class PagesAhead {
public:
    /// Whether it is faster than without, when so many threads may read.
    static bool isWorthIt(std::string_view file, unsigned threads) noexcept
    {
        return threads > 1 && file.size() > smallestFile && canProvidePages();
    }

    /// Both must outlive this. Throws std::bad_alloc.
    PagesAhead(std::string_view file, ModelBuilder& model)
        : fileEnd(file.data() + file.size()),
          fresh(model, file.size()),
          position(file.data())
    {}

    /// Calls `read` and throws what it throws, when the other thread has done with it.
    void during(const std::function<void()>& read);

    /// The thread that reads is at `at`, which has never been as far. To be told every `step` bytes or so.
    void reached(const char* at) noexcept;
    static constexpr std::size_t step = std::size_t{1} << 20;

private:
    static constexpr std::size_t smallestFile = std::size_t{4} << 20;

    void provide() noexcept;
    void end() noexcept;

    const char* const fileEnd;
    FreshPages fresh;
    Lock lock;
    Condition changed;
    const char* position;   // of the thread that reads; guarded by `lock`
    std::atomic<bool> over{false};
};

}   // namespace belvor
