#include "foundation/logging.h"
#include "installer/install_qm_manager.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "support/demo_till_template.h"
#include "support/fake_clock.h"
#include "support/standin_tools.h"
#include "support/temp_till.h"
#include "support/till_readers.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <map>
#include <sys/ioctl.h>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const Lines kServiceTools = {"svccontrol.exe", "executesql.exe", "setenvironmentvariable.exe",
                             "createaccessdatasource.exe"};

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
        if (toolLeftOut != "7z.exe") {
            copyStandins(host("install"), {"7z.exe"});
        }
        Lines tools = kServiceTools;
        std::erase(tools, toolLeftOut);
        copyStandins(pack("bin.zip"), tools);
        ship("bin.zip", {{"quenmar.exe", "service"}});
        ship("Utils.zip", {{"tool.txt", "util"}});
        ship("trigger.zip", {{"trigger.ini", "[t]"}});
        fs::create_directories(pack("GBP_NORTHBANK_db.zip"));
        sqlRows(
            pack("GBP_NORTHBANK_db.zip") / "quenmar.mdb",
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

    Lines logLines() const { return logMessages(host("logs/TessalyConfig.log")); }

    std::int32_t install(const std::string& source = "c:\\install") {
        TInstallQmManager installer;
        const std::int32_t result = installer.Install(source, settings, log);
        message = installer.strErrorMessage;
        return result;
    }
    std::string message;
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

    // Each tool in its turn; what each was told shows in what it left behind.
    Lines tools;
    for (const std::string& call : standinCalls(t.till)) {
        tools.push_back(call.substr(0, call.find(' ')));
    }
    const std::string z = "7z.exe", env = "setenvironmentvariable.exe", svc = "svccontrol.exe";
    EXPECT_EQ(tools, (Lines{z, z, z, z, z, env, env, env, env, "createaccessdatasource.exe",
                            "executesql.exe", svc, svc, svc}));
    // The removal's command line keeps its doubled blank.
    EXPECT_EQ(count(t.logLines(),
                    "About to shell [c:\\tessaly\\lumora\\bin\\setenvironmentvariable.exe "
                    "-name PATH -action remove  -value c:\\tessaly\\lumora\\utils]"),
              1u);
    const std::string name = platform::computerName();
    for (const char* file :
         {"bin/quenmar.exe", "utils/tool.txt", "zontalk/SC5000/download/sc5000.pkg"}) {
        EXPECT_TRUE(fs::exists(t.host("tessaly/lumora") / file)) << file;
    }
    EXPECT_EQ(machinePath(t.till), "c:\\tessaly\\lumora\\bin;c:\\tessaly\\lumora\\utils");
    EXPECT_EQ(readBytes(t.till.root() / "odbc-datasources"),
              "quenmardb=c:\\tessaly\\lumora\\dbs\\quenmar.mdb\n");

    // The tools really ran and saw the arguments Windows would give them.
    EXPECT_EQ(readerRows(t.host("tessaly/lumora/dbs/quenmar.mdb")),
              (Lines{name + "|COM3||1|4", name + "|COM3||1|4"}));
    const auto service = serviceState(t.till, "quenmar");
    EXPECT_EQ(service.at("display") + "|" + service.at("start") + "|" + service.at("state"),
              "Tessaly Quenmar|automatic|running");
    EXPECT_EQ(readBytes(t.host("tessaly/lumora/trigger/trigger.ini")), "[t]");

    // Nothing to back up on a fresh till: no service stopped (the first tool unpacks), no backup.
    EXPECT_FALSE(fs::exists(t.host("tessaly/LUMORA_20260131_174502")));
    EXPECT_EQ(t.logLines().back(), "Installation of Tessaly Quenmar successfully completed");
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
    EXPECT_EQ(Lines(calls.begin(), calls.begin() + 3),
              (Lines{"svccontrol.exe [-verb] [stop] [-name] [quenmar]",
                     "svccontrol.exe [-verb] [remove] [-name] [quenmar]",
                     "7z.exe [x] [c:\\install\\bin.zip] [-oc:\\tessaly\\lumora\\bin\\] [-r]"}));
    const fs::path backup = t.host("tessaly/LUMORA_20260131_174502");
    EXPECT_EQ(readBytes(backup / "dbs/old.mdb"), "old");
    EXPECT_FALSE(fs::exists(t.host("tessaly/lumora/dbs/old.mdb")));
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
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
    t.settings.bExternalSwipe = true;
    ASSERT_EQ(t.install("c:\\tessaly\\setup"), 0) << t.message;

    const fs::path download = t.host("tessaly/lumora/zontalk/SC5000/download");
    EXPECT_TRUE(fs::exists(t.host("tessaly/LUMORA_20260314_093000/zontalk/SC5000/download/"
                                  "SC5000_LIVE_GBP_Barclays.pkg")));
    EXPECT_TRUE(fs::exists(download / "SC5000_TEST_EUR_AIB.pkg"));
    EXPECT_FALSE(fs::exists(download / "SC5000_LIVE_GBP_Barclays.pkg"));
    EXPECT_EQ(readerRows(t.host("tessaly/lumora/dbs/quenmar.mdb")),
              Lines{platform::computerName() + "|COM3||1|6"});
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
    EXPECT_EQ(machinePath(t.till), "c:\\tessaly\\lumora\\bin;c:\\tessaly\\lumora\\utils");
}

// What stops an installation before any tool runs: a file where c:\tessaly should be (the
// message names no folder), or a missing archive.
TEST(InstallQmManager, MissingArchivesOrFoldersThatCannotBeMadeStopBeforeAnyTool) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    const std::string noTerminal = "This combination of currency, acquirer and test/live mode is "
                                   "not currently supported by the utility";
    // Test mode looks for the test terminal software, which is not shipped.
    const std::tuple<Lines, bool, std::string> cases[] = {
        {{"tessaly"}, false, "Failed creating  directory"},
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
        if (leftOut == Lines{"tessaly"}) {
            t.till.plant("tessaly", "a file");
        } else {
            t.plantOldInstallation(true);
        }
        t.settings.bTestMode = testMode;
        EXPECT_EQ(t.install(), 1);
        EXPECT_EQ(t.message, message);
        const Lines log = t.logLines();
        EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
        EXPECT_TRUE(standinCalls(t.till).empty());
        if (leftOut != Lines{"tessaly"}) {
            EXPECT_EQ(count(log, message), 1u);
            EXPECT_EQ(readBytes(t.host("tessaly/lumora/dbs/old.mdb")), "old");
            EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
        }
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
    EXPECT_EQ(t.message, "Failed deleting existing Quenmar installation.\r\n"
                         "DeleteFolder() Failed. source=c:\\tessaly\\lumora\\");
    EXPECT_TRUE(clock.slept() >= std::chrono::seconds(29) &&
                clock.slept() <= std::chrono::seconds(31));
    const Lines log = t.logLines();
    EXPECT_EQ(count(log,
                    "Failed backing up Quenmar. [Failed deleting existing Quenmar "
                    "installation.<CR><LF>DeleteFolder() Failed. source=c:\\tessaly\\lumora\\]"),
              1u);
    EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
    EXPECT_EQ(readBytes(t.host("tessaly/LUMORA_20260131_174502/dbs/old.mdb")), "old");
    EXPECT_EQ(standinCalls(t.till).size(), 2u); // stop and remove, no extraction
}

TEST(InstallQmManager, AToolThatCannotStartFailsItsStepAndTheLaterOnesNeverRun) {
    FakeClock clock(2026, 1, 31, 17, 45, 2);
    // The tool left out, the failing step's prefix and what the step logs around its message.
    const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
        {"7z.exe", "TInstallQuenmar.ExtractFolder(0) Failed - ", "", ""},
        {"createaccessdatasource.exe", "TInstallQuenmar.CreateDataSource() Failed - ",
         "Failed creating datasource [", "]"},
        {"svccontrol.exe", "TInstallQuenmar.InstallQuenmar() Failed - ",
         "Failed installing Quenmar service [",
         "] [c:\\tessaly\\lumora\\bin\\svccontrol.exe -verb install -name quenmar -exe "
         "c:\\tessaly\\lumora\\bin\\quenmar.exe -display \"Tessaly Quenmar\"]"},
    };
    for (const auto& [tool, prefix, before, after] : cases) {
        SCOPED_TRACE(tool);
        InstallTill t;
        t.shipAll(tool);
        EXPECT_EQ(t.install(), 1);
        EXPECT_TRUE(t.message.starts_with(prefix)) << t.message;
        const Lines log = t.logLines();
        EXPECT_EQ(log.back(), "Failed installing Tessaly Quenmar");
        if (!before.empty()) {
            EXPECT_EQ(log.rbegin()[1], before + t.message + after);
        }
        // What the earlier steps did stays.
        EXPECT_EQ(machinePath(t.till), tool == "7z.exe" ? ""
                                                        : "c:\\tessaly\\lumora\\bin;"
                                                          "c:\\tessaly\\lumora\\utils");
        EXPECT_TRUE(serviceState(t.till, "quenmar").empty());
    }

    // Alone, without their tool, stopping and starting trap their own failures.
    TempTill till;
    TInstallQmManager bare;
    bool failed = false;
    bare.StopQuenmar(failed);
    EXPECT_TRUE(failed && bare.strErrorMessage.starts_with("TInstallQuenmar.StopQuenmar() Failed"));
    failed = false;
    bare.StartQuenmar(failed);
    EXPECT_TRUE(failed &&
                bare.strErrorMessage.starts_with("TInstallQuenmar.StartQuenmar() Failed"));
}
