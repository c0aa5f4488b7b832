#include "foundation/tessaly_string.h"

#include <clocale>
#include <gtest/gtest.h>

using TessalyString::StrToDouble;
using TessalyString::StrToInt;
using TessalyString::StrToLong;

TEST(TessalyString, WholeNumbersWithBlanksAndSigns) {
    EXPECT_EQ(StrToLong(" 42 "), 42);
    EXPECT_EQ(StrToLong("\t-17"), -17);
    EXPECT_EQ(StrToLong("+5"), 5);
    EXPECT_EQ(StrToLong("1e3"), 1000);
    EXPECT_EQ(StrToLong("2147483647"), 2147483647);
    EXPECT_EQ(StrToLong("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(StrToInt("32767"), 32767);
    EXPECT_EQ(StrToInt("-32768"), -32768);
}

TEST(TessalyString, AnythingButAWholeNumberGivesZero) {
    for (const char* text : {"", "   ", "12abc", "abc", "0x10", "&H10", "1,000", "- 5", "1e", "e3",
                             ".", "+", "inf", "nan", "5 5", "++5"}) {
        EXPECT_EQ(StrToLong(text), 0) << text;
        EXPECT_EQ(StrToInt(text), 0) << text;
        EXPECT_EQ(StrToDouble(text), 0.0) << text;
    }
    // Out of range is 0, not a truncated or saturated value.
    EXPECT_EQ(StrToInt("40000"), 0);
    EXPECT_EQ(StrToInt("32768"), 0);
    EXPECT_EQ(StrToInt("32767.5"), 0);
    EXPECT_EQ(StrToLong("2147483648"), 0);
    EXPECT_EQ(StrToLong("-1e10"), 0);
    EXPECT_EQ(StrToDouble("1e999"), 0.0);
}

TEST(TessalyString, IntegerFormsRoundHalvesToEven) {
    EXPECT_EQ(StrToLong("2.5"), 2);
    EXPECT_EQ(StrToLong("3.5"), 4);
    EXPECT_EQ(StrToLong("-2.5"), -2);
    EXPECT_EQ(StrToLong("-3.5"), -4);
    EXPECT_EQ(StrToLong("2.51"), 3);
    EXPECT_EQ(StrToLong("-0.4"), 0);
    EXPECT_EQ(StrToInt("0.5"), 0);
    EXPECT_EQ(StrToInt("1.5"), 2);
}

TEST(TessalyString, DecimalsUseThePointWhateverTheLocale) {
    EXPECT_DOUBLE_EQ(StrToDouble("1.5"), 1.5);
    EXPECT_DOUBLE_EQ(StrToDouble(" -.25 "), -0.25);
    EXPECT_DOUBLE_EQ(StrToDouble("7."), 7.0);
    EXPECT_DOUBLE_EQ(StrToDouble("2.5E-1"), 0.25);
    EXPECT_EQ(StrToDouble("1,5"), 0.0);

    // A machine whose locale writes decimal commas reads the same values.
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {
        EXPECT_DOUBLE_EQ(StrToDouble("1.5"), 1.5);
        EXPECT_EQ(StrToDouble("1,5"), 0.0);
        std::setlocale(LC_ALL, "C");
    }
}
