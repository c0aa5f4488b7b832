#include "foundation/logging.h"
#include "installer/install_qm_manager.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "support/demo_till_template.h"
#include "support/fake_clock.h"
#include "support/standin_tools.h"
#include "support/temp_till.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/fs.h>
#include <map>
#include <sqlite3.h>
#include <sstream>
#include <sys/ioctl.h>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

const std::string kServiceTools[] = {"svccontrol.exe", "executesql.exe",
                                     "setenvironmentvariable.exe", "createaccessdatasource.exe"};

void sql(const fs::path& database, const std::string& statements, Lines* rows = nullptr) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(database.c_str(), &db), SQLITE_OK);
    const auto collect = [](void* out, int columns, char** values, char**) {
        std::string row;
        for (int i = 0; i < columns; ++i) {
            row += std::string(i ? "|" : "") + (values[i] ? values[i] : "NULL");
        }
        static_cast<Lines*>(out)->push_back(row);
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(db, statements.c_str(), rows ? +collect : nullptr, rows, nullptr),
              SQLITE_OK);
    sqlite3_close(db);
}

Lines readerRows(const fs::path& database) {
    Lines rows;
    sql(database,
        "SELECT Localhost, DeviceName, Hostname, SmartCardReaderType, ReaderCapabilities "
        "FROM SmartcardReaders_T ORDER BY ReaderId;",
        &rows);
    return rows;
}

// A till with the vendor's archives in c:\install, a log in c:\logs and a merchant on GBP.
struct InstallTill {
    TempTill till;
    Logging log;
    TCcAddinRegistry settings;

    InstallTill() {
        fs::create_directories(till.driveC() / "logs");
        log.strLogPath = "c:\\logs\\";
        log.strLogFile = "TessalyConfig.log";
        log.bLoggingEnabled = true;
        settings.strbaseCurrency = "GBP";
        settings.strAcquirer = "NORTHBANK";
        settings.strComPort = "COM3";
        settings.bExternalSwipe = true;
    }

    fs::path host(const std::string& relative) const { return till.driveC() / relative; }

    fs::path pack(const std::string& archive) const { return till.root() / "pack" / archive; }

    void ship(const std::string& archive, const std::map<std::string, std::string>& files) {
        fs::create_directories(pack(archive));
        for (const auto& [name, bytes] : files) {
            std::ofstream(pack(archive) / name) << bytes;
        }
        makeZip(host("install") / archive, pack(archive));
    }

    // Every archive, bin.zip with the service tools; tests take away what they need missing.
    void shipAll(const std::string& toolLeftOut = "") {
        copyStandins(host("install"), {"7z.exe"});
        Lines tools;
        std::copy_if(std::begin(kServiceTools), std::end(kServiceTools), std::back_inserter(tools),
                     [&](const std::string& tool) { return tool != toolLeftOut; });
        copyStandins(pack("bin.zip"), tools);
        ship("bin.zip", {{"quenmar.exe", "service"}});
        ship("Utils.zip", {{"tool.txt", "util"}});
        ship("trigger.zip", {{"trigger.ini", "[t]"}});
        fs::create_directories(pack("GBP_NORTHBANK_db.zip"));
        sql(pack("GBP_NORTHBANK_db.zip") / "quenmar.mdb",
            "CREATE TABLE SmartcardReaders_T (ReaderId INTEGER, Localhost TEXT, DeviceName TEXT, "
            "Hostname TEXT, SmartCardReaderType INTEGER, ReaderCapabilities INTEGER);"
            "INSERT INTO SmartcardReaders_T VALUES (1, 'OLD', 'COM9', 'x', 0, 0), "
            "(2, 'OLD', 'COM9', 'y', 0, 0);");
        ship("GBP_NORTHBANK_db.zip", {});
        ship("LIVE_GBP_NORTHBANK_zontalk.zip", {{"sc5000.pkg", "terminal"}});
    }

    // An installation from before: its tools, an old database file and its service.
    void plantOldInstallation(bool serviceRegistered) {
        copyStandins(host("tessaly/lumora/bin"));
        till.plant("tessaly/lumora/dbs/old.mdb", "old");
        if (serviceRegistered) {
            fs::create_directories(till.root() / "services");
            std::ofstream(till.root() / "services" / "quenmar")
                << "exe=old\ndisplay=Tessaly Quenmar\nstart=automatic\nstate=running\n";
        }
    }

    // The logged messages without their time stamps.
    Lines logLines() const {
        Lines lines;
        std::istringstream in(readBytes(host("logs/TessalyConfig.log")));
        for (std::string line; std::getline(in, line);) {
            line = line.substr(line.find(" : ") + 3);
            lines.push_back(line.substr(0, line.find_last_not_of('\r') + 1));
        }
        return lines;
    }

    Lines shellLines() const {
        Lines all = logLines(), shells;
        std::copy_if(all.begin(), all.end(), std::back_inserter(shells),
                     [](const std::string& line) { return line.starts_with("About to shell ["); });
        return shells;
    }

    std::int32_t install(const std::string& source = "c:\\install") {
        TInstallQmManager installer;
        const std::int32_t result = installer.Install(source, settings, log);
        message = installer.strErrorMessage;
        status = installer.strCurrentStatus;
        return result;
    }
    std::string message;
    std::string status;
};

std::string machinePath(const TempTill& till) {
    return readBytes(till.root() / "environment" / "PATH");
}

std::size_t count(const Lines& lines, const std::string& line) {
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
}

// The immutable attribute: the one lock on a file that even root cannot delete through.
bool setImmutable(const fs::path& file, bool on) {
    const int fd = ::open(file.c_str(), O_RDONLY);
    int flags = 0;
    const bool done = fd >= 0 && ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0 &&
                      (flags = on ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL,
                       ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0);
    if (fd >= 0) {
        ::close(fd);
    }
    return done;
}

} // namespace

TEST(InstallQmManager, AFreshTillGetsTheWholeInstallationInOrder) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    InstallTill t;
    t.shipAll();
    // Given without its trailing "\", the source folder is used as if it had one.
    ASSERT_EQ(t.install("c:\\install"), 0) << t.message;

    const std::string name = platform::computerName();
    const std::string bin = "c:\\tessaly\\lumora\\bin\\";
    const std::string unpack = "About to shell [\"c:\\install\\7z.exe\" x \"c:\\install\\";
    const std::string env = bin + "setenvironmentvariable.exe -name PATH -action ";
    EXPECT_EQ(t.shellLines(),
              (Lines{unpack + "bin.zip\" -oc:\\tessaly\\lumora\\bin\\ -r]",
                     unpack + "Utils.zip\" -oc:\\tessaly\\lumora\\utils\\ -r]",
                     unpack + "trigger.zip\" -oc:\\tessaly\\lumora\\trigger\\ -r]",
                     unpack + "GBP_NORTHBANK_db.zip\" -oc:\\tessaly\\lumora\\dbs\\ -r]",
                     unpack + "LIVE_GBP_NORTHBANK_zontalk.zip\" "
                              "-oc:\\tessaly\\lumora\\zontalk\\SC5000\\download\\ -r]",
                     "About to shell [" + env + "remove  -value c:\\tessaly\\lumora\\bin]",
                     "About to shell [" + env + "remove  -value c:\\tessaly\\lumora\\utils]",
                     "About to shell [" + env + "append  -value c:\\tessaly\\lumora\\bin]",
                     "About to shell [" + env + "append  -value c:\\tessaly\\lumora\\utils]",
                     "About to shell [" + bin +
                         "createaccessdatasource.exe -dsn \"quenmardb\" -filename "
                         "\"c:\\tessaly\\lumora\\dbs\\quenmar.mdb\"]",
                     "About to shell [" + bin +
                         "executesql.exe -dsn \"quenmardb\" -command "
                         "\"UPDATE SmartcardReaders_T SET Localhost='" +
                         name +
                         "', DeviceName='COM3', Hostname='', SmartCardReaderType=1, "
                         "ReaderCapabilities=6;\"]",
                     "About to shell [" + bin + "svccontrol.exe -verb install -name quenmar -exe " +
                         bin + "quenmar.exe -display \"Tessaly Quenmar\"]",
                     "About to shell [" + bin + "svccontrol.exe -verb automatic -name quenmar]",
                     "About to shell [" + bin + "svccontrol.exe -verb start -name quenmar]"}));

    // The tools really ran, in the same order, and saw the arguments Windows would give them.
    const Lines calls = standinCalls(t.till);
    ASSERT_EQ(calls.size(), 14u);
    EXPECT_EQ(calls[11], "svccontrol.exe [-verb] [install] [-name] [quenmar] [-exe] "
                         "[c:\\tessaly\\lumora\\bin\\quenmar.exe] [-display] [Tessaly Quenmar]");
    EXPECT_EQ(readerRows(t.host("tessaly/lumora/dbs/quenmar.mdb")),
              (Lines{name + "|COM3||1|6", name + "|COM3||1|6"}));

    // Nothing to back up on a fresh till: no service stopped, no backup folder.
    const Lines log = t.logLines();
    EXPECT_EQ(count(log, "Stopping Quenmar"), 0u);
    EXPECT_FALSE(fs::exists(t.host("tessaly/LUMORA_20260131_174502")));
    EXPECT_EQ(Lines(log.begin(), log.begin() + 5),
              (Lines{"Starting installation of Tessaly Quenmar", "Mode=LIVE", "Acquirer=NORTHBANK",
                     "Currency=GBP", "Starting creation of Quenmar directory structure"}));
    for (const char* line :
         {"Finished Extracting trigger.zip to c:\\tessaly\\lumora\\trigger\\",
          "Starting confgiuration of Quenmar database", "Finished installing Quenmar service"}) {
        EXPECT_EQ(count(log, line), 1u) << line;
    }
    EXPECT_EQ(log.back(), "Installation of Tessaly Quenmar successfully completed");
    EXPECT_EQ(t.status, "Starting Quenmar");
}

TEST(InstallQmManager, AnExistingInstallationIsStoppedRemovedAndCopiedAsideFirst) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    InstallTill t;
    t.shipAll();
    // The old service was never registered, so stop and remove both end with an error code, and
    // one archive is damaged: exit codes are not looked at, the run goes on.
    t.plantOldInstallation(false);
    std::ofstream(t.host("install/trigger.zip"), std::ios::trunc) << "not an archive";
    ASSERT_EQ(t.install("c:\\install\\"), 0) << t.message;
    EXPECT_TRUE(fs::is_empty(t.host("tessaly/lumora/trigger")));

    const Lines calls = standinCalls(t.till);
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ(calls[0], "svccontrol.exe [-verb] [stop] [-name] [quenmar]");
    EXPECT_EQ(calls[1], "svccontrol.exe [-verb] [remove] [-name] [quenmar]");
    EXPECT_TRUE(calls[2].starts_with("7z.exe [x]")) << calls[2];
    const fs::path backup = t.host("tessaly/LUMORA_20260131_174502");
    EXPECT_EQ(readBytes(backup / "dbs/old.mdb"), "old");
    EXPECT_FALSE(fs::exists(t.host("tessaly/lumora/dbs/old.mdb")));
    EXPECT_EQ(
        count(t.logLines(), "Backup complete. Backuped to [c:\\tessaly\\LUMORA_20260131_174502]"),
        1u);

    // A second run within the same second copies into the same backup folder, and PATH still
    // names each folder once.
    ASSERT_EQ(t.install(), 0) << t.message;
    EXPECT_TRUE(fs::exists(backup / "bin/quenmar.exe"));
    EXPECT_EQ(readBytes(backup / "dbs/old.mdb"), "old");
    EXPECT_EQ(machinePath(t.till), "c:\\tessaly\\lumora\\bin;c:\\tessaly\\lumora\\utils");
}

// The demo till's own archives, as scripts/demo-till ships them, install over the device
// manager it left running: a euro AIB till in test mode.
TEST(InstallQmManager, TheDemoTillsArchivesInstallOverItsRunningDeviceManager) {
    FakeClock clock(2026, 3, 14, 9, 30, 0);
    InstallTill t;
    fs::copy(demoTillTemplate(), t.till.root(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    t.settings.strbaseCurrency = "EUR";
    t.settings.strAcquirer = "AIB";
    t.settings.bTestMode = true;
    ASSERT_EQ(t.install("c:\\tessaly\\setup"), 0) << t.message;

    const std::string name = platform::computerName();
    EXPECT_TRUE(fs::exists(t.host("tessaly/LUMORA_20260314_093000/zontalk/SC5000/download/"
                                  "SC5000_LIVE_GBP_Barclays.pkg")));
    EXPECT_TRUE(
        fs::exists(t.host("tessaly/lumora/zontalk/SC5000/download/SC5000_TEST_EUR_AIB.pkg")));
    EXPECT_FALSE(fs::exists(t.host("tessaly/lumora/zontalk/SC5000/download/"
                                   "SC5000_LIVE_GBP_Barclays.pkg")));
    EXPECT_EQ(readerRows(t.host("tessaly/lumora/dbs/quenmar.mdb")).front(), name + "|COM3||1|6");
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
    EXPECT_EQ(machinePath(t.till), "c:\\tessaly\\lumora\\bin;c:\\tessaly\\lumora\\utils");
}

// A file where c:\tessaly should be: a fresh till's folders cannot be made, and the message names
// no folder.
TEST(InstallQmManager, AFreshTillWhoseFoldersCannotBeMadeStopsBeforeAnyTool) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    InstallTill t;
    t.shipAll();
    t.till.plant("tessaly", "a file");
    EXPECT_EQ(t.install(), 1);
    EXPECT_EQ(t.message, "Failed creating  directory");
    EXPECT_TRUE(t.shellLines().empty());
    EXPECT_EQ(t.logLines().back(), "Failed installing Tessaly Quenmar");
}

TEST(InstallQmManager, MissingArchivesAreNamedBeforeAnythingIsTouched) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    const std::string noTerminal = "This combination of currency, acquirer and test/live mode is "
                                   "not currently supported by the utility";
    // Test mode looks for the test terminal software, which is not shipped.
    const std::tuple<Lines, bool, std::string> cases[] = {
        {{"bin.zip", "Utils.zip"}, false, "File : c:\\install\\bin.zip not found"},
        {{"trigger.zip", "Utils.zip"}, false, "File : c:\\install\\trigger.zip not found"},
        {{"Utils.zip"}, false, "File : c:\\install\\Utils.zip not found"},
        {{"GBP_NORTHBANK_db.zip"},
         false,
         "This comination of currency and acquirer is not currently supported by the utility"},
        {{"LIVE_GBP_NORTHBANK_zontalk.zip"}, false, noTerminal},
        {{}, true, noTerminal},
    };
    for (const auto& [leftOut, testMode, message] : cases) {
        SCOPED_TRACE(message);
        InstallTill t;
        t.shipAll();
        for (const std::string& archive : leftOut) {
            fs::remove(t.host("install") / archive);
        }
        t.plantOldInstallation(true);
        t.settings.bTestMode = testMode;
        EXPECT_EQ(t.install(), 1);
        EXPECT_EQ(t.message, message);
        const Lines log = t.logLines();
        EXPECT_EQ(log[1], testMode ? "Mode=TEST" : "Mode=LIVE");
        EXPECT_EQ(count(log, message), 1u);
        EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
        EXPECT_TRUE(standinCalls(t.till).empty());
        EXPECT_EQ(readBytes(t.host("tessaly/lumora/dbs/old.mdb")), "old");
        EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
    }
}

TEST(InstallQmManager, AFolderThatStaysLockedFailsTheBackupAfterThirtySeconds) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    InstallTill t;
    t.shipAll();
    t.plantOldInstallation(true);
    const fs::path locked = t.host("tessaly/lumora/dbs/old.mdb");
    if (!setImmutable(locked, true)) {
        GTEST_SKIP() << "this file system or user cannot make a file undeletable";
    }
    const std::int32_t result = t.install();
    setImmutable(locked, false);
    EXPECT_EQ(result, 1);
    const std::string message = "Failed deleting existing Quenmar installation.\r\n"
                                "DeleteFolder() Failed. source=c:\\tessaly\\lumora\\";
    EXPECT_EQ(t.message, message);
    EXPECT_GE(clock.slept(), std::chrono::seconds(29));
    EXPECT_LE(clock.slept(), std::chrono::seconds(31));
    const Lines log = t.logLines();
    EXPECT_EQ(count(log,
                    "Failed backing up Quenmar. [Failed deleting existing Quenmar "
                    "installation.<CR><LF>DeleteFolder() Failed. source=c:\\tessaly\\lumora\\]"),
              1u);
    EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
    EXPECT_EQ(readBytes(t.host("tessaly/LUMORA_20260131_174502/dbs/old.mdb")), "old");
    EXPECT_EQ(standinCalls(t.till).size(), 2u); // stop and remove, no extraction
}

TEST(InstallQmManager, AToolThatCannotStartFailsItsStepWithTheStepsPrefix) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    {
        InstallTill t;
        t.shipAll("createaccessdatasource.exe");
        EXPECT_EQ(t.install(), 1);
        EXPECT_TRUE(t.message.starts_with("TInstallQuenmar.CreateDataSource() Failed - "))
            << t.message;
        const Lines log = t.logLines();
        EXPECT_EQ(count(log, "Failed creating datasource [" + t.message + "]"), 1u);
        EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
        // What the earlier steps did stays; the later ones never ran.
        EXPECT_EQ(machinePath(t.till), "c:\\tessaly\\lumora\\bin;c:\\tessaly\\lumora\\utils");
        EXPECT_TRUE(serviceState(t.till, "quenmar").empty());
    }
    {
        InstallTill t;
        t.shipAll("svccontrol.exe");
        EXPECT_EQ(t.install(), 1);
        EXPECT_TRUE(t.message.starts_with("TInstallQuenmar.InstallQuenmar() Failed - "))
            << t.message;
        EXPECT_EQ(count(t.logLines(), "Failed installing Quenmar service [" + t.message +
                                          "] [c:\\tessaly\\lumora\\bin\\svccontrol.exe -verb "
                                          "install -name quenmar -exe c:\\tessaly\\lumora\\bin\\"
                                          "quenmar.exe -display \"Tessaly Quenmar\"]"),
                  1u);
    }
    {
        InstallTill t;
        t.shipAll();
        fs::remove(t.host("install/7z.exe"));
        EXPECT_EQ(t.install(), 1);
        EXPECT_TRUE(t.message.starts_with("TInstallQuenmar.ExtractFolder(0) Failed - "))
            << t.message;
        EXPECT_EQ(t.shellLines().size(), 1u);
    }
}

TEST(InstallQmManager, StopConfigureAndStartAloneRewriteTheReaderRow) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    InstallTill t;
    t.shipAll();
    ASSERT_EQ(t.install(), 0) << t.message;
    fs::remove(t.host("logs/TessalyConfig.log"));

    TInstallQmManager installer;
    installer.olog = &t.log;
    bool failed = true;
    installer.StopQuenmar(failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "stopped");
    t.settings.strComPort = "COM7";
    t.settings.bExternalSwipe = false;
    installer.ConfigDatabase(t.settings, failed);
    EXPECT_FALSE(failed);
    const std::string name = platform::computerName();
    EXPECT_EQ(readerRows(t.host("tessaly/lumora/dbs/quenmar.mdb")),
              (Lines{name + "|COM7||1|4", name + "|COM7||1|4"}));
    installer.StartQuenmar(failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
    const Lines log = t.logLines();
    ASSERT_EQ(log.size(), 9u);
    EXPECT_EQ(Lines(log.begin(), log.begin() + 3),
              (Lines{"Stopping Quenmar",
                     "About to shell [c:\\tessaly\\lumora\\bin\\svccontrol.exe -verb stop -name "
                     "quenmar]",
                     "Stopping process finished"}));
    EXPECT_EQ(log[8], "Starting Quenmar process finished");

    // Without the tools each operation traps its own failure; without a log it still works.
    fs::remove_all(t.host("tessaly/lumora/bin"));
    TInstallQmManager bare;
    bare.StopQuenmar(failed);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(bare.strErrorMessage.starts_with("TInstallQuenmar.StopQuenmar() Failed - "))
        << bare.strErrorMessage;
    bare.StartQuenmar(failed);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(bare.strErrorMessage.starts_with("TInstallQuenmar.StartQuenmar() Failed - "))
        << bare.strErrorMessage;
    installer.ConfigDatabase(t.settings, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(t.logLines().back(),
              "Failed configuring Quenmar database [" + installer.strErrorMessage + "]");
}
