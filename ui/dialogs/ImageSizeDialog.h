#pragma once

#include "ui/dialogs/ImageSizes.h"
#include "ui/dialogs/ModelessDialog.h"
#include "ui/dialogs/NumberMarks.h"
#include "view/ViewCommands.h"

#include <string>

namespace belvor {

/// Lets the user choose the size of the picture written to the image file.
class ImageSizeDialog : public ModelessDialog {
public:
    /// Opens it over the main window with the size that holds now, or brings the open one to
    /// the front. When the user applies a size, the main window gets UM_IMAGESIZE with a
    /// width and a height that are not 0 but may exceed an int. Throws Win32Error.
    void open(HWND owner, const ImageSize& size);

private:
    void initialise() override;
    void command(int control, int notification) override;
    void apply() override;
    HBRUSH fieldBackground(HDC dc, HWND field) override { return marks.brush(dc, field); }
    PixelCounts shown() const;
    void update(const PixelCounts& asked);
    void fieldChanged(int control);

    PixelCounts initial;
    std::string format;     // of the disk space
    bool writing = false;   // a field is being written by the dialog itself
    NumberMarks marks;
};

}   // namespace belvor
