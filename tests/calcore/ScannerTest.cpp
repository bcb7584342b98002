#include "calcore/Scanner.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

using namespace belvor;

TEST(Scanner, ReadsRealsAsStreamsDo)
{
    for (const char* const text : {"1.5.2",
                                   "+7e1x",
                                   "1e",
                                   "-",
                                   "x",
                                   " \t\n3",
                                   "",
                                   "-.5-3",
                                   "1e400",
                                   "-1e400",
                                   "1e-400",
                                   "0x10",
                                   "inf",
                                   "1e+",
                                   "123456789012345678901234567890",
                                   "0.1000000000000000055511151231257827",
                                   "9007199254740993",
                                   "4.35",
                                   "1e22",
                                   "1e23",
                                   "-0",
                                   "5.",
                                   ".",
                                   "1e308",
                                   "4.9e-324",
                                   "1.7976931348623159e308"}) {
        std::istringstream stream{text};
        Scanner<> scanner{std::string_view(text)};
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
