#include "readers/dxf/DXFNames.h"

#include "calcore/Number.h"
#include "text/CodePages.h"
#include "text/Utf8.h"

#include <algorithm>

namespace belvor {
namespace {

constexpr char lowerCase(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

bool isPlain(std::string_view name) noexcept
{
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 128 && c != '\\'; });
}

}   // namespace

std::string_view withoutBlanksAtEnd(std::string_view name) noexcept
{
    while (!name.empty() && isBlank(name.back())) name.remove_suffix(1);
    return name;
}

bool DXFNameOrder::operator()(std::string_view a, std::string_view b) const noexcept
{
    if (!anyCase) return a < b;
    a = withoutBlanksAtEnd(a);
    b = withoutBlanksAtEnd(b);
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(lowerCase(x)) < static_cast<unsigned char>(lowerCase(y));
    });
}

void DXFNameEncoding::setCodePage(std::string_view name) { codePage = codePageNamed(name); }

void DXFNameEncoding::setRelease(std::string_view version)
{
    constexpr std::int32_t firstInUtf8 = 1021;
    std::int32_t number = 0;
    version = withoutBlanksAtEnd(version);
    isUtf8Release = version.starts_with("AC") && isLong(version.substr(2), number) && number >= firstInUtf8;
}

std::string_view DXFNameEncoding::readable(std::string_view name, std::string& room)
{
    name = withoutBlanksAtEnd(name);
    if (isPlain(name)) return name;
    room = toUtf8(name, isUtf8Release ? utf8CodePage : codePage);
    if (!isUtf8Release && codePage == 0 && !isUtf8(name)) unknownMet = true;
    room = withoutUnicodeEscapes(room);
    return room;
}

}   // namespace belvor
