#include "platform/platform.h"
#include "platform/wildcard.h"
#include "support/temp_till.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using platform::wildcardMatch;
using namespace std::chrono_literals;

TEST(Wildcard, MatchesAsADirectorySearchDoes) {
    struct Case {
        const char* pattern;
        const char* name;
        bool matches;
    };
    // clang-format off
    const Case cases[] = {
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
    for (const Case& c : cases) {
        EXPECT_EQ(wildcardMatch(c.pattern, c.name), c.matches) << c.pattern << " " << c.name;
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
    EXPECT_LT(std::chrono::system_clock::now() - found[1].lastWrite, 1min);
    EXPECT_EQ(found[2].name, "r2.TXT");
    // "." and ".." are never listed.
    EXPECT_EQ(platform::findFiles("c:\\tessaly\\receipts\\*.*").size(), 5u);
    // A path without wildcards finds the entry itself, as an existence test does.
    ASSERT_EQ(platform::findFiles("c:\\tessaly\\Receipts").size(), 1u);

    EXPECT_TRUE(platform::findFiles("c:\\tessaly\\nowhere\\*.*").empty());
    EXPECT_TRUE(platform::findFiles("c:\\tessaly\\receipts\\R1.txt\\*.*").empty());
}

TEST(FileTimes, ReportsTheThreeTimesOfAFileAndRefusesWhatCannotBeOpened) {
    TempTill till;
    const fs::path file = till.plant("log/TessalyConfig.log", "line\r\n");
    const auto before = std::chrono::system_clock::now() - 5s;
    const timespec stamps[2] = {{1614834367, 250000000}, {1614834368, 0}}; // access, write
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), stamps, 0), 0);

    const platform::FileTimes times = platform::getFileTimes("C:\\LOG\\tessalyconfig.log");
    using std::chrono::system_clock;
    EXPECT_EQ(times.lastAccess, system_clock::from_time_t(1614834367) + 250ms);
    EXPECT_EQ(times.lastWrite, system_clock::from_time_t(1614834368));
    EXPECT_TRUE(times.creation > before && times.creation < system_clock::now() + 5s);

    try {
        platform::getFileTimes("c:\\log\\missing.log");
        ADD_FAILURE() << "a missing file gave times";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "cannot open c:\\log\\missing.log: No such file or directory");
    }
    EXPECT_THROW(platform::getFileTimes("c:\\log"), std::runtime_error);
}

TEST(FileAttributes, TheReadOnlyBitTakesAwayAndGivesBackWriting) {
    TempTill till;
    const fs::path file = till.plant("keys/cxkeyfile.txt", "key");
    using P = fs::perms;
    fs::permissions(file, P::owner_read | P::owner_write | P::group_write | P::others_read);
    const auto writeBits = P::owner_write | P::group_write | P::others_write;

    // Read-only together with the archive bit, which is ignored.
    EXPECT_TRUE(platform::setFileAttributes("c:\\KEYS\\cxkeyfile.txt", 0x21));
    EXPECT_EQ(fs::status(file).permissions(), P::owner_read | P::others_read);
    EXPECT_TRUE(platform::setFileAttributes("c:\\keys\\cxkeyfile.txt", 0x80)); // normal
    EXPECT_EQ(fs::status(file).permissions() & writeBits, P::owner_write);

    EXPECT_FALSE(platform::setFileAttributes("c:\\keys\\missing.txt", 1));
    // Windows does not honour read-only on a folder; files can still be made in it.
    EXPECT_TRUE(platform::setFileAttributes("c:\\keys", 1));
    EXPECT_NE(fs::status(till.driveC() / "keys").permissions() & P::owner_write, P::none);
}
