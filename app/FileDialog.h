#pragma once

#include "platform/win32/Windows.h"
#include "resources/Texts.h"

#include <commdlg.h>

#include <string>
#include <vector>

namespace belvor {

/// A display text and the pattern it stands for.
struct FileFilter {
    Text text;
    std::wstring pattern;
};

/// The filters for model files: all, one a format in the order of modelFormats(), any file.
std::vector<FileFilter> modelFilters();

/// One of the system's file dialogs, with what the user chose in it before.
class FileDialog {
public:
    enum class Purpose { open, save };

    /// `title`: `Text::none` for the system's own. `extension` is added to names without one.
    FileDialog(HWND owner, Purpose purpose, Text title, const std::vector<FileFilter>& filters,
               const wchar_t* extension);
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;

    /// Asks the user; false when no file was chosen, and a dialog that fails says so in the status
    /// bar. Messages are served meanwhile, so everything may be another afterwards.
    bool ask();
    /// The file chosen last, a full path in UTF-8; empty before.
    const std::string& path() const noexcept { return chosen; }
    /// The number of the filter, from 1.
    DWORD filter() const noexcept { return record.nFilterIndex; }

private:
    static constexpr DWORD openLength = 512, saveLength = 256, titleLength = 128;

    OPENFILENAMEW record{};
    Purpose kind;
    std::wstring title, filters, extension;   // what the record points to
    wchar_t file[openLength] = L"", fileTitle[titleLength] = L"";
    std::string chosen;
};

}   // namespace belvor
