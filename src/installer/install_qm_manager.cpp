#include "installer/install_qm_manager.h"

#include "foundation/clock.h"
#include "foundation/error_trap.h"
#include "foundation/event_pump.h"
#include "foundation/file_system.h"
#include "foundation/logging.h"
#include "foundation/tessaly_config.h"
#include "foundation/wait_process.h"
#include "installer/quenmar_commands.h"
#include "installer/quenmar_layout.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"

#include <chrono>

using namespace quenmar;

namespace {

// A folder that a closing program still holds is usually let go within moments; retrying for
// half a minute covers a slow service shutdown without leaving the user waiting for ever.
constexpr std::chrono::seconds kDeleteRetryPeriod{30};
// The retries run back to back in spirit; the short pause only keeps the loop from taking the
// processor away from the program that has to let go of the folder.
constexpr std::chrono::milliseconds kDeleteRetryPause{100};

// The message names no folder, hence the two blanks: installers have always shown it so.
const std::string kCreateInstallFolderFailed = "Failed creating  directory";

} // namespace

template <typename Body>
void TInstallQmManager::runStep(const std::string& prefix, bool& failed, Body&& body,
                                const std::string& logPrefix, const std::string& logSuffix) {
    if (trapped(strErrorMessage, prefix, failed, body) && !logPrefix.empty()) {
        logit(logPrefix + strErrorMessage + logSuffix);
    }
}

std::int32_t TInstallQmManager::Install(const std::string& sourceFolder,
                                        const TCcAddinRegistry& settings, Logging& log) {
    olog = &log;
    std::int32_t result = 1;
    bool faulted = false;
    runStep(
        "TInstallQuenmar.Install() Failed - ", faulted,
        [&] {
            logit("Starting installation of Tessaly Quenmar");
            logit(std::string("Mode=") + (settings.bTestMode ? "TEST" : "LIVE"));
            logit("Acquirer=" + settings.strAcquirer);
            logit("Currency=" + settings.strbaseCurrency);
            strSourceFolder = TessalyConfig::AddBackslash(sourceFolder);

            // Each step runs only while every earlier one succeeded; between them the window
            // gets the chance to repaint and show the new status.
            bool failed = true;
            const auto step = [&](auto&& run) {
                if (!failed) {
                    pumpEvents();
                    run();
                }
            };
            CheckInstallArchives(settings, failed);
            step([&] { BackupExistingInstall(failed); });
            step([&] { CreateDirectoryStructure(failed); });
            for (int index = 0; index < 3; ++index) {
                step([&] { ExtractFolder(index, failed); });
            }
            step([&] { ExtractDatabase(settings, failed); });
            step([&] { ExtractZontalk(settings, failed); });
            step([&] { SetEnvironmentPath(failed); });
            step([&] { CreateDataSource(failed); });
            step([&] { ConfigDatabase(settings, failed); });
            step([&] { InstallQuenmar(failed); });
            step([&] {
                StartQuenmar(failed);
                result = failed ? 1 : 0;
            });
            logit(result == 0 ? "Installation of Tessaly Quenmar successfully completed"
                              : "Failed installing Tessaly Quenmar");
            return false;
        },
        "Failed installing Tessaly Quenmar [");
    return faulted ? 1 : result;
}

void TInstallQmManager::CheckInstallArchives(const TCcAddinRegistry& settings, bool& failed) {
    failed = true;
    strErrorMessage.clear();
    FileSystem fso;
    for (const std::string& archive : kCheckedArchives) {
        if (!fso.FileExists(strSourceFolder + archive)) {
            strErrorMessage = "File : " + strSourceFolder + archive + " not found";
            logit(strErrorMessage);
            return;
        }
    }
    if (!fso.FileExists(strSourceFolder + databaseArchive(settings))) {
        // "comination" is how this message has always read; support staff search for it.
        strErrorMessage =
            "This comination of currency and acquirer is not currently supported by the utility";
        logit(strErrorMessage);
        return;
    }
    if (!fso.FileExists(strSourceFolder + zontalkArchive(settings))) {
        strErrorMessage = "This combination of currency, acquirer and test/live mode is not "
                          "currently supported by the utility";
        logit(strErrorMessage);
        return;
    }
    failed = false;
}

void TInstallQmManager::BackupExistingInstall(bool& failed) {
    std::string backupFolder;
    bool backedUp = false; // an installation was there to back up
    trapped(strErrorMessage, "TInstallQuenmar.BackupExistingInstall() Failed - ", failed, [&] {
        FileSystem fso;
        bool stepFailed = false;
        if (!fso.FolderExists(kInstallFolder)) {
            createInstallFolder(stepFailed);
            return stepFailed;
        }
        // Looked at a second time: another installer may have removed it in the meantime.
        if (!fso.FolderExists(kInstallFolder)) {
            return false;
        }
        backedUp = true;
        setStatus("Backing up existing Quenmar installation");
        logit("Starting backup of existing Quenmar installation");
        StopQuenmar(stepFailed);
        if (!stepFailed) {
            UnInstallQuenmar(stepFailed);
        }
        if (!stepFailed) {
            const DateTime now = localNow();
            backupFolder = kRootFolder + kBackupPrefix + formatYmd(now) + "_" + formatHms(now);
            copyInstallAside(backupFolder, stepFailed);
        }
        return stepFailed;
    });
    if (!backedUp && !failed) {
        return;
    }
    if (failed) {
        logit("Failed backing up Quenmar. [" + strErrorMessage + "]");
    } else {
        // "Backuped" is the wording the log has always had.
        logit("Backup complete. Backuped to [" + backupFolder + "]");
    }
}

void TInstallQmManager::createInstallFolder(bool& failed) {
    FileSystem fso;
    failed = true;
    // Without the root folder the installation folder cannot be made, so it is not tried.
    if (!fso.FolderExists(kRootFolder) && fso.CreateFolder(kRootFolder)) {
        strErrorMessage = kCreateInstallFolderFailed;
        return;
    }
    if (fso.CreateFolder(kInstallFolder)) {
        strErrorMessage = kCreateInstallFolderFailed;
        return;
    }
    failed = false;
}

void TInstallQmManager::copyInstallAside(const std::string& backupFolder, bool& failed) {
    failed = true;
    FileSystem fso;
    // Two installs within one second share a backup folder; the second copy overwrites into it.
    const std::string installFolderName = kInstallFolder.substr(0, kInstallFolder.size() - 1);
    if (!fso.CopyFolder(installFolderName, backupFolder, true)) {
        strErrorMessage = "Failed backing up existing Quenmar installation.\r\n"
                          "CopyFolder() failed. source=" +
                          kInstallFolder + ", destination=" + backupFolder;
        return;
    }
    if (!deleteInstallFolder()) {
        return;
    }
    if (fso.CreateFolder(kInstallFolder)) {
        strErrorMessage = kCreateInstallFolderFailed;
        return;
    }
    failed = false;
}

// True once the folder is gone. A program that has just stopped can hold on to its files for a
// while, so deleting is retried until half a minute has passed.
bool TInstallQmManager::deleteInstallFolder() {
    Clock& clock = currentClock();
    const auto deadline =
        std::chrono::round<std::chrono::seconds>(clock.now()) + kDeleteRetryPeriod;
    FileSystem fso;
    while (clock.now() < deadline) {
        if (!fso.DeleteFolder(kInstallFolder)) {
            return true;
        }
        strErrorMessage = "Failed deleting existing Quenmar installation.\r\n"
                          "DeleteFolder() Failed. source=" +
                          kInstallFolder;
        clock.sleepFor(kDeleteRetryPause);
    }
    return false;
}

void TInstallQmManager::CreateDirectoryStructure(bool& failed) {
    runStep(
        "TInstallQuenmar.CreateDirectoryStructure() Failed - ", failed,
        [&] {
            setStatus("Creating Quenmar directory structure");
            logit("Starting creation of Quenmar directory structure");
            FileSystem fso;
            for (const std::string& folder : kFolderTree) {
                if (fso.CreateFolder(folder)) {
                    strErrorMessage = "Failed creating " + folder + " directory";
                    logit("Error [" + strErrorMessage + "]");
                    return true;
                }
            }
            logit("Completed creation of Quenmar directory structure");
            return false;
        },
        "Failed creating Quenmar directory structure [");
}

void TInstallQmManager::ExtractFolder(int index, bool& failed) {
    runStep("TInstallQuenmar.ExtractFolder(" + std::to_string(index) + ") Failed - ", failed, [&] {
        const FolderArchive archive = folderArchive(index);
        extract(archive.archive, archive.target);
        return false;
    });
}

void TInstallQmManager::ExtractDatabase(const TCcAddinRegistry& settings, bool& failed) {
    runStep("TInstallQuenmar.ExtractDatabase() Failed - ", failed, [&] {
        extract(databaseArchive(settings), kDatabaseFolder);
        return false;
    });
}

void TInstallQmManager::ExtractZontalk(const TCcAddinRegistry& settings, bool& failed) {
    runStep("TInstallQuenmar.ExtractZontalk() Failed - ", failed, [&] {
        extract(zontalkArchive(settings), kDownloadFolder);
        return false;
    });
}

void TInstallQmManager::extract(const std::string& archive, const std::string& targetFolder) {
    setStatus("Extracting " + archive + " to " + targetFolder);
    shell(unpackCommand(strSourceFolder, archive, targetFolder));
    logit("Finished Extracting " + archive + " to " + targetFolder);
}

void TInstallQmManager::SetEnvironmentPath(bool& failed) {
    runStep(
        "TInstallQuenmar.SetEnvironmentPath() Failed - ", failed,
        [&] {
            setStatus("Setting up environment variables");
            logit("Setting environment variables");
            // Removing first keeps PATH free of duplicates when the installer runs again.
            shell(pathRemoveCommand(kProgramFolder));
            shell(pathRemoveCommand(kUtilsFolder));
            shell(pathAppendCommand(kProgramFolder));
            shell(pathAppendCommand(kUtilsFolder));
            logit("Finished setting environment variables");
            return false;
        },
        "Failed setting environment variables [");
}

void TInstallQmManager::CreateDataSource(bool& failed) {
    runStep(
        "TInstallQuenmar.CreateDataSource() Failed - ", failed,
        [&] {
            setStatus("Creating Quenmar datasource");
            logit("Creating Quenmar datasource");
            shell(dataSourceCommand());
            logit("Finished creating Quenmar datasource");
            return false;
        },
        "Failed creating datasource [");
}

void TInstallQmManager::ConfigDatabase(const TCcAddinRegistry& settings, bool& failed) {
    runStep(
        "TInstallQuenmar.ConfigDatabase() Failed - ", failed,
        [&] {
            setStatus("Configuring Quenmar database");
            // The misspelling is the log's own, kept so that existing log searches still match.
            logit("Starting confgiuration of Quenmar database");
            std::string computer = platform::computerName();
            if (computer.empty()) {
                strErrorMessage = "Failed getting computer name";
                logit(strErrorMessage);
                return true;
            }
            computer = computer.substr(0, computer.find('\0'));
            // One reader per till: the statement deliberately updates every row. The values are
            // not escaped; none of them can hold a quote on a till set up by this wizard.
            const std::string statement =
                "UPDATE SmartcardReaders_T SET Localhost='" + computer + "', DeviceName='" +
                settings.strComPort + "', Hostname='', SmartCardReaderType=1, ReaderCapabilities=" +
                (settings.bExternalSwipe ? "6" : "4") + ";";
            shell(sqlCommand(statement));
            logit("Finished configuring Quenmar database");
            return false;
        },
        "Failed configuring Quenmar database [");
}

void TInstallQmManager::StopQuenmar(bool& failed) {
    runStep(
        "TInstallQuenmar.StopQuenmar() Failed - ", failed,
        [&] {
            setStatus("Stopping Quenmar");
            logit("Stopping Quenmar");
            shell(serviceCommand("stop"));
            logit("Stopping process finished");
            return false;
        },
        "Error stopping Quenmar. [");
}

void TInstallQmManager::StartQuenmar(bool& failed) {
    runStep(
        "TInstallQuenmar.StartQuenmar() Failed - ", failed,
        [&] {
            setStatus("Starting Quenmar");
            logit("Starting Quenmar");
            shell(serviceCommand("start"));
            logit("Starting Quenmar process finished");
            return false;
        },
        "Failed starting Quenmar [");
}

void TInstallQmManager::InstallQuenmar(bool& failed) {
    std::string commandLine;
    if (trapped(strErrorMessage, "TInstallQuenmar.InstallQuenmar() Failed - ", failed, [&] {
            setStatus("Installing Quenmar service");
            logit("Installing Quenmar service");
            commandLine = serviceInstallCommand();
            shell(commandLine);
            commandLine = serviceCommand("automatic");
            shell(commandLine);
            logit("Finished installing Quenmar service");
            return false;
        })) {
        logit("Failed installing Quenmar service [" + strErrorMessage + "] [" + commandLine + "]");
    }
}

void TInstallQmManager::UnInstallQuenmar(bool& failed) {
    runStep(
        "TInstallQuenmar.UnInstallQuenmar() Failed - ", failed,
        [&] {
            logit("Starting un-install of Quenmar service");
            shell(serviceCommand("remove"));
            logit("Finished un-install of Quenmar service");
            return false;
        },
        "Failed un-installing Quenmar service [");
}

void TInstallQmManager::shell(const std::string& commandLine) {
    logit("About to shell [" + commandLine + "]");
    WaitProcess::RunHiddenAndWait(commandLine);
}

void TInstallQmManager::setStatus(const std::string& status) {
    strCurrentStatus = status;
    pumpEvents();
}

void TInstallQmManager::logit(const std::string& line) {
    if (olog != nullptr) {
        olog->Logit(line);
    }
}
