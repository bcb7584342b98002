#pragma once

#include "platform/win32/Windows.h"

#include <atomic>

namespace belvor {

/// A box that must be answered before its owner is used again: exists while the box is open.
///
/// The system disables the owner when a box opens and enables it when that box closes, even
/// when another one is still open: one that the render thread shows, or one beneath it. So the
/// boxes are counted, and the owner is disabled again until the last has gone. Any thread.
class Modal {
public:
    explicit Modal(HWND boxOwner) noexcept : owner(boxOwner) { ++count; }
    Modal(const Modal&) = delete;
    Modal& operator=(const Modal&) = delete;
    ~Modal()
    {
        if (--count == 0) {
            EnableWindow(owner, TRUE);   // may have been disabled below, for a box that has just closed
        } else {
            EnableWindow(owner, FALSE);
            SetForegroundWindow(GetLastActivePopup(owner));
        }
    }

    /// Whether a box is open.
    static bool open() noexcept { return count != 0; }

private:
    static inline std::atomic<int> count{0};
    HWND owner;
};

}   // namespace belvor
