#include "platform/platform.h"

#include <stdexcept>

namespace platform {

std::string hostPath(const std::string&) {
    throw std::runtime_error("hostPath: not built yet");
}
std::string windowsPath(const std::string&) {
    throw std::runtime_error("windowsPath: not built yet");
}
std::string programFolder() {
    throw std::runtime_error("programFolder: not built yet");
}

} // namespace platform
