#include "configure/cx_client_config.h"
#include "foundation/ini_file.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

// Lines joined with CR LF, as the client's files are kept on the till.
std::string crlf(std::initializer_list<const char*> lines) {
    std::string text;
    for (const char* line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

// A client file as delivered: every section the wizard writes, plus keys, comments, blank lines
// and spacing that belong to the client. E2EEMode is missing, so it must be added.
const std::string kDelivered = crlf({
    "; Corvix payment client configuration",
    "; Edit only with the client stopped",
    "",
    "[CLIENT INFO]",
    "ClientName=Till 1",
    "AutomaticDcc = FALSE",
    "Timeout=30",
    "",
    "[OPERATING MODE]",
    "  Mode = 1",
    "",
    "[LOCAL RESPONSES]",
    "Login=TRUE",
    "logout=TRUE",
    "ChangePassword=TRUE",
    "; answered by the client itself when TRUE",
    "",
    "[SERIAL COMMUNICATIONS]",
    "ComPort=1",
    "BaudRate=9600",
    "",
    "[ENCRYPTION]",
    "MakeSecure=FALSE",
    "Type =0",
    "KeyFileLocation=\"c:\\old\\\"",
    "",
    "[TCPIP COMMUNICATIONS]",
    "IPAddress1=10.0.0.1",
    "IPAddress2=10.0.0.2",
    "IPAddress3=10.0.0.3",
    "PortNo1=9001",
    "PortNo2=9002",
    "PortNo3=9003",
    "ConnectTimeout=20",
    "",
    "[QUENMAR]",
    "QMOperatingMode=0",
    "QMComPort=1",
    "ExternalSwipe=FALSE",
    "OfflineModeEnabled=FALSE",
    "StoreOfflineTransactionsOnPed=TRUE",
    "ConfigFileLocation=\"c:\\old\\\"",
    "TransFileLocation=\"c:\\old\\\"",
    "",
    "[TRANSACTION CONFIRMATION]",
    "LocalConfirmationEnabled=FALSE",
    "ConfirmFileLocation=\"c:\\old\\\"",
    "",
    "[FUEL PROCESSING]",
    "FuelConfigFilelocation=\"c:\\old\\\"",
    "",
    "[LOG FILE INFO]",
    "FilePath=\"c:\\old\\\"",
    "MaxLogSize=1024",
});

const std::string kProfiles = crlf({
    "[GENERAL]",
    "Count=2",
    "1=1,Barclays Test,192.168.1.10,192.168.1.11,192.168.1.12,7001,7002,7003",
    "2=0,Barclays Live,62.1.2.3,62.1.2.4,62.1.2.5,443,444,445",
});

struct ClientTill {
    TempTill till;
    fs::path file = till.plant("Tessaly/Lumora/cxclientconfig.ini", kDelivered);
    TCcAddinRegistry settings;

    ClientTill() {
        till.plant("Tessaly/Lumora/connectioninfo.ini", kProfiles);
        settings.strConfigFileLocation = "c:\\tessaly\\lumora"; // completed by the first write
        settings.strConfigFileName = "cxclientconfig.ini";
        settings.strTessalyID = "Barclays Live";
    }

    // The operations in the order the configuration run calls them; each must succeed.
    void updateAll() {
        TUpDateCxClientCfg updater;
        TConnectionInfo profiles;
        bool failed = false;
        profiles.ReadConfiguration("c:\\tessaly\\lumora\\", failed);
        const auto expectSuccess = [&](const char* what) {
            EXPECT_FALSE(failed) << what << ": " << updater.strErrorMessage;
            failed = true;
        };
        updater.UpdateOperatingModeSection(settings, failed);
        expectSuccess("operating mode");
        updater.UpdateConfirmationSection(settings, failed);
        expectSuccess("confirmation");
        updater.UpdateAutomaticDcc(settings, failed);
        expectSuccess("automatic DCC");
        updater.UpdateQuenmarSection(settings, failed);
        expectSuccess("Quenmar");
        updater.SetConnectionInfo(settings, profiles, failed);
        expectSuccess("connection");
        updater.UpdateFolders(settings, failed);
        expectSuccess("folders");
    }

    std::string value(const char* section, const char* key) const {
        TTLIniFile ini;
        ini.strIniFileDir = "c:\\tessaly\\lumora\\";
        ini.strIniFileName = "cxclientconfig.ini";
        return ini.GetINIString(section, key, "<missing>");
    }
};

} // namespace

TEST(CxClientConfig, FullyIntegratedRunRewritesOnlyItsKeysAndLeavesTheClientsBytes) {
    ClientTill t;
    t.settings.lOperatingMode = 0;
    t.settings.bOfflineMode = true;
    t.settings.strComPort = "COM3";
    t.settings.lDccType = 2;
    t.settings.strChipDeviceName = "VeriFone VX820";
    t.settings.bExternalSwipe = true;
    t.settings.bE2EEEnabled = true;
    t.updateAll();

    EXPECT_EQ(t.settings.strConfigFileLocation, "c:\\tessaly\\lumora\\");
    // The serial port is left alone: a fully integrated till does not drive the terminal.
    const std::string folder = "\"c:\\tessaly\\lumora\\\"";
    EXPECT_EQ(readBytes(t.file), crlf({
                                     "; Corvix payment client configuration",
                                     "; Edit only with the client stopped",
                                     "",
                                     "[CLIENT INFO]",
                                     "ClientName=Till 1",
                                     "AutomaticDcc=TRUE",
                                     "Timeout=30",
                                     "",
                                     "[OPERATING MODE]",
                                     "  Mode=0",
                                     "",
                                     "[LOCAL RESPONSES]",
                                     "Login=FALSE",
                                     "logout=FALSE",
                                     "ChangePassword=FALSE",
                                     "; answered by the client itself when TRUE",
                                     "",
                                     "[SERIAL COMMUNICATIONS]",
                                     "ComPort=1",
                                     "BaudRate=9600",
                                     "",
                                     "[ENCRYPTION]",
                                     "MakeSecure=TRUE",
                                     "Type=3",
                                     ("KeyFileLocation=" + folder).c_str(),
                                     "",
                                     "[TCPIP COMMUNICATIONS]",
                                     "IPAddress1=62.1.2.3",
                                     "IPAddress2=62.1.2.4",
                                     "IPAddress3=62.1.2.5",
                                     "PortNo1=443",
                                     "PortNo2=444",
                                     "PortNo3=445",
                                     "ConnectTimeout=20",
                                     "",
                                     "[QUENMAR]",
                                     "QMOperatingMode=1",
                                     "QMComPort=3",
                                     "ExternalSwipe=TRUE",
                                     "OfflineModeEnabled=TRUE",
                                     "StoreOfflineTransactionsOnPed=FALSE",
                                     ("ConfigFileLocation=" + folder).c_str(),
                                     ("TransFileLocation=" + folder).c_str(),
                                     "E2EEMode=1",
                                     "",
                                     "[TRANSACTION CONFIRMATION]",
                                     "LocalConfirmationEnabled=TRUE",
                                     ("ConfirmFileLocation=" + folder).c_str(),
                                     "",
                                     "[FUEL PROCESSING]",
                                     ("FuelConfigFilelocation=" + folder).c_str(),
                                     "",
                                     "[LOG FILE INFO]",
                                     ("FilePath=" + folder).c_str(),
                                     "MaxLogSize=1024",
                                 }));
}

TEST(CxClientConfig, SemiIntegratedRunSetsLocalResponsesAndTheSerialPort) {
    ClientTill t;
    t.settings.lOperatingMode = 2;
    t.settings.bOfflineMode = true; // off for the operating mode, then on for the device
    t.settings.strComPort = "COM12";
    t.settings.lDccType = 1;
    t.settings.strChipDeviceName = "VeriFone SC5000";
    t.settings.bExternalSwipe = false;
    t.settings.bE2EEEnabled = false;
    t.settings.strConfigFileLocation = "c:\\Tessaly\\Lumora\\";
    t.updateAll();

    const std::string folder = "\"c:\\Tessaly\\Lumora\\\"";
    EXPECT_EQ(readBytes(t.file), crlf({
                                     "; Corvix payment client configuration",
                                     "; Edit only with the client stopped",
                                     "",
                                     "[CLIENT INFO]",
                                     "ClientName=Till 1",
                                     "AutomaticDcc = FALSE",
                                     "Timeout=30",
                                     "",
                                     "[OPERATING MODE]",
                                     "  Mode = 1",
                                     "",
                                     "[LOCAL RESPONSES]",
                                     "Login=TRUE",
                                     "logout=TRUE",
                                     "ChangePassword=TRUE",
                                     "; answered by the client itself when TRUE",
                                     "",
                                     "[SERIAL COMMUNICATIONS]",
                                     "ComPort=12",
                                     "BaudRate=9600",
                                     "",
                                     "[ENCRYPTION]",
                                     "MakeSecure=FALSE",
                                     "Type =0",
                                     ("KeyFileLocation=" + folder).c_str(),
                                     "",
                                     "[TCPIP COMMUNICATIONS]",
                                     "IPAddress1=62.1.2.3",
                                     "IPAddress2=62.1.2.4",
                                     "IPAddress3=62.1.2.5",
                                     "PortNo1=443",
                                     "PortNo2=444",
                                     "PortNo3=445",
                                     "ConnectTimeout=20",
                                     "",
                                     "[QUENMAR]",
                                     "QMOperatingMode=0",
                                     "QMComPort=12",
                                     "ExternalSwipe=FALSE",
                                     "OfflineModeEnabled=TRUE",
                                     "StoreOfflineTransactionsOnPed=FALSE",
                                     ("ConfigFileLocation=" + folder).c_str(),
                                     ("TransFileLocation=" + folder).c_str(),
                                     "E2EEMode=0",
                                     "",
                                     "[TRANSACTION CONFIRMATION]",
                                     "LocalConfirmationEnabled=FALSE",
                                     ("ConfirmFileLocation=" + folder).c_str(),
                                     "",
                                     "[FUEL PROCESSING]",
                                     ("FuelConfigFilelocation=" + folder).c_str(),
                                     "",
                                     "[LOG FILE INFO]",
                                     ("FilePath=" + folder).c_str(),
                                     "MaxLogSize=1024",
                                 }));
}

TEST(CxClientConfig, OnlyDccTypeTwoIsAutomaticAndShortPortsGiveEmptyValues) {
    ClientTill t;
    TUpDateCxClientCfg updater;
    bool failed = false;
    for (const auto& [dccType, expected] :
         {std::pair{1, "FALSE"}, std::pair{2, "TRUE"}, std::pair{3, "FALSE"}}) {
        t.settings.lDccType = dccType;
        updater.UpdateAutomaticDcc(t.settings, failed);
        EXPECT_FALSE(failed);
        EXPECT_EQ(t.value("CLIENT INFO", "AutomaticDcc"), expected) << dccType;
    }

    t.settings.lOperatingMode = 1;
    t.settings.strComPort = "CO"; // too short to hold a port number
    updater.UpdateOperatingModeSection(t.settings, failed);
    updater.UpdateQuenmarSection(t.settings, failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(t.value("SERIAL COMMUNICATIONS", "ComPort"), "");
    EXPECT_EQ(t.value("QUENMAR", "QMComPort"), "");
    EXPECT_EQ(t.value("QUENMAR", "OfflineModeEnabled"), "FALSE");
    EXPECT_EQ(updater.strErrorMessage, "");
}

TEST(CxClientConfig, AFileThatCannotBeWrittenFailsWithTheOperationsTextAndKeepsEarlierKeys) {
    ClientTill t;
    TUpDateCxClientCfg updater;
    bool failed = true;
    t.settings.lOperatingMode = 0;
    updater.UpdateOperatingModeSection(t.settings, failed);
    ASSERT_FALSE(failed);
    const std::string written = readBytes(t.file);

    // Read-only as Windows sees it: no write permission bit, even for a process run as root.
    fs::permissions(t.file,
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    const std::string path = " in c:\\tessaly\\lumora\\cxclientconfig.ini";
    failed = false;
    updater.UpdateConfirmationSection(t.settings, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(updater.strErrorMessage,
              "TUpdateCxClientConfig.UpdateConfirmationSection() Failed - cannot write key "
              "LocalConfirmationEnabled of section TRANSACTION CONFIRMATION" +
                  path);
    failed = false;
    updater.UpdateQuenmarSection(t.settings, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(updater.strErrorMessage, "TUpdateCxClientConfig.UpdateVX810comPort() Failed - "
                                       "cannot write key QMOperatingMode of section QUENMAR" +
                                           path);
    // A failure is not cleared by the next success elsewhere.
    t.settings.strConfigFileName = "other.ini";
    updater.UpdateFolders(t.settings, failed);
    EXPECT_FALSE(failed);
    EXPECT_NE(updater.strErrorMessage.find("UpdateVX810comPort"), std::string::npos);

    EXPECT_EQ(readBytes(t.file), written);
    EXPECT_NE(written, kDelivered);
    EXPECT_EQ(t.value("OPERATING MODE", "Mode"), "0");

    // A folder that does not exist cannot take the file either.
    t.settings.strConfigFileLocation = "c:\\nowhere\\";
    updater.UpdateOperatingModeSection(t.settings, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(updater.strErrorMessage,
              "TUpdateCxClientConfig.UpdateOperatingModeSection() Failed - cannot write key Mode "
              "of section OPERATING MODE in c:\\nowhere\\other.ini");
}

TEST(CxClientConfig, AnUnknownProfileNameLeavesTheServerAddressesAlone) {
    ClientTill t;
    TConnectionInfo profiles;
    bool failed = false;
    profiles.ReadConfiguration("c:\\tessaly\\lumora\\", failed);
    TUpDateCxClientCfg updater;
    t.settings.strTessalyID = "barclays live"; // names are matched exactly
    updater.SetConnectionInfo(t.settings, profiles, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(updater.strErrorMessage, "TUpdateCxClientConfig.SetConnectionInfo() Failed - no "
                                       "connection profile is named \"barclays live\"");
    EXPECT_EQ(readBytes(t.file), kDelivered);

    t.settings.strTessalyID = "Barclays Test";
    updater.SetConnectionInfo(t.settings, profiles, failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(t.value("TCPIP COMMUNICATIONS", "IPAddress3"), "192.168.1.12");
    EXPECT_EQ(t.value("TCPIP COMMUNICATIONS", "PortNo1"), "7001");
}
