#include "configure/cx_client_config.h"

#include "foundation/tessaly_config.h"

#include <cstdint>
#include <exception>

namespace {

// The serial port the client is told is the number after "COM": "COM3" gives "3". A name too
// short to hold a number gives an empty value.
std::string portNumber(const std::string& comPort) {
    return comPort.size() >= 4 ? comPort.substr(3) : std::string();
}

bool fullyIntegrated(const TCcAddinRegistry& settings) {
    return settings.lOperatingMode == 0;
}

std::vector<IniKey> operatingModeKeys(const TCcAddinRegistry& settings) {
    const bool full = fullyIntegrated(settings);
    // Semi-integrated tills answer log-in, log-out and password changes locally. ChangePassword
    // is written twice as the client's installer always has; the second write changes nothing.
    const std::string local = iniFlag(!full);
    std::vector<IniKey> keys{
        {"OPERATING MODE", "Mode", full ? "0" : "1"}, {"LOCAL RESPONSES", "Login", local},
        {"LOCAL RESPONSES", "Logout", local},         {"LOCAL RESPONSES", "ChangePassword", local},
        {"LOCAL RESPONSES", "ChangePassword", local},
    };
    // Only a semi-integrated till talks to its terminal over the serial port itself.
    if (!full) {
        keys.push_back({"SERIAL COMMUNICATIONS", "ComPort", portNumber(settings.strComPort)});
    }
    keys.push_back({"ENCRYPTION", "MakeSecure", iniFlag(full)});
    keys.push_back({"ENCRYPTION", "Type", full ? "3" : "0"});
    keys.push_back({"QUENMAR", "OfflineModeEnabled", iniFlag(full && settings.bOfflineMode)});
    return keys;
}

std::vector<IniKey> confirmationKeys(const TCcAddinRegistry& settings) {
    return {{"TRANSACTION CONFIRMATION", "LocalConfirmationEnabled",
             iniFlag(fullyIntegrated(settings))}};
}

std::vector<IniKey> automaticDccKeys(const TCcAddinRegistry& settings) {
    return {{"CLIENT INFO", "AutomaticDcc", iniFlag(settings.lDccType == 2)}};
}

std::vector<IniKey> quenmarKeys(const TCcAddinRegistry& settings) {
    return {
        {"QUENMAR", "QMOperatingMode", settings.strChipDeviceName == "VeriFone SC5000" ? "0" : "1"},
        {"QUENMAR", "QMComPort", portNumber(settings.strComPort)},
        {"QUENMAR", "ExternalSwipe", iniFlag(settings.bExternalSwipe)},
        {"QUENMAR", "OfflineModeEnabled", iniFlag(settings.bOfflineMode)},
        {"QUENMAR", "E2EEMode", settings.bE2EEEnabled ? "1" : "0"},
        // FALSE whatever the encryption setting: the record's own store-on-device setting is
        // deliberately not consulted here.
        {"QUENMAR", "StoreOfflineTransactionsOnPed", "FALSE"},
    };
}

std::vector<IniKey> connectionKeys(const TCcAddinRegistry& settings,
                                   const TConnectionInfo& profiles) {
    // A name no profile has leaves the details as they start, empty addresses and port 0, and
    // those are written: the client's installer has always done so, and the wizard offers only
    // names from the profile file.
    std::string address1, address2, address3;
    std::int32_t port1 = 0, port2 = 0, port3 = 0;
    bool notFound = true;
    profiles.GetDetailsByName(settings.strTessalyID, address1, address2, address3, port1, port2,
                              port3, notFound);
    const char* section = "TCPIP COMMUNICATIONS";
    return {
        {section, "IPAddress1", address1},           {section, "IPAddress2", address2},
        {section, "IPAddress3", address3},           {section, "PortNo1", std::to_string(port1)},
        {section, "PortNo2", std::to_string(port2)}, {section, "PortNo3", std::to_string(port3)},
    };
}

std::vector<IniKey> folderKeys(const TCcAddinRegistry& settings) {
    // The client reads these folders with the quotes as part of the value, so both quote
    // characters are stored. "FuelConfigFilelocation" is the client's own spelling.
    const std::string folder = '"' + settings.strConfigFileLocation + '"';
    return {
        {"QUENMAR", "ConfigFileLocation", folder},
        {"QUENMAR", "TransFileLocation", folder},
        {"TRANSACTION CONFIRMATION", "ConfirmFileLocation", folder},
        {"FUEL PROCESSING", "FuelConfigFilelocation", folder},
        {"ENCRYPTION", "KeyFileLocation", folder},
        {"LOG FILE INFO", "FilePath", folder},
    };
}

} // namespace

void TUpDateCxClientCfg::writeKeys(TCcAddinRegistry& settings, bool& failed,
                                   const char* errorPrefix, const KeyBuilder& keys) {
    failed = true;
    try {
        settings.strConfigFileLocation =
            TessalyConfig::AddBackslash(settings.strConfigFileLocation);
        TTLIniFile ini;
        ini.strIniFileDir = settings.strConfigFileLocation;
        ini.strIniFileName = settings.strConfigFileName;
        writeIniKeys(ini, keys(settings));
        failed = false;
    } catch (const std::exception& e) {
        strErrorMessage = std::string(errorPrefix) + e.what();
    } catch (...) {
        strErrorMessage = std::string(errorPrefix) + "unknown error";
    }
}

void TUpDateCxClientCfg::SetConnectionInfo(TCcAddinRegistry& settings,
                                           const TConnectionInfo& profiles, bool& failed) {
    writeKeys(settings, failed, "TUpdateCxClientConfig.SetConnectionInfo() Failed - ",
              [&profiles](const TCcAddinRegistry& s) { return connectionKeys(s, profiles); });
}

void TUpDateCxClientCfg::UpdateQuenmarSection(TCcAddinRegistry& settings, bool& failed) {
    // The failure text names the operation by another name; it is kept as the program writes it.
    writeKeys(settings, failed, "TUpdateCxClientConfig.UpdateVX810comPort() Failed - ",
              quenmarKeys);
}

void TUpDateCxClientCfg::UpdateFolders(TCcAddinRegistry& settings, bool& failed) {
    writeKeys(settings, failed, "TUpdateCxClientConfig.UpdateFolders() Failed - ", folderKeys);
}

void TUpDateCxClientCfg::UpdateAutomaticDcc(TCcAddinRegistry& settings, bool& failed) {
    writeKeys(settings, failed, "TUpdateCxClientConfig.UpdateAutomaticDcc() Failed - ",
              automaticDccKeys);
}

void TUpDateCxClientCfg::UpdateOperatingModeSection(TCcAddinRegistry& settings, bool& failed) {
    writeKeys(settings, failed, "TUpdateCxClientConfig.UpdateOperatingModeSection() Failed - ",
              operatingModeKeys);
}

void TUpDateCxClientCfg::UpdateConfirmationSection(TCcAddinRegistry& settings, bool& failed) {
    writeKeys(settings, failed, "TUpdateCxClientConfig.UpdateConfirmationSection() Failed - ",
              confirmationKeys);
}
