#include "readers/ForeignFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace belvor;

namespace {

TEST(ForeignFile, IsRecognisedByItsFirstBytes)
{
    using namespace std::string_literals;
    const std::tuple<const char*, std::string, Text> cases[] = {
        {"DWG of 2018", "AC1032"s, Text::foreignDwg},
        {"DWG of the eighties", "AC2.10"s, Text::foreignDwg},
        {"gzip", "\x1f\x8b\x08\0"s, Text::foreignGzip},
        {"zip", "PK\3\4\x14\0"s, Text::foreignZip},
        {"PDF", "%PDF-1.7\n"s, Text::foreignPdf},
        {"UTF-16 with its mark", "\xff\xfe\x20\0\x30\0"s, Text::foreignUtf16},
        {"the other order", "\xfe\xff\0\x20"s, Text::foreignUtf16},
        {"without a mark", "\x20\0\x20\0\x30\0\r\0"s, Text::foreignUtf16},
        {"the other order", "\0\x20\0\x20\0\x30\0\r"s, Text::foreignUtf16},
        {"XML", "<?xml version='1.0'?>"s, Text::foreignXml},
        {"a drawing", "  0\nSECTION\n"s, Text::none},
        {"empty", ""s, Text::none},
        {"nothing but zeros", std::string(64, '\0'), Text::none},
    };
    for (const auto& [why, bytes, kind] : cases) EXPECT_EQ(foreignKindOf(bytes), kind) << why;
}

}   // namespace
