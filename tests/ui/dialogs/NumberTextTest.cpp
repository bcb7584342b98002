#include "ui/dialogs/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace belvor;

constexpr double infinity = std::numeric_limits<double>::infinity();

using Row = std::tuple<const char*, const char*, double>;   // the text, the decimal point, the number

TEST(NumberText, ShowsFourDigits)
{
    for (const auto& [text, point, value] :
         {Row{"2000", ".", 2000}, Row{"1.235E+05", ".", 123456}, Row{"1.234E-05", ".", 0.00001234},
          Row{"-9.736", ".", -9.73641}, Row{"-0", ".", -0.0}, Row{"0.0001", ".", 0.0001},
          Row{"1E+04", ".", 9999.6}, Row{"INF", ".", infinity}, Row{"1,235E+05", ",", 123456},
          Row{"2٫5", "٫", 2.5}})
        EXPECT_EQ(shownNumber(value, point), text);
}

TEST(NumberText, ReadsTheNumberAtTheBeginning)
{
    for (const auto& [text, point, value] :
         {Row{"  12.5 mm", ".", 12.5}, Row{"+3", ".", 3}, Row{"-.5", ".", -0.5}, Row{"5.", ".", 5},
          Row{"1.234E-05", ".", 1.234e-05}, Row{"2e+mm", ".", 2}, Row{"-1e999", ".", -infinity},
          Row{"12,5", ",", 12.5}, Row{",5", ",", 0.5}, Row{"12.5", ",", 12.5}, Row{"12,5", ".", 12},
          Row{"12٫5", "٫", 12.5}})
        EXPECT_EQ(typedNumber(text, point), value) << '"' << text << '"';
    for (const char* const text : {"", "  ", "wide", "-", "--1", ".", "e5", "nan", "inf", "0x10", "1e-999"})
        EXPECT_EQ(typedNumber(text, "."), 0) << text;
}

TEST(NumberText, TellsANumberFromItsBeginningAndFromOtherText)
{
    using enum FieldText;
    using Field = std::tuple<const char*, const char*, FieldText>;
    for (const auto& [text, point, kind] :
         {Field{"1", ".", number}, Field{" -1.5e-3 ", ".", number}, Field{"1,5", ",", number},
          Field{"1.5", ",", number}, Field{"", ".", unfinished}, Field{"-", ".", unfinished},
          Field{".", ".", unfinished}, Field{",", ",", unfinished}, Field{"2e", ".", unfinished},
          Field{"2e-", ".", unfinished}, Field{"1,5", ".", other}, Field{"e", ".", other},
          Field{"12 mm", ".", other}, Field{"1-", ".", other}, Field{"x", ".", other}})
        EXPECT_EQ(kindOfField(text, point), kind) << '"' << text << '"';
}

TEST(NumberText, PlaceholdersAreFilledInOrderAndPercentSignsInValuesStay)
{
    EXPECT_EQ(filled("100% (%.4G, %lu)", {"1", "%lu"}), "100% (1, %lu)");
    EXPECT_EQ(filled("%lu %lu", {"1"}), "1 %lu");
}
