#include "fault_till.h"

#include "foundation/registry.h"
#include "platform/posix/ini_document.h"
#include "settings/settings_table.h"
#include "support/demo_till_template.h"

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

const std::string kProgramFolder = "C:\\Program Files\\Tessaly\\";

IniValues iniValues(const fs::path& file) {
    const platform::posix::IniDocument document(readBytes(file));
    IniValues values;
    for (const std::string& section : document.sectionNames()) {
        for (const std::string& key : document.keyNames(section)) {
            values.emplace(std::make_pair(section, key),
                           document.value(section, key).value_or("<none>"));
        }
    }
    return values;
}

std::map<std::string, std::string> storedSettings() {
    std::map<std::string, std::string> values;
    TRegistry registry;
    for (const SettingDescriptor& descriptor : settingsTable()) {
        std::string value;
        const std::string name(descriptor.valueName);
        values[name] = registry.GetRegistryValue(std::string(kCcAddinKeyPath), name, value) == 0
                           ? value
                           : "<missing>";
    }
    return values;
}

fs::path clientFile(const TempTill& till, const std::string& name) {
    return till.driveC() / "Program Files" / "Tessaly" / name;
}
