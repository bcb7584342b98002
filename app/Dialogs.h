#pragma once

#include "platform/win32/Windows.h"
#include "session/Session.h"
#include "ui/dialogs/AboutDialog.h"
#include "ui/dialogs/ImageSizeDialog.h"
#include "ui/dialogs/ModelPropertiesDialog.h"

namespace belvor {

/// The modeless dialogs of the main window, with what each shows.
class Dialogs {
public:
    Dialogs(HWND mainWindow, Session& shown) noexcept : window(mainWindow), session(shown) {}

    void showAbout() { about.open(window); }
    void showImageSize() { imageSize.open(window, session.imageSize()); }
    void showProperties();
    /// Another model has been loaded.
    void modelChanged();

private:
    HWND window;
    Session& session;
    AboutDialog about;
    ImageSizeDialog imageSize;
    ModelPropertiesDialog properties;
};

}   // namespace belvor
