#include "platform/platform.h"
#include "support/temp_till.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sys/stat.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::string kIni = "c:\\Tessaly\\settings.ini";

std::string get(const char* section, const char* key, const char* fallback = "dflt") {
    char buffer[512];
    const unsigned long count =
        platform::getPrivateProfileString(section, key, fallback, buffer, sizeof buffer, kIni);
    return std::string(buffer, count);
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

TEST(ProfileStrings, ReadingFollowsTheWindowsRulesWhateverTheLineEndingsAndSectionSizes) {
    // A long comment makes the sections large enough to be searched through an index.
    for (const std::string& lineBreak : {std::string("\n"), std::string("\r\n"), std::string("\r"),
                                         "\r\n;" + std::string(5000, 'c') + "\r\n"}) {
        SCOPED_TRACE(lineBreak.size() > 2 ? "large"
                     : lineBreak == "\n"  ? "LF"
                     : lineBreak == "\r"  ? "CR"
                                          : "CRLF");
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
    }
}

TEST(ProfileStrings, EachCallReadsTheFileAsItIsNow) {
    TempTill till;
    EXPECT_EQ(get("s", "k", "fallback  "), "fallback");
    const fs::path file = till.plant("Tessaly/settings.ini", "[s]\nk=theirs\n");
    EXPECT_EQ(get("s", "k"), "theirs");
    ASSERT_TRUE(set("s", "j", "mine"));
    till.plant("Tessaly/settings.ini", "[s]\nk=changed\n");
    ASSERT_TRUE(set("s", "x", "1"));
    EXPECT_EQ(readBytes(file), "[s]\nk=changed\nx=1\n");

    // A parsed copy serves only the file it was read from: rewritten in place at the same size
    // and given back its modification time to the nanosecond, the file is read afresh, and so is
    // one renamed over it.
    const auto plantOld = [&](const std::string& bytes) {
        till.plant("Tessaly/settings.ini", bytes);
        const timespec hourAgo[2] = {{::time(nullptr) - 3600, 123}, {::time(nullptr) - 3600, 456}};
        ::utimensat(AT_FDCWD, file.c_str(), hourAgo, 0);
    };
    plantOld("[s]\nk=aaaa\n");
    EXPECT_EQ(get("s", "k") + get("s", "k"), "aaaaaaaa");
    plantOld("[s]\nk=bbbb\n");
    EXPECT_EQ(get("s", "k"), "bbbb");
    ASSERT_TRUE(set("s", "k", "cccc"));
    EXPECT_EQ(get("s", "k"), "cccc");
    const fs::path other = till.plant("Tessaly/other.ini", "[s]\nk=dddd\n");
    fs::rename(other, file);
    EXPECT_EQ(get("s", "k"), "dddd");

    fs::remove(file);
    EXPECT_EQ(get("s", "k"), "dflt");
    fs::create_directory(file);
    EXPECT_EQ(get("s", "k"), "dflt");
    EXPECT_FALSE(set("s", "k", "v"));
}

TEST(ProfileStrings, AWriteChangesOnlyTheBytesItMeansInTheFilesOwnLineBreaks) {
    TempTill till;
    const auto edited = [&](const std::string& before,
                            std::initializer_list<std::array<const char*, 3>> edits) {
        const fs::path file = till.plant("Tessaly/settings.ini", before);
        for (const auto& [section, key, value] : edits) {
            EXPECT_TRUE(set(section, key, value)) << section;
        }
        return readBytes(file);
    };
    const std::string head = "; till settings\r\nVersion = 1\r\n\r\n[Comms]\r\n  Host = a ; b\r\n";
    const std::string tail = "Port=9100\r\n\r\n[Printer]\r\nName=TM-T88\r\n\r\n[comms]\r\nx=2\r\n";
    // clang-format off
    EXPECT_EQ(edited(head + tail, {{"Comms", "Host", "a ; b"}}), head + tail) << "unchanged value";
    EXPECT_EQ(edited(head + tail, {{"comms", "HOST", "10.0.0.6"}, {"COMMS", "Timeout", " 30"},
                                   {"Printer", "Cut", "1"}, {"Drawer", "Port", "COM2"}}),
              "; till settings\r\nVersion = 1\r\n\r\n[Comms]\r\n  Host=10.0.0.6\r\nPort=9100\r\n"
              "Timeout= 30\r\n\r\n[Printer]\r\nName=TM-T88\r\nCut=1\r\n\r\n[comms]\r\nx=2\r\n"
              "[Drawer]\r\nPort=COM2\r\n");
    EXPECT_EQ(edited("[a]\nk=1\n\n[b]\nz=2", {{"b", "y", "3"}, {"a", "n", "4"}}),
              "[a]\nk=1\nn=4\n\n[b]\nz=2\ny=3\n");
    EXPECT_EQ(edited("top=1\r[a]\r[b]", {{"a", "k", "v"}, {"b", "k", "v"}}),
              "top=1\r[a]\rk=v\r[b]\rk=v\r");
    EXPECT_EQ(edited("\xEF\xBB\xBF[a]\nk=1", {{"a", "k", "2"}, {"c", "q", "4"}}),
              "\xEF\xBB\xBF[a]\nk=2\n[c]\nq=4\n");
    EXPECT_EQ(edited("\xEF\xBB\xBF", {{"s", "k", "v"}}), "\xEF\xBB\xBF[s]\r\nk=v\r\n");
    // clang-format on

    // A new file gets CRLF and the name as given.
    ASSERT_TRUE(platform::writePrivateProfileString("New", "Key", "v", "c:\\tessaly\\NEW.ini"));
    EXPECT_EQ(readBytes(till.driveC() / "Tessaly" / "NEW.ini"), "[New]\r\nKey=v\r\n");
}

TEST(ProfileStrings, RefusedOrFailedWritesLeaveEverythingAsItWas) {
    TempTill till;
    const std::string original = "[s]\r\nk=1\r\n";
    const fs::path file = till.plant("Tessaly/settings.ini", original);
    // Names and values that could not be read back.
    const std::vector<std::vector<const char*>> refused = {
        {"s", "k", "two\r\nlines"}, {"s", "k", "cr\r"}, {"s", "new\nkey", "v"},
        {"s\r\n[x", "k", "v"},      {"s", "a=b", "v"},  {"s", " ;k", "v"},
        {"s", "[k]", "v"},          {"s]x", "k", "v"},  {"s", "k\n", nullptr}};
    for (const auto& args : refused) {
        EXPECT_FALSE(set(args[0], args[1], args[2])) << args[0] << "/" << args[1];
        EXPECT_FALSE(platform::writePrivateProfileString(args[0], args[1], args[2],
                                                         "c:\\tessaly\\fresh.ini"));
    }
    EXPECT_FALSE(fs::exists(till.driveC() / "Tessaly" / "fresh.ini"));

    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_FALSE(set("s", "k", "2"));
    EXPECT_EQ(readBytes(file), original);
    EXPECT_FALSE(platform::writePrivateProfileString("s", "k", "v", "c:\\nowhere\\x.ini"));
    EXPECT_FALSE(fs::exists(till.driveC() / "nowhere"));
    EXPECT_FALSE(platform::writePrivateProfileString("s", "k", "v", "z:\\proc\\parvane.ini"));

    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    ASSERT_TRUE(set("s", "k", "3"));
    EXPECT_EQ(fs::status(file).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1)
        << "no temporary file is left behind";
}
