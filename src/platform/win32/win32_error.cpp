#include "platform/win32/win32_error.h"

#include <windows.h>

namespace platform::win32 {

std::string errorDescription(std::uint32_t code) {
    char buffer[512] = {};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, buffer, sizeof buffer, nullptr);
    std::string text(buffer, length);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) {
        text.pop_back();
    }
    return text.empty() ? "error " + std::to_string(code) : text;
}

std::string lastErrorDescription() {
    return errorDescription(GetLastError());
}

} // namespace platform::win32
