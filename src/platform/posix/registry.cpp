// The registry functions of HKEY_LOCAL_MACHINE over the till's registry database. A key handle
// is an entry in a process-wide table holding the key's id and a database connection.
#include "platform/platform.h"
#include "platform/posix/registry_store.h"
#include "platform/recorder.h"

#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace platform {
namespace {

using posix::RegistryStore;

struct OpenKey {
    std::shared_ptr<RegistryStore> store;
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

// Opening a connection reads and checks the database's tables, which costs more than the lookups
// themselves, and reading the settings opens a key for every value. So the last connection is
// handed out again while the file is exactly as this process last left it (same file, size and
// modification time). Anything another program did to the file since, a write or a replacement,
// gets a fresh connection and a fresh check, so a damaged or foreign file is still described.
class Connections {
public:
    std::shared_ptr<RegistryStore> open(RegistryStore::Mode mode) {
        std::lock_guard lock(mutex_);
        if (snapshot_ && mode == RegistryStore::Mode::openExisting) {
            return snapshot_; // the snapshot's lock keeps every writer out meanwhile
        }
        const std::filesystem::path file = posix::registryFile();
        if (!(last_ && lastFile_ == file && fingerprint(file) == lastPrint_)) {
            last_.reset();
            last_ = RegistryStore::open(file, mode);
            lastFile_ = file;
            lastPrint_ = last_ ? fingerprint(file) : Fingerprint{};
        }
        if (last_ && snapshotDepth_ > 0 && mode == RegistryStore::Mode::openExisting) {
            last_->beginSnapshot();
            snapshot_ = last_;
        }
        return last_;
    }

    void beginSnapshot() {
        std::lock_guard lock(mutex_);
        ++snapshotDepth_;
    }

    void endSnapshot() {
        std::lock_guard lock(mutex_);
        if (--snapshotDepth_ > 0 || !snapshot_) {
            return;
        }
        try {
            snapshot_->endSnapshot();
        } catch (const std::exception&) {
            // Only reads were made; a failed end loses nothing.
        }
        snapshot_.reset();
    }

    // After this process has used the connection, the file as it now is counts as seen.
    void seen(const std::shared_ptr<RegistryStore>& store) {
        std::lock_guard lock(mutex_);
        if (store == last_) {
            lastPrint_ = fingerprint(lastFile_);
        }
    }

private:
    struct Fingerprint {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = -1;
        long long modifiedNs = -1;
        bool operator==(const Fingerprint&) const = default;
    };

    // No fingerprint (size -1) for a file that is missing or empty: those always go the long way.
    static Fingerprint fingerprint(const std::filesystem::path& file) {
        struct stat info {};
        if (::stat(file.c_str(), &info) != 0 || info.st_size == 0) {
            return {};
        }
        return {info.st_dev, info.st_ino, info.st_size,
                info.st_mtim.tv_sec * 1'000'000'000LL + info.st_mtim.tv_nsec};
    }

    std::mutex mutex_;
    std::shared_ptr<RegistryStore> last_;
    std::filesystem::path lastFile_;
    Fingerprint lastPrint_;
    int snapshotDepth_ = 0;
    std::shared_ptr<RegistryStore> snapshot_;
};

Connections& connections() {
    static Connections cache;
    return cache;
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
    const std::shared_ptr<RegistryStore> store = connections().open(mode);
    if (!store) {
        return kErrorFileNotFound;
    }
    const auto id = mode == RegistryStore::Mode::createMissing
                        ? std::optional(store->createKey(*components))
                        : store->findKey(*components);
    if (mode == RegistryStore::Mode::createMissing) {
        connections().seen(store);
    }
    if (!id) {
        return kErrorFileNotFound;
    }
    key = handles().add(OpenKey{store, *id, asCString(subKey)});
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
    connections().seen(open->store);
    if (recorder != nullptr) {
        recorder->registryValueSet(open->path, asCString(valueName), before, bytes);
    }
    return kErrorSuccess;
}

long regCloseKey(RegKey key) {
    return handles().remove(key) ? kErrorSuccess : kErrorInvalidHandle;
}

void beginRegistryReads() {
    connections().beginSnapshot();
}

void endRegistryReads() {
    connections().endSnapshot();
}

std::string registryWriteFault(const std::string& subKey) {
    try {
        RegKey key = 0;
        if (regOpenKey(subKey, key) != kErrorSuccess) {
            return ""; // nothing is ever written under a key that does not exist
        }
        const std::shared_ptr<OpenKey> open = handles().find(key);
        regCloseKey(key);
        open->store->checkWritable();
        return "";
    } catch (const std::exception& e) {
        return e.what();
    }
}

} // namespace platform
