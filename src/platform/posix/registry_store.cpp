#include "platform/posix/registry_store.h"

#include "platform/cp1252.h"
#include "platform/posix/till_root.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace platform::posix {
namespace {

// Long enough to ride out another program's ordinary write, short enough that a till stuck
// behind a hung writer reports it instead of hanging the wizard.
constexpr int kBusyTimeoutMs = 2000;

constexpr const char* kCreateTables = R"sql(
CREATE TABLE reg_keys (
    id INTEGER PRIMARY KEY,
    parent INTEGER NOT NULL,
    name BLOB NOT NULL,
    folded BLOB NOT NULL,
    UNIQUE (parent, folded));
CREATE TABLE reg_values (
    key INTEGER NOT NULL,
    name BLOB NOT NULL,
    folded BLOB NOT NULL,
    type INTEGER NOT NULL,
    data BLOB NOT NULL,
    PRIMARY KEY (key, folded));
)sql";

// What every connection needs of a database before trusting it as the registry.
constexpr const char* kTableProbes[] = {
    "SELECT id, parent, name, folded FROM reg_keys",
    "SELECT key, name, folded, type, data FROM reg_values",
};

std::string describeFault(int resultCode) {
    switch (resultCode & 0xff) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "is damaged";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "is locked by another program";
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return "cannot be opened";
    case SQLITE_READONLY:
        return "cannot be written";
    case SQLITE_IOERR:
        return "cannot be read or written";
    case SQLITE_FULL:
        return "cannot grow, the disk is full";
    default:
        return "cannot be used";
    }
}

// Made here rather than by SQLite so that it never exists, not even for a moment, with wider
// permissions than its owner's: it holds a password.
void createPrivateFile(const fs::path& file) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd >= 0) {
        ::close(fd);
    } else if (errno != EEXIST) {
        throw std::runtime_error("registry database " + file.string() +
                                 " cannot be created: " + std::strerror(errno));
    }
}

// No file, or a zero-length one: a create that did not get as far as its tables.
bool noRegistryYet(const fs::path& file) {
    struct stat info {};
    if (::stat(file.c_str(), &info) != 0) {
        return errno == ENOENT || errno == ENOTDIR;
    }
    return S_ISREG(info.st_mode) && info.st_size == 0;
}

} // namespace

// One use of a prepared statement. Parsing the SQL is most of the cost of a lookup, so each
// text is prepared once per connection and kept; a use resets it on every path, which ends the
// statement, so that no read lock outlives its call.
class RegistryStore::Statement {
public:
    Statement(const RegistryStore& store, const char* sql)
        : store_(store), stmt_(store.prepared(sql)) {}
    ~Statement() {
        sqlite3_reset(stmt_);
        sqlite3_clear_bindings(stmt_);
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int index, std::int64_t number) {
        check(sqlite3_bind_int64(stmt_, index, number));
        return *this;
    }
    // Always a BLOB, even an empty one (a null pointer would bind NULL).
    Statement& bind(int index, std::string_view bytes) {
        check(sqlite3_bind_blob64(stmt_, index, bytes.empty() ? "" : bytes.data(), bytes.size(),
                                  SQLITE_TRANSIENT));
        return *this;
    }
    // True while a row is ready.
    bool step() {
        const int rc = sqlite3_step(stmt_);
        if (rc != SQLITE_ROW && rc != SQLITE_DONE) {
            store_.fail(rc);
        }
        return rc == SQLITE_ROW;
    }
    std::int64_t integer(int column) { return sqlite3_column_int64(stmt_, column); }
    std::string bytes(int column) {
        const auto* data = static_cast<const char*>(sqlite3_column_blob(stmt_, column));
        const int size = sqlite3_column_bytes(stmt_, column);
        return data == nullptr ? std::string() : std::string(data, static_cast<std::size_t>(size));
    }

private:
    void check(int rc) const {
        if (rc != SQLITE_OK) {
            store_.fail(rc);
        }
    }

    const RegistryStore& store_;
    sqlite3_stmt* stmt_ = nullptr;
};

// BEGIN IMMEDIATE takes the write lock up front, so a busy database is waited for (up to the
// time-out) at the start instead of failing half-way; anything not committed is rolled back.
class RegistryStore::Transaction {
public:
    // A snapshot of reads still open ends here: its lock would keep the write from starting.
    explicit Transaction(RegistryStore& store) : store_(store) {
        if (sqlite3_get_autocommit(store_.db_) == 0) {
            exec("COMMIT");
        }
        store_.inSnapshot_ = false;
        store_.snapshotKeys_.clear();
        exec("BEGIN IMMEDIATE");
    }
    ~Transaction() {
        if (!committed_) {
            sqlite3_exec(store_.db_, "ROLLBACK", nullptr, nullptr, nullptr);
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void exec(const char* sql) {
        const int rc = sqlite3_exec(store_.db_, sql, nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK) {
            store_.fail(rc);
        }
    }
    void commit() {
        exec("COMMIT");
        committed_ = true;
    }

private:
    RegistryStore& store_;
    bool committed_ = false;
};

// The lookups of one key path under a single read lock: each statement on its own would take and
// drop the lock, and check the file for a hot journal, again.
// Inside a snapshot the snapshot's transaction serves.
class RegistryStore::ReadTransaction {
public:
    explicit ReadTransaction(RegistryStore& store)
        : store_(store), own_(sqlite3_get_autocommit(store.db_) != 0) {
        if (own_) {
            Statement(store_, "BEGIN DEFERRED").step();
        }
    }
    ~ReadTransaction() {
        if (own_ && sqlite3_get_autocommit(store_.db_) == 0) {
            sqlite3_exec(store_.db_, "ROLLBACK", nullptr, nullptr, nullptr);
        }
    }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

    void end() {
        if (own_) {
            Statement(store_, "COMMIT").step();
        }
    }

private:
    RegistryStore& store_;
    bool own_;
};

fs::path registryFile() {
    return tillRoot() / "registry.db";
}

// The store holds the TMS password, as HKEY_LOCAL_MACHINE does, which only administrators
// can read: a file others could read (copied in, or made before this rule) is made private.
static void keepPrivate(const fs::path& file) {
    struct stat info {};
    if (::stat(file.c_str(), &info) == 0 && (info.st_mode & 077) != 0) {
        ::chmod(file.c_str(), info.st_mode & 0700);
    }
}

std::unique_ptr<RegistryStore> RegistryStore::open(const fs::path& file, Mode mode) {
    if (mode == Mode::createMissing) {
        createPrivateFile(file);
    } else if (noRegistryYet(file)) {
        return nullptr;
    }
    keepPrivate(file);
    std::unique_ptr<RegistryStore> store(new RegistryStore(file));
    if (mode == Mode::createMissing) {
        store->createTablesIfEmpty();
    }
    store->checkTables();
    return store;
}

// Never with SQLITE_OPEN_CREATE: the file is made only by createPrivateFile.
RegistryStore::RegistryStore(const fs::path& file) : file_(file.string()) {
    const int rc = sqlite3_open_v2(file_.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        const std::string message = faultMessage(rc);
        sqlite3_close_v2(db_); // no destructor runs for a constructor that throws
        throw std::runtime_error(message);
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_timeout(db_, kBusyTimeoutMs);
}

RegistryStore::~RegistryStore() {
    for (const auto& [sql, stmt] : statements_) {
        sqlite3_finalize(stmt);
    }
    sqlite3_close_v2(db_);
}

// Keyed by the text's address: every statement is a literal of this file, used one at a time.
sqlite3_stmt* RegistryStore::prepared(const char* sql) const {
    if (const auto it = statements_.find(sql); it != statements_.end()) {
        return it->second;
    }
    sqlite3_stmt* stmt = nullptr;
    const int rc = sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_finalize(stmt);
        fail(rc);
    }
    statements_.emplace(sql, stmt);
    return stmt;
}

std::string RegistryStore::faultMessage(int resultCode) const {
    return "registry database " + file_ + " " + describeFault(resultCode) + ": " +
           (db_ != nullptr ? sqlite3_errmsg(db_) : sqlite3_errstr(resultCode));
}

void RegistryStore::fail(int resultCode) const {
    throw std::runtime_error(faultMessage(resultCode));
}

// Only a zero-length file is taken as new: a database that already holds anything, even
// nothing of ours, is left exactly as it is and judged by checkTables. The size is looked at
// under the write lock, so two processes creating at once make the tables once.
// A write transaction that changed nothing is rolled back, not committed: SQLite's commit
// rewrites the file header (change counter, page count) even then, which would alter a foreign
// or damaged file before checkTables has judged it.
void RegistryStore::createTablesIfEmpty() {
    Transaction transaction(*this);
    if (noRegistryYet(file_)) {
        transaction.exec(kCreateTables);
        transaction.commit();
    }
}

void RegistryStore::checkTables() {
    for (const char* probe : kTableProbes) {
        sqlite3_stmt* stmt = nullptr;
        const int rc = sqlite3_prepare_v2(db_, probe, -1, &stmt, nullptr);
        sqlite3_finalize(stmt);
        if ((rc & 0xff) == SQLITE_ERROR) {
            throw std::runtime_error(file_ + " is not a registry database: " + sqlite3_errmsg(db_));
        }
        if (rc != SQLITE_OK) {
            fail(rc);
        }
    }
    checkIntegrity();
}

// SQLite notices a damaged page only when a statement reads it: an index that disagrees with its
// table passes unnoticed, and a write through it "succeeds" while a read finds the old row. So
// each new connection checks the whole file first; the registry is small, the check takes well
// under a millisecond, and the connection then serves every key while the file stays as it was.
void RegistryStore::checkIntegrity() {
    Statement check(*this, "PRAGMA integrity_check(1)");
    if (!check.step()) {
        throw std::runtime_error(faultMessage(SQLITE_CORRUPT));
    }
    const std::string verdict = check.bytes(0);
    if (verdict != "ok") {
        throw std::runtime_error("registry database " + file_ + " is damaged: " + verdict);
    }
}

std::optional<RegistryStore::KeyId> RegistryStore::childKey(KeyId parent, const std::string& name) {
    Statement find(*this, "SELECT id FROM reg_keys WHERE parent = ?1 AND folded = ?2");
    find.bind(1, parent).bind(2, cp1252::toUpper(name));
    if (!find.step()) {
        return std::nullopt;
    }
    return find.integer(0);
}

std::optional<RegistryStore::KeyId>
RegistryStore::findKey(const std::vector<std::string>& components) {
    std::string folded;
    if (inSnapshot_) {
        for (const std::string& name : components) {
            folded += cp1252::toUpper(name) + '\\';
        }
        if (const auto known = snapshotKeys_.find(folded); known != snapshotKeys_.end()) {
            return known->second;
        }
    }
    const std::optional<KeyId> found = lookUpKey(components);
    if (inSnapshot_) {
        snapshotKeys_.emplace(folded, found);
    }
    return found;
}

std::optional<RegistryStore::KeyId>
RegistryStore::lookUpKey(const std::vector<std::string>& components) {
    ReadTransaction transaction(*this);
    KeyId key = kHive;
    for (const std::string& name : components) {
        const auto child = childKey(key, name);
        if (!child) {
            transaction.end();
            return std::nullopt;
        }
        key = *child;
    }
    transaction.end();
    return key;
}

RegistryStore::KeyId RegistryStore::createKey(const std::vector<std::string>& components) {
    Transaction transaction(*this);
    KeyId key = kHive;
    bool created = false;
    for (const std::string& name : components) {
        if (const auto child = childKey(key, name)) {
            key = *child;
            continue;
        }
        Statement insert(*this, "INSERT INTO reg_keys (parent, name, folded) VALUES (?1, ?2, ?3)");
        insert.bind(1, key).bind(2, name).bind(3, cp1252::toUpper(name)).step();
        key = sqlite3_last_insert_rowid(db_);
        created = true;
    }
    // An existing key is opened without a commit, which would rewrite the header for nothing.
    if (created) {
        transaction.commit();
    }
    return key;
}

std::optional<StoredValue> RegistryStore::readValue(KeyId key, std::string_view name) {
    Statement read(*this, "SELECT type, data FROM reg_values WHERE key = ?1 AND folded = ?2");
    read.bind(1, key).bind(2, cp1252::toUpper(name));
    if (!read.step()) {
        return std::nullopt;
    }
    return StoredValue{static_cast<std::uint32_t>(read.integer(0)), read.bytes(1)};
}

// Storing what is already stored leaves the file alone: the settings store writes its forced
// values on every run, and each commit costs the disk two or three flushes.
void RegistryStore::writeValue(KeyId key, std::string_view name, std::uint32_t type,
                               std::string_view data) {
    if (const auto stored = readValue(key, name);
        stored && stored->type == type && stored->data == data) {
        return;
    }
    Transaction transaction(*this);
    Statement write(*this, "INSERT INTO reg_values (key, name, folded, type, data) "
                           "VALUES (?1, ?2, ?3, ?4, ?5) ON CONFLICT (key, folded) "
                           "DO UPDATE SET type = excluded.type, data = excluded.data");
    write.bind(1, key).bind(2, name).bind(3, cp1252::toUpper(name));
    write.bind(4, static_cast<std::int64_t>(type)).bind(5, data).step();
    transaction.commit();
}

void RegistryStore::beginSnapshot() {
    if (sqlite3_get_autocommit(db_) != 0) {
        Statement(*this, "BEGIN DEFERRED").step();
        inSnapshot_ = true;
    }
}

void RegistryStore::endSnapshot() {
    inSnapshot_ = false;
    snapshotKeys_.clear();
    if (sqlite3_get_autocommit(db_) == 0) {
        Statement(*this, "COMMIT").step();
    }
}

void RegistryStore::checkWritable() {
    Transaction transaction(*this); // rolled back when it ends
    // A read-only file lets BEGIN pass and refuses the first change.
    Statement(*this, "UPDATE reg_keys SET name = name WHERE id = -1").step();
}

} // namespace platform::posix
