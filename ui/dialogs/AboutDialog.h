#pragma once

#include "ui/dialogs/ModelessDialog.h"

namespace belvor {

/// Shows the program's version between two pictures, on white.
class AboutDialog : public ModelessDialog {
public:
    /// Opens it over the main window, or brings the open one to the front. Throws Win32Error.
    void open(HWND owner);

private:
    void initialise() override;
    HBRUSH background(HDC dc) override;
};

}   // namespace belvor
