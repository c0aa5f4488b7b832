// Profile strings through the Windows functions themselves: on Windows they are the reference.
#include "platform/platform.h"
#include "platform/recorder.h"

#include <optional>
#include <vector>
#include <windows.h>

namespace platform {

unsigned long getPrivateProfileString(const char* section, const char* key,
                                      const char* defaultValue, char* buffer, unsigned long size,
                                      const std::string& fileName) {
    return GetPrivateProfileStringA(section, key, defaultValue, buffer, size, fileName.c_str());
}

bool writePrivateProfileString(const char* section, const char* key, const char* value,
                               const std::string& fileName) {
    Recorder* recorder = section != nullptr && key != nullptr ? activeRecorder() : nullptr;
    std::optional<std::string> before;
    if (recorder != nullptr) {
        // A default no value can hold tells a missing key from an empty one.
        const char* const absent = "\x01";
        std::vector<char> buffer(65536);
        const DWORD count =
            GetPrivateProfileStringA(section, key, absent, buffer.data(),
                                     static_cast<DWORD>(buffer.size()), fileName.c_str());
        if (std::string(buffer.data(), count) != absent) {
            before = std::string(buffer.data(), count);
        }
    }
    const bool written = WritePrivateProfileStringA(section, key, value, fileName.c_str()) != FALSE;
    if (recorder != nullptr && written) {
        const std::optional<std::string> after =
            value != nullptr ? std::optional<std::string>(value) : std::nullopt;
        // Windows shows no bytes to compare: a key counts as changed when the text a reader
        // gets does (a value written in quotes reads back without them).
        const std::optional<std::string> reads =
            after ? std::optional(profileValueAsRead(*after)) : after;
        recorder->profileKeyWritten(fileName, section, key, before, after, before != reads);
    }
    return written;
}

} // namespace platform
