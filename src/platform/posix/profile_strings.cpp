#include "platform/platform.h"

#include <stdexcept>

namespace platform {

unsigned long getPrivateProfileString(const char*, const char*, const char*, char*, unsigned long,
                                      const std::string&) {
    throw std::runtime_error("profile strings: not built yet");
}
bool writePrivateProfileString(const char*, const char*, const char*, const std::string&) {
    throw std::runtime_error("profile strings: not built yet");
}

} // namespace platform
