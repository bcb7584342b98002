#include "ui/dialogs/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace belvor {

TEST(NumberText, ShowsFourDigits)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const struct { double value; const char *point, *text; } cases[] = {
        {2000, ".", "2000"},         {123456, ".", "1.235E+05"}, {0.00001234, ".", "1.234E-05"}, {-9.73641, ".", "-9.736"},
        {11.7732, ".", "11.77"},     {1, ".", "1"},              {0, ".", "0"},                  {-0.0, ".", "-0"},
        {0.0001, ".", "0.0001"},     {9999.6, ".", "1E+04"},     {1e100, ".", "1E+100"},         {infinity, ".", "INF"},
        {-9.73641, ",", "-9,736"},   {123456, ",", "1,235E+05"}, {2.5, "\xD9\xAB", "2\xD9\xAB" "5"},
    };
    for (const auto& c : cases) EXPECT_EQ(shownNumber(c.value, c.point), c.text);
}

TEST(NumberText, ReadsTheNumberAtTheFront)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const struct { const char *why, *text, *point; double value; } cases[] = {
        {"plain", "12.5", ".", 12.5},
        {"blanks before, text behind", "  12.5 mm", ".", 12.5},
        {"signs", "+3", ".", 3},
        {"negative", "-.5", ".", -0.5},
        {"no digit behind the point", "5.", ".", 5},
        {"as it is shown", "1.234E-05", ".", 1.234e-05},
        {"an e without digits ends the number", "2e", ".", 2},
        {"the same with a sign", "2e+mm", ".", 2},
        {"more digits than are shown", "0.30480060960121922", ".", 0.30480060960121922},
        {"empty", "", ".", 0},
        {"blanks", "  ", ".", 0},
        {"no number", "wide", ".", 0},
        {"a sign alone", "-", ".", 0},
        {"two signs", "--1", ".", 0},
        {"a point alone", ".", ".", 0},
        {"an exponent alone", "e5", ".", 0},
        {"not a number", "nan", ".", 0},
        {"the name of infinity", "inf", ".", 0},
        {"hexadecimal is a 0 and a letter", "0x10", ".", 0},
        {"too large", "1e999", ".", infinity},
        {"too large, negative", "-1e999", ".", -infinity},
        {"too small", "1e-999", ".", 0},
        {"comma", "12,5", ",", 12.5},
        {"comma in front", ",5", ",", 0.5},
        {"the point of another country ends the number", "12.5", ",", 12},
        {"and the comma", "12,5", ".", 12},
        {"a separator of two bytes", "12\xD9\xAB" "5", "\xD9\xAB", 12.5},
    };
    for (const auto& c : cases) EXPECT_EQ(typedNumber(c.text, c.point), c.value) << c.why;
}

/// What is shown and typed again shows the same, in every country.
TEST(NumberText, TypingWhatIsShownShowsTheSame)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0), exponent(-300.0, 300.0);
    for (const char* point : {".", ",", "\xD9\xAB"})
        for (int i = 0; i < 2000; ++i) {
            const std::string text = shownNumber(mantissa(random) * std::pow(10.0, exponent(random)), point);
            EXPECT_EQ(shownNumber(typedNumber(text, point), point), text);
        }
}

TEST(NumberText, FormatsAreFilledInOrderAndPercentSignsInValuesStay)
{
    EXPECT_EQ(filled("Centre (%.4G, %.4G, %.4G)", {"1", "2", "3"}), "Centre (1, 2, 3)");
    EXPECT_EQ(filled("needs %lu KB", {"%lu"}), "needs %lu KB");
    EXPECT_EQ(filled("%lu %lu", {"1"}), "1 %lu");
    EXPECT_EQ(filled("100% %lu", {"1"}), "100% 1");
    EXPECT_EQ(filled("", {"1"}), "");
}

}   // namespace belvor
