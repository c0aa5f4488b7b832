#include "platform/command_line.h"

#include <gtest/gtest.h>

using platform::splitArguments;
using platform::splitCommandLine;
using Words = std::vector<std::string>;

TEST(CommandLine, SplitsByTheWindowsRules) {
    // clang-format off
    const std::pair<const char*, Words> cases[] = {
        // The program name ends at a blank unless quoted, quotes there only group, and its
        // backslashes stay as they are.
        {R"("c:\program files\7z.exe" x -y)", {R"(c:\program files\7z.exe)", "x", "-y"}},
        {R"(c:\pro"gram fi"les\x.exe a)", {R"(c:\program files\x.exe)", "a"}},
        {R"("c:\folder\\" a)", {R"(c:\folder\\)", "a"}}, {"  leading", {"", "leading"}}, {"", {}},
        // In the arguments backslashes count only before a quote.
        {R"(p a\\b c:\x\ d)", {"p", R"(a\\b)", R"(c:\x\)", "d"}}, {R"(p a\"b)", {"p", R"(a"b)"}},
        {R"(p a\\"b c")", {"p", R"(a\b c)"}}, {R"(p a\\\"b)", {"p", R"(a\"b)"}},
        {R"(p "c:\lumora\\" next)", {"p", R"(c:\lumora\)", "next"}},
        {R"(p "c:\lumora\" next)", {"p", R"(c:\lumora" next)"}},
        // Quotes group blanks and make empty arguments; a doubled quote inside quotes is a
        // literal quote and the quoting goes on.
        {"p \"\" x", {"p", "", "x"}}, {"p \"two words\"\tx  ", {"p", "two words", "x"}},
        {R"(p "a""b c")", {"p", R"(a"b c)"}}, {"p \"open to the end", {"p", "open to the end"}}};
    // clang-format on
    for (const auto& [line, words] : cases) {
        EXPECT_EQ(splitCommandLine(line), words) << line;
    }
    EXPECT_EQ(splitArguments(" \"a b\" c"), (Words{"a b", "c"}));
    EXPECT_TRUE(splitArguments("  ").empty());
}
