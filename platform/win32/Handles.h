#pragma once

#include "platform/win32/Windows.h"

#include <cstdint>
#include <utility>

namespace belvor {

/// A handle that a portable class keeps as a number.
inline HANDLE handleOf(std::intptr_t number) noexcept { return reinterpret_cast<HANDLE>(number); }

/// Owns a pen, brush, font, bitmap or region. Move-only; a null object is nothing to delete.
template <class T>
class GdiObject {
public:
    explicit GdiObject(T made = nullptr) noexcept : object(made) {}
    GdiObject(GdiObject&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    GdiObject& operator=(GdiObject&& other) noexcept
    {
        std::swap(object, other.object);
        return *this;
    }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    ~GdiObject()
    {
        if (object) DeleteObject(object);
    }

    T get() const noexcept { return object; }   // no silent conversion: ownership stays visible
    explicit operator bool() const noexcept { return object != nullptr; }

private:
    T object;
};

/// Selects an object into a device context and the former one back at the end of the scope.
/// Declare it after the object, so that the object is deselected before it is deleted.
class Selection {
public:
    Selection(HDC context, HGDIOBJ object) noexcept
        : dc(context),
          former(object ? SelectObject(context, object) : nullptr)
    {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection()
    {
        if (former) SelectObject(dc, former);
    }
    /// False when the object could not be selected: a bitmap can be in one context at a time.
    explicit operator bool() const noexcept { return former != nullptr; }

private:
    HDC dc;
    HGDIOBJ former;
};

/// Everything set in a device context during the scope (pens, modes, clipping) is undone at its end.
class SavedDC {
public:
    explicit SavedDC(HDC context) noexcept : dc(context), state(SaveDC(context)) {}
    SavedDC(const SavedDC&) = delete;
    SavedDC& operator=(const SavedDC&) = delete;
    ~SavedDC()
    {
        if (state != 0) RestoreDC(dc, state);
    }

private:
    HDC dc;
    int state;
};

/// A window's client area to draw in outside WM_PAINT.
class WindowDC {
public:
    explicit WindowDC(HWND owner) noexcept : window(owner), dc(GetDC(owner)) {}
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    ~WindowDC()
    {
        if (dc) ReleaseDC(window, dc);
    }

    HDC get() const noexcept { return dc; }
    explicit operator bool() const noexcept { return dc != nullptr; }

private:
    HWND window;
    HDC dc;
};

/// BeginPaint to EndPaint: also what validates the window, so make one for every WM_PAINT.
class PaintDC {
public:
    explicit PaintDC(HWND owner) noexcept : window(owner), dc(BeginPaint(owner, &paint)) {}
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;
    ~PaintDC() { EndPaint(window, &paint); }

    HDC get() const noexcept { return dc; }
    explicit operator bool() const noexcept { return dc != nullptr; }
    /// The part to paint, client coordinates.
    const RECT& area() const noexcept { return paint.rcPaint; }

private:
    HWND window;
    PAINTSTRUCT paint{};
    HDC dc;
};

/// A memory device context that suits another one.
class MemoryDC {
public:
    explicit MemoryDC(HDC like) noexcept : dc(CreateCompatibleDC(like)) {}
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;
    ~MemoryDC()
    {
        if (dc) DeleteDC(dc);
    }

    HDC get() const noexcept { return dc; }
    explicit operator bool() const noexcept { return dc != nullptr; }

private:
    HDC dc;
};

/// Owns a kernel object; null and INVALID_HANDLE_VALUE are none.
class KernelHandle {
public:
    explicit KernelHandle(HANDLE made = nullptr) noexcept
        : handle(made == INVALID_HANDLE_VALUE ? nullptr : made)
    {}
    KernelHandle(KernelHandle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    KernelHandle& operator=(KernelHandle&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    KernelHandle(const KernelHandle&) = delete;
    KernelHandle& operator=(const KernelHandle&) = delete;
    ~KernelHandle()
    {
        if (handle) CloseHandle(handle);
    }

    HANDLE get() const noexcept { return handle; }
    explicit operator bool() const noexcept { return handle != nullptr; }

private:
    HANDLE handle;
};

/// Owns an open registry key.
class RegistryKey {
public:
    explicit RegistryKey(HKEY opened = nullptr) noexcept : key(opened) {}
    RegistryKey(RegistryKey&& other) noexcept : key(std::exchange(other.key, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept
    {
        std::swap(key, other.key);
        return *this;
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey()
    {
        if (key) RegCloseKey(key);
    }

    HKEY get() const noexcept { return key; }
    explicit operator bool() const noexcept { return key != nullptr; }

private:
    HKEY key;
};

}   // namespace belvor
