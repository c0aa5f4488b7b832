#include "foundation/event_pump.h"
#include "foundation/file_system.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

void makeReadOnly(const fs::path& file) {
    fs::permissions(file, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
}

} // namespace

TEST(FileSystemStreams, NumbersAreReusedAndOpenStreamsAreFlushedWhenTheObjectEnds) {
    TempTill till;
    {
        FileSystem files;
        EXPECT_EQ(files.OpenFile("c:\\a.txt", 1), 1);
        EXPECT_EQ(files.OpenFile("c:\\b.txt", 1), 2);
        EXPECT_EQ(files.OpenFile("c:\\c.txt", 1), 3);
        files.CloseFile(2);
        EXPECT_EQ(files.OpenFile("C:\\B.TXT", 2), 2);
        files.CloseFile(1);
        files.CloseFile(2);
        files.CloseFile(3);
        EXPECT_EQ(files.OpenFile("c:\\a.txt", 2), 1);
        EXPECT_FALSE(files.WriteData(1, "one", true));
        EXPECT_FALSE(files.WriteData(1, "two", false));
        EXPECT_TRUE(files.WriteData(7, "x", true));
        EXPECT_EQ(files.strErrorMessage(), "WriteData() Failed - Bad file name or number");
    }
    EXPECT_EQ(readBytes(till.driveC() / "a.txt"), "one\r\ntwo");
    EXPECT_EQ(readBytes(till.driveC() / "b.txt"), "");
}

TEST(FileSystemStreams, ReadsLinesOrCharactersAndReportsTheEnd) {
    TempTill till;
    till.plant("f.txt", "one\r\ntwo\nthree");
    FileSystem files;

    EXPECT_LT(files.OpenFile("c:\\missing.txt", 0), 1);
    EXPECT_EQ(files.strErrorMessage(), "Error Open File : c:\\missing.txt - File not found");
    EXPECT_FALSE(fs::exists(till.driveC() / "missing.txt"));

    const long n = files.OpenFile("c:\\F.txt", 0);
    std::string data;
    std::vector<std::string> lines;
    while (!files.Eof(n)) {
        EXPECT_FALSE(files.ReadData(n, data, true));
        lines.push_back(data);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_TRUE(files.ReadData(n, data, true));
    EXPECT_EQ(files.strErrorMessage(), "ReadData() Failed - Input past end of file");
    EXPECT_TRUE(files.WriteData(n, "x", true));
    files.CloseFile(n);
    EXPECT_TRUE(files.Eof(n));

    const long again = files.OpenFile("c:\\f.txt", 0);
    EXPECT_FALSE(files.ReadData(again, data, false, 6));
    EXPECT_EQ(data, "one\r\nt");
    EXPECT_FALSE(files.ReadData(again, data, false, 100));
    EXPECT_EQ(data, "wo\nthree");
    EXPECT_TRUE(files.Eof(again));

    // Writing replaces the file when the stream closes, never before: a writer killed half-way
    // leaves the old file. (Windows replaces no file that a stream still holds open.)
    files.CloseFile(again);
    const long writer = files.OpenFile("c:\\f.txt", 1);
    EXPECT_FALSE(files.WriteData(writer, "new", true));
    EXPECT_EQ(readBytes(till.driveC() / "f.txt"), "one\r\ntwo\nthree");
    files.CloseFile(writer);
    EXPECT_EQ(readBytes(till.driveC() / "f.txt"), "new\r\n");
    files.CloseFile(files.OpenFile("c:\\f.txt", 1));
    EXPECT_EQ(readBytes(till.driveC() / "f.txt"), "");
}

TEST(FileSystemStreams, CountLinesLetsEventsRunOncePerLine) {
    TempTill till;
    till.plant("f.txt", "a\r\nb\r\n\r\nc");
    int pumped = 0;
    installEventPump([&pumped] { ++pumped; });
    FileSystem files;
    EXPECT_EQ(files.CountLines("c:\\f.txt"), 4);
    EXPECT_EQ(pumped, 4);
    EXPECT_EQ(files.CountLines("c:\\none.txt"), 0);
    EXPECT_TRUE(startsWith(files.strErrorMessage(), "CountLines() Failed - "));
    installEventPump({});
}

TEST(FileSystemFolders, CreateAndDeleteReportTrueOnFailure) {
    TempTill till;
    FileSystem files;
    EXPECT_FALSE(files.CreateFolder("c:\\tessaly"));
    EXPECT_FALSE(files.CreateFolder("c:\\tessaly\\lumora\\"));
    EXPECT_TRUE(files.FolderExists("C:\\TESSALY\\Lumora"));
    EXPECT_TRUE(files.CreateFolder("c:\\tessaly\\"));
    EXPECT_EQ(files.strErrorMessage(), "CreateFolder() Failed - File already exists");
    EXPECT_TRUE(files.CreateFolder("c:\\missing\\child\\"));
    EXPECT_FALSE(fs::exists(till.driveC() / "missing"));

    for (const std::string folder : {"c:\\tessaly\\lumora\\", "c:\\tessaly\\lumora"}) {
        makeReadOnly(till.plant("tessaly/lumora/bin/locked.dll", "x"));
        EXPECT_FALSE(files.DeleteFolder(folder)) << folder;
        EXPECT_FALSE(fs::exists(till.driveC() / "tessaly" / "lumora")) << folder;
    }
    EXPECT_TRUE(files.DeleteFolder("c:\\tessaly\\lumora\\"));
    EXPECT_TRUE(startsWith(files.strErrorMessage(), "DeleteFolder() Failed - "));
    EXPECT_TRUE(files.DeleteFolder(""));
    EXPECT_TRUE(fs::exists(till.driveC() / "tessaly"));
}

TEST(FileSystemFiles, CopyMoveAndDeleteKeepTheirSenses) {
    TempTill till;
    till.plant("k/cxkeyfile_live.txt", "live");
    till.plant("k/cxkeyfile.txt", "old");
    FileSystem files;
    bool failed = false;

    files.CopyFile("c:\\k\\cxkeyfile_live.txt", "c:\\k\\cxkeyfile.txt", failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(readBytes(till.driveC() / "k" / "cxkeyfile.txt"), "live");
    files.CopyFile("c:\\k\\none.txt", "c:\\k\\cxkeyfile.txt", failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(files.strErrorMessage(), "CopyFile() Failed - File not found");

    files.MoveFile("c:\\k\\cxkeyfile.txt", "c:\\k\\cxkeyfile_live.txt", failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(files.strErrorMessage(), "MoveFile() Failed - File already exists");
    files.MoveFile("c:\\k\\cxkeyfile.txt", "c:\\k\\moved.txt", failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(files.GetFileSize("c:\\k\\moved.txt"), 4);
    EXPECT_EQ(files.GetFileSize("c:\\k\\cxkeyfile.txt"), 0);

    makeReadOnly(till.driveC() / "k" / "moved.txt");
    files.DeleteFile("c:\\k\\moved.txt", failed);
    EXPECT_TRUE(failed);
    files.DeleteFile("c:\\k\\cxkeyfile_live.txt", failed);
    EXPECT_FALSE(failed);
    EXPECT_FALSE(fs::exists(till.driveC() / "k" / "cxkeyfile_live.txt"));

    // CopyFolder reports SUCCESS as true, and keeps existing files unless told to overwrite.
    till.plant("src/sub/a.txt", "new");
    till.plant("dst/sub/a.txt", "old");
    EXPECT_FALSE(files.CopyFolder("c:\\src", "c:\\dst", false));
    EXPECT_TRUE(startsWith(files.strErrorMessage(), "Error in FileSystem::CopyFolder - "));
    EXPECT_TRUE(files.CopyFolder("c:\\src", "c:\\dst", true));
    EXPECT_EQ(readBytes(till.driveC() / "dst" / "sub" / "a.txt"), "new");
    EXPECT_TRUE(files.CopyFolder("c:\\src", "c:\\backup", false));
    EXPECT_EQ(files.GetFolderSize("c:\\backup\\"), 3);
}

TEST(FileSystemFiles, NamesSplitAtTheLastBackslashAndTheFirstDot) {
    FileSystem files;
    EXPECT_EQ(files.GetFileNameFromPath("c:\\a.b\\archive.tar.gz"), "archive.tar.gz");
    EXPECT_EQ(files.GetFileNameFromPath("plain"), "plain");
    EXPECT_EQ(files.GetFileNameNoExt("archive.tar.gz"), "archive");
    EXPECT_EQ(files.GetFileExtension("archive.tar.gz"), "tar.gz");
    EXPECT_EQ(files.GetFileNameNoExt("README"), "README");
    EXPECT_EQ(files.GetFileExtension("README"), "");
    EXPECT_EQ(files.GetFileExtension(".profile"), "profile");
}

TEST(FileSystemPatterns, CountFilesOnlyMatchingCaseInsensitively) {
    TempTill till;
    for (const char* name : {"a.TXT", "b.txt", "c.log", "noext"}) {
        till.plant(std::string("d/") + name, "x");
    }
    fs::create_directories(till.driveC() / "d" / "sub.txt");
    FileSystem files;

    EXPECT_EQ(files.NoOfFilesInFolder("c:\\d", "*.txt"), 2);
    EXPECT_EQ(files.NoOfFilesInFolder("c:\\D\\", "?.LOG"), 1);
    EXPECT_EQ(files.NoOfFilesInFolder("c:\\d"), 4);
    EXPECT_EQ(files.NoOfFilesInFolder("c:\\d", ""), 4);
    EXPECT_EQ(files.NoOfFilesInFolder("c:\\nowhere", "*.*"), 0);
    auto names = files.GetFilesInFolder("c:\\d", "*.t*");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a.TXT", "b.txt"}));

    EXPECT_TRUE(files.FileExists("c:\\d\\B.TXT"));
    EXPECT_EQ(files.strErrorMessage(), "c:\\d\\B.TXT already exists");
    EXPECT_FALSE(files.FileExists("c:\\d\\e.txt"));
    EXPECT_EQ(files.strErrorMessage(), "c:\\d\\e.txt does not exist");

    files.DeleteFilesInFolder("c:\\d", "*.txt");
    EXPECT_EQ(files.NoOfFilesInFolder("c:\\d"), 2);
    EXPECT_TRUE(fs::is_directory(till.driveC() / "d" / "sub.txt"));
}

TEST(FileSystemPatterns, DeletesOnlyFilesOlderThanTheDaysToKeep) {
    TempTill till;
    FakeClock clock(2025, 3, 10, 8, 0, 0);
    const auto daysAgo = [&](int days, int hour) {
        return fs::file_time_type::clock::from_sys(std::chrono::system_clock::time_point{
            std::chrono::floor<std::chrono::days>(clock.now()) - std::chrono::days(days) +
            std::chrono::hours(hour)});
    };
    fs::last_write_time(till.plant("r/seven.rcpt", "x"), daysAgo(7, 0));
    fs::last_write_time(till.plant("r/eight.rcpt", "x"), daysAgo(8, 23));
    fs::last_write_time(till.plant("r/old.txt", "x"), daysAgo(30, 0));
    fs::create_directories(till.driveC() / "r" / "folder.rcpt");
#ifndef _WIN32 // libstdc++ cannot set a folder's times on Windows: there the folder stays new
    fs::last_write_time(till.driveC() / "r" / "folder.rcpt", daysAgo(30, 0));
#endif
    FileSystem files;

    files.DeleteFilesInFolderByDay("c:\\r\\", "*.rcpt", 7);
    auto left = files.GetFilesInFolder("c:\\r");
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"old.txt", "seven.rcpt"}));
    EXPECT_TRUE(fs::is_directory(till.driveC() / "r" / "folder.rcpt"));

    DateTime created;
    DateTime accessed;
    DateTime written;
    EXPECT_TRUE(files.GetFileTimes("c:\\r\\seven.rcpt", created, accessed, written, true));
    EXPECT_EQ(written, (DateTime{2025, 3, 3, 0, 0, 0})) << files.strErrorMessage();
    EXPECT_FALSE(files.GetFileTimes("c:\\r\\eight.rcpt", created, accessed, written, false));
    EXPECT_TRUE(startsWith(files.strErrorMessage(), "GetFileHandle() Failed - "));
}
