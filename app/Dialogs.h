#pragma once

#include "app/Belvor.h"
#include "ui/dialogs/AboutDialog.h"
#include "ui/dialogs/ImageSizeDialog.h"
#include "ui/dialogs/ModelPropertiesDialog.h"

namespace belvor {

/// The dialogs of the main window, with what each shows.
class Dialogs {
public:
    Dialogs(HWND mainWindow, Belvor& shown) noexcept : window(mainWindow), belvor(shown) {}

    void showAbout() { about.open(window); }
    void showImageSize() { imageSize.open(window, belvor.image); }
    void showProperties();
    /// Shows the view's numbers until the dialog is closed, and applies those typed.
    void askView();
    /// Another model has been loaded.
    void modelChanged();

private:
    HWND window;
    Belvor& belvor;
    AboutDialog about;
    ImageSizeDialog imageSize;
    ModelPropertiesDialog properties;
};

}   // namespace belvor
