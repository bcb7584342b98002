#include "ui/SystemColours.h"

#include <optional>

namespace belvor {
namespace {

std::optional<bool> contrast;

/// Dark blue and dark red are not seen on the user's ground, whether or not the system calls its theme one of
/// high contrast.
bool groundIsDark() noexcept
{
    constexpr int dark = 64;
    const COLORREF ground = GetSysColor(COLOR_BTNFACE);
    return GetRValue(ground) < dark && GetGValue(ground) < dark && GetBValue(ground) < dark;
}

bool askContrast() noexcept
{
    HIGHCONTRASTW theme{};
    theme.cbSize = sizeof theme;
    return groundIsDark()
           || (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof theme, &theme, 0)
               && (theme.dwFlags & HCF_HIGHCONTRASTON) != 0);
}

bool programsAreDark() noexcept
{
    DWORD light = 1, size = sizeof light;
    RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                 L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return light == 0;
}

}   // namespace

bool highContrast() noexcept
{
    if (!contrast) contrast = askContrast();
    return *contrast;
}

void refreshSystemColours() noexcept { contrast.reset(); }

void followDarkMode(HWND window) noexcept
{
    constexpr DWORD darkTitleBar = 20;   // DWMWA_USE_IMMERSIVE_DARK_MODE
    using Function = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
    static HMODULE const library = LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    static const auto set = library ? reinterpret_cast<Function>(
                                reinterpret_cast<void*>(GetProcAddress(library, "DwmSetWindowAttribute")))
                                    : nullptr;
    const BOOL dark = programsAreDark() && !highContrast();
    if (set) set(window, darkTitleBar, &dark, sizeof dark);
}

}   // namespace belvor
