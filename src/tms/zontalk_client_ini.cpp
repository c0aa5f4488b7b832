#include "tms/zontalk_client_ini.h"

#include "foundation/ini_key_writer.h"
#include "foundation/tessaly_config.h"

void WriteZontalkClientFolders(const std::string& folder) {
    const std::string dir = TessalyConfig::AddBackslash(folder);
    TTLIniFile ini;
    ini.strIniFileDir = dir;
    ini.strIniFileName = "zontalkclient.ini";
    const std::string work = dir + "work\\";
    writeIniKeys(ini, {
                          {"PROFILE_1", "WorkingFolder", work},
                          {"PROFILE_2", "WorkingFolder", work},
                          {"PROFILE_3", "WorkingFolder", work},
                          {"PROFILE_1", "LogFilePath", dir},
                          {"PROFILE_2", "LogFilePath", dir},
                          {"PROFILE_3", "LogFilePath", dir},
                          {"PROFILE_2", "TmsAppFolder", dir},
                      });
}
