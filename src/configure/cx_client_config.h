// The payment client's configuration file "cxclientconfig.ini": each operation writes one group
// of keys from the new settings and leaves every other byte of the file as the client keeps it.
#pragma once

#include "foundation/ini_key_writer.h"
#include "settings/ccaddin_registry.h"
#include "settings/connection_info.h"

#include <functional>
#include <string>
#include <vector>

class TUpDateCxClientCfg {
public:
    // Each operation first completes settings.strConfigFileLocation with a trailing "\" (the
    // record keeps the completed folder), then writes its keys in a fixed order to
    // strConfigFileLocation + strConfigFileName. `failed` is true from the start and cleared
    // only after the last key; a key that cannot be written stops the operation with
    // strErrorMessage set, and the keys written before it stay in the file.

    // The addresses and ports of the connection profile named by strTessalyID (empty addresses
    // and port 0 for a name no profile has).
    void SetConnectionInfo(TCcAddinRegistry& settings, const TConnectionInfo& profiles,
                           bool& failed);
    void UpdateQuenmarSection(TCcAddinRegistry& settings, bool& failed);
    void UpdateFolders(TCcAddinRegistry& settings, bool& failed);
    void UpdateAutomaticDcc(TCcAddinRegistry& settings, bool& failed);
    void UpdateOperatingModeSection(TCcAddinRegistry& settings, bool& failed);
    void UpdateConfirmationSection(TCcAddinRegistry& settings, bool& failed);

    std::string strErrorMessage; // the last failure; a later success leaves it

private:
    // The keys are built inside the trap, after the folder is completed: building may fail too.
    using KeyBuilder = std::function<std::vector<IniKey>(const TCcAddinRegistry&)>;

    void writeKeys(TCcAddinRegistry& settings, bool& failed, const char* errorPrefix,
                   const KeyBuilder& keys);
};
