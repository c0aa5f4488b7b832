// A damaged registry database: every operation either works or throws a described fault; a
// fault leaves the file's bytes as they were (it is never "repaired" or recreated empty); a
// value written reads back exactly; and the settings store, which never fails, does not throw.
//
// Input: the bytes of <till root>/registry.db.
#include "fuzz_till.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

const char* const kSettingsKey = "SOFTWARE\\Tessaly\\ccaddin";

fs::path databaseFile() {
    return fuzzing::tillRoot() / "registry.db";
}

void removeDatabase() {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
        std::error_code ignored;
        fs::remove(databaseFile().string() + suffix, ignored);
    }
}

std::string describeChange(const std::string& before, const std::string& after) {
    std::size_t first = 0;
    while (first < before.size() && first < after.size() && before[first] == after[first]) {
        ++first;
    }
    return std::to_string(before.size()) + " bytes became " + std::to_string(after.size()) +
           ", first difference at " + std::to_string(first);
}

// Runs one operation; when it throws, the file must be unchanged and the fault described.
template <typename Operation> bool guarded(const char* what, Operation operation) {
    const std::string before = fuzzing::readBytes(databaseFile());
    try {
        operation();
        return true;
    } catch (const std::runtime_error& e) {
        fuzzing::check(std::strlen(e.what()) > 0, std::string(what) + ": an empty description");
        const std::string after = fuzzing::readBytes(databaseFile());
        fuzzing::check(after == before, std::string(what) + " failed and changed the database (" +
                                            describeChange(before, after) + "): " + e.what());
        return false;
    }
}

void readEveryValue(platform::RegKey key) {
    for (const char* name : {"Acquirer", "ComPort", "Password", "", "Count"}) {
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        if (platform::regQueryValue(key, name, &type, nullptr, &size) != platform::kErrorSuccess) {
            continue;
        }
        std::string data(size, '\0');
        std::uint32_t capacity = size;
        const long status = platform::regQueryValue(
            key, name, &type, reinterpret_cast<unsigned char*>(data.data()), &capacity);
        fuzzing::check(status == platform::kErrorSuccess && capacity == size,
                       "a value's size is what its query said");
    }
}

// Each call is one transaction, so each is judged on its own: a key made before a value's write
// failed is a change that worked.
void writeAndReadBack() {
    platform::RegKey key = 0;
    long status = platform::kErrorInvalidHandle;
    guarded("create", [&] { status = platform::regCreateKey(kSettingsKey, key); });
    if (status != platform::kErrorSuccess) {
        return;
    }
    const std::string value = "fuzzed\xE9value";
    const std::string stored(value.c_str(), value.size() + 1);
    const auto* bytes = reinterpret_cast<const unsigned char*>(stored.data());
    status = platform::kErrorInvalidHandle;
    guarded("write", [&] {
        status = platform::regSetValue(key, "Acquirer", platform::kRegSz, bytes,
                                       static_cast<std::uint32_t>(stored.size()));
    });
    if (status == platform::kErrorSuccess) {
        std::string back(stored.size(), 'x');
        auto size = static_cast<std::uint32_t>(back.size());
        std::uint32_t type = 0;
        guarded("read back", [&] {
            status = platform::regQueryValue(key, "acquirer", &type,
                                             reinterpret_cast<unsigned char*>(back.data()), &size);
            fuzzing::check(status == platform::kErrorSuccess && type == platform::kRegSz &&
                               back == stored,
                           "a written value reads back");
        });
    }
    platform::regCloseKey(key);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    removeDatabase();
    fuzzing::writeBytes(databaseFile(),
                        std::string_view(reinterpret_cast<const char*>(data), size));

    // The settings store swallows every fault. It opens the database once per setting, 89
    // times, so it runs for one input in eight: the rest fuzz eight times as fast.
    const bool wholeStore = size % 8 == 0;
    if (wholeStore) {
        TCcAddinRegistry settings;
        settings.ReadRegistry();
    }
    const std::string before = fuzzing::readBytes(databaseFile());

    platform::RegKey key = 0;
    guarded("open", [&] {
        if (platform::regOpenKey(kSettingsKey, key) == platform::kErrorSuccess) {
            readEveryValue(key);
            platform::regCloseKey(key);
        }
    });
    fuzzing::check(fuzzing::readBytes(databaseFile()) == before, "reading changed the database");
    writeAndReadBack();
    if (wholeStore) {
        TCcAddinRegistry settings;
        settings.WriteRegistry(24);
    }
    removeDatabase();
    return 0;
}
