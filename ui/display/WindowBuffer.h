#pragma once

#include "render/Buffer.h"
#include "ui/display/DibSection.h"

namespace belvor {

/// The rows of a render on their way into a window's bitmap. Works and dies on the render
/// thread; keeps its bitmap even when the window has long taken another.
class WindowBuffer : public Buffer {
public:
    /// `target` has a bitmap. `progressive` shows each row at once; without it the window
    /// is asked to repaint when the buffer goes.
    WindowBuffer(HWND window, Handle<DibSection> target, bool progressive);
    ~WindowBuffer() override;

    void lineDone(int row) override;

private:
    HWND window;
    Handle<DibSection> dib;
    bool progressive;
    bool cleared = false;
};

}   // namespace belvor
