#include "app/Questions.h"

#include "platform/Utf16.h"
#include "platform/win32/Modal.h"
#include "resources/Texts.h"
#include "ui/dialogs/ViewParametersDialog.h"
#include "ui/panels/Markers.h"

namespace belvor {
namespace {

const std::vector<FileFilter> images{{Text::ombrFilter, L"*.omb"},
                                     {Text::pngFilter, L"*.png"},
                                     {Text::svgFilter, L"*.svg"},
                                     {Text::exrFilter, L"*.exr"},
                                     {Text::tiffFilter, L"*.tif"}};
const FileFilter parameters{Text::parametersFilter, L"*.bvp"};
using Purpose = FileDialog::Purpose;

}   // namespace

Questions::Questions(HWND mainWindow)
    : window(mainWindow),
      openModel(mainWindow, Purpose::open, Text::openModelTitle, modelFilters(), L"thf"),
      image(mainWindow, Purpose::save, Text::none, images, L"omb"),
      loadParameters(mainWindow, Purpose::open, Text::loadParametersTitle, {parameters}, L"bvp"),
      saveParameters(mainWindow, Purpose::save, Text::saveParametersTitle, {parameters}, L"bvp")
{}

FileDialog& Questions::dialogOf(FileQuestion question) noexcept
{
    switch (question) {
    case FileQuestion::openModel: return openModel;
    case FileQuestion::image: return image;
    case FileQuestion::loadParameters: return loadParameters;
    default: return saveParameters;
    }
}

std::optional<ChosenFile> Questions::askFile(FileQuestion question)
{
    FileDialog& dialog = dialogOf(question);
    if (!dialog.ask()) return std::nullopt;
    return ChosenFile{dialog.path(), dialog.filter()};
}

SaveAnswer Questions::askToSave(const std::string& file) const
{
    const Modal modal(window);
    switch (MessageBoxW(window, toWide(filledText(Text::saveQuestion, {file})).c_str(),
                        toWide(textOf(Text::imageNotSaved)).c_str(), MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES: return SaveAnswer::yes;
    case IDNO: return SaveAnswer::no;
    default: return SaveAnswer::cancel;
    }
}

std::optional<ViewEdit> Questions::askView(const ViewParameters& view, const ModelPlace& place,
                                           const Units& units) const
{
    const Modal modal(window);
    const auto typed = askViewParameters(window, ViewFields(view, place, units), lightBrush);
    if (!typed) return std::nullopt;
    return [typed](const ViewParameters& current) { return typed->applied(current); };
}

}   // namespace belvor
