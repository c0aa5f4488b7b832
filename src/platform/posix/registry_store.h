// HKEY_LOCAL_MACHINE of a Linux till: one SQLite database, <till root>/registry.db.
//
// Keys form a tree (table reg_keys: id, parent, name, folded); the hive itself is key 0 and has
// no row. Values (table reg_values: key, name, folded, type, data) hang off a key. Names are
// Windows-1252 bytes kept as written at creation; `folded` is their upper-case form, on which
// every lookup matches, so names are case-insensitive as on Windows.
//
// The database file is precious: it holds the merchant's settings and a password. Nothing here
// ever creates it except createMissing mode, and nothing ever rewrites, truncates or "repairs"
// it: a damaged, foreign, locked or unreadable file gives a described std::runtime_error and
// keeps its bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace platform::posix {

struct StoredValue {
    std::uint32_t type = 0;
    std::string data;
};

// One connection to the registry database. Each open key holds its own, so another process's
// writes are seen at the next statement, as SQLite checks the file at each transaction.
class RegistryStore {
public:
    using KeyId = std::int64_t;
    static constexpr KeyId kHive = 0;

    enum class Mode { openExisting, createMissing };

    // The connection, its schema checked. In openExisting mode a missing or empty (zero-length)
    // file gives nullptr: there is no registry yet. In createMissing mode a missing file is made
    // with mode 0600 and an empty one gets the registry tables.
    static std::unique_ptr<RegistryStore> open(const std::filesystem::path& file, Mode mode);

    ~RegistryStore();
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    // The key named by the components below the hive (none: the hive), if it exists.
    std::optional<KeyId> findKey(const std::vector<std::string>& components);

    // The key, made with its missing parents in one transaction.
    KeyId createKey(const std::vector<std::string>& components);

    std::optional<StoredValue> readValue(KeyId key, std::string_view name);

    // Stores the value in one transaction; an existing value keeps its name's case.
    void writeValue(KeyId key, std::string_view name, std::uint32_t type, std::string_view data);

    // Takes the write lock and gives it back at once; throws what a write would meet.
    void checkWritable();

    // One read transaction over the reads that follow, until endSnapshot() or a write.
    void beginSnapshot();
    void endSnapshot();

private:
    std::optional<KeyId> lookUpKey(const std::vector<std::string>& components);
    explicit RegistryStore(const std::filesystem::path& file);

    void createTablesIfEmpty();
    void checkTables();
    void checkIntegrity();
    std::optional<KeyId> childKey(KeyId parent, const std::string& name);

    class Statement;
    class Transaction;
    class ReadTransaction;
    sqlite3_stmt* prepared(const char* sql) const;
    std::string faultMessage(int resultCode) const;
    [[noreturn]] void fail(int resultCode) const;

    std::string file_;
    sqlite3* db_ = nullptr;
    mutable std::map<const char*, sqlite3_stmt*> statements_;
    // While a snapshot is open, the keys already looked up (by their folded path): nothing can
    // add or remove a key meanwhile.
    bool inSnapshot_ = false;
    std::map<std::string, std::optional<KeyId>> snapshotKeys_;
};

// <till root>/registry.db.
std::filesystem::path registryFile();

} // namespace platform::posix
