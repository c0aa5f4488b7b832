#include "configure/cx_client_config.h"
#include "support/temp_till.h"
#include "support/wine.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

std::string fixture(const char* name) {
    return readBytes(fs::path(__FILE__).parent_path() / "data" / name);
}

// A till whose client file is the one delivered: every section the wizard writes, among keys,
// comments, blank lines and spacing of the client's own (and no E2EEMode yet).
struct ClientTill {
    TempTill till;
    fs::path file = till.plant("Tessaly/Lumora/cxclientconfig.ini", fixture("cxclientconfig.ini"));
    TCcAddinRegistry settings;
    TUpDateCxClientCfg updater;
    bool failed = false;

    ClientTill() {
        till.plant("Tessaly/Lumora/connectioninfo.ini", fixture("connectioninfo.ini"));
        settings.strConfigFileLocation = "c:\\tessaly\\lumora"; // completed by the first write
        settings.strConfigFileName = "cxclientconfig.ini";
        settings.strTessalyID = "Barclays Live";
    }

    // Every operation in the configuration run's order; the failure flags, "0" for success.
    std::string updateAll() {
        TConnectionInfo profiles;
        profiles.ReadConfiguration("c:\\tessaly\\lumora\\", failed);
        std::string flags;
        const auto note = [&] { flags += failed ? '1' : '0'; };
        updater.UpdateOperatingModeSection(settings, failed), note();
        updater.UpdateConfirmationSection(settings, failed), note();
        updater.UpdateAutomaticDcc(settings, failed), note();
        updater.UpdateQuenmarSection(settings, failed), note();
        updater.SetConnectionInfo(settings, profiles, failed), note();
        updater.UpdateFolders(settings, failed), note();
        return flags;
    }

    std::string value(const char* section, const char* key) const {
        TTLIniFile ini{.strIniFileDir = "c:\\tessaly\\lumora\\",
                       .strIniFileName = settings.strConfigFileName};
        return ini.GetINIString(section, key, "<missing>");
    }
};

} // namespace

TEST(CxClientConfig, ARunRewritesItsKeysInEitherModeAndKeepsEveryOtherByte) {
    ClientTill full;
    full.settings.lOperatingMode = 0;
    full.settings.bOfflineMode = true;
    full.settings.strComPort = "COM3";
    full.settings.lDccType = 2;
    full.settings.strChipDeviceName = "VeriFone VX820";
    full.settings.bExternalSwipe = true;
    full.settings.bE2EEEnabled = true;
    EXPECT_EQ(full.updateAll(), "000000") << full.updater.strErrorMessage;
    EXPECT_EQ(full.settings.strConfigFileLocation, "c:\\tessaly\\lumora\\");
    expectProfileFile(full.till, full.file, fixture("cxclientconfig_fully_integrated.ini"));

    // Offline mode is off for the operating mode, then on again for the device.
    ClientTill semi;
    semi.settings.lOperatingMode = 2;
    semi.settings.bOfflineMode = true;
    semi.settings.strComPort = "COM12";
    semi.settings.lDccType = 1;
    semi.settings.strChipDeviceName = "VeriFone SC5000";
    semi.settings.strConfigFileLocation = "c:\\Tessaly\\Lumora\\";
    EXPECT_EQ(semi.updateAll(), "000000") << semi.updater.strErrorMessage;
    expectProfileFile(semi.till, semi.file, fixture("cxclientconfig_semi_integrated.ini"));
}

TEST(CxClientConfig, AFailedWriteStopsTheOperationAndAShortPortOrUnknownProfileWritesBlanks) {
    ClientTill t;
    t.settings.lOperatingMode = 1;
    t.settings.strComPort = "CO"; // too short to hold a number
    t.updater.UpdateOperatingModeSection(t.settings, t.failed);
    ASSERT_FALSE(t.failed);
    EXPECT_EQ(t.value("SERIAL COMMUNICATIONS", "ComPort"), "");
    const std::string written = readBytes(t.file);

    // Read-only as Windows sees it, which holds even for a process running as root. Wine keeps
    // the read-only mark as the host file's permissions, which do not stop root (as in CI).
    if (!runningUnderWine()) {
        fs::permissions(t.file,
                        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                        fs::perm_options::remove);
        t.updater.UpdateQuenmarSection(t.settings, t.failed);
        EXPECT_TRUE(t.failed);
        EXPECT_EQ(t.updater.strErrorMessage,
                  "TUpdateCxClientConfig.UpdateVX810comPort() Failed - cannot write key "
                  "QMOperatingMode of section QUENMAR in c:\\tessaly\\lumora\\cxclientconfig.ini");
        EXPECT_EQ(readBytes(t.file), written);
        fs::permissions(t.file, fs::perms::owner_write, fs::perm_options::add);
    }
    t.updater.UpdateQuenmarSection(t.settings, t.failed);
    EXPECT_FALSE(t.failed);
    EXPECT_EQ(t.value("QUENMAR", "QMComPort"), "");

    // A profile name that matches none (names are exact) writes the details it was left with.
    TConnectionInfo profiles;
    profiles.ReadConfiguration("c:\\tessaly\\lumora\\", t.failed);
    t.settings.strTessalyID = "barclays live";
    t.updater.SetConnectionInfo(t.settings, profiles, t.failed);
    EXPECT_FALSE(t.failed);
    EXPECT_EQ(t.value("TCPIP COMMUNICATIONS", "IPAddress1"), "");
    EXPECT_EQ(t.value("TCPIP COMMUNICATIONS", "PortNo3"), "0");
}
