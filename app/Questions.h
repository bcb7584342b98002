#pragma once

#include "app/FileDialog.h"
#include "session/Shell.h"

namespace belvor {

/// The boxes and forms in which the session asks the user, over the main window.
class Questions {
public:
    explicit Questions(HWND mainWindow);

    std::optional<ChosenFile> askFile(FileQuestion question);
    SaveAnswer askToSave(const std::string& image) const;
    std::optional<ViewEdit> askView(const ViewParameters& view, const ModelPlace& place,
                                    const Units& units) const;

private:
    FileDialog& dialogOf(FileQuestion question) noexcept;

    HWND window;
    FileDialog openModel, image, loadParameters, saveParameters;
};

}   // namespace belvor
