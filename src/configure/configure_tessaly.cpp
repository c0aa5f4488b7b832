#include "configure/configure_tessaly.h"

#include "configure/changed_settings.h"
#include "configure/cx_client_config.h"
#include "configure/rms_hook_setup.h"
#include "foundation/clock.h"
#include "foundation/error_trap.h"
#include "foundation/event_pump.h"
#include "foundation/file_system.h"
#include "foundation/logging.h"
#include "foundation/registry.h"
#include "foundation/tessaly_config.h"
#include "installer/install_qm_manager.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "settings/connection_info.h"
#include "settings/setting_fields.h"
#include "settings/settings_table.h"
#include "tms/zontalk_client_ini.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string_view>

namespace {

const std::string kSc5000 = "VeriFone SC5000";
constexpr std::int32_t kRmsV2Till = 1;

// Written on every run whatever the user chose, in this order: the folders follow the program,
// and the receipt and reader options are the ones every till is supported with. Each value is
// its registry text; a folder value is under the program folder.
struct ForcedValue {
    std::int32_t field;
    std::string_view text;
    bool underProgramFolder = false;
};

constexpr std::array<ForcedValue, 10> kForcedValues{{
    {field::strConfigFileLocation, "", true},
    {field::strConfigFileName, "cxclientconfig.ini"},
    {field::strReportFileLocation, "reports\\", true},
    {field::strReceiptFileLocation, "receipts\\", true},
    {field::bCardEnquiry, "1"},
    {field::bCardReaderStatus, "1"},
    {field::lDeleteReceiptDays, "60"},
    {field::bSaveReceipts, "1"},
    {field::strRmsCcTenderType, "Credit Card"},
    {field::strRmsCashTenderType, "Cash"},
}};

// The device manager only reads its database at start-up; the pause gives the service time to
// let go of the file after the stop. Window events keep running so the wizard stays live. The
// slept time also bounds the wait, so a clock set back cannot stretch it.
void pauseWithEvents(std::chrono::seconds length) {
    constexpr std::chrono::milliseconds kStep(50);
    const auto until = currentClock().now() + length;
    std::chrono::milliseconds slept(0);
    while (currentClock().now() < until && slept < length) {
        pumpEvents();
        currentClock().sleepFor(kStep);
        slept += kStep;
    }
}

bool deviceSettingsChanged(const TCcAddinRegistry& installed, const TCcAddinRegistry& settings) {
    return installed.strComPort != settings.strComPort ||
           installed.strIdlePrompt1 != settings.strIdlePrompt1 ||
           installed.strIdlePrompt2 != settings.strIdlePrompt2 ||
           installed.strChipDeviceName != settings.strChipDeviceName ||
           installed.bExternalSwipe != settings.bExternalSwipe;
}

// A run that dies while the device manager is stopped leaves this file in the program folder;
// the next run starts the service before anything else.
constexpr std::string_view kStoppedMark = "QuenmarStopped.mark";

std::filesystem::path stoppedMark(const std::string& folder) {
    return platform::hostPath(TessalyConfig::AddBackslash(folder) + std::string(kStoppedMark));
}

void setStoppedMark(const std::string& folder, bool stopped) {
    std::error_code ignored;
    if (stopped) {
        std::ofstream(stoppedMark(folder)) << "The device manager was stopped by a configuration "
                                              "run; the next run starts it.\r\n";
    } else {
        std::filesystem::remove(stoppedMark(folder), ignored);
    }
}

void restartIfLeftStopped(const std::string& folder, Logging& log) {
    std::error_code ignored;
    if (!std::filesystem::exists(stoppedMark(folder), ignored)) {
        return;
    }
    log.Logit("An earlier run ended with Quenmar stopped: starting it first");
    TInstallQmManager installer;
    installer.olog = &log;
    bool failed = false;
    installer.StartQuenmar(failed);
    if (!failed) {
        setStoppedMark(folder, false);
    }
}

const char* trueFalse(bool value) {
    return value ? "True" : "False";
}

void forceSupportedValues(TCcAddinRegistry& settings, const std::string& folder) {
    for (const ForcedValue& forced : kForcedValues) {
        const std::string text(forced.text);
        applyStoredText(settings, *findSetting(forced.field),
                        forced.underProgramFolder ? folder + text : text);
    }
}

void writeForcedValues(TCcAddinRegistry& settings) {
    for (const ForcedValue& forced : kForcedValues) {
        settings.WriteRegistry(forced.field);
    }
}

} // namespace

std::int32_t TcOnfigureTessaly::Configure(TCcAddinRegistry& oInstalledSettings,
                                          TCcAddinRegistry& oNewSettings,
                                          const std::string& strInstallPath) {
    try {
        Logging log;
        log.strLogPath = TessalyConfig::AddBackslash(strInstallPath);
        log.strLogFile = "TessalyConfig.log";
        log.bLoggingEnabled = true;
        log.Logit("Starting Tessaly Configuration");
        restartIfLeftStopped(strInstallPath, log);
        bool bFailed = false;
        lTotalJobsToDo = 8;
        lJobsDone = 2;
        // Only the SC5000 keeps its port and prompts in the device manager's database.
        if (deviceSettingsChanged(oInstalledSettings, oNewSettings) &&
            oNewSettings.strChipDeviceName == kSc5000) {
            ConfigureQuenmarDb(oNewSettings, log, bFailed);
        }
        const auto nextJob = [&](std::int32_t done) {
            lJobsDone = done;
            pumpEvents();
            return !bFailed;
        };
        if (nextJob(2)) {
            UpdateRegistry(oInstalledSettings, oNewSettings, log, strInstallPath, bFailed);
        }
        if (nextJob(2)) {
            SetCxKeyFile(oNewSettings, strInstallPath, bFailed);
        }
        if (nextJob(3)) {
            UpdateCxClientFile(oNewSettings, log, bFailed);
        }
        if (nextJob(4)) {
            UpdateZontalkClientIni(oNewSettings, bFailed);
            if (!bFailed) {
                CreateRmsHooks(oNewSettings, log, bFailed);
            }
        }
        nextJob(6);
        if (bFailed) {
            log.Logit(strErrorMessage);
        }
        log.Logit("Ending Tessaly Configuration");
        return bFailed ? 1 : 0;
    } catch (...) {
        strErrorMessage = "TConfigureTessaly.Configure() Failed - " + faultDescription();
        return 1;
    }
}

void TcOnfigureTessaly::ConfigureQuenmarDb(TCcAddinRegistry& settings, Logging& log, bool& failed) {
    trapped(strErrorMessage, "TConfigureTessaly.ConfigureQuenmarDb() Failed - ", failed, [&] {
        strStatus = "Configuring Quenmar database";
        log.Logit("Starting configuration of Quenmar databaase");
        log.Logit("ComPort=" + settings.strComPort);
        log.Logit("IdlePrompt1=" + settings.strIdlePrompt1);
        log.Logit("IdlePrompt2=" + settings.strIdlePrompt2);
        TInstallQmManager installer;
        installer.olog = &log;
        // The installer's own flags are not looked at: it has logged what went wrong, and a
        // service that did not stop still gets its new settings at the next start.
        bool ignored = false;
        {
            // From the stop to the start the run may not be ended: the till would be left
            // without its device manager.
            const platform::HeldTermination held;
            setStoppedMark(log.strLogPath, true);
            installer.StopQuenmar(ignored);
            pauseWithEvents(std::chrono::seconds(10));
            installer.ConfigDatabase(settings, ignored);
            bool notStarted = false;
            installer.StartQuenmar(notStarted);
            setStoppedMark(log.strLogPath, notStarted);
        }
        log.Logit("Finsihed configuring Quenmar database");
        return false;
    });
}

void TcOnfigureTessaly::UpdateRegistry(TCcAddinRegistry& installed, TCcAddinRegistry& settings,
                                       Logging& log, const std::string& installPath, bool& failed) {
    trapped(strErrorMessage, "TConfigureTessaly.UpdateRegistry() Failed - ", failed, [&] {
        strStatus = "Updating registry settings";
        forceSupportedValues(settings, TessalyConfig::AddBackslash(installPath));
        // Decided on the installed password, not the one typed: a till that never had one gets
        // the default, whatever the user entered.
        if (installed.strCorvixPassword.empty()) {
            settings.strCorvixPassword = "tulip";
            settings.WriteRegistry(field::strCorvixPassword);
        }
        writeForcedValues(settings);
        const bool bChanged = writeChangedSettings(installed, settings);
        log.Logit(bChanged ? "Changes made to registry settings"
                           : "No changes made to the registry");
        return false;
    });
}

void TcOnfigureTessaly::SetCxKeyFile(TCcAddinRegistry& settings, const std::string& installPath,
                                     bool& failed) {
    trapped(strErrorMessage, "TConfigureTessaly.SetCxKeyFile() Failed - ", failed, [&] {
        const std::string folder = TessalyConfig::AddBackslash(installPath);
        const std::string source = settings.bTestMode ? "cxkeyfile_test.txt" : "cxkeyfile_live.txt";
        // A key file that is not there leaves the old one in place; the payment client reports
        // a wrong key itself, so the run goes on.
        FileSystem files;
        bool copyFailed = false;
        files.CopyFile(folder + source, folder + "cxkeyfile.txt", copyFailed);
        return false;
    });
}

void TcOnfigureTessaly::UpdateCxClientFile(TCcAddinRegistry& settings, Logging& log, bool& failed) {
    trapped(strErrorMessage, "TConfgureTessaly.UpdateCxClientFile() Failed - ", failed, [&] {
        strStatus = "Updating operating mode sction in configuration file";
        log.Logit("Updating operating mode section in CxClientConfig.ini");
        log.Logit(std::string("Mode=") + (settings.lOperatingMode != 0 ? "1" : "0"));
        log.Logit("COM Port=" + settings.strComPort);
        TConnectionInfo profiles;
        bool readFailed = false;
        profiles.ReadConfiguration(settings.strConfigFileLocation, readFailed);
        TUpDateCxClientCfg updater;
        using Section = void (TUpDateCxClientCfg::*)(TCcAddinRegistry&, bool&);
        for (const Section section : {&TUpDateCxClientCfg::UpdateOperatingModeSection,
                                      &TUpDateCxClientCfg::UpdateConfirmationSection,
                                      &TUpDateCxClientCfg::UpdateAutomaticDcc}) {
            bool sectionFailed = true;
            (updater.*section)(settings, sectionFailed);
            if (sectionFailed) {
                strErrorMessage = updater.strErrorMessage;
                return true;
            }
        }
        return !updateQuenmarSettings(settings, profiles, updater, log);
    });
}

bool TcOnfigureTessaly::updateQuenmarSettings(TCcAddinRegistry& settings,
                                              const TConnectionInfo& profiles,
                                              TUpDateCxClientCfg& updater, Logging& log) {
    strStatus = "Updating Quenmar settings in configuration file";
    log.Logit("Updating Quenmar section in CxClientConfig.ini");
    log.Logit("Device=" + settings.strChipDeviceName);
    log.Logit("COM Port=" + settings.strComPort);
    log.Logit(std::string("External Swipe=") + trueFalse(settings.bExternalSwipe));
    bool sectionFailed = true;
    updater.UpdateQuenmarSection(settings, sectionFailed);
    if (sectionFailed) {
        strErrorMessage = updater.strErrorMessage;
        return false;
    }
    log.Logit("Quenmar section update complete");
    // Addresses and folders are the client's to complain about: a profile name it does not
    // know, or a folder key it cannot take, does not fail the run.
    bool ignored = false;
    updater.SetConnectionInfo(settings, profiles, ignored);
    updater.UpdateFolders(settings, ignored);
    return true;
}

void TcOnfigureTessaly::UpdateZontalkClientIni(TCcAddinRegistry& settings, bool& failed) {
    failed = false;
    // The profile file's writes report only through their results, which the run has never
    // looked at: a file that refuses them does not fail the configuration.
    WriteZontalkClientFolders(settings.strConfigFileLocation);
}

void TcOnfigureTessaly::CreateRmsHooks(TCcAddinRegistry& settings, Logging& log, bool& failed) {
    trapped(strErrorMessage, "TConfigureTessaly.CreateRmsHooks() Failed - ", failed, [&] {
        strStatus = "Creating RMS Hooks";
        // RMS V3 tills register the add-in through their own installer.
        if (settings.lTillType == kRmsV2Till) {
            log.Logit("Creating RMS Hooks (if necessary)");
            TRmsHookSetup hooks;
            hooks.AddTransactionHook();
            hooks.AddZReportHook();
            log.Logit("RMS Hooks created");
        }
        return false;
    });
}

void TcOnfigureTessaly::UpdateCxClientQuenmar(TCcAddinRegistry& settings, Logging& log,
                                              bool& failed) {
    trapped(strErrorMessage, "TConfgureTessaly.UpdateCxClientQuenmar() Failed - ", failed, [&] {
        TConnectionInfo profiles;
        bool readFailed = false;
        profiles.ReadConfiguration(settings.strConfigFileLocation, readFailed);
        TUpDateCxClientCfg updater;
        return !updateQuenmarSettings(settings, profiles, updater, log);
    });
}

void TcOnfigureTessaly::InstallQuenmar(TCcAddinRegistry& settings, const std::string& sourceFolder,
                                       Logging& log, bool& failed) {
    trapped(strErrorMessage, "TConfigureTessaly.InstallQuenmar() Failed - ", failed, [&] {
        log.Logit("Please ensure that the SC5000 device is wiped before proceeding");
        strStatus = "Installing Quenmar";
        TInstallQmManager installer;
        if (installer.Install(sourceFolder, settings, log) != 0) {
            strErrorMessage = installer.strErrorMessage;
            return true;
        }
        return false;
    });
}

void TcOnfigureTessaly::SetAddAmountOptions() {
    const std::string key = "SOFTWARE\\Tessaly\\Quenmar\\AddAmount\\";
    TRegistry registry;
    registry.SaveRegistryValue(key, "ExtendedCardInfoOnMasterCard", "1");
    registry.SaveRegistryValue(key, "ExtendedCardInfoOnVisa", "1");
}
