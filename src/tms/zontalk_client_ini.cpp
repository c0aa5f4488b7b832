#include "tms/zontalk_client_ini.h"

#include "foundation/ini_file.h"
#include "foundation/tessaly_config.h"

#include <array>

void WriteZontalkClientFolders(const std::string& folder) {
    const std::string dir = TessalyConfig::AddBackslash(folder);
    TTLIniFile ini;
    ini.strIniFileDir = dir;
    ini.strIniFileName = "zontalkclient.ini";
    const std::string work = dir + "work\\";
    struct Key {
        const char* section;
        const char* key;
        const std::string& value;
    };
    const std::array<Key, 7> keys{{
        {"PROFILE_1", "WorkingFolder", work},
        {"PROFILE_2", "WorkingFolder", work},
        {"PROFILE_3", "WorkingFolder", work},
        {"PROFILE_1", "LogFilePath", dir},
        {"PROFILE_2", "LogFilePath", dir},
        {"PROFILE_3", "LogFilePath", dir},
        {"PROFILE_2", "TmsAppFolder", dir},
    }};
    // Each write reports only through its result, which the run has never looked at: one key
    // refused does not keep the others from being tried.
    for (const Key& key : keys) {
        ini.SetINIString(key.section, key.key, key.value);
    }
}
