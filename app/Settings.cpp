#include "app/Settings.h"

#include "platform/win32/Handles.h"
#include "session/Session.h"

namespace belvor {
namespace {

constexpr wchar_t settingsKey[] = L"Software\\Calderwood\\Belvor\\Settings";
constexpr wchar_t modernReading[] = L"ModernReading", lines[] = L"Lines", edges[] = L"Edges";

bool isSet(const wchar_t* name)
{
    DWORD value = 0, size = sizeof value;
    return RegGetValueW(HKEY_CURRENT_USER, settingsKey, name, RRF_RT_REG_DWORD, nullptr, &value, &size)
               == ERROR_SUCCESS
           && value != 0;
}

void keep(const RegistryKey& key, const wchar_t* name, bool value) noexcept
{
    const DWORD number = value;
    RegSetValueExW(key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

}   // namespace

void loadSettings(Session& session)
{
    const ShownLines shown{isSet(lines), isSet(edges)};
    session.loading().readBy(isSet(modernReading) ? ReadingRules::modern : ReadingRules::strict);
    session.showLines(shown);
}

void saveSettings(const Session& session) noexcept
{
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, settingsKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                        nullptr)
        != ERROR_SUCCESS)
        return;
    const RegistryKey key(opened);
    keep(key, modernReading, session.loading().rules() == ReadingRules::modern);
    keep(key, lines, session.shownLines().curves);
    keep(key, edges, session.shownLines().edges);
}

}   // namespace belvor
