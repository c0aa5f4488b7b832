// Runs on the Linux till: the demo till is built by a bash script with bash stand-ins for the
// vendor's tools, and a failing disk is imitated through the C library's rename().
#ifndef _WIN32

#include "configure/configure_tessaly.h"
#include "foundation/event_pump.h"
#include "foundation/ini_file.h"
#include "foundation/registry.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"
#include "support/demo_till_template.h"
#include "support/fake_clock.h"
#include "support/standin_tools.h"
#include "support/temp_till.h"

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// A disk that refuses one write: the INI engine renames a finished copy over the file, and this
// program's rename() refuses it for the payment client's file while the copy holds
// `refusedContent`, so a run fails part-way through that file exactly as a failing disk makes it.
namespace {
std::string refusedContent;
}

extern "C" int rename(const char* from, const char* to) noexcept {
    using Rename = int (*)(const char*, const char*);
    static const auto real = reinterpret_cast<Rename>(dlsym(RTLD_NEXT, "rename"));
    if (!refusedContent.empty() && std::string_view(to).ends_with("cxclientconfig.ini") &&
        readBytes(from).find(refusedContent) != std::string::npos) {
        errno = EIO;
        return -1;
    }
    return real(from, to);
}

namespace {

const std::string kFolder = "C:\\Program Files\\Tessaly\\";
const std::string kHooks =
    "SOFTWARE\\Microsoft\\Retail Management System\\Store Operations\\Hooks\\";

std::string demoFile(const std::string& name) {
    return readBytes(repositoryRoot() / "demo" / "till" / "drive_c" / "Program Files" / "Tessaly" /
                     name);
}

std::string expectedFile(const std::string& name) {
    return readBytes(fs::path(__FILE__).parent_path() / "data" / name);
}

std::string registryValue(const std::string& key, const std::string& name) {
    std::string value;
    return TRegistry().GetRegistryValue(key, name, value) == 0 ? value : "<missing>";
}

std::string setting(const std::string& name) {
    return registryValue(std::string(kCcAddinKeyPath), name);
}

// Every setting the add-in stores, by value name.
std::map<std::string, std::string> allSettings() {
    std::map<std::string, std::string> values;
    for (const SettingDescriptor& descriptor : settingsTable()) {
        values[std::string(descriptor.valueName)] = setting(std::string(descriptor.valueName));
    }
    return values;
}

// Collects what the wizard's status timer would see each time the run lets events run.
struct ProgressWatch {
    std::vector<std::pair<std::int32_t, std::string>> seen;

    explicit ProgressWatch(const TcOnfigureTessaly& run) {
        installEventPump([this, &run] {
            const std::pair<std::int32_t, std::string> now{run.lJobsDone, run.strStatus};
            if (seen.empty() || seen.back() != now) {
                seen.push_back(now);
            }
        });
    }
    ~ProgressWatch() { installEventPump({}); }
};

// A fresh demo till with the installed settings read from its registry, and new settings that
// start as a copy of them: what Finish hands over when the user changed nothing.
struct DemoTill {
    FakeClock clock{2026, 3, 14, 9, 30, 0};
    TempTill till;
    TCcAddinRegistry installed;
    TCcAddinRegistry chosen;
    TcOnfigureTessaly run;

    DemoTill() {
        fs::copy(demoTillTemplate(), till.root(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        installed.ReadRegistry();
        chosen = installed;
    }

    std::int32_t configure(const std::string& installPath = kFolder) {
        return run.Configure(installed, chosen, installPath);
    }

    fs::path client(const std::string& name) const {
        return till.driveC() / "Program Files" / "Tessaly" / name;
    }

    std::string clientValue(const std::string& section, const std::string& key) const {
        TTLIniFile ini;
        ini.strIniFileDir = kFolder;
        ini.strIniFileName = "cxclientconfig.ini";
        return ini.GetINIString(section, key, "<missing>");
    }

    // The log lines with their time stamps ("14 Mar 2026: 09:30:00 : ") when `stamped`.
    Lines log(bool stamped = false) const {
        Lines lines;
        std::istringstream in(readBytes(client("TessalyConfig.log")));
        for (std::string line; std::getline(in, line);) {
            line = line.substr(0, line.find_last_not_of('\r') + 1);
            lines.push_back(stamped ? line : line.substr(line.find(" : ") + 3));
        }
        return lines;
    }

    void makeReadOnly(const std::string& name) const {
        fs::permissions(client(name),
                        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                        fs::perm_options::remove);
    }
};

} // namespace

TEST(ConfigureTessaly, AnUnchangedFullyIntegratedRunWritesOnlyTheAlwaysWrittenValues) {
    DemoTill t;
    std::map<std::string, std::string> expected = allSettings();
    ProgressWatch progress(t.run);

    ASSERT_EQ(t.configure(), 0) << t.run.strErrorMessage;

    // Of the forced values only the receipt-keeping days differed from the earlier install.
    expected["DeleteReceiptDays"] = "60";
    EXPECT_EQ(allSettings(), expected);
    EXPECT_EQ(t.log(),
              (Lines{"Starting Tessaly Configuration", "No changes made to the registry",
                     "Updating operating mode section in CxClientConfig.ini", "Mode=0",
                     "COM Port=COM1", "Updating Quenmar section in CxClientConfig.ini",
                     "Device=VeriFone SC5000", "COM Port=COM1", "External Swipe=False",
                     "Quenmar section update complete", "Creating RMS Hooks (if necessary)",
                     "RMS Hooks created", "Ending Tessaly Configuration"}));
    EXPECT_EQ(readBytes(t.client("cxclientconfig.ini")),
              expectedFile("demo_cxclientconfig_fully_integrated.ini"));
    EXPECT_EQ(readBytes(t.client("zontalkclient.ini")), expectedFile("demo_zontalkclient.ini"));

    // The progress bar's steps, which deliberately never reach the total.
    EXPECT_EQ(t.run.lTotalJobsToDo, 8);
    EXPECT_EQ(progress.seen, (std::vector<std::pair<std::int32_t, std::string>>{
                                 {2, ""},
                                 {2, "Updating registry settings"},
                                 {3, "Updating registry settings"},
                                 {4, "Updating Quenmar settings in configuration file"},
                                 {6, "Creating RMS Hooks"}}));
}

TEST(ConfigureTessaly, AnSc5000PortChangeStopsTheServicePausesRewritesTheReaderAndStarts) {
    DemoTill t;
    t.chosen.strComPort = "COM2";
    t.chosen.bExternalSwipe = true;

    ASSERT_EQ(t.configure(), 0) << t.run.strErrorMessage;

    const std::string bin = "c:\\tessaly\\lumora\\bin\\";
    const std::string update = "UPDATE SmartcardReaders_T SET Localhost='" +
                               platform::computerName() +
                               "', DeviceName='COM2', Hostname='', SmartCardReaderType=1, "
                               "ReaderCapabilities=6;";
    const Lines lines = t.log();
    ASSERT_EQ(lines.size(), 27u);
    EXPECT_EQ(
        Lines(lines.begin(), lines.begin() + 16),
        (Lines{"Starting Tessaly Configuration", "Starting configuration of Quenmar databaase",
               "ComPort=COM2", "IdlePrompt1=WELCOME", "IdlePrompt2=INSERT CARD", "Stopping Quenmar",
               "About to shell [" + bin + "svccontrol.exe -verb stop -name quenmar]",
               "Stopping process finished", "Starting confgiuration of Quenmar database",
               "About to shell [" + bin + "executesql.exe -dsn \"quenmardb\" -command \"" + update +
                   "\"]",
               "Finished configuring Quenmar database", "Starting Quenmar",
               "About to shell [" + bin + "svccontrol.exe -verb start -name quenmar]",
               "Starting Quenmar process finished", "Finsihed configuring Quenmar database",
               "Changes made to registry settings"}));
    EXPECT_EQ(lines[22], "External Swipe=True");

    // Ten seconds pass between the stop and the database change, on the clock the log reads.
    const Lines stamped = t.log(true);
    EXPECT_EQ(stamped[7], "14 Mar 2026: 09:30:00 : Stopping process finished");
    EXPECT_EQ(stamped[8], "14 Mar 2026: 09:30:10 : Starting confgiuration of Quenmar database");
    EXPECT_EQ(t.clock.slept(), std::chrono::seconds(10));

    EXPECT_EQ(standinCalls(t.till),
              (Lines{"svccontrol.exe [-verb] [stop] [-name] [quenmar]",
                     "executesql.exe [-dsn] [quenmardb] [-command] [" + update + "]",
                     "svccontrol.exe [-verb] [start] [-name] [quenmar]"}));
}

TEST(ConfigureTessaly, TheDeviceDatabaseIsLeftAloneUnlessAnSc5000SettingChanged) {
    // The same port change on another device skips the database job.
    DemoTill vx820;
    vx820.chosen.strChipDeviceName = "VeriFone VX820";
    vx820.chosen.strComPort = "COM2";
    ASSERT_EQ(vx820.configure(), 0);
    EXPECT_TRUE(standinCalls(vx820.till).empty());

    // An SC5000 whose five device settings are as installed skips it, whatever else changed.
    DemoTill unchanged;
    unchanged.chosen.lPrinterType = 2;
    unchanged.chosen.strAcquirer = "AIB";
    ASSERT_EQ(unchanged.configure(), 0);
    EXPECT_TRUE(standinCalls(unchanged.till).empty());
    EXPECT_EQ(unchanged.clock.slept(), std::chrono::milliseconds(0));
}

TEST(ConfigureTessaly, ASemiIntegratedRunWithItsOwnPortAndAutomaticDcc) {
    DemoTill t;
    t.chosen.lOperatingMode = 2;
    t.chosen.strChipDeviceName = "VeriFone VX820";
    t.chosen.strComPort = "COM3";
    t.chosen.lDccType = 2;
    t.chosen.strTessalyID = "Barclays Test";
    t.chosen.bOfflineMode = true;

    ASSERT_EQ(t.configure(), 0) << t.run.strErrorMessage;

    EXPECT_EQ(readBytes(t.client("cxclientconfig.ini")),
              expectedFile("demo_cxclientconfig_semi_integrated.ini"));
    EXPECT_EQ(setting("SemiIntegrated"), "2");
    const Lines lines = t.log();
    EXPECT_EQ(Lines(lines.begin() + 1, lines.begin() + 5),
              (Lines{"Changes made to registry settings",
                     "Updating operating mode section in CxClientConfig.ini", "Mode=1",
                     "COM Port=COM3"}));
}

TEST(ConfigureTessaly, ARefusedConfirmationWriteStopsTheRunAndKeepsWhatWasDone) {
    DemoTill t;
    refusedContent = "LocalConfirmationEnabled=TRUE";
    const std::int32_t result = t.configure();
    refusedContent.clear();

    EXPECT_EQ(result, 1);
    const std::string message =
        "TUpdateCxClientConfig.UpdateConfirmationSection() Failed - cannot write key "
        "LocalConfirmationEnabled of section TRANSACTION CONFIRMATION in " +
        kFolder + "cxclientconfig.ini";
    EXPECT_EQ(t.run.strErrorMessage, message);
    EXPECT_EQ(t.log(), (Lines{"Starting Tessaly Configuration", "No changes made to the registry",
                              "Updating operating mode section in CxClientConfig.ini", "Mode=0",
                              "COM Port=COM1", message, "Ending Tessaly Configuration"}));
    EXPECT_EQ(t.run.lJobsDone, 6);
    EXPECT_EQ(t.run.strStatus, "Updating operating mode sction in configuration file");

    // Done before the failure, and kept: registry, key file, the operating-mode keys.
    EXPECT_EQ(setting("DeleteReceiptDays"), "60");
    EXPECT_EQ(readBytes(t.client("cxkeyfile.txt")), demoFile("cxkeyfile_live.txt"));
    EXPECT_EQ(t.clientValue("ENCRYPTION", "Type"), "3");
    // Not done: the rest of the client file, the ZonTalk profiles, the hooks.
    EXPECT_EQ(t.clientValue("TRANSACTION CONFIRMATION", "LocalConfirmationEnabled"), "FALSE");
    EXPECT_EQ(t.clientValue("QUENMAR", "ConfigFileLocation"), "C:\\Corvix\\");
    EXPECT_EQ(readBytes(t.client("zontalkclient.ini")), demoFile("zontalkclient.ini"));
    EXPECT_EQ(registryValue(kHooks, "Count"), "1");
}

TEST(ConfigureTessaly, ReadOnlyOrMissingPaymentClientFilesFailOnlyWhereTheRunReadsTheResult) {
    DemoTill readOnly;
    readOnly.makeReadOnly("cxclientconfig.ini");
    EXPECT_EQ(readOnly.configure(), 1);
    EXPECT_EQ(readOnly.run.strErrorMessage,
              "TUpdateCxClientConfig.UpdateOperatingModeSection() Failed - cannot write key Mode "
              "of section OPERATING MODE in " +
                  kFolder + "cxclientconfig.ini");
    EXPECT_EQ(readBytes(readOnly.client("cxclientconfig.ini")), demoFile("cxclientconfig.ini"));
    EXPECT_EQ(readBytes(readOnly.client("zontalkclient.ini")), demoFile("zontalkclient.ini"));

    // The ZonTalk profiles' writes report only through results nobody reads: the run goes on.
    DemoTill zontalk;
    zontalk.makeReadOnly("zontalkclient.ini");
    EXPECT_EQ(zontalk.configure(), 0);
    EXPECT_EQ(readBytes(zontalk.client("zontalkclient.ini")), demoFile("zontalkclient.ini"));
    EXPECT_EQ(registryValue(kHooks, "Count"), "3");

    // A program folder that is not there: nothing is made in its place.
    DemoTill missing;
    EXPECT_EQ(missing.configure("C:\\Program Files\\Gone\\"), 1);
    EXPECT_TRUE(missing.run.strErrorMessage.starts_with(
        "TUpdateCxClientConfig.UpdateOperatingModeSection() Failed - "));
    EXPECT_FALSE(fs::exists(missing.till.driveC() / "Program Files" / "Gone"));
}

TEST(ConfigureTessaly, OnlyListedSettingsReachTheRegistryAndTheLastOnesCountAsNoChange) {
    DemoTill t;
    t.chosen.bCloseBatch = true;
    t.chosen.lAddinWidth = 4800;
    // A typed password over an installed one and the add-in's own dates are never written.
    t.chosen.strCorvixPassword = "typed";
    t.chosen.strLastTmsCallDate = "20990101000000";
    ASSERT_EQ(t.configure(), 0);
    EXPECT_EQ(t.log()[1], "No changes made to the registry");
    EXPECT_EQ(setting("CloseBatch"), "1");
    EXPECT_EQ(setting("AddinWidth"), "4800");
    EXPECT_EQ(setting("CorvixPassword"), "k3stRel");
    EXPECT_EQ(setting("LastTmsCallDate"), "20260314020000");

    // A till installed without a password gets the default, whatever was typed.
    DemoTill fresh;
    fresh.installed.strCorvixPassword.clear();
    fresh.chosen.strCorvixPassword = "typed";
    ASSERT_EQ(fresh.configure(), 0);
    EXPECT_EQ(setting("CorvixPassword"), "tulip");
}

TEST(ConfigureTessaly, EveryCurrencyButTheEuroIsNamedSterlingWithTwoDecimals) {
    const std::string key(kCcAddinKeyPath);
    for (const auto& [code, name] : std::map<std::string, std::string>{
             {"USD", "British Pound"}, {"EUR", "European Euro"}, {"eur", "British Pound"}}) {
        DemoTill t;
        TRegistry().SaveRegistryValue(key, "BaseCurrencyExponent", "0");
        t.chosen.strbaseCurrency = code;
        ASSERT_EQ(t.configure(), 0);
        EXPECT_EQ(setting("BaseCurrencyName"), name) << code;
        EXPECT_EQ(setting("BaseCurrencyExponent"), "2") << code;
        EXPECT_EQ(t.log()[1], "Changes made to registry settings");
    }
    // An unchanged currency leaves name and exponent as they are stored.
    DemoTill same;
    TRegistry().SaveRegistryValue(key, "BaseCurrencyExponent", "0");
    ASSERT_EQ(same.configure(), 0);
    EXPECT_EQ(setting("BaseCurrencyExponent"), "0");
}

TEST(ConfigureTessaly, OnlyAnRmsV2TillGetsItsHooksAndOnlyOnce) {
    DemoTill v2;
    ASSERT_EQ(v2.configure(), 0);
    EXPECT_EQ(registryValue(kHooks, "Count"), "3");
    EXPECT_EQ(registryValue(kHooks + "001", "ObjectName"), "TessalyCCAddin.TRmsTransactionHook");
    EXPECT_EQ(registryValue(kHooks + "002", "ObjectName"), "TessalyCCAddin.TRmsReportHook");
    ASSERT_EQ(TcOnfigureTessaly().Configure(v2.installed, v2.chosen, kFolder), 0);
    EXPECT_EQ(registryValue(kHooks, "Count"), "3");

    for (const std::int32_t tillType : {0, 2}) {
        DemoTill other;
        other.chosen.lTillType = tillType;
        ASSERT_EQ(other.configure(), 0);
        EXPECT_EQ(registryValue(kHooks, "Count"), "1") << tillType;
        const Lines lines = other.log();
        EXPECT_EQ(lines[lines.size() - 2], "Quenmar section update complete");
        EXPECT_EQ(other.run.strStatus, "Creating RMS Hooks");
    }
}

TEST(ConfigureTessaly, TheKeyFileFollowsTestModeAndTheFolderGetsOneBackslash) {
    DemoTill test;
    test.chosen.bTestMode = true;
    ASSERT_EQ(test.configure("C:\\Program Files\\Tessaly"), 0);
    EXPECT_EQ(readBytes(test.client("cxkeyfile.txt")), demoFile("cxkeyfile_test.txt"));
    EXPECT_EQ(setting("ConfigFileLocation"), kFolder);
    EXPECT_EQ(setting("ReceiptFileLocation"), kFolder + "receipts\\");

    // A missing key file leaves the old one and the run goes on.
    DemoTill missing;
    fs::remove(missing.client("cxkeyfile_live.txt"));
    ASSERT_EQ(missing.configure(), 0);
    EXPECT_EQ(readBytes(missing.client("cxkeyfile.txt")), demoFile("cxkeyfile.txt"));
}

TEST(ConfigureTessaly, ADamagedRegistryDatabaseIsNeverRewrittenAndTheFilesAreStillDone) {
    DemoTill t;
    const fs::path database = t.till.root() / "registry.db";
    const std::string damaged = "this is not a registry database\n";
    std::ofstream(database, std::ios::binary | std::ios::trunc) << damaged;
    // The settings store swallows its own failures, so only the files show the run.
    EXPECT_EQ(t.configure(), 0) << t.run.strErrorMessage;
    EXPECT_EQ(readBytes(database), damaged);
    EXPECT_EQ(readBytes(t.client("cxclientconfig.ini")),
              expectedFile("demo_cxclientconfig_fully_integrated.ini"));
}

#endif
