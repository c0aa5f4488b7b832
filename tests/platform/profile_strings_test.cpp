#include "platform/platform.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <vector>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

const std::string kIni = "c:\\Tessaly\\settings.ini";

std::string get(const char* section, const char* key, const char* fallback = "dflt",
                unsigned long size = 512) {
    std::vector<char> buffer(size + 1, '#');
    const unsigned long count =
        platform::getPrivateProfileString(section, key, fallback, buffer.data(), size, kIni);
    return std::string(buffer.data(), count);
}

// The count returned and the list as a caller walks it, up to the two NULs that end it.
std::string list(const char* section, unsigned long size = 512) {
    std::vector<char> buffer(size + 1, '#');
    const unsigned long count =
        platform::getPrivateProfileString(section, nullptr, "", buffer.data(), size, kIni);
    const std::string bytes(buffer.data(), buffer.size());
    return std::to_string(count) + ":" + bytes.substr(0, bytes.find(std::string(2, '\0')) + 2);
}

bool set(const char* section, const char* key, const char* value) {
    return platform::writePrivateProfileString(section, key, value, kIni);
}

const std::string kReadingFile =
    "; Payment client settings\nOrphan = before any section\n\n[Comms]\n  Host = 10.0.0.5   \n"
    "Port=9100\nport=9999\nBanner = Hello; world\n  ;Timeout=5\nNoValue\nEmpty=\n"
    "Quoted = \"  padded  \"\nSingle='x'\nMixed=\"y'\nOneQuote=\"\na = b=c\n\n"
    "[ Printer ] trailing ] text\nName=TM-T88\n[comms]\nExtra=only in the second\n"
    "[]\nOrphan=in the empty-named section\n[Bare\n[Caf\xE9]\n\xC9t\xE9=summer";

} // namespace

TEST(ProfileStrings, ReadingFollowsTheWindowsRulesWhateverTheLineEndings) {
    for (const std::string lineBreak : {"\n", "\r\n", "\r"}) {
        SCOPED_TRACE(lineBreak == "\n" ? "LF" : lineBreak == "\r" ? "CR" : "CRLF");
        TempTill till;
        till.plant("Tessaly/settings.ini",
                   "\xEF\xBB\xBF" + std::regex_replace(kReadingFile, std::regex("\n"), lineBreak));

        // clang-format off
        const std::vector<std::vector<const char*>> cases = {
            {"COMMS", "host", "10.0.0.5"}, {" comms ", " PORT ", "9100"},
            {"Comms", "Banner", "Hello; world"}, {"Comms", "Timeout", "dflt"},
            {"Comms", ";Timeout", "dflt"}, {"Comms", "NoValue", "dflt"}, {"Comms", "Empty", ""},
            {"Comms", "Quoted", "  padded  "}, {"Comms", "Single", "x"},
            {"Comms", "Mixed", "\"y'"}, {"Comms", "OneQuote", "\""}, {"Comms", "a", "b=c"},
            {"printer ] TRAILING", "name", "TM-T88"}, {"Printer", "Name", "dflt"},
            {"Comms", "Extra", "dflt"}, {"", "Orphan", "in the empty-named section"},
            {"", "[Bare", "dflt"}, {"CAF\xC9", "\xE9T\xC9", "summer"}};
        // clang-format on
        for (const auto& c : cases) {
            EXPECT_EQ(get(c[0], c[1]), c[2]) << c[0] << "/" << c[1];
        }
        EXPECT_EQ(get("Comms", "Missing", "  spaced default \t "), "  spaced default");
        EXPECT_EQ(get("Nowhere", "Host", nullptr), "");

        EXPECT_EQ(list(nullptr), "36:Comms\0Printer ] trailing\0comms\0Caf\xE9\0\0"s);
        EXPECT_EQ(list("comms"),
                  "59:Host\0Port\0port\0Banner\0Empty\0Quoted\0Single\0Mixed\0OneQuote\0a\0\0"s);
        EXPECT_EQ(get("Nowhere", nullptr), "dflt");
    }
}

TEST(ProfileStrings, EachCallReadsTheFileAsItIsNow) {
    TempTill till;
    EXPECT_EQ(get("s", "k", "fallback  "), "fallback");
    EXPECT_EQ(list(nullptr), "0:\0\0"s);
    const fs::path file = till.plant("Tessaly/settings.ini", "[s]\nk=theirs\n");
    EXPECT_EQ(get("s", "k"), "theirs");
    ASSERT_TRUE(set("s", "j", "mine"));
    till.plant("Tessaly/settings.ini", "[s]\nk=changed\n");
    ASSERT_TRUE(set("s", "x", "1"));
    EXPECT_EQ(readBytes(file), "[s]\nk=changed\nx=1\n");

    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(get("s", "k"), "dflt");
    EXPECT_FALSE(set("s", "k", "v"));
}

TEST(ProfileStrings, ResultsAreCutToTheBuffer) {
    TempTill till;
    till.plant("Tessaly/settings.ini", "[one]\r\nk=10.0.0.5\r\n[two]\r\n");
    EXPECT_EQ(get("one", "k", "", 5), "10.0");
    EXPECT_EQ(get("one", "missing", "default", 4), "def");
    EXPECT_EQ(get("one", "k", "", 1), "");

    char untouched[2] = {'#', '#'};
    EXPECT_EQ(platform::getPrivateProfileString("one", "k", "", untouched, 0, kIni), 0u);
    EXPECT_EQ(untouched[0], '#');

    EXPECT_EQ(list(nullptr, 9), "8:one\0two\0\0"s);
    EXPECT_EQ(list(nullptr, 8), "6:one\0tw\0\0"s);
    EXPECT_EQ(list(nullptr, 2), "0:\0\0"s);
}

TEST(ProfileStrings, AWriteChangesOnlyTheBytesItMeans) {
    TempTill till;
    const std::string head = "; till settings\r\nVersion = 1\r\n\r\n[Comms]\r\n";
    const std::string tail = "Port=9100\r\n\r\n[Printer]\r\nName=TM-T88\r\n\r\n[comms]\r\nx=2\r\n";
    const fs::path file = till.plant("Tessaly/settings.ini", head + "  Host = a ; b\r\n" + tail);

    ASSERT_TRUE(set("Comms", "Host", "a ; b"));
    EXPECT_EQ(readBytes(file), head + "  Host = a ; b\r\n" + tail) << "an unchanged value";

    ASSERT_TRUE(set("comms", "HOST", "10.0.0.6"));
    EXPECT_EQ(readBytes(file), head + "  Host=10.0.0.6\r\n" + tail);

    ASSERT_TRUE(set("COMMS", "Timeout", " 30"));
    ASSERT_TRUE(set("Printer", "Cut", "1"));
    ASSERT_TRUE(set("Drawer", "Port", "COM2"));
    EXPECT_EQ(readBytes(file),
              head + "  Host=10.0.0.6\r\nPort=9100\r\nTimeout= 30\r\n\r\n[Printer]\r\n"
                     "Name=TM-T88\r\nCut=1\r\n\r\n[comms]\r\nx=2\r\n"
                     "[Drawer]\r\nPort=COM2\r\n");
    EXPECT_EQ(get("comms", "timeout"), "30");
    EXPECT_EQ(get("", "Version"), "dflt");
}

TEST(ProfileStrings, AddedLinesUseTheFilesOwnLineBreaks) {
    TempTill till;
    const fs::path file = till.plant("Tessaly/settings.ini", "[a]\nk=1\n\n[b]\nz=2");
    ASSERT_TRUE(set("b", "y", "3"));
    ASSERT_TRUE(set("a", "n", "4"));
    EXPECT_EQ(readBytes(file), "[a]\nk=1\nn=4\n\n[b]\nz=2\ny=3\n");

    till.plant("Tessaly/settings.ini", "top=1\r[a]\r[b]");
    ASSERT_TRUE(set("a", "k", "v"));
    ASSERT_TRUE(set("b", "k", "v"));
    EXPECT_EQ(readBytes(file), "top=1\r[a]\rk=v\r[b]\rk=v\r");

    till.plant("Tessaly/settings.ini", "\xEF\xBB\xBF[a]\nk=1");
    ASSERT_TRUE(set("a", "k", "2"));
    ASSERT_TRUE(set("c", "q", "4"));
    EXPECT_EQ(readBytes(file), "\xEF\xBB\xBF[a]\nk=2\n[c]\nq=4\n");

    till.plant("Tessaly/settings.ini", "\xEF\xBB\xBF");
    ASSERT_TRUE(set("s", "k", "v"));
    EXPECT_EQ(readBytes(file), "\xEF\xBB\xBF[s]\r\nk=v\r\n");

    ASSERT_TRUE(platform::writePrivateProfileString("New", "Key", "v", "c:\\tessaly\\NEW.ini"));
    EXPECT_EQ(readBytes(till.driveC() / "Tessaly" / "NEW.ini"), "[New]\r\nKey=v\r\n");
}

TEST(ProfileStrings, NullValuesDeleteKeysAndNullKeysDeleteSections) {
    TempTill till;
    const fs::path file = till.plant("Tessaly/settings.ini",
                                     "v=0\r\n[A]\r\nk=1\r\nbare\r\n\r\n[B]\r\n; b\r\nk=2\r\n\r\n"
                                     "[a]\r\nk=3\r\n[C]\r\nlast=1");
    ASSERT_TRUE(set("a", "K", nullptr));
    ASSERT_TRUE(set("a", "bare", nullptr));
    ASSERT_TRUE(set("c", "last", nullptr));
    EXPECT_EQ(readBytes(file), "v=0\r\n[A]\r\n\r\n[B]\r\n; b\r\nk=2\r\n\r\n[a]\r\nk=3\r\n[C]\r\n");
    ASSERT_TRUE(set("b", nullptr, nullptr));
    ASSERT_TRUE(set("A", nullptr, "ignored"));
    EXPECT_EQ(readBytes(file), "v=0\r\n[a]\r\nk=3\r\n[C]\r\n");

    ASSERT_TRUE(set("A", "missing", nullptr));
    ASSERT_TRUE(set("Missing", nullptr, nullptr));
    EXPECT_EQ(readBytes(file), "v=0\r\n[a]\r\nk=3\r\n[C]\r\n");
    EXPECT_TRUE(platform::writePrivateProfileString("s", "k", nullptr, "c:\\tessaly\\none.ini"));
    EXPECT_FALSE(fs::exists(till.driveC() / "Tessaly" / "none.ini"));
}

TEST(ProfileStrings, NamesAndValuesThatCannotBeReadBackAreRefused) {
    TempTill till;
    const std::string original = "[s]\r\nk=1\r\n";
    const fs::path file = till.plant("Tessaly/settings.ini", original);
    const std::vector<std::vector<const char*>> refused = {
        {"s", "k", "two\r\nlines"}, {"s", "k", "cr\r"}, {"s", "new\nkey", "v"},
        {"s\r\n[x", "k", "v"},      {"s", "a=b", "v"},  {"s", " ;k", "v"},
        {"s", "[k]", "v"},          {"s]x", "k", "v"},  {"s", "k\n", nullptr}};
    for (const auto& args : refused) {
        EXPECT_FALSE(set(args[0], args[1], args[2])) << args[0] << "/" << args[1];
        EXPECT_FALSE(platform::writePrivateProfileString(args[0], args[1], args[2],
                                                         "c:\\tessaly\\fresh.ini"));
    }
    EXPECT_EQ(readBytes(file), original);
    EXPECT_FALSE(fs::exists(till.driveC() / "Tessaly" / "fresh.ini"));
}

TEST(ProfileStrings, FailedWritesLeaveEverythingAsItWas) {
    TempTill till;
    const fs::path file = till.plant("Tessaly/settings.ini", "[s]\r\nk=1\r\n");
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_FALSE(set("s", "k", "2"));
    EXPECT_FALSE(set("s", "k", nullptr));
    EXPECT_EQ(readBytes(file), "[s]\r\nk=1\r\n");
    EXPECT_EQ(get("s", "k"), "1");

    EXPECT_FALSE(platform::writePrivateProfileString("s", "k", "v", "c:\\nowhere\\x.ini"));
    EXPECT_FALSE(platform::writePrivateProfileString("s", "k", nullptr, "c:\\nowhere\\x.ini"));
    EXPECT_FALSE(fs::exists(till.driveC() / "nowhere"));
    EXPECT_FALSE(platform::writePrivateProfileString("s", "k", "v", "z:\\proc\\parvane.ini"));

    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    ASSERT_TRUE(set("s", "k", "3"));
    EXPECT_EQ(fs::status(file).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1)
        << "no temporary file is left behind";
}
