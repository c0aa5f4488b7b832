// On Windows a Windows path is the host path; only the program's own folder needs the system.
#include "platform/platform.h"
#include "platform/win32/win32_error.h"

#include <stdexcept>
#include <windows.h>

namespace platform {

std::string hostPath(const std::string& windowsPath) {
    return windowsPath;
}

std::string windowsPath(const std::string& hostPath) {
    return hostPath;
}

std::string programFolder() {
    // A path longer than MAX_PATH is cut to the buffer, so grow it until the name fits.
    for (DWORD capacity = MAX_PATH;; capacity *= 2) {
        std::string path(capacity, '\0');
        const DWORD length = GetModuleFileNameA(nullptr, path.data(), capacity);
        if (length == 0) {
            throw std::runtime_error("cannot find the program's folder: " +
                                     win32::lastErrorDescription());
        }
        if (length < capacity) {
            path.resize(length);
            return path.substr(0, path.find_last_of('\\') + 1);
        }
    }
}

} // namespace platform
