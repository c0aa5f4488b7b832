#include "foundation/tessaly_string.h"

#include <gtest/gtest.h>

using namespace TessalyString;

TEST(TessalyString, NumbersWithBlanksSignsAndExponents) {
    EXPECT_EQ(StrToLong(" 42 "), 42);
    EXPECT_EQ(StrToLong("\t-17"), -17);
    EXPECT_EQ(StrToLong("+5"), 5);
    EXPECT_EQ(StrToLong("1e3"), 1000);
    EXPECT_EQ(StrToLong("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(StrToInt("-32768"), -32768);
    EXPECT_DOUBLE_EQ(StrToDouble(" -.25 "), -0.25);
    EXPECT_DOUBLE_EQ(StrToDouble("2.5E-1"), 0.25);
}

TEST(TessalyString, AnythingButAWholeNumberInRangeGivesZero) {
    // "." is the only decimal separator, so "1,5" is not a number on any machine.
    for (const char* text : {"", "   ", "12abc", "0x10", "&H10", "1,5", "- 5", "1e", ".", "inf",
                             "nan", "5 5", "++5"}) {
        EXPECT_EQ(StrToLong(text), 0) << text;
        EXPECT_EQ(StrToDouble(text), 0.0) << text;
    }
    EXPECT_EQ(StrToInt("40000"), 0);
    EXPECT_EQ(StrToInt("32767.5"), 0); // rounds to 32768 first
    EXPECT_EQ(StrToLong("2147483648"), 0);
    EXPECT_EQ(StrToDouble("1e999"), 0.0);
}

TEST(TessalyString, IntegerFormsRoundHalvesToEven) {
    const std::pair<const char*, int> cases[] = {{"2.5", 2},   {"3.5", 4},  {"-2.5", -2},
                                                 {"-3.5", -4}, {"2.51", 3}, {"0.5", 0}};
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(StrToLong(text), expected) << text;
        EXPECT_EQ(StrToInt(text), expected) << text;
    }
}
