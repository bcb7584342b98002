#include "calcore/Number.h"

#include <gtest/gtest.h>

#include <string>

using namespace belvor;

TEST(Number, RealsAreReadWholeOrRefused)
{
    const std::tuple<std::string, double> cases[] = {
        {"+2.5", 2.5}, {"-.5", -0.5},   {"5.", 5.0},
        {"1E+3", 1e3}, {"1e-400", 0.0}, {"1e-99999999999999999999", 0.0},
    };
    double value = 7;
    for (const auto& [text, wanted] : cases) {
        EXPECT_TRUE(isDouble(text, value)) << text;
        EXPECT_EQ(value, wanted) << text;
    }
    value = 7;
    const std::string bad[] = {
        std::string(400, '9'), "1e99999999999999999999", "", "+-1", ".", "1D5", "nan", "1 ", "1,5"};
    for (const std::string& text : bad) {
        EXPECT_FALSE(isDouble(text, value)) << text;
        EXPECT_EQ(value, 7) << text;
    }
}

TEST(Number, IntegersBeyond32BitsAreRefused)
{
    const std::tuple<const char*, std::int32_t> cases[] = {
        {"+12", 12}, {"-12", -12}, {"007", 7}, {"2147483647", 2147483647}, {"-2147483648", -2147483647 - 1}};
    std::int32_t value = 9;
    for (const auto& [text, wanted] : cases) {
        EXPECT_TRUE(isLong(text, value)) << text;
        EXPECT_EQ(value, wanted) << text;
    }
    value = 9;
    for (const char* const text : {"2147483648", "", "1.0", "+", "12 "}) {
        EXPECT_FALSE(isLong(text, value)) << text;
        EXPECT_EQ(value, 9) << text;
    }
}
