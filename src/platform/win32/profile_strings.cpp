// Profile strings through the Windows functions themselves: on Windows they are the reference.
#include "platform/platform.h"

#include <windows.h>

namespace platform {

unsigned long getPrivateProfileString(const char* section, const char* key,
                                      const char* defaultValue, char* buffer, unsigned long size,
                                      const std::string& fileName) {
    return GetPrivateProfileStringA(section, key, defaultValue, buffer, size, fileName.c_str());
}

bool writePrivateProfileString(const char* section, const char* key, const char* value,
                               const std::string& fileName) {
    return WritePrivateProfileStringA(section, key, value, fileName.c_str()) != FALSE;
}

} // namespace platform
