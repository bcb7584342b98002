#include "app/FileDialog.h"

#include "errors/Report.h"
#include "platform/Utf16.h"
#include "platform/win32/Modal.h"
#include "readers/ModelFile.h"

namespace belvor {
namespace {

/// Pairs of text and pattern, each ended by a NUL, and one NUL more.
std::wstring filterText(const std::vector<FileFilter>& filters)
{
    std::wstring text;
    for (const FileFilter& filter : filters) {
        text += toWide(textOf(filter.text));
        text += L'\0';
        text += filter.pattern;
        text += L'\0';
    }
    return text;
}

}   // namespace

std::vector<FileFilter> modelFilters()
{
    std::vector<FileFilter> filters{{Text::modelFilesFilter, L""}};
    for (const ModelFormat& format : modelFormats()) {
        const std::wstring pattern = L"*." + toWide(format.extension);
        if (!filters[0].pattern.empty()) filters[0].pattern += L';';
        filters[0].pattern += pattern;
        filters.push_back({format.filter, pattern});
    }
    filters.push_back({Text::allFilesFilter, L"*.*"});
    return filters;
}

FileDialog::FileDialog(HWND owner, Purpose purpose, Text titleText, const std::vector<FileFilter>& choices,
                       const wchar_t* defaultExtension)
    : kind(purpose),
      title(titleText == Text::none ? L"" : toWide(textOf(titleText))),
      filters(filterText(choices)),
      extension(defaultExtension)
{
    const bool opens = kind == Purpose::open;
    record.lStructSize = sizeof record;
    record.hwndOwner = owner;
    record.lpstrFilter = filters.c_str();
    record.nFilterIndex = 1;
    record.lpstrFile = file;
    record.nMaxFile = opens ? openLength : saveLength;
    record.lpstrFileTitle = opens ? fileTitle : nullptr;
    record.nMaxFileTitle = opens ? titleLength : 0;
    record.lpstrInitialDir = L"";
    record.lpstrTitle = titleText == Text::none ? nullptr : title.c_str();
    record.lpstrDefExt = extension.c_str();
    record.Flags = OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY
                   | (opens ? OFN_FILEMUSTEXIST | OFN_READONLY : OFN_OVERWRITEPROMPT);
}

bool FileDialog::ask()
{
    {
        const Modal modal(record.hwndOwner);
        if (kind == Purpose::open ? GetOpenFileNameW(&record) : GetSaveFileNameW(&record)) {
            chosen = toUtf8(file);
            return true;
        }
    }
    if (const DWORD status = CommDlgExtendedError(); status != 0)   // not given up by the user
        setStatus(record.hwndOwner, textOf(Text::fileDialogFailed), static_cast<unsigned>(status));
    return false;
}

}   // namespace belvor
