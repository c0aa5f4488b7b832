// The configuration run behind the wizard's Finish button: applies the settings the user chose
// to the till in a fixed list of jobs (device-manager database, registry, key file, payment
// client file, ZonTalk profiles, RMS hooks), logging each step to "TessalyConfig.log" in the
// program folder. The first job that fails stops the run; what earlier jobs did stays done.
#pragma once

#include <cstdint>
#include <string>

class Logging;
class TCcAddinRegistry;
class TConnectionInfo;
class TUpDateCxClientCfg;

// The capital O is the class's name as the wizard and the add-in have always spelt it.
class TcOnfigureTessaly {
public:
    // Read by the wizard's status timer while the run yields to the event pump.
    std::string strErrorMessage;
    std::int32_t lTotalJobsToDo = 0;
    // Not a true count: the wizard's progress bar was drawn for these exact steps.
    std::int32_t lJobsDone = 0;
    std::string strStatus;

    // 0 when every job that ran succeeded, 1 when one failed (its text in strErrorMessage).
    // Writes the registry through `oNewSettings`, which also receives the forced values.
    std::int32_t Configure(TCcAddinRegistry& oInstalledSettings, TCcAddinRegistry& oNewSettings,
                           const std::string& strInstallPath);

private:
    // The jobs of the run, in the order it runs them; each sets `failed` when its trap fires.
    void ConfigureQuenmarDb(TCcAddinRegistry& settings, Logging& log, bool& failed);
    void UpdateRegistry(TCcAddinRegistry& installed, TCcAddinRegistry& settings, Logging& log,
                        const std::string& installPath, bool& failed);
    void SetCxKeyFile(TCcAddinRegistry& settings, const std::string& installPath, bool& failed);
    void UpdateCxClientFile(TCcAddinRegistry& settings, Logging& log, bool& failed);
    void UpdateZontalkClientIni(TCcAddinRegistry& settings, bool& failed);
    void CreateRmsHooks(TCcAddinRegistry& settings, Logging& log, bool& failed);

    // Kept from earlier versions of the run; nothing calls them any more.
    void UpdateCxClientQuenmar(TCcAddinRegistry& settings, Logging& log, bool& failed);
    void InstallQuenmar(TCcAddinRegistry& settings, const std::string& sourceFolder, Logging& log,
                        bool& failed);
    void SetAddAmountOptions();

    // The device part of the payment client's file, shared by UpdateCxClientFile and
    // UpdateCxClientQuenmar. False when its section writer refused (message already copied).
    bool updateQuenmarSettings(TCcAddinRegistry& settings, const TConnectionInfo& profiles,
                               TUpDateCxClientCfg& updater, Logging& log);
};
