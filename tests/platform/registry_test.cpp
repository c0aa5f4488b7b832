#include "platform/platform.h"
#include "support/demo_till_template.h"
#include "support/temp_till.h"
#include "support/till_readers.h"

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

} // namespace

TEST(Registry, PathsAndNamesMatchWhateverTheirCaseAndKeepTheirFirstCase) {
    TempTill till;
    Key created("SOFTWARE\\Tessaly\\Caf\xE9", true);
    store(created.handle, "MerchantId", "5678");
    Key child("software\\tessaly\\CAF\xC9\\Sub\\", true);
    EXPECT_EQ(sqlRows(till.root() / "registry.db", "SELECT name FROM reg_keys ORDER BY id"),
              (Lines{"SOFTWARE", "Tessaly", "Caf\xE9", "Sub"}));

    Key other("software\\TESSALY\\caf\xC9\\", false);
    EXPECT_EQ(fetch(other.handle, "merchantid"), "5678");
    for (const char* bad : {"\\SOFTWARE", "\\", "SOFTWARE\\\\Tessaly", "SOFTWARE\\\\"}) {
        RegKey key = 123;
        EXPECT_EQ(regCreateKey(bad, key), kErrorBadPathname) << bad;
        EXPECT_EQ(regOpenKey(bad, key), kErrorBadPathname) << bad;
    }
    // The empty path is the hive.
    store(Key("", false).handle, "Where", "hive");
    EXPECT_EQ(fetch(Key("", true).handle, "where"), "hive");
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
    EXPECT_EQ(openStatus("SOFTWARE\\Tessaly\\ccaddin\\Missing"), kErrorFileNotFound);
    EXPECT_EQ(openStatus("SOFTWARE\\Tessaly\\ccaddin\\Missing"), kErrorFileNotFound);
}

TEST(Registry, ValuesKeepTheirTypeAndExactBytesAndStaleHandlesAreRefused) {
    TempTill till;
    Key key("SOFTWARE", true);
    const std::string dword("\x2A\0\0\0", 4);
    store(key.handle, "Port", dword, kRegDword);
    store(key.handle, "EmbeddedNul", std::string("ab\0cd\0", 6));
    EXPECT_EQ(regSetValue(key.handle, "Empty", kRegSz, nullptr, 0), kErrorSuccess);

    std::uint32_t type = kRegNone;
    EXPECT_EQ(fetch(key.handle, "port", &type), dword);
    EXPECT_EQ(type, kRegDword);
    EXPECT_EQ(fetch(key.handle, "EmbeddedNul"), std::string("ab\0cd\0", 6));
    EXPECT_EQ(fetch(key.handle, "Empty"), "");
    store(key.handle, "PORT", "COM1");
    EXPECT_EQ(fetch(key.handle, "Port", &type), "COM1");
    EXPECT_EQ(type, kRegSz);

    std::uint32_t size = 0;

    RegKey closed = 0;
    ASSERT_EQ(regOpenKey("SOFTWARE", closed), kErrorSuccess);
    EXPECT_EQ(regCloseKey(closed), kErrorSuccess);
    for (RegKey bad : {closed, RegKey{0}, RegKey{987654}}) {
        EXPECT_EQ(regCloseKey(bad), kErrorInvalidHandle);
        EXPECT_EQ(regQueryValue(bad, "Name", nullptr, nullptr, &size), kErrorInvalidHandle);
        EXPECT_EQ(store(bad, "Name", "x"), kErrorInvalidHandle);
    }
}

// Connections are reused between keys; what another process wrote, or a file it put in place by a
// rename, must still be what is read.
TEST(Registry, WritesOfAnotherProcessAndAReplacedFileAreSeen) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
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

    fs::copy_file(file, till.root() / "edited.db");
    sqlRows(till.root() / "edited.db", "UPDATE reg_values SET data = CAST('second' AS BLOB)");
    fs::rename(till.root() / "edited.db", file);
    EXPECT_EQ(fetch(Key("SOFTWARE\\Tessaly", false).handle, "Value"), "second");
}

TEST(Registry, ALockedDamagedOrForeignDatabaseIsDescribedAndKeepsEveryByte) {
    TempTill till;
    const fs::path file = till.root() / "registry.db";
    for (int i = 0; i < 8; ++i) {
        store(Key("SOFTWARE\\Tessaly", true).handle, std::to_string(i), std::string(2000, 'x'));
    }
    const std::string valid = readBytes(file);

    // Another writer's lock is waited for a little, then reported.
    sqlite3* other = nullptr;
    sqlite3_open(file.c_str(), &other);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    const auto start = std::chrono::steady_clock::now();
    const std::string locked = describedFault("SOFTWARE", false);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    sqlite3_close(other);
    EXPECT_NE(locked.find("registry database " + file.string() + " is locked"), std::string::npos)
        << locked;
    EXPECT_EQ(readBytes(file), valid);

    std::string noise(9000, '\0');
    std::generate(noise.begin(), noise.end(), std::minstd_rand(7));
    sqlRows(till.root() / "foreign.db", "PRAGMA user_version = 3");
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
