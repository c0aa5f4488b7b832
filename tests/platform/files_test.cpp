#include "platform/platform.h"
#include "platform/wildcard.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <tuple>

namespace fs = std::filesystem;
using platform::wildcardMatch;

TEST(Wildcard, MatchesAsADirectorySearchDoes) {
    // clang-format off
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"*.*", "readme", true},       {"*.*", ".profile", true},        {"*", "a.b", true},
        {"*.txt", "old.notes.txt", true}, {"*.txt", "a.txt.bak", false}, {"*an*", "banana", true},
        // A pattern ending in a dot asks for names without an extension.
        {"*.", "readme", true},        {"*.", "readme.txt", false},      {"readme.*", "readme", true},
        {"file?.txt", "file1.txt", true}, {"file?.txt", "file12.txt", false}, {"a?c", "ac", false},
        // Windows lets a "?" before a dot or at the end match nothing.
        {"file?.txt", "file.txt", true}, {"ab??", "ab", true},           {"", "x", false},
        {"a?b", "a.b", false},
        // Case folds as Windows folds ANSI names.
        {"*.TXT", "Notes.txt", true},  {"\xE9t\xE9.*", "\xC9T\xC9.LOG", true}, {"e*", "\xE9", false},
    };
    // clang-format on
    for (const auto& [pattern, name, matches] : cases) {
        EXPECT_EQ(wildcardMatch(pattern, name), matches) << pattern << " " << name;
    }
}

TEST(FindFiles, ListsMatchingFilesAndFoldersOfOneFolderInNameOrder) {
    TempTill till;
    till.plant("Tessaly/Receipts/R1.txt", "12345");
    till.plant("Tessaly/Receipts/r2.TXT", "");
    till.plant("Tessaly/Receipts/notes.doc", "x");
    till.plant("Tessaly/Receipts/Deep/inner.txt", "x");
    fs::create_directories(till.driveC() / "Tessaly/Receipts/Old.txt");

    auto found = platform::findFiles("c:\\TESSALY\\receipts\\*.txt");
    ASSERT_EQ(found.size(), 3u);
    EXPECT_TRUE(found[0].name == "Old.txt" && found[0].isFolder);
    EXPECT_TRUE(found[1].name == "R1.txt" && !found[1].isFolder && found[1].size == 5u);
    EXPECT_EQ(found[2].name, "r2.TXT");
    // "." and ".." are never listed.
    EXPECT_EQ(platform::findFiles("c:\\tessaly\\receipts\\*.*").size(), 5u);
    // A path without wildcards finds the entry itself, as an existence test does.
    ASSERT_EQ(platform::findFiles("c:\\tessaly\\Receipts").size(), 1u);

    EXPECT_TRUE(platform::findFiles("c:\\tessaly\\nowhere\\*.*").empty());
    EXPECT_TRUE(platform::findFiles("c:\\tessaly\\receipts\\R1.txt\\*.*").empty());
}
