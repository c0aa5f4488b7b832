#include "foundation/ini_key_writer.h"

#include <stdexcept>

void writeIniKeys(TTLIniFile& ini, const std::vector<IniKey>& keys) {
    for (const IniKey& entry : keys) {
        // The profile-string write reports a refusal only through its result; turning it into an
        // error here gives the caller's trap a description it can show.
        if (ini.SetINIString(entry.section, entry.key, entry.value) == 0) {
            throw std::runtime_error("cannot write key " + entry.key + " of section " +
                                     entry.section + " in " + ini.strIniFileDir +
                                     ini.strIniFileName);
        }
    }
}

std::string iniFlag(bool value) {
    return value ? "TRUE" : "FALSE";
}
