// String values under HKEY_LOCAL_MACHINE: read, write, and the text of the last failure.
#pragma once

#include "platform/platform.h"

#include <cstdint>
#include <string>

class TRegistry {
public:
    // 0 when the string value was read into `value`, 1 otherwise; `value` is emptied first, so a
    // caller that ignores the status gets empty text for every failure. A value of any other type
    // than a plain string reads as missing.
    std::int32_t GetRegistryValue(const std::string& keyPath, const std::string& valueName,
                                  std::string& value);

    // Stores a plain string value under an existing key; the key is never created. A failure
    // shows only in strErrorMessage().
    void SaveRegistryValue(const std::string& keyPath, const std::string& valueName,
                           const std::string& value);

    // Creates the key and its missing parents, then stores the value as SaveRegistryValue does.
    void CreateKeyAndSaveValue(const std::string& keyPath, const std::string& valueName,
                               const std::string& value);

    // The most recent failure of this object's life; a later success never clears it.
    const std::string& strErrorMessage() const { return strErrorMessage_; }

private:
    void RegQueryStringValue(platform::RegKey key, const std::string& valueName, std::string& value,
                             bool& found);
    static std::string StripNull(const std::string& text);
    void storeValue(platform::RegKey key, const std::string& valueName, const std::string& value);

    std::string strErrorMessage_;
};

// Registry reads for the life of this object see one snapshot of the registry, in one
// transaction (see platform::beginRegistryReads).
class RegistryReadBatch {
public:
    RegistryReadBatch() { platform::beginRegistryReads(); }
    ~RegistryReadBatch() { platform::endRegistryReads(); }
    RegistryReadBatch(const RegistryReadBatch&) = delete;
    RegistryReadBatch& operator=(const RegistryReadBatch&) = delete;
};
