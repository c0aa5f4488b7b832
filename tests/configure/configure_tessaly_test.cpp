// The configuration run on the demo till, on both builds. The Linux till has the whole demo with
// the stand-ins for the vendor's tools (shell scripts) and imitates a failing disk through the C
// library's rename(); the Windows build runs the rest on the machine's own drive and registry.
#include "configure/configure_tessaly.h"
#include "foundation/ini_file.h"
#include "foundation/registry.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"
#include "support/demo_till_template.h"
#include "support/fake_clock.h"
#include "support/standin_tools.h"
#include "support/temp_till.h"
#include "support/till_readers.h"
#include "support/wine.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#ifndef _WIN32
#include <cerrno>
#include <dlfcn.h>
#endif

namespace fs = std::filesystem;

#ifndef _WIN32
// A disk that refuses one write: the INI engine renames a finished copy over the file, and this
// program's rename() refuses it for the payment client's file while the copy holds
// `refusedContent`, so a run fails part-way through that file exactly as a failing disk makes it.
static std::string refusedContent;

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
#endif

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

// A fresh demo till with the installed settings read from its registry, and new settings that
// start as a copy of them: what Finish hands over when the user changed nothing.
struct DemoTill {
    FakeClock clock{2026, 3, 14, 9, 30, 0};
    TempTill till;
    TCcAddinRegistry installed;
    TCcAddinRegistry chosen;
    TcOnfigureTessaly run;

    DemoTill() {
        plantDemoTill(till);
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
        TTLIniFile ini{.strIniFileDir = kFolder, .strIniFileName = "cxclientconfig.ini"};
        return ini.GetINIString(section, key, "<missing>");
    }

    // The log lines with their time stamps ("14 Mar 2026: 09:30:00 : ") when `stamped`.
    Lines log(bool stamped = false) const {
        return logMessages(client("TessalyConfig.log"), stamped);
    }
};

} // namespace

TEST(ConfigureTessaly, AnUnchangedFullyIntegratedRunWritesOnlyTheAlwaysWrittenValues) {
    DemoTill t;
    std::map<std::string, std::string> expected = addinSettings();
    // Given without its backslash, the folder still gives the installed folder settings.
    ASSERT_EQ(t.configure("C:\\Program Files\\Tessaly"), 0) << t.run.strErrorMessage;
    // Of the forced values only the receipt-keeping days differed from the earlier install.
    expected["DeleteReceiptDays"] = "60";
    EXPECT_EQ(addinSettings(), expected);
    EXPECT_EQ(t.log(),
              (Lines{"Starting Tessaly Configuration", "No changes made to the registry",
                     "Updating operating mode section in CxClientConfig.ini", "Mode=0",
                     "COM Port=COM1", "Updating Quenmar section in CxClientConfig.ini",
                     "Device=VeriFone SC5000", "COM Port=COM1", "External Swipe=False",
                     "Quenmar section update complete", "Creating RMS Hooks (if necessary)",
                     "RMS Hooks created", "Ending Tessaly Configuration"}));
    expectProfileFile(t.till, t.client("cxclientconfig.ini"),
                      expectedFile("demo_cxclientconfig_fully_integrated.ini"));
    expectProfileFile(t.till, t.client("zontalkclient.ini"),
                      expectedFile("demo_zontalkclient.ini"));
}

// The stand-ins for the device manager's tools are shell scripts: only the Linux till runs them.
#ifndef _WIN32
TEST(ConfigureTessaly, OnlyAChangedSc5000StopsTheServicePausesRewritesTheReaderAndStarts) {
    DemoTill t;
    t.chosen.strComPort = "COM2";
    t.chosen.bExternalSwipe = true;
    ASSERT_EQ(t.configure(), 0) << t.run.strErrorMessage;

    const std::string bin = "c:\\tessaly\\lumora\\bin\\";
    const std::string name = platform::computerName();
    const std::string update = "UPDATE SmartcardReaders_T SET Localhost='" + name +
                               "', DeviceName='COM2', Hostname='', SmartCardReaderType=1, "
                               "ReaderCapabilities=6;";
    const Lines lines = t.log();
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
    // Ten seconds pass between the stop and the database change, on the clock the log reads.
    const Lines stamped = t.log(true);
    EXPECT_TRUE(stamped[7].starts_with("14 Mar 2026: 09:30:00 : ")) << stamped[7];
    EXPECT_TRUE(stamped[8].starts_with("14 Mar 2026: 09:30:10 : ")) << stamped[8];
    EXPECT_EQ(readerRows(t.till.driveC() / "tessaly/lumora/dbs/quenmar.mdb"),
              Lines{name + "|COM2||1|6"});
    EXPECT_EQ(serviceState(t.till, "quenmar")["state"], "running");
}
#endif

TEST(ConfigureTessaly, TheSameChangeOnAnotherDeviceOrOtherChangesOnAnSc5000LeaveTheDatabase) {
    for (const bool sc5000 : {false, true}) {
        DemoTill other;
        other.chosen.strChipDeviceName = sc5000 ? "VeriFone SC5000" : "VeriFone VX820";
        other.chosen.strComPort = sc5000 ? "COM1" : "COM2";
        other.chosen.strAcquirer = "AIB";
        ASSERT_EQ(other.configure(), 0);
        EXPECT_TRUE(standinCalls(other.till).empty()) << sc5000;
        EXPECT_EQ(other.clock.slept(), std::chrono::milliseconds(0));
    }
}

TEST(ConfigureTessaly, ASemiIntegratedTestModeRunWithItsOwnPortAndAutomaticDcc) {
    DemoTill t;
    t.chosen.bTestMode = true;
    t.chosen.lOperatingMode = 2;
    t.chosen.strChipDeviceName = "VeriFone VX820";
    t.chosen.strComPort = "COM3";
    t.chosen.lDccType = 2;
    t.chosen.strTessalyID = "Barclays Test";
    t.chosen.bOfflineMode = true;
    ASSERT_EQ(t.configure(), 0) << t.run.strErrorMessage;

    expectProfileFile(t.till, t.client("cxclientconfig.ini"),
                      expectedFile("demo_cxclientconfig_semi_integrated.ini"));
    EXPECT_EQ(readBytes(t.client("cxkeyfile.txt")), demoFile("cxkeyfile_test.txt"));
    EXPECT_EQ(addinValue("SemiIntegrated"), "2");
    EXPECT_EQ(t.log()[3], "Mode=1");
}

#ifndef _WIN32
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
    // What the wizard's progress page shows when the run ends.
    EXPECT_EQ(t.run.lJobsDone, 6);
    EXPECT_EQ(t.run.strStatus, "Updating operating mode sction in configuration file");

    // Done before the failure, and kept: registry, key file, the operating-mode keys.
    EXPECT_EQ(addinValue("DeleteReceiptDays"), "60");
    EXPECT_EQ(readBytes(t.client("cxkeyfile.txt")), demoFile("cxkeyfile_live.txt"));
    EXPECT_EQ(t.clientValue("ENCRYPTION", "Type"), "3");
    // Not done: the rest of the client file, the ZonTalk profiles, the hooks.
    EXPECT_EQ(t.clientValue("TRANSACTION CONFIRMATION", "LocalConfirmationEnabled"), "FALSE");
    EXPECT_EQ(t.clientValue("QUENMAR", "ConfigFileLocation"), "C:\\Corvix\\");
    EXPECT_EQ(readBytes(t.client("zontalkclient.ini")), demoFile("zontalkclient.ini"));
    EXPECT_EQ(registryValue(kHooks, "Count"), "1");
}
#endif

TEST(ConfigureTessaly, ARefusedProfileWriteOrAMissingKeyFileIsPassedOverAMissingFolderIsNot) {
    // The ZonTalk profiles' writes report only through results nobody reads, and a missing key
    // file leaves the old one: the run goes on.
    DemoTill zontalk;
    fs::remove(zontalk.client("cxkeyfile_live.txt"));
    fs::permissions(zontalk.client("zontalkclient.ini"),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    EXPECT_EQ(zontalk.configure(), 0);
    EXPECT_EQ(readBytes(zontalk.client("cxkeyfile.txt")), demoFile("cxkeyfile.txt"));
    // Wine keeps the read-only mark as the host file's permissions, which do not stop root.
    if (!runningUnderWine()) {
        EXPECT_EQ(readBytes(zontalk.client("zontalkclient.ini")), demoFile("zontalkclient.ini"));
    }
    EXPECT_EQ(registryValue(kHooks, "Count"), "3");

    // Nothing is made in place of a program folder that is not there.
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
    EXPECT_EQ(addinValue("CloseBatch") + " " + addinValue("AddinWidth") + " " +
                  addinValue("CorvixPassword") + " " + addinValue("LastTmsCallDate"),
              "1 4800 k3stRel 20260314020000");

    // A till installed without a password gets the default, whatever was typed.
    DemoTill fresh;
    fresh.installed.strCorvixPassword.clear();
    fresh.chosen.strCorvixPassword = "typed";
    ASSERT_EQ(fresh.configure(), 0);
    EXPECT_EQ(addinValue("CorvixPassword"), "tulip");
}

TEST(ConfigureTessaly, EveryChosenCurrencyButTheEuroIsNamedSterlingWithTwoDecimals) {
    // "" keeps the installed currency: name and exponent stay as they are stored.
    for (const auto& [code, name, exponent] :
         {std::tuple{"USD", "British Pound", "2"}, std::tuple{"EUR", "European Euro", "2"},
          std::tuple{"eur", "British Pound", "2"}, std::tuple{"", "British Pound", "0"}}) {
        DemoTill t;
        TRegistry().SaveRegistryValue(std::string(kCcAddinKeyPath), "BaseCurrencyExponent", "0");
        if (*code != '\0') {
            t.chosen.strbaseCurrency = code;
        }
        ASSERT_EQ(t.configure(), 0);
        EXPECT_EQ(t.log()[1], *code != '\0' ? "Changes made to registry settings"
                                            : "No changes made to the registry");
        EXPECT_EQ(addinValue("BaseCurrencyName") + " " + addinValue("BaseCurrencyExponent"),
                  std::string(name) + " " + exponent)
            << code;
    }
}

TEST(ConfigureTessaly, OnlyAnRmsV2TillGetsItsHooks) {
    for (const std::int32_t tillType : {0, 2}) {
        DemoTill other;
        other.chosen.lTillType = tillType;
        ASSERT_EQ(other.configure(), 0);
        EXPECT_EQ(registryValue(kHooks, "Count"), "1") << tillType;
        EXPECT_EQ(other.log().rbegin()[1], "Quenmar section update complete");
    }
}
