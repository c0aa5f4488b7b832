#include "foundation/logging.h"
#include "support/fake_clock.h"
#include "support/scoped_environment.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

Logging logTo(const std::string& folder) {
    Logging log;
    log.strLogPath = folder;
    log.strLogFile = "TessalyConfig.log";
    log.bLoggingEnabled = true;
    return log;
}

} // namespace

TEST(Logging, LinesCarryAnEnglishStampAndSpellOutControlCharacters) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    fs::create_directories(till.driveC() / "tessaly");
    const fs::path file = till.driveC() / "tessaly" / "TessalyConfig.log";
    Logging log = logTo("c:\\tessaly");

    log.Logit("Started");
    EXPECT_EQ(log.strLogPath, "c:\\tessaly\\");
    log.Logit(std::string("a\r\nb\tc") + '\xC8' + '\x7F' + '\x1F' + '\x08' + std::string(1, '\0'));
    clock.advance(std::chrono::hours(24 * 300));
    log.Logit("later");
    EXPECT_EQ(readBytes(file), "03 Mar 2025: 14:05:09 : Started\r\n"
                               "03 Mar 2025: 14:05:09 : a<CR><LF>b<ASCII 9>c<ASCII 200>"
                               "<ASCII 127><US><ASCII 8><NUL>\r\n"
                               "28 Dec 2025: 14:05:09 : later\r\n");

    // Logit2 writes the message untouched once it is given a whole path.
    log.strLogFileDirAndName = "c:\\tessaly\\raw.log";
    log.Logit2("x\ty");
    EXPECT_EQ(readBytes(till.driveC() / "tessaly" / "raw.log"), "28 Dec 2025: 14:05:09 : x\ty\r\n");
}

#ifndef _WIN32
// The month follows the time locale the environment names, in the log's code page.
TEST(Logging, TheMonthIsTheTimeLocalesOwn) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    const fs::path locales = till.root() / "locales";
    fs::create_directories(locales);
    ASSERT_EQ(std::system(("localedef -i de_DE -f UTF-8 " + (locales / "de_DE.UTF-8").string() +
                           " >/dev/null 2>&1")
                              .c_str()),
              0)
        << "localedef (Debian: libc-bin, locales) makes the German locale";
    ScopedEnvironment path("LOCPATH", locales.string());
    ScopedEnvironment time("LC_ALL", "de_DE.UTF-8");
    fs::create_directories(till.driveC() / "tessaly");
    Logging log = logTo("c:\\tessaly");
    log.Logit("Gestartet");
    EXPECT_EQ(readBytes(till.driveC() / "tessaly" / "TessalyConfig.log"),
              "03 M\xE4r 2025: 14:05:09 : Gestartet\r\n");
}
#endif

TEST(Logging, MaskingKeepsShortNumbersAndTheLastFourDigitsOfCardNumbers) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    fs::create_directories(till.driveC() / "logs");
    Logging log = logTo("c:\\logs\\");
    log.bObscureNumericStrings = true;

    log.Logit("pan 4929123456781234, ref 123456789012, short 4929123456781;1234567890123456789");
    EXPECT_EQ(readBytes(till.driveC() / "logs" / "TessalyConfig.log"),
              "03 Mar 2025: 14:05:09 : pan ************1234, ref 123456789012, "
              "short *********6781;***************6789\r\n");
}

TEST(Logging, LosesTheLineSilentlyWhenItCannotOrMustNotWrite) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    fs::create_directories(till.driveC() / "tessaly");

    Logging disabled = logTo("c:\\tessaly");
    disabled.bLoggingEnabled = false;
    disabled.Logit("nothing");
    EXPECT_EQ(disabled.strLogPath, "c:\\tessaly");

    // Logit2 without a whole path names the folder, so nothing is written anywhere.
    Logging second = logTo("c:\\tessaly");
    second.Logit2("nothing");
    EXPECT_EQ(second.strLogPath, "c:\\tessaly\\");
    EXPECT_TRUE(fs::is_empty(till.driveC() / "tessaly"));

    Logging missing = logTo("c:\\no such folder\\");
    missing.bArchiveLogFile = true;
    missing.Logit("lost");
    Logging empty = logTo("");
    empty.Logit("lost");
    EXPECT_FALSE(fs::exists(till.driveC() / "no such folder"));
    EXPECT_EQ(empty.strLogPath, "");
}

TEST(Logging, ALogOfMoreThanOneMebibyteMovesToTheArchiveBeforeTheNextLine) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    const fs::path file = till.plant("tessaly/TessalyConfig.log", std::string(1048576, 'x'));
    const std::string line = "03 Mar 2025: 14:05:09 : next\r\n";
    Logging log = logTo("c:\\tessaly\\");
    log.bArchiveLogFile = true;

    log.Logit("next");
    EXPECT_EQ(fs::file_size(file), 1048576 + line.size());
    EXPECT_TRUE(fs::is_empty(till.driveC() / "tessaly" / "old"));

    log.Logit("next");
    const fs::path archived =
        till.driveC() / "tessaly" / "old" / "20250303_140509_TessalyConfig.log";
    EXPECT_EQ(fs::file_size(archived), 1048576 + line.size());
    EXPECT_EQ(readBytes(file), line);

    // With a whole path set, the archiver still looks at folder and name; and an oversized log
    // that cannot be moved (its archive name is taken in the same second) costs the line.
    till.plant("tessaly/TessalyConfig.log", std::string(1048577, 'y'));
    log.strLogFileDirAndName = "c:\\tessaly\\other.log";
    log.Logit("lost");
    EXPECT_EQ(fs::file_size(file), 1048577u);
    EXPECT_FALSE(fs::exists(till.driveC() / "tessaly" / "other.log"));
    EXPECT_EQ(fs::file_size(archived), 1048576 + line.size());
}
