#include "platform/command_line.h"

#include <gtest/gtest.h>

using platform::splitArguments;
using platform::splitCommandLine;
using Words = std::vector<std::string>;

TEST(CommandLine, TheProgramNameEndsAtABlankUnlessQuotedAndKeepsItsBackslashes) {
    EXPECT_EQ(splitCommandLine(R"("c:\program files\tools\7z.exe" x -y)"),
              (Words{R"(c:\program files\tools\7z.exe)", "x", "-y"}));
    // Inside the program name quotes only group, wherever they stand.
    EXPECT_EQ(splitCommandLine(R"(c:\pro"gram fi"les\x.exe a)"),
              (Words{R"(c:\program files\x.exe)", "a"}));
    EXPECT_EQ(splitCommandLine(R"("c:\folder\\" a)"), (Words{R"(c:\folder\\)", "a"}));
    EXPECT_EQ(splitCommandLine("  leading"), (Words{"", "leading"}));
    EXPECT_TRUE(splitCommandLine("").empty());
}

TEST(CommandLine, BackslashesCountOnlyBeforeAQuote) {
    EXPECT_EQ(splitCommandLine(R"(p a\\b c:\x\ d)"), (Words{"p", R"(a\\b)", R"(c:\x\)", "d"}));
    EXPECT_EQ(splitCommandLine(R"(p a\"b)"), (Words{"p", R"(a"b)"}));
    EXPECT_EQ(splitCommandLine(R"(p a\\"b c")"), (Words{"p", R"(a\b c)"}));
    EXPECT_EQ(splitCommandLine(R"(p a\\\"b)"), (Words{"p", R"(a\"b)"}));
    EXPECT_EQ(splitCommandLine(R"(p "c:\lumora\\" next)"), (Words{"p", R"(c:\lumora\)", "next"}));
    EXPECT_EQ(splitCommandLine(R"(p "c:\lumora\" next)"), (Words{"p", R"(c:\lumora" next)"}));
}

TEST(CommandLine, QuotesGroupBlanksAndMakeEmptyArguments) {
    EXPECT_EQ(splitCommandLine("p \"\" x"), (Words{"p", "", "x"}));
    EXPECT_EQ(splitCommandLine("p \"two words\"\tx  "), (Words{"p", "two words", "x"}));
    // A doubled quote inside quotes is a literal quote and the quoting goes on.
    EXPECT_EQ(splitCommandLine(R"(p "a""b c")"), (Words{"p", R"(a"b c)"}));
    EXPECT_EQ(splitCommandLine("p \"open to the end"), (Words{"p", "open to the end"}));

    EXPECT_EQ(splitArguments(" \"a b\" c"), (Words{"a b", "c"}));
    EXPECT_TRUE(splitArguments("  ").empty());
}
