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

TEST(CodePages, DecodeWordsAndReplaceBytesThatAreNoCharacter)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"ANSI_1250", "P\xF8\xEDzem\xED", "Přízemí"},
        {"ansi_1251", "\xD1\xF2\xE5\xED\xE0", "Стена"},
        {" ANSI_1252 ", "W\xE4nde \x80", "Wände €"},
        {"ANSI_1252", "a\x81z", "a\uFFFDz"},   // a hole
        {"ANSI_1255", "\xF7\xE9\xF8", "קיר"},
        {"ANSI_1256", "\xCC\xCF\xC7\xD1", "جدار"},
        {"ANSI_932", "\x95\xC7 \xB6\xCD\xDE a\x95", "壁 ｶﾍﾞ a\uFFFD"},      // a lead byte at the end
        {"ANSI_936", "\xC7\xBD\xCC\xE5 \xC7 x", "墙体 \uFFFD x"},           // and before no second one
        {"ANSI_949", "\xBA\xAE \xB3\x41 \xC9\xFE", "벽 쿌 \uFFFD\uFFFD"},   // a pair without a character
        {"ANSI_950", "\xC0\xF0 \xFFz", "牆 \uFFFDz"},                       // neither of a pair
        {"DOS932", "\x83\x5C", "ソ"},                                       // the second byte is a backslash
        {"UTF-8", "W\xC3\xA4nde", "Wände"},
        {"ANSI_1361", "W\xC3\xA4nde", "Wände"},   // not known: as UTF-8
    };
    for (const auto& [name, bytes, text] : cases) {
        EXPECT_EQ(codePageNamed(name) == 0, std::string(name) == "ANSI_1361") << name;
        EXPECT_EQ(toUtf8(bytes, codePageNamed(name)), text) << name;
    }
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
