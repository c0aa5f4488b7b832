#include "platform/platform.h"

#include <stdexcept>

namespace platform {

long regOpenKey(const std::string&, RegKey&) {
    throw std::runtime_error("registry: not built yet");
}
long regCreateKey(const std::string&, RegKey&) {
    throw std::runtime_error("registry: not built yet");
}
long regQueryValue(RegKey, const std::string&, std::uint32_t*, unsigned char*, std::uint32_t*) {
    throw std::runtime_error("registry: not built yet");
}
long regSetValue(RegKey, const std::string&, std::uint32_t, const unsigned char*, std::uint32_t) {
    throw std::runtime_error("registry: not built yet");
}
long regCloseKey(RegKey) {
    throw std::runtime_error("registry: not built yet");
}

} // namespace platform
