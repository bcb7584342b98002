#include "app/RecentFileList.h"

#include "platform/Utf16.h"
#include "platform/win32/Handles.h"
#include "resources/ids.h"

namespace belvor {
namespace {

constexpr wchar_t recentFilesKey[] = L"Software\\Calderwood\\Belvor\\Recent File List";

std::wstring valueName(std::size_t number) { return L"File" + std::to_wstring(number); }

/// The text of value `number`; empty when there is none or it is no text.
std::wstring readValue(HKEY key, std::size_t number)
{
    std::wstring text(4096 / sizeof(wchar_t), L'\0');
    DWORD type = 0, bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegQueryValueExW(key, valueName(number).c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()),
                         &bytes)
            != ERROR_SUCCESS
        || type != REG_SZ)
        return {};
    text.resize(bytes / sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));   // stored with its end, without, or with more
}

}   // namespace

RecentFileList::RecentFileList(HWND mainWindow) : owner(mainWindow)
{
    load();
    rebuildMenu();
}

RecentFileList::~RecentFileList()
try {
    save();
} catch (...) {}

void RecentFileList::add(const std::string& path)
{
    paths.add(path);
    rebuildMenu();
}

const std::string* RecentFileList::pathOf(UINT id) const noexcept
{
    const std::size_t index = id - ID_RECENT;
    return id >= ID_RECENT && index < paths.entries().size() ? &paths.entries()[index] : nullptr;
}

void RecentFileList::load()
{
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, recentFilesKey, 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
        return;
    const RegistryKey key(opened);
    for (std::size_t number = RecentPaths::maxCount; number >= 1; --number)
        if (const std::wstring path = readValue(key.get(), number); !path.empty()) paths.add(toUtf8(path));
}

void RecentFileList::save() const
{
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, recentFilesKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                        nullptr)
        != ERROR_SUCCESS)
        return;
    const RegistryKey key(opened);
    const auto& entries = paths.entries();
    for (std::size_t i = 0; i < RecentPaths::maxCount; ++i) {
        if (i >= entries.size()) {
            RegDeleteValueW(key.get(), valueName(i + 1).c_str());
            continue;
        }
        const std::wstring path = toWide(entries[i]);
        RegSetValueExW(key.get(), valueName(i + 1).c_str(), 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(path.c_str()),
                       static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    }
}

void RecentFileList::rebuildMenu()
{
    if (paths.entries().empty()) return;
    const HMENU fileMenu = GetSubMenu(GetMenu(owner), 0);
    int position = 0;
    while (position < GetMenuItemCount(fileMenu) && GetMenuItemID(fileMenu, position) != ID_RECENT)
        ++position;
    for (; itemsInMenu > 0; --itemsInMenu) DeleteMenu(fileMenu, static_cast<UINT>(position), MF_BYPOSITION);
    for (std::size_t i = 0; i < paths.entries().size(); ++i, ++itemsInMenu)
        InsertMenuW(fileMenu, static_cast<UINT>(position) + static_cast<UINT>(i), MF_BYPOSITION | MF_STRING,
                    ID_RECENT + i, toWide(paths.menuText(i)).c_str());
}

}   // namespace belvor
