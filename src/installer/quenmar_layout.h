// Where the device-manager service lives on a till and which archives fill it. Every folder is
// kept with its trailing "\" so that a file name can be appended directly.
#pragma once

#include <array>
#include <string>

class TCcAddinRegistry;

namespace quenmar {

inline const std::string kRootFolder = "c:\\tessaly\\";
inline const std::string kInstallFolder = "c:\\tessaly\\lumora\\";
inline const std::string kProgramFolder = "c:\\tessaly\\lumora\\bin\\";
inline const std::string kUtilsFolder = "c:\\tessaly\\lumora\\utils\\";
inline const std::string kTriggerFolder = "c:\\tessaly\\lumora\\trigger\\";
inline const std::string kDatabaseFolder = "c:\\tessaly\\lumora\\dbs\\";
inline const std::string kZontalkFolder = "c:\\tessaly\\lumora\\zontalk\\";
inline const std::string kSc5000Folder = "c:\\tessaly\\lumora\\zontalk\\SC5000\\";
inline const std::string kDownloadFolder = "c:\\tessaly\\lumora\\zontalk\\SC5000\\download\\";

inline const std::string kServiceName = "quenmar";
inline const std::string kServiceDisplayName = "Tessaly Quenmar";
inline const std::string kServiceProgram = "quenmar.exe";
inline const std::string kDatabaseFile = "quenmar.mdb";
inline const std::string kDataSourceName = "quenmardb";
inline const std::string kArchiver = "7z.exe";
inline const std::string kBackupPrefix = "LUMORA_";

// The folders of a fresh installation, in the order they are made: each one's parent comes
// before it.
inline const std::array<std::string, 7> kFolderTree = {
    kProgramFolder,  kUtilsFolder,  kTriggerFolder,  kZontalkFolder,
    kDatabaseFolder, kSc5000Folder, kDownloadFolder,
};

// The archives every installation needs, whatever the merchant.
struct FolderArchive {
    std::string archive;
    std::string target;
};

// By the index the extraction step is given: 0, 1 and 2.
inline const std::array<FolderArchive, 3> kFolderArchives = {{
    {"bin.zip", kProgramFolder},
    {"Utils.zip", kUtilsFolder},
    {"trigger.zip", kTriggerFolder},
}};

// The order in which the archives are looked for before anything is touched. It differs from
// the unpacking order; the first one missing is the one the user is told about, so the order is
// kept as installers have always reported it.
inline const std::array<std::string, 3> kCheckedArchives = {"bin.zip", "trigger.zip", "Utils.zip"};

// The archive and its target for an extraction index; an index out of range gives two empty
// texts, which make an unpack command that extracts nothing.
FolderArchive folderArchive(int index);

// The database shipped for the merchant's currency and acquirer, e.g. "GBP_NORTHBANK_db.zip".
std::string databaseArchive(const TCcAddinRegistry& settings);

// The terminal software for currency, acquirer and live or test mode, e.g.
// "TEST_GBP_NORTHBANK_zontalk.zip".
std::string zontalkArchive(const TCcAddinRegistry& settings);

} // namespace quenmar
