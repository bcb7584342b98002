#include "readers/ForeignFile.h"

namespace belvor {
namespace {

using namespace std::string_view_literals;

constexpr struct {
    std::string_view start;
    Text kind;
} foreignStarts[] = {
    {"AC10"sv, Text::foreignDwg},
    {"AC1."sv, Text::foreignDwg},
    {"AC2."sv, Text::foreignDwg},
    {"MC0.0"sv, Text::foreignDwg},
    {"\x1F\x8B"sv, Text::foreignGzip},
    {"PK\3\4"sv, Text::foreignZip},
    {"PK\5\6"sv, Text::foreignZip},
    {"PK\7\x08"sv, Text::foreignZip},
    {"%PDF"sv, Text::foreignPdf},
    {"\xFF\xFE"sv, Text::foreignUtf16},
    {"\xFE\xFF"sv, Text::foreignUtf16},
    {"<?xml"sv, Text::foreignXml},
    {"\xEF\xBB\xBF<?xml"sv, Text::foreignXml},
};

/// Text of two bytes a character without a mark: every other byte of the start is zero.
bool isUnmarkedUtf16(std::string_view bytes) noexcept
{
    if (bytes.size() < 8) return false;
    for (const std::size_t zeros : {0u, 1u}) {
        bool alternates = true;
        for (std::size_t i = 0; i < 8; ++i) alternates = alternates && (bytes[i] == 0) == (i % 2 == zeros);
        if (alternates) return true;
    }
    return false;
}

}   // namespace

Text foreignKindOf(std::string_view bytes) noexcept
{
    for (const auto& foreign : foreignStarts)
        if (bytes.starts_with(foreign.start)) return foreign.kind;
    return isUnmarkedUtf16(bytes) ? Text::foreignUtf16 : Text::none;
}

}   // namespace belvor
