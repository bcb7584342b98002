#pragma once

#include "platform/Utf16.h"
#include "platform/win32/Windows.h"

#include <iterator>
#include <string>

namespace belvor {

/// The decimal separator of the user's country, UTF-8.
inline std::string userDecimalPoint()
{
    wchar_t point[8];
    const int length =
        GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, point, static_cast<int>(std::size(point)));
    return length > 1 ? toUtf8(point) : ".";
}

}   // namespace belvor
