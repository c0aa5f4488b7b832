// Writing a list of INI keys in order, where a key that cannot be written is an error: the
// payment client's files are only useful whole, so the caller's trap must learn of the first
// key that did not reach the file. Keys written before it stay.
#pragma once

#include "foundation/ini_file.h"

#include <string>
#include <vector>

struct IniKey {
    std::string section;
    std::string key;
    std::string value;
};

// Writes each key through `ini` in list order. Throws std::runtime_error naming the key, its
// section and the file at the first write the profile-string function refuses.
void writeIniKeys(TTLIniFile& ini, const std::vector<IniKey>& keys);

// "TRUE" or "FALSE", the way the payment client's files spell their flags.
std::string iniFlag(bool value);
