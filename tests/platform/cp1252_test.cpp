#include "platform/cp1252.h"

#include <gtest/gtest.h>

TEST(Cp1252, FoldsLatinLettersAndRoundTripsThroughUtf8) {
    EXPECT_TRUE(cp1252::iequals("Tessaly\\CCAddin", "TESSALY\\ccaddin"));
    EXPECT_TRUE(cp1252::iequals("\xe9t\xe9", "\xc9T\xc9")); // été / ÉTÉ
    EXPECT_FALSE(cp1252::iequals("\xf7", "\xd7"));          // ÷ and × are not a case pair
    EXPECT_FALSE(cp1252::iequals("abc", "abcd"));

    std::string all;
    for (int b = 1; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    const std::string back = cp1252::fromUtf8(cp1252::toUtf8(all));
    for (int b : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) { // unassigned bytes cannot come back
        all[static_cast<std::size_t>(b - 1)] = '?';
    }
    EXPECT_EQ(back, all);
    EXPECT_EQ(cp1252::toUtf8("\x80"), "\xe2\x82\xac");
    EXPECT_EQ(cp1252::fromUtf8("\xe4\xb8\xad"), "?"); // not in the code page
}
