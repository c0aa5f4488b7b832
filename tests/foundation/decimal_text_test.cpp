#include "foundation/strict_number.h"
#include "foundation/tessaly_string.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

namespace {

// What the strict view says of a text: its value, or the fault's text.
template <typename Read> std::string strictly(Read read, const std::string& text) {
    try {
        return std::to_string(read(text));
    } catch (const std::exception& fault) {
        return fault.what();
    }
}

} // namespace

// One grammar, two views: the forgiving conversions read every fault as 0, the strict ones name
// it. Each row gives the 32-bit and 16-bit whole readings and the real one, as the strict view
// reports them ("T" type mismatch, "O" overflow); the forgiving view must be the same number or 0.
TEST(DecimalText, ForgivingAndStrictReadingsAgreeOnEveryText) {
    struct Row {
        const char* text;
        const char* whole;
        const char* small;
        const char* real;
    };
    const Row rows[] = {
        {" 42 ", "42", "42", "42.000000"},
        {"\t-17", "-17", "-17", "-17.000000"},
        {"+5", "5", "5", "5.000000"},
        {"1e3", "1000", "1000", "1000.000000"},
        {" -.25 ", "0", "0", "-0.250000"},
        {"2.5E-1", "0", "0", "0.250000"},
        {"2.5", "2", "2", "2.500000"},
        {"3.5", "4", "4", "3.500000"},
        {"-2.5", "-2", "-2", "-2.500000"},
        {"2.51", "3", "3", "2.510000"},
        {"-2147483648", "-2147483648", "O", "-2147483648.000000"},
        {"2147483648", "O", "O", "2147483648.000000"},
        {"-32768", "-32768", "-32768", "-32768.000000"},
        {"32767.5", "32768", "O", "32767.500000"}, // rounds to 32768 first
        {"1e400", "O", "O", "O"},
        {"1e-400", "0", "0", "0.000000"}, // too small to hold is 0, not a fault
        {"", "T", "T", "T"},
        {"   ", "T", "T", "T"},
        {"12abc", "T", "T", "T"},
        {"0x10", "T", "T", "T"},
        {"&H10", "T", "T", "T"},
        {"1,5", "T", "T", "T"}, // "." is the only decimal point, on any machine
        {"- 5", "T", "T", "T"},
        {"++5", "T", "T", "T"},
        {"+-5", "T", "T", "T"},
        {"1e", "T", "T", "T"},
        {".", "T", "T", "T"},
        {"inf", "T", "T", "T"},
        {"nan", "T", "T", "T"},
        {"5 5", "T", "T", "T"},
    };
    const auto named = [](std::string said) {
        return said == "Type mismatch" ? "T" : said == "Overflow" ? "O" : said;
    };
    for (const Row& row : rows) {
        const std::string text = row.text;
        EXPECT_EQ(named(strictly(strictToLong, text)), row.whole) << text;
        EXPECT_EQ(named(strictly(strictToInt, text)), row.small) << text;
        EXPECT_EQ(named(strictly(strictToDouble, text)), row.real) << text;
        const auto forgiving = [](const char* strict) {
            return std::string(strict) == "T" || std::string(strict) == "O" ? std::string("0")
                                                                            : std::string(strict);
        };
        EXPECT_EQ(std::to_string(TessalyString::StrToLong(text)), forgiving(row.whole)) << text;
        EXPECT_EQ(std::to_string(TessalyString::StrToInt(text)), forgiving(row.small)) << text;
        const std::string real = forgiving(row.real);
        EXPECT_EQ(std::to_string(TessalyString::StrToDouble(text)), real == "0" ? "0.000000" : real)
            << text;
    }
}
