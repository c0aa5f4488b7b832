// The registry functions of HKEY_LOCAL_MACHINE over the till's registry database. A key handle
// is an entry in a process-wide table holding the key's id and its own database connection.
#include "platform/platform.h"
#include "platform/posix/registry_store.h"
#include "platform/recorder.h"

#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform {
namespace {

using posix::RegistryStore;

struct OpenKey {
    std::unique_ptr<RegistryStore> store;
    RegistryStore::KeyId id = RegistryStore::kHive;
    std::string path; // as the caller named it, for the recorder's reports
};

class HandleTable {
public:
    RegKey add(OpenKey key) {
        std::lock_guard lock(mutex_);
        const RegKey handle = next_++; // never reused, so a stale handle stays invalid
        keys_.emplace(handle, std::make_shared<OpenKey>(std::move(key)));
        return handle;
    }
    std::shared_ptr<OpenKey> find(RegKey handle) {
        std::lock_guard lock(mutex_);
        const auto it = keys_.find(handle);
        return it == keys_.end() ? nullptr : it->second;
    }
    bool remove(RegKey handle) {
        std::lock_guard lock(mutex_);
        return keys_.erase(handle) == 1;
    }

private:
    std::mutex mutex_;
    std::map<RegKey, std::shared_ptr<OpenKey>> keys_;
    RegKey next_ = 1;
};

HandleTable& handles() {
    static HandleTable table;
    return table;
}

// The ANSI functions see a C string: whatever follows a NUL is not part of the name.
std::string asCString(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

// The components of a key path below the hive. One trailing "\" is accepted, as Windows
// accepts it; a leading one, or an empty component anywhere else, is not a path.
std::optional<std::vector<std::string>> keyComponents(const std::string& subKey) {
    std::string path = asCString(subKey);
    if (!path.empty() && path.back() == '\\') {
        path.pop_back();
        if (path.empty()) {
            return std::nullopt;
        }
    }
    std::vector<std::string> components;
    if (path.empty()) {
        return components;
    }
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = path.find('\\', start);
        components.push_back(path.substr(start, end - start));
        if (components.back().empty()) {
            return std::nullopt;
        }
        if (end == std::string::npos) {
            return components;
        }
        start = end + 1;
    }
}

long openKey(const std::string& subKey, RegistryStore::Mode mode, RegKey& key) {
    key = 0;
    const auto components = keyComponents(subKey);
    if (!components) {
        return kErrorBadPathname;
    }
    auto store = RegistryStore::open(posix::registryFile(), mode);
    if (!store) {
        return kErrorFileNotFound;
    }
    const auto id = mode == RegistryStore::Mode::createMissing
                        ? std::optional(store->createKey(*components))
                        : store->findKey(*components);
    if (!id) {
        return kErrorFileNotFound;
    }
    key = handles().add(OpenKey{std::move(store), *id, asCString(subKey)});
    return kErrorSuccess;
}

} // namespace

long regOpenKey(const std::string& subKey, RegKey& key) {
    return openKey(subKey, RegistryStore::Mode::openExisting, key);
}

long regCreateKey(const std::string& subKey, RegKey& key) {
    return openKey(subKey, RegistryStore::Mode::createMissing, key);
}

long regQueryValue(RegKey key, const std::string& valueName, std::uint32_t* type,
                   unsigned char* data, std::uint32_t* size) {
    const auto open = handles().find(key);
    if (!open) {
        return kErrorInvalidHandle;
    }
    if (data != nullptr && size == nullptr) {
        return kErrorInvalidParameter;
    }
    const auto value = open->store->readValue(open->id, asCString(valueName));
    if (!value) {
        return kErrorFileNotFound;
    }
    if (type != nullptr) {
        *type = value->type;
    }
    const auto stored = static_cast<std::uint32_t>(value->data.size());
    if (size == nullptr) {
        return kErrorSuccess;
    }
    const std::uint32_t capacity = *size;
    *size = stored;
    if (data == nullptr) {
        return kErrorSuccess;
    }
    if (capacity < stored) {
        return kErrorMoreData;
    }
    std::memcpy(data, value->data.data(), stored);
    return kErrorSuccess;
}

long regSetValue(RegKey key, const std::string& valueName, std::uint32_t type,
                 const unsigned char* data, std::uint32_t size) {
    const auto open = handles().find(key);
    if (!open) {
        return kErrorInvalidHandle;
    }
    if (data == nullptr && size != 0) {
        return kErrorInvalidParameter;
    }
    const std::string bytes =
        data == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(data), size);
    Recorder* recorder = activeRecorder();
    std::optional<std::string> before;
    if (recorder != nullptr) {
        if (const auto value = open->store->readValue(open->id, asCString(valueName))) {
            before = value->data;
        }
    }
    open->store->writeValue(open->id, asCString(valueName), type, bytes);
    if (recorder != nullptr) {
        recorder->registryValueSet(open->path, asCString(valueName), before, bytes);
    }
    return kErrorSuccess;
}

long regCloseKey(RegKey key) {
    return handles().remove(key) ? kErrorSuccess : kErrorInvalidHandle;
}

} // namespace platform
