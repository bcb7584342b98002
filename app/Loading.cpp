#include "app/Loading.h"

#include "app/Paths.h"
#include "errors/Report.h"
#include "platform/Utf16.h"
#include "resources/Texts.h"

namespace belvor {
namespace {

/// The reader that the dialog's filter of that number chooses: 1 is all models, then one a format.
FileType typeOf(DWORD filter, const std::string& path)
{
    const auto formats = modelFormats();
    const std::size_t index = filter - std::size_t{2};
    return index < formats.size() ? formats[index].type : fileTypeOf(path);
}

}   // namespace

Loading::Loading(HWND mainWindow, Belvor& shown, Saving& save, RecentFileList& recentFiles)
    : window(mainWindow),
      belvor(shown),
      saving(save),
      recent(recentFiles),
      dialog(mainWindow, FileDialog::Purpose::open, Text::openModelTitle, modelFilters(), L"thf")
{}

void Loading::openModel()
{
    if (!saving.querySave()) return;
    if (dialog.ask()) loadFile(dialog.path(), typeOf(dialog.filter(), dialog.path()));
}

void Loading::openRecent(UINT id)
{
    const std::string* const entry = recent.pathOf(id);
    if (!entry) return;
    const std::string path = *entry;   // the question lets other commands in
    if (saving.querySave()) loadFile(path, fileTypeOf(path));
}

void Loading::openFile(const std::wstring& path)
{
    const std::string full = toUtf8(fullPath(path));
    if (saving.querySave()) loadFile(full, fileTypeOf(full));
}

void Loading::loadFile(const std::string& path, FileType type)
{
    if (type == FileType::unknown) return setStatus(window, textOf(Text::unknownFileType), path.c_str());
    belvor.load(path, type);
    if (type == fileTypeOf(path)) recent.add(path);
}

}   // namespace belvor
