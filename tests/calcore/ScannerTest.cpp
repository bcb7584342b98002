#include "calcore/Scanner.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>

using namespace belvor;

TEST(Scanner, ReadsRealsAsStreamsDo)
{
    std::istringstream texts(
        "1.5.2|+7e1x|1e|-|x| \t\n3||-.5-3|1e400|-1e400|1e-400|0x10|inf|1e+|4.35|1e22|1e23|-0|5.|.|1e308|"
        "123456789012345678901234567890|0.1000000000000000055511151231257827|9007199254740993|"
        "4.9e-324|1.7976931348623159e308");
    for (std::string text; std::getline(texts, text, '|');) {
        std::istringstream stream{text};
        Scanner<> scanner{text};
        double value = 9, wanted = 9;
        EXPECT_EQ(scanner.real(value), static_cast<bool>(stream >> wanted)) << text;
        EXPECT_EQ(value, wanted) << text;
        stream.clear();
        const std::string rest(std::istreambuf_iterator<char>(stream), {});
        EXPECT_EQ(std::string(scanner.position(), scanner.end()), rest) << text;
    }
}

TEST(Scanner, AnIntegerBeyond64BitsIsZero)
{
    for (const char* const text : {"9223372036854775808", "-9223372036854775808", "99999999999999999999 1"}) {
        std::int64_t value = 9;
        EXPECT_FALSE(Scanner<>{std::string_view(text)}.integer(value)) << text;
        EXPECT_EQ(value, 0) << text;
    }
}
