#pragma once

#include "app/Belvor.h"
#include "app/FileDialog.h"

namespace belvor {

/// The commands that write the image file or the view, and the question before a view is lost.
class Saving {
public:
    Saving(HWND mainWindow, Belvor& shown);

    /// Asks whether to save a picture that is not saved yet. False: the user wants to go on
    /// with it, or the model in question has gone meanwhile.
    bool querySave();
    void save();
    void saveAs();
    void saveParameters();
    void loadParameters();
    /// A new model has no image file yet.
    void forgetName() noexcept { imageNamed = false; }

private:
    int askToSave() const;
    bool writeImage();

    HWND window;
    Belvor& belvor;
    FileDialog imageDialog, loadDialog, saveDialog;
    bool imageNamed = false;   // the image dialog's file is the one to write
};

}   // namespace belvor
