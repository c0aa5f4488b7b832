#include "foundation/registry.h"

#include "foundation/write_audit.h"

#include <exception>

namespace {

constexpr std::int32_t kRead = 0;
constexpr std::int32_t kNotRead = 1;

const char* const kOpenFailed = "Failed opening registry key";

// Closes a key on every way out; a key handle never outlives the call that opened it.
class OpenKey {
public:
    OpenKey() = default;
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        try {
            close();
        } catch (...) {
        }
    }

    platform::RegKey& handle() { return key_; }

    void close() {
        const platform::RegKey key = key_;
        key_ = 0;
        if (key != 0) {
            platform::regCloseKey(key);
        }
    }

private:
    platform::RegKey key_ = 0;
};

} // namespace

std::int32_t TRegistry::GetRegistryValue(const std::string& keyPath, const std::string& valueName,
                                         std::string& value) {
    value.clear();
    try {
        OpenKey key;
        if (platform::regOpenKey(keyPath, key.handle()) != platform::kErrorSuccess) {
            strErrorMessage_ = kOpenFailed;
            return kNotRead;
        }
        bool found = false;
        RegQueryStringValue(key.handle(), valueName, value, found);
        key.close();
        return found ? kRead : kNotRead;
    } catch (const std::exception& e) {
        value.clear();
        strErrorMessage_ = std::string("TRegistry.GetRegistryValue() Failed - ") + e.what();
        return kNotRead;
    }
}

void TRegistry::SaveRegistryValue(const std::string& keyPath, const std::string& valueName,
                                  const std::string& value) {
    WriteAudit::registryWrite(keyPath, valueName, value);
    try {
        // Only opened, never created: a missing key is reported, not made.
        OpenKey key;
        if (platform::regOpenKey(keyPath, key.handle()) != platform::kErrorSuccess) {
            strErrorMessage_ = kOpenFailed;
            return;
        }
        storeValue(key.handle(), valueName, value);
        key.close();
    } catch (...) {
        // A fault while writing ends the operation silently; the error text is left as it was.
    }
}

void TRegistry::CreateKeyAndSaveValue(const std::string& keyPath, const std::string& valueName,
                                      const std::string& value) {
    WriteAudit::registryWrite(keyPath, valueName, value);
    try {
        OpenKey key;
        if (platform::regCreateKey(keyPath, key.handle()) != platform::kErrorSuccess) {
            strErrorMessage_ = "Failed creating registry key";
            return;
        }
        storeValue(key.handle(), valueName, value);
        key.close();
    } catch (...) {
    }
}

// The length excludes the terminating NUL, so the value is stored without one; reading it back
// returns exactly the text written.
void TRegistry::storeValue(platform::RegKey key, const std::string& valueName,
                           const std::string& value) {
    const auto* data = reinterpret_cast<const unsigned char*>(value.data());
    if (platform::regSetValue(key, valueName, platform::kRegSz, data,
                              static_cast<std::uint32_t>(value.size())) !=
        platform::kErrorSuccess) {
        strErrorMessage_ = "Failed updating registry setting";
    }
}

void TRegistry::RegQueryStringValue(platform::RegKey key, const std::string& valueName,
                                    std::string& value, bool& found) {
    try {
        value.clear();
        std::uint32_t type = platform::kRegNone;
        std::uint32_t size = 0;
        // Anything but a plain string (a number, binary data) reads as missing.
        if (platform::regQueryValue(key, valueName, &type, nullptr, &size) !=
                platform::kErrorSuccess ||
            type != platform::kRegSz) {
            return;
        }
        std::string buffer(size, ' ');
        if (platform::regQueryValue(key, valueName, &type,
                                    reinterpret_cast<unsigned char*>(buffer.data()),
                                    &size) == platform::kErrorSuccess) {
            found = true;
            value = StripNull(buffer);
        }
    } catch (const std::exception& e) {
        strErrorMessage_ = std::string("TRegistry.RegQueryStringValue Failed - ") + e.what();
    }
}

std::string TRegistry::StripNull(const std::string& text) {
    return text.substr(0, text.find('\0'));
}
