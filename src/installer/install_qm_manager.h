// Installs the chip-and-pin device-manager service "Tessaly Quenmar" and runs it: backs up and
// removes an old installation, lays out the folders, unpacks the vendor's archives, puts the
// programs on PATH, creates the ODBC data source, writes the till's reader row and registers and
// starts the service. The configuration run uses only the stop / configure database / start part.
//
// All real work is done by the vendor's command-line tools, each started hidden and waited for.
// Their exit codes are never looked at: a step fails only when a folder cannot be made, copied
// or deleted, an archive is missing, or an error is trapped (a tool that cannot be started).
//
// Every step takes the caller's failure flag, sets it on entry and clears it only as its last
// act, so that a trapped error leaves it set.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

class Logging;
class TCcAddinRegistry;

class TInstallQmManager {
public:
    // The text of the last failure; not cleared by a step that succeeds.
    std::string strErrorMessage;
    // One line saying what is being done, for the caller to show while the job runs.
    std::string strCurrentStatus;
    // Where every line goes; not owned. Nothing is logged while it is null.
    Logging* olog = nullptr;

    // The whole installation from the archives in `sourceFolder`. 0 when every step succeeded,
    // 1 otherwise, with the reason in strErrorMessage.
    std::int32_t Install(const std::string& sourceFolder, const TCcAddinRegistry& settings,
                         Logging& log);

    // Puts the program and utilities folders on the machine's PATH, each exactly once.
    void SetEnvironmentPath(bool& failed);
    void StopQuenmar(bool& failed);
    void StartQuenmar(bool& failed);
    // Writes this till's name, the device's port and its swipe capability into every reader row
    // of the service's database.
    void ConfigDatabase(const TCcAddinRegistry& settings, bool& failed);

private:
    void CheckInstallArchives(const TCcAddinRegistry& settings, bool& failed);
    void BackupExistingInstall(bool& failed);
    void CreateDirectoryStructure(bool& failed);
    void ExtractFolder(int index, bool& failed);
    void ExtractDatabase(const TCcAddinRegistry& settings, bool& failed);
    void ExtractZontalk(const TCcAddinRegistry& settings, bool& failed);
    void CreateDataSource(bool& failed);
    void InstallQuenmar(bool& failed);
    void UnInstallQuenmar(bool& failed);

    // The parts of a backup: a fresh machine only gets its installation folder; an existing
    // installation is copied into the backup folder, deleted and made again, empty.
    void createInstallFolder(bool& failed);
    void copyInstallAside(const std::string& backupFolder, bool& failed);
    bool deleteInstallFolder();

    void extract(const std::string& archive, const std::string& targetFolder);
    void shell(const std::string& commandLine);
    void setStatus(const std::string& status);
    void logit(const std::string& line);
    // Runs a step's body under the trap: a fault fails the step with the prefix and the fault's
    // description in strErrorMessage, logged as logPrefix, the message and logSuffix when the
    // step logs its faults. The body returns true when it failed without a fault.
    template <typename Body>
    void runStep(const std::string& prefix, bool& failed, Body&& body,
                 const std::string& logPrefix = "", const std::string& logSuffix = "]");

    std::string strSourceFolder;
};
