#include "platform/platform.h"

#include <stdexcept>

namespace platform {

std::vector<FoundFile> findFiles(const std::string&) {
    throw std::runtime_error("findFiles: not built yet");
}
FileTimes getFileTimes(const std::string&) {
    throw std::runtime_error("getFileTimes: not built yet");
}
bool setFileAttributes(const std::string&, std::uint32_t) {
    throw std::runtime_error("setFileAttributes: not built yet");
}

} // namespace platform
