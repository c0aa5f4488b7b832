#include "installer/quenmar_layout.h"

#include "settings/ccaddin_registry.h"

namespace quenmar {

FolderArchive folderArchive(int index) {
    if (index < 0 || index >= static_cast<int>(kFolderArchives.size())) {
        return {};
    }
    return kFolderArchives[static_cast<std::size_t>(index)];
}

// Currency and acquirer are used exactly as stored: the archive names are case- and
// spelling-sensitive on the vendor's side.
std::string databaseArchive(const TCcAddinRegistry& settings) {
    return settings.strbaseCurrency + "_" + settings.strAcquirer + "_db.zip";
}

std::string zontalkArchive(const TCcAddinRegistry& settings) {
    const std::string mode = settings.bTestMode ? "TEST" : "LIVE";
    return mode + "_" + settings.strbaseCurrency + "_" + settings.strAcquirer + "_zontalk.zip";
}

} // namespace quenmar
