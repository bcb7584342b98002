#include "text/CodePages.h"

#include "text/Utf8.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

TEST(Utf8, KeepsCharactersAndReplacesInvalidBytes)
{
    const std::string bad = "\xEF\xBF\xBD";   // U+FFFD
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"two, three and four bytes", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8F\xA0",
         "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8F\xA0"},
        {"a byte of Latin 1", "W\xE4nde", "W" + bad + "nde"},
        {"cut at the end", "a\xE2\x82", "a" + bad + bad},
        {"a longer form than needed", "\xC0\xAF", bad + bad},
        {"a surrogate", "\xED\xA0\x80", bad + bad + bad},
        {"beyond U+10FFFF", "\xF4\x90\x80\x80", bad + bad + bad + bad},
        {"no first byte", "\xFF", bad},
    };
    for (const auto& [why, bytes, valid] : cases) {
        EXPECT_EQ(validUtf8(bytes), valid) << why;
        EXPECT_EQ(isUtf8(bytes), bytes == valid) << why;
    }
}

TEST(CodePages, DecodeWordsOfTheirLanguages)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"ANSI_1250", "P\xF8\xEDzem\xED", "Přízemí"},
        {"ansi_1251", "\xD1\xF2\xE5\xED\xE0", "Стена"},
        {" ANSI_1252 ", "W\xE4nde \x80", "Wände €"},
        {"ANSI_1255", "\xF7\xE9\xF8", "קיר"},
        {"ANSI_1256", "\xCC\xCF\xC7\xD1", "جدار"},
        {"ANSI_932", "\x95\xC7 \xB6\xCD\xDE", "壁 ｶﾍﾞ"},
        {"ANSI_936", "\xC7\xBD\xCC\xE5", "墙体"},
        {"ANSI_949", "\xBA\xAE \xB3\x41", "벽 쿌"},
        {"ANSI_950", "\xC0\xF0", "牆"},
        {"DOS932", "\x83\x5C", "ソ"},   // the second byte is a backslash
        {"UTF-8", "W\xC3\xA4nde", "Wände"},
    };
    for (const auto& [name, bytes, text] : cases) {
        ASSERT_NE(codePageNamed(name), 0) << name;
        EXPECT_EQ(toUtf8(bytes, codePageNamed(name)), text) << name;
    }
    EXPECT_EQ(codePageNamed("ANSI_1361"), 0);
    EXPECT_EQ(codePageNamed(""), 0);
}

TEST(CodePages, ReplaceBytesThatAreNoCharacter)
{
    const std::string bad = "\xEF\xBF\xBD";
    // Columns: why, codePage, bytes, text.
    const std::tuple<const char*, int, std::string, std::string> cases[] = {
        {"a hole of 1252", 1252, "a\x81z", "a" + bad + "z"},
        {"a lead byte at the end", 932, "a\x95", "a" + bad},
        {"a lead byte before a byte that is no second one", 936, "\xC7 x", bad + " x"},
        {"a byte that is neither", 950, "\xFFz", bad + "z"},
        {"a pair without a character", 949, "\xC9\xFE", bad + bad},
        {"no known code page, but UTF-8", 0, "W\xC3\xA4nde", "Wände"},
    };
    for (const auto& [why, codePage, bytes, text] : cases) EXPECT_EQ(toUtf8(bytes, codePage), text) << why;
}

TEST(CodePages, AnyTwoBytesBecomeValidText)
{
    for (const int codePage :
         {0, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, utf8CodePage})
        for (unsigned pair = 0; pair < 0x10000; ++pair) {
            const std::string bytes{static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
            ASSERT_TRUE(isUtf8(toUtf8(bytes, codePage))) << codePage << ' ' << pair;
        }
}

TEST(UnicodeEscapes, BecomeTheirCharacters)
{
    const std::string bad = "\xEF\xBF\xBD";
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"one inside", "W\\U+00E4nde", "Wände"},
        {"lower case", "\\u+20ac", "€"},
        {"a pair of surrogates", "\\U+D83C\\U+DFE0", "\xF0\x9F\x8F\xA0"},
        {"half a pair", "\\U+D83Cx", bad + "x"},
        {"half a pair before another character", "\\U+D83C\\U+0041", bad + "A"},
        {"three digits only", "\\U+20A", "\\U+20A"},
        {"a control character", "a\\U+0000b", "a" + bad + "b"},
    };
    for (const auto& [why, text, result] : cases) EXPECT_EQ(withoutUnicodeEscapes(text), result) << why;
}

}   // namespace
