#include "platform/platform.h"

#include <stdexcept>

namespace platform {

std::uint32_t startHidden(const std::string&) {
    throw std::runtime_error("startHidden: not built yet");
}
void waitForProcess(std::uint32_t) {
    throw std::runtime_error("waitForProcess: not built yet");
}
std::intptr_t shellOpen(const std::string&) {
    throw std::runtime_error("shellOpen: not built yet");
}
std::string computerName() {
    throw std::runtime_error("computerName: not built yet");
}

} // namespace platform
