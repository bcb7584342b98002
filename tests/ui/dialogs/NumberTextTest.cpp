#include "ui/dialogs/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace belvor;

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(NumberText, ShowsFourDigits)
{
    const std::tuple<double, const char*, const char*> cases[] = {
        {2000, ".", "2000"},       {123456, ".", "1.235E+05"}, {0.00001234, ".", "1.234E-05"},
        {-9.73641, ".", "-9.736"}, {-0.0, ".", "-0"},          {0.0001, ".", "0.0001"},
        {9999.6, ".", "1E+04"},    {infinity, ".", "INF"},     {123456, ",", "1,235E+05"},
        {2.5, "٫", "2٫5"},
    };
    for (const auto& [value, point, text] : cases) EXPECT_EQ(shownNumber(value, point), text);
}

TEST(NumberText, ReadsTheNumberAtTheBeginning)
{
    const std::tuple<const char*, const char*, double> cases[] = {
        {"  12.5 mm", ".", 12.5},
        {"+3", ".", 3},
        {"-.5", ".", -0.5},
        {"5.", ".", 5},
        {"1.234E-05", ".", 1.234e-05},
        {"2e+mm", ".", 2},
        {"-1e999", ".", -infinity},
        {"12,5", ",", 12.5},
        {",5", ",", 0.5},
        {"12.5", ",", 12.5},
        {"12,5", ".", 12},
        {"12٫5", "٫", 12.5},
    };
    for (const auto& [text, point, value] : cases)
        EXPECT_EQ(typedNumber(text, point), value) << '"' << text << '"';
    for (const char* const text : {"", "  ", "wide", "-", "--1", ".", "e5", "nan", "inf", "0x10", "1e-999"})
        EXPECT_EQ(typedNumber(text, "."), 0) << text;
}

TEST(NumberText, TellsANumberFromItsBeginningAndFromOtherText)
{
    using Kind = FieldText;
    const struct {
        const char *text, *point;
        Kind kind;
    } cases[] = {
        {"1", ".", Kind::number},       {" -1.5e-3 ", ".", Kind::number}, {"1,5", ",", Kind::number},
        {"1.5", ",", Kind::number},     {"", ".", Kind::unfinished},      {"-", ".", Kind::unfinished},
        {".", ".", Kind::unfinished},   {",", ",", Kind::unfinished},     {"2e", ".", Kind::unfinished},
        {"2e-", ".", Kind::unfinished}, {"1,5", ".", Kind::other},        {"e", ".", Kind::other},
        {"12 mm", ".", Kind::other},    {"1-", ".", Kind::other},         {"x", ".", Kind::other},
    };
    for (const auto& c : cases) EXPECT_EQ(kindOfField(c.text, c.point), c.kind) << '"' << c.text << '"';
}

TEST(NumberText, PlaceholdersAreFilledInOrderAndPercentSignsInValuesStay)
{
    EXPECT_EQ(filled("100% (%.4G, %lu)", {"1", "%lu"}), "100% (1, %lu)");
    EXPECT_EQ(filled("%lu %lu", {"1"}), "1 %lu");
}
