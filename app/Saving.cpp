#include "app/Saving.h"

#include "errors/Report.h"
#include "imagefile/OmbrFile.h"
#include "platform/Utf16.h"
#include "platform/win32/Modal.h"
#include "resources/Texts.h"

namespace belvor {
Saving::Saving(HWND mainWindow, Belvor& shown)
    : window(mainWindow),
      belvor(shown),
      imageDialog(mainWindow, FileDialog::Purpose::save, Text::none, {{Text::ombrFilter, L"*.omb"}}, L"omb"),
      loadDialog(mainWindow, FileDialog::Purpose::open, Text::loadParametersTitle,
                 {{Text::parametersFilter, L"*.bvp"}}, L"bvp"),
      saveDialog(mainWindow, FileDialog::Purpose::save, Text::saveParametersTitle,
                 {{Text::parametersFilter, L"*.bvp"}}, L"bvp")
{}

bool Saving::querySave()
{
    const Handle<Model> model = belvor.model();
    if (!model || belvor.view().imageSaved) return true;
    const int answer = askToSave();
    if (answer == IDNO) return true;
    if (answer != IDYES || belvor.model() != model) return false;   // a load has ended under the question
    save();
    return belvor.view().imageSaved;
}

int Saving::askToSave() const
{
    const Modal modal(window);
    return MessageBoxW(window, toWide(filledText(Text::saveQuestion, {imageDialog.path()})).c_str(),
                       toWide(textOf(Text::imageNotSaved)).c_str(), MB_YESNOCANCEL | MB_ICONQUESTION);
}

void Saving::save()
{
    if (!imageNamed) return saveAs();
    writeImage();
}

void Saving::saveAs()
{
    if (!belvor.model() || !imageDialog.ask()) return;
    if (writeImage()) imageNamed = true;
}

bool Saving::writeImage()
try {
    if (!belvor.model() || belvor.closing()) return false;
    belvor.writeImage(imageDialog.path());
    return true;
} catch (const OmbrFile::Error& failure) {
    warning(failure.what());   // a folder that cannot be written to is no reason to end
    return false;
}

void Saving::saveParameters()
{
    if (!belvor.model() || !saveDialog.ask()) return;
    belvor.view().write(saveDialog.path(), belvor.place().centre, belvor.place().radius);
}

void Saving::loadParameters()
{
    if (!belvor.model() || !loadDialog.ask()) return;
    ViewParameters view;
    if (view.read(loadDialog.path(), belvor.place().centre, belvor.place().radius)) belvor.setView(view);
}

}   // namespace belvor
