#include "foundation/registry.h"
#include "support/temp_till.h"
#include "support/wine.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {

const std::string kKey = "SOFTWARE\\Tessaly\\ccaddin\\";

void plantValue(const std::string& name, std::uint32_t type, const std::string& bytes) {
    platform::RegKey key = 0;
    ASSERT_EQ(platform::regCreateKey(kKey, key), platform::kErrorSuccess);
    platform::regSetValue(key, name, type, reinterpret_cast<const unsigned char*>(bytes.data()),
                          static_cast<std::uint32_t>(bytes.size()));
    platform::regCloseKey(key);
}

// The stored length of a value of an existing key.
std::uint32_t storedLength(const std::string& keyPath, const std::string& name) {
    platform::RegKey key = 0;
    std::uint32_t type = 0;
    std::uint32_t size = 99;
    platform::regOpenKey(keyPath, key);
    platform::regQueryValue(key, name, &type, nullptr, &size);
    platform::regCloseKey(key);
    return size;
}

} // namespace

TEST(Registry, StringValuesAreStoredWithoutTerminatorAndReadBackWhole) {
    TempTill till;
    plantValue("Cut", platform::kRegSz, std::string("ab\0cd", 5));
    TRegistry registry;
    registry.SaveRegistryValue(kKey, "Currency", "GBP \xA3");
    registry.SaveRegistryValue(kKey, "Empty", "");
    // Wine reports a REG_SZ stored without its NUL one byte longer than it was written.
    const std::uint32_t wineExtra = runningUnderWine() ? 1 : 0;
    EXPECT_EQ(storedLength(kKey, "Currency"), 5u + wineExtra);
    EXPECT_EQ(storedLength(kKey, "Empty"), 0u);

    std::string value = "stale";
    EXPECT_EQ(registry.GetRegistryValue("software\\TESSALY\\ccaddin", "currency", value), 0);
    EXPECT_EQ(value, "GBP \xA3");
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Empty", value), 0);
    EXPECT_EQ(value, "");
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Cut", value), 0);
    EXPECT_EQ(value, "ab");
    EXPECT_EQ(registry.strErrorMessage(), "");
}

TEST(Registry, FailuresEmptyTheValueAndOnlyAMissingKeySetsTheText) {
    TempTill till;
    plantValue("Number", platform::kRegDword, std::string("\x2a\0\0\0", 4));
    plantValue("Port", platform::kRegSz, "COM1");
    TRegistry registry;
    std::string value = "stale";
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Number", value), 1);
    EXPECT_EQ(value, "");
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Absent", value), 1);
    EXPECT_EQ(registry.strErrorMessage(), "");

    EXPECT_EQ(registry.GetRegistryValue("SOFTWARE\\Nowhere\\", "Port", value), 1);
    EXPECT_EQ(registry.strErrorMessage(), "Failed opening registry key");
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Port", value), 0);
    registry.SaveRegistryValue(kKey, "Port", "COM2");
    EXPECT_EQ(registry.strErrorMessage(), "Failed opening registry key"); // never cleared
}

TEST(Registry, SavingNeverCreatesAKeyButCreateKeyAndSaveValueDoes) {
    TempTill till;
    const std::string hook = "SOFTWARE\\Microsoft\\Retail Management System\\Hooks\\000";
    TRegistry registry;
    registry.SaveRegistryValue(hook, "Caption", "Card");
    EXPECT_EQ(registry.strErrorMessage(), "Failed opening registry key");
#ifndef _WIN32 // every Windows machine has SOFTWARE\Microsoft
    platform::RegKey key = 0;
    EXPECT_NE(platform::regOpenKey("SOFTWARE\\Microsoft", key), platform::kErrorSuccess);
#endif

    const std::uint32_t wineExtra = runningUnderWine() ? 1 : 0; // as above
    TRegistry creator;
    creator.CreateKeyAndSaveValue(hook, "Caption", "Card");
    creator.CreateKeyAndSaveValue(hook, "caption", "Card 2");
    EXPECT_EQ(creator.strErrorMessage(), "");
    EXPECT_EQ(storedLength(hook, "Caption"), 6u + wineExtra);
    // Wine creates a key named with a leading "\" under HKEY_LOCAL_MACHINE; Windows refuses it.
    if (!runningUnderWine()) {
        creator.CreateKeyAndSaveValue("\\leading", "Caption", "x");
        EXPECT_EQ(creator.strErrorMessage(), "Failed creating registry key");
    }
}

// The Linux registry is a database file that can be damaged; Windows has no such file.
#ifndef _WIN32
TEST(Registry, ADamagedRegistryIsAFaultOfTheReadAndSilentForTheWrites) {
    TempTill till;
    std::ofstream(till.root() / "registry.db", std::ios::binary) << std::string(4096, 'X');
    TRegistry registry;
    std::string value = "stale";
    EXPECT_EQ(registry.GetRegistryValue(kKey, "Port", value), 1);
    EXPECT_EQ(value, "");
    const std::string prefix = "TRegistry.GetRegistryValue() Failed - ";
    const std::string text = registry.strErrorMessage();
    EXPECT_TRUE(text.starts_with(prefix) && text.size() > prefix.size()) << text;

    registry.SaveRegistryValue(kKey, "Port", "COM1");
    registry.CreateKeyAndSaveValue(kKey, "Port", "COM1");
    EXPECT_EQ(registry.strErrorMessage(), text);
}
#endif

TEST(Registry, ABatchOfReadsSeesItsOwnWritesAndEndsCleanly) {
    TempTill till;
    plantValue("Port", platform::kRegSz, "COM1");
    std::string value;
    {
        const RegistryReadBatch outer;
        const RegistryReadBatch inner;
        TRegistry registry;
        EXPECT_EQ(registry.GetRegistryValue(kKey, "Port", value), 0);
        EXPECT_EQ(value, "COM1");
        registry.SaveRegistryValue(kKey, "Port", "COM2");
        EXPECT_EQ(registry.GetRegistryValue(kKey, "Port", value), 0);
        EXPECT_EQ(value, "COM2");
        EXPECT_EQ(registry.strErrorMessage(), "");
    }
    TRegistry after;
    after.SaveRegistryValue(kKey, "Port", "COM3");
    EXPECT_EQ(after.GetRegistryValue(kKey, "Port", value), 0);
    EXPECT_EQ(value + after.strErrorMessage(), "COM3");
}
