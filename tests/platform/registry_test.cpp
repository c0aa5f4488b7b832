#include "platform/platform.h"
#include "support/demo_till_template.h"
#include "support/temp_till.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace platform;

namespace {

// An open key that closes itself.
struct Key {
    RegKey handle = 0;
    long status;
    Key(const std::string& path, bool create)
        : status(create ? regCreateKey(path, handle) : regOpenKey(path, handle)) {}
    ~Key() { regCloseKey(handle); }
};

long openStatus(const std::string& path) {
    return Key(path, false).status;
}

long store(RegKey key, const std::string& name, const std::string& bytes,
           std::uint32_t type = kRegSz) {
    return regSetValue(key, name, type, reinterpret_cast<const unsigned char*>(bytes.data()),
                       static_cast<std::uint32_t>(bytes.size()));
}

// The value's bytes as a caller sizing its buffer first gets them ("<missing>" when absent).
std::string fetch(RegKey key, const std::string& name, std::uint32_t* type = nullptr) {
    std::uint32_t size = 0;
    if (regQueryValue(key, name, type, nullptr, &size) != kErrorSuccess) {
        return "<missing>";
    }
    std::string bytes(size, '?');
    regQueryValue(key, name, nullptr, reinterpret_cast<unsigned char*>(bytes.data()), &size);
    return bytes;
}

std::string describedFault(const std::string& path, bool create) {
    try {
        Key key(path, create);
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "no fault";
}

// Every key name as stored, as anyone inspecting the database sees them.
std::string storedKeyNames(const fs::path& file) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    std::string names;
    const auto append = [](void* out, int, char** row, char**) {
        *static_cast<std::string*>(out) += std::string(row[0]) + ";";
        return 0;
    };
    sqlite3_exec(db, "SELECT name FROM reg_keys ORDER BY id", append, &names, nullptr);
    sqlite3_close(db);
    return names;
}

} // namespace

TEST(Registry, PathsAndNamesMatchWhateverTheirCaseAndKeepTheirFirstCase) {
    TempTill till;
    Key created("SOFTWARE\\Tessaly\\Caf\xE9", true);
    store(created.handle, "MerchantId", "5678");
    Key child("software\\tessaly\\CAF\xC9\\Sub\\", true);
    EXPECT_EQ(storedKeyNames(till.root() / "registry.db"), "SOFTWARE;Tessaly;Caf\xE9;Sub;");

    Key other("software\\TESSALY\\caf\xC9\\", false);
    EXPECT_EQ(fetch(other.handle, "merchantid"), "5678");
    for (const char* bad : {"\\SOFTWARE", "\\", "SOFTWARE\\\\Tessaly", "SOFTWARE\\\\"}) {
        RegKey key = 123;
        EXPECT_EQ(regCreateKey(bad, key), kErrorBadPathname) << bad;
        EXPECT_EQ(regOpenKey(bad, key), kErrorBadPathname) << bad;
    }
    // The empty path is the hive, and the empty value name a key's default value.
    store(Key("", false).handle, "", "hive default");
    EXPECT_EQ(fetch(Key("", true).handle, ""), "hive default");
    EXPECT_EQ(fetch(other.handle, ""), "<missing>");
}

TEST(Registry, OpeningNeverCreatesWhileCreatingMakesParentsAndAPrivateFile) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
    EXPECT_EQ(openStatus(""), kErrorFileNotFound);
    EXPECT_FALSE(fs::exists(file));
    // A file an interrupted create left empty is no registry yet; the next create finishes it.
    std::ofstream(file).close();
    EXPECT_EQ(openStatus("SOFTWARE"), kErrorFileNotFound);
    fs::remove(file);

    EXPECT_EQ(Key("SOFTWARE\\Tessaly\\ccaddin", true).status, kErrorSuccess);
    struct stat info {};
    ASSERT_EQ(stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(openStatus("SOFTWARE"), kErrorSuccess);
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(openStatus("SOFTWARE\\Tessaly\\ccaddin\\Missing"), kErrorFileNotFound);
    }
}

TEST(Registry, ValuesKeepTheirTypeAndExactBytesAndQueriesFollowTheBufferProtocol) {
    TempTill till;
    Key key("SOFTWARE", true);
    const std::string dword("\x2A\0\0\0", 4);
    store(key.handle, "Port", dword, kRegDword);
    store(key.handle, "NoTerminator", "abc");
    store(key.handle, "EmbeddedNul", std::string("ab\0cd\0", 6));
    EXPECT_EQ(regSetValue(key.handle, "Empty", kRegSz, nullptr, 0), kErrorSuccess);

    std::uint32_t type = kRegNone;
    EXPECT_EQ(fetch(key.handle, "port", &type), dword);
    EXPECT_EQ(type, kRegDword);
    EXPECT_EQ(fetch(key.handle, "NoTerminator", &type), "abc");
    EXPECT_EQ(type, kRegSz);
    EXPECT_EQ(fetch(key.handle, "EmbeddedNul"), std::string("ab\0cd\0", 6));
    EXPECT_EQ(fetch(key.handle, "Empty"), "");
    store(key.handle, "PORT", "COM1");
    EXPECT_EQ(fetch(key.handle, "Port", &type), "COM1");
    EXPECT_EQ(type, kRegSz);

    store(key.handle, "Name", "twelve bytes");
    unsigned char buffer[16] = {};
    std::uint32_t size = 11;
    EXPECT_EQ(regQueryValue(key.handle, "Name", nullptr, buffer, &size), kErrorMoreData);
    EXPECT_EQ(size, 12u);
    size = sizeof buffer;
    EXPECT_EQ(regQueryValue(key.handle, "Name", nullptr, buffer, &size), kErrorSuccess);
    EXPECT_EQ(size, 12u);
    EXPECT_EQ(regQueryValue(key.handle, "Name", nullptr, buffer, nullptr), kErrorInvalidParameter);
    EXPECT_EQ(regSetValue(key.handle, "Name", kRegSz, nullptr, 3), kErrorInvalidParameter);

    RegKey closed = 0;
    ASSERT_EQ(regOpenKey("SOFTWARE", closed), kErrorSuccess);
    EXPECT_EQ(regCloseKey(closed), kErrorSuccess);
    for (RegKey bad : {closed, RegKey{0}, RegKey{987654}}) {
        EXPECT_EQ(regCloseKey(bad), kErrorInvalidHandle);
        EXPECT_EQ(regQueryValue(bad, "Name", nullptr, nullptr, &size), kErrorInvalidHandle);
        EXPECT_EQ(store(bad, "Name", "x"), kErrorInvalidHandle);
    }
}

TEST(Registry, AnotherProcessWritesAreSeenByKeysAlreadyOpen) {
    TempTill till;
    Key key("SOFTWARE\\Tessaly", true);
    store(key.handle, "Value", "before");
    const pid_t child = fork();
    if (child == 0) {
        Key sub("SOFTWARE\\Tessaly\\Made elsewhere", true);
        _exit(store(Key("SOFTWARE\\Tessaly", false).handle, "VALUE", "after"));
    }
    int status = -1;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(fetch(key.handle, "Value"), "after");
    EXPECT_EQ(openStatus("software\\tessaly\\made elsewhere"), kErrorSuccess);
}

TEST(Registry, ADamagedOrForeignDatabaseIsDescribedAndKeepsEveryByte) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
    for (int i = 0; i < 8; ++i) {
        store(Key("SOFTWARE\\Tessaly", true).handle, std::to_string(i), std::string(2000, 'x'));
    }
    const std::string valid = readBytes(file);
    std::string noise(9000, '\0');
    std::generate(noise.begin(), noise.end(), std::minstd_rand(7));
    sqlite3* foreign = nullptr;
    sqlite3_open((till.root() / "foreign.db").c_str(), &foreign);
    sqlite3_exec(foreign, "PRAGMA user_version = 3", nullptr, nullptr, nullptr);
    sqlite3_close(foreign);

    const std::pair<std::string, const char*> cases[] = {
        {noise, " is damaged: file is not a database"},
        {valid.substr(0, 8192), " is damaged: database disk image is malformed"},
        {readBytes(till.root() / "foreign.db"), " is not a registry database: no such table"},
        // Every page readable, but an index that disagrees with its table: only a whole-file
        // check sees it, and a write through it would seem to work and never read back.
        {readBytes(repositoryRoot() / "fuzz" / "corpus" / "registry_database_fuzz" /
                   "index-disagrees-with-table"),
         " is damaged: "},
    };
    for (const auto& [bytes, fault] : cases) {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
        for (const bool create : {false, true}) {
            const std::string what = describedFault("SOFTWARE\\Tessaly", create);
            EXPECT_NE(what.find(file.string() + fault), std::string::npos) << what;
        }
        EXPECT_EQ(readBytes(file), bytes);
    }
}

TEST(Registry, ADatabaseLockedByAnotherWriterIsReportedAfterAShortWait) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
    Key key("SOFTWARE", true);
    const std::string before = readBytes(file);
    sqlite3* other = nullptr;
    sqlite3_open(file.c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);

    const auto start = std::chrono::steady_clock::now();
    const std::string what = describedFault("SOFTWARE", false);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_NE(what.find("registry database " + file.string() + " is locked"), std::string::npos)
        << what;
    EXPECT_GE(waited, std::chrono::milliseconds(1500));
    sqlite3_close(other);
    EXPECT_EQ(readBytes(file), before);
}

// Connections are reused between keys; a file that another program replaced, by a rename or by
// rewriting it in place, must still be the one read and judged.
TEST(Registry, AReplacedDatabaseIsReadAfreshNotThroughAnEarlierConnection) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
    store(Key("SOFTWARE\\Tessaly", true).handle, "Value", "first");
    ASSERT_EQ(fetch(Key("SOFTWARE\\Tessaly", false).handle, "Value"), "first");

    fs::copy_file(file, till.root() / "edited.db");
    sqlite3* other = nullptr;
    sqlite3_open((till.root() / "edited.db").c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "UPDATE reg_values SET data = CAST('second' AS BLOB)", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(other);
    fs::rename(till.root() / "edited.db", file);
    EXPECT_EQ(fetch(Key("SOFTWARE\\Tessaly", false).handle, "Value"), "second");

    sqlite3_open((till.root() / "foreign.db").c_str(), &other);
    sqlite3_exec(other, "CREATE TABLE reg_keys (id)", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    const std::string foreign = readBytes(till.root() / "foreign.db");
    std::ofstream(file, std::ios::binary | std::ios::trunc) << foreign;
    const std::string what = describedFault("SOFTWARE\\Tessaly", false);
    EXPECT_NE(what.find(" is not a registry database"), std::string::npos) << what;
    EXPECT_EQ(readBytes(file), foreign);
}
