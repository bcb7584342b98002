#include "calcore/Number.h"

#include <gtest/gtest.h>

#include <string>

using namespace belvor;

TEST(Number, RealsAreReadWholeOrRefused)
{
    // Columns: why, text, good, value.
    const std::tuple<const char*, std::string, bool, double> cases[] = {
        {"leading plus", "+2.5", true, 2.5},
        {"no digit before the point", "-.5", true, -0.5},
        {"no digit behind the point", "5.", true, 5.0},
        {"exponent with a plus", "1E+3", true, 1e3},
        {"underflow is nothing", "1e-400", true, 0.0},
        {"a long fraction underflows too", "-0.0000001e-330", true, 0.0},
        {"many digits overflow", std::string(400, '9'), false, 7},
        {"a huge exponent", "1e99999999999999999999", false, 7},
        {"a huge negative exponent", "1e-99999999999999999999", true, 0.0},
    };
    for (const auto& [why, text, good, wantedValue] : cases) {
        double value = 7;
        EXPECT_EQ(isDouble(text, value), good) << why;
        EXPECT_EQ(value, wantedValue) << why;
    }
    for (const char* const text : {"", "+-1", ".", "1D5", "nan", "1 ", "1,5"}) {
        double value = 7;
        EXPECT_FALSE(isDouble(text, value)) << text;
        EXPECT_EQ(value, 7) << text;
    }
}

TEST(Number, IntegersBeyond32BitsAreRefused)
{
    const std::tuple<const char*, bool, std::int32_t> cases[] = {
        {"12", true, 12},
        {"+12", true, 12},
        {"-12", true, -12},
        {"007", true, 7},
        {"2147483647", true, 2147483647},
        {"2147483648", false, 9},
        {"-2147483648", true, -2147483647 - 1},
        {"", false, 9},
        {"1.0", false, 9},
        {"+", false, 9},
        {"12 ", false, 9},
    };
    for (const auto& [text, good, wantedValue] : cases) {
        std::int32_t value = 9;
        EXPECT_EQ(isLong(text, value), good) << text;
        EXPECT_EQ(value, wantedValue) << text;
    }
}
