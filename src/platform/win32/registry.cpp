// HKEY_LOCAL_MACHINE through the Windows registry functions. The card add-in and RMS Store
// Operations are 32-bit programs, so every key is opened in the 32-bit view: on 64-bit Windows
// our values land where they read them (SOFTWARE\WOW6432Node\... as a 64-bit program sees it).
#include "platform/platform.h"
#include "platform/recorder.h"

#include <map>
#include <mutex>
#include <optional>
#include <windows.h>

namespace platform {

namespace {

// RegOpenKeyA asks for the most access the caller may have; the view flag is the only addition.
constexpr REGSAM kAccess = MAXIMUM_ALLOWED | KEY_WOW64_32KEY;

HKEY asHandle(RegKey key) {
    return reinterpret_cast<HKEY>(key);
}

RegKey asKey(HKEY handle) {
    return reinterpret_cast<RegKey>(handle);
}

// The path each open key was opened with, for the recorder's reports.
std::mutex pathsMutex;
std::map<RegKey, std::string> openPaths;

void remember(RegKey key, const std::string& subKey) {
    if (key != 0) {
        const std::lock_guard lock(pathsMutex);
        openPaths[key] = subKey.substr(0, subKey.find('\0'));
    }
}

std::string pathOf(RegKey key) {
    const std::lock_guard lock(pathsMutex);
    const auto found = openPaths.find(key);
    return found == openPaths.end() ? std::string() : found->second;
}

std::optional<std::string> storedBytes(RegKey key, const std::string& valueName) {
    DWORD length = 0;
    if (RegQueryValueExA(asHandle(key), valueName.c_str(), nullptr, nullptr, nullptr, &length) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::string bytes(length, '\0');
    if (RegQueryValueExA(asHandle(key), valueName.c_str(), nullptr, nullptr,
                         reinterpret_cast<BYTE*>(bytes.data()), &length) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    bytes.resize(length);
    // Wine keeps a string's terminating NUL even when it was stored without one.
    if (!bytes.empty() && bytes.back() == '\0') {
        bytes.pop_back();
    }
    return bytes;
}

} // namespace

long regOpenKey(const std::string& subKey, RegKey& key) {
    HKEY handle = nullptr;
    const LONG status = RegOpenKeyExA(HKEY_LOCAL_MACHINE, subKey.c_str(), 0, kAccess, &handle);
    key = status == ERROR_SUCCESS ? asKey(handle) : 0;
    remember(key, subKey);
    return status;
}

long regCreateKey(const std::string& subKey, RegKey& key) {
    HKEY handle = nullptr;
    const LONG status =
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        kAccess, nullptr, &handle, nullptr);
    key = status == ERROR_SUCCESS ? asKey(handle) : 0;
    remember(key, subKey);
    return status;
}

long regQueryValue(RegKey key, const std::string& valueName, std::uint32_t* type,
                   unsigned char* data, std::uint32_t* size) {
    DWORD storedType = 0;
    DWORD length = size != nullptr ? *size : 0;
    const LONG status = RegQueryValueExA(asHandle(key), valueName.c_str(), nullptr, &storedType,
                                         data, size != nullptr ? &length : nullptr);
    if (type != nullptr) {
        *type = storedType;
    }
    if (size != nullptr) {
        *size = length;
    }
    return status;
}

long regSetValue(RegKey key, const std::string& valueName, std::uint32_t type,
                 const unsigned char* data, std::uint32_t size) {
    Recorder* recorder = activeRecorder();
    const std::optional<std::string> before =
        recorder != nullptr ? storedBytes(key, valueName) : std::nullopt;
    const LONG status = RegSetValueExA(asHandle(key), valueName.c_str(), 0, type, data, size);
    if (recorder != nullptr && status == ERROR_SUCCESS) {
        const std::string after = data == nullptr
                                      ? std::string()
                                      : std::string(reinterpret_cast<const char*>(data), size);
        recorder->registryValueSet(pathOf(key), valueName.substr(0, valueName.find('\0')), before,
                                   after);
    }
    return status;
}

long regCloseKey(RegKey key) {
    {
        const std::lock_guard lock(pathsMutex);
        openPaths.erase(key);
    }
    return RegCloseKey(asHandle(key));
}

void beginRegistryReads() {}

void endRegistryReads() {}

std::string registryWriteFault(const std::string& subKey) {
    HKEY handle = nullptr;
    const LONG status = RegOpenKeyExA(HKEY_LOCAL_MACHINE, subKey.c_str(), 0,
                                      KEY_SET_VALUE | KEY_WOW64_32KEY, &handle);
    if (status == ERROR_FILE_NOT_FOUND) {
        return ""; // nothing is ever written under a key that does not exist
    }
    if (status != ERROR_SUCCESS) {
        return "the registry key " + subKey + " cannot be written (error " +
               std::to_string(status) + ")";
    }
    RegCloseKey(handle);
    return "";
}

} // namespace platform
