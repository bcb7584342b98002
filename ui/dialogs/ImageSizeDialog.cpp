#include "ui/dialogs/ImageSizeDialog.h"

#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Accessible.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogItems.h"
#include "ui/dialogs/NumberText.h"

namespace belvor {

void ImageSizeDialog::open(HWND owner, const ImageSize& size)
{
    initial = {static_cast<std::uint32_t>(size.width), static_cast<std::uint32_t>(size.height)};
    ModelessDialog::open(owner, ID_IMAGESIZEDIALOG);
}

void ImageSizeDialog::initialise()
{
    format = itemText(window(), ID_DISKSPACE, 64);
    update(initial);
    nameAccessible(GetDlgItem(window(), ID_WIDTH), textOf(Text::imageWidthName));
    nameAccessible(GetDlgItem(window(), ID_HEIGHT), textOf(Text::imageHeightName));
    focusField(window(), ID_WIDTH);
}

void ImageSizeDialog::command(int control, int notification)
{
    if (control == ID_WIDTH || control == ID_HEIGHT) {
        if (notification == EN_CHANGE) fieldChanged(control);
    } else if (choosesRadio(notification)) {
        const int preset = control - ID_SIZEPRESET;
        if (preset >= 0 && preset < sizePresets) update(presetSize(preset));
        if (control == ID_SIZEOTHER) CheckRadioButton(window(), ID_SIZEPRESET, ID_SIZEOTHER, ID_SIZEOTHER);
    }
}

PixelCounts ImageSizeDialog::shown() const
{
    return {GetDlgItemInt(window(), ID_WIDTH, nullptr, FALSE),
            GetDlgItemInt(window(), ID_HEIGHT, nullptr, FALSE)};
}

/// Writing a field notifies of its change at once, within the call: not taken for typing.
void ImageSizeDialog::update(const PixelCounts& asked)
{
    const SizeUpdate change = updateSize(asked, shown());
    writing = true;
    if (change.newWidth) SetDlgItemInt(window(), ID_WIDTH, *change.newWidth, FALSE);
    if (change.newHeight) SetDlgItemInt(window(), ID_HEIGHT, *change.newHeight, FALSE);
    writing = false;
    CheckRadioButton(window(), ID_SIZEPRESET, ID_SIZEOTHER, ID_SIZEPRESET + change.button);
    if (change.kilobytes)
        setItemText(window(), ID_DISKSPACE, filled(format, {std::to_string(*change.kilobytes)}));
}

void ImageSizeDialog::fieldChanged(int control)
{
    if (!writing) {
        const PixelCounts now = shown();
        update(control == ID_WIDTH ? PixelCounts{now.width, 0} : PixelCounts{0, now.height});
    }
    const bool unused = GetDlgItemInt(window(), control, nullptr, FALSE) == 0;
    marks.check(window(), control, ".", unused ? textOf(Text::sizeUnused) : "");
}

void ImageSizeDialog::apply()
{
    const PixelCounts size = shown();
    if (size.width != 0 && size.height != 0)
        send(GetWindow(window(), GW_OWNER), UM_IMAGESIZE, static_cast<INT_PTR>(size.width),
             static_cast<INT_PTR>(size.height));
}

}   // namespace belvor
