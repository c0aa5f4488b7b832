// A registry database locked by another process, or damaged: every access fails with a
// description, nothing crashes, and the file is never replaced by a new, empty store.
#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "support/child_process.h"
#include "support/temp_till.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const std::string kKey = "SOFTWARE\\Tessaly\\ccaddin\\";

std::string readSetting(const std::string& name, std::string& message) {
    TRegistry registry;
    std::string value;
    const bool read = registry.GetRegistryValue(kKey, name, value) == 0;
    message = registry.strErrorMessage();
    return read ? value : "<failed>";
}

} // namespace

TEST(RegistryFaults, ALockedDatabaseIsDescribedAndWorksAgainOnceReleased) {
    TempTill till;
    TRegistry().CreateKeyAndSaveValue(kKey, "Acquirer", "Barclays");
    const fs::path file = till.root() / "registry.db";
    const std::string before = readBytes(file);

    // Another program holds the database in an exclusive transaction and keeps it.
    ChildProcess holder = anotherProgramLockingTheRegistry(file, "BEGIN EXCLUSIVE");
    ASSERT_TRUE(holder.waitReady());

    // A read says why it failed; a store's fault ends it silently, as the system defines, and
    // nothing is half written. (The settings store is left out: it reads 89 values, each
    // waiting out the lock, which takes minutes.)
    std::string message;
    EXPECT_EQ(readSetting("Acquirer", message), "<failed>");
    EXPECT_NE(message.find("locked"), std::string::npos) << message;
    TRegistry().SaveRegistryValue(kKey, "Acquirer", "HSBC");
    EXPECT_EQ(readBytes(file), before);

    holder.kill();
    EXPECT_EQ(readSetting("Acquirer", message), "Barclays");
    TRegistry again;
    again.SaveRegistryValue(kKey, "Acquirer", "HSBC");
    EXPECT_EQ(again.strErrorMessage(), "");
    EXPECT_EQ(readSetting("Acquirer", message), "HSBC");
}

TEST(RegistryFaults, ADamagedDatabaseIsDescribedAndKeptAsItIs) {
    TempTill till;
    TRegistry().CreateKeyAndSaveValue(kKey, "Acquirer", "Barclays");
    const fs::path file = till.root() / "registry.db";
    const std::string healthy = readBytes(file);

    // Three kinds of damage: a foreign file, a database cut short, pages overwritten.
    std::string overwritten = healthy;
    for (std::size_t i = 100; i < overwritten.size(); i += 7) {
        overwritten[i] = static_cast<char>(i * 31);
    }
    for (const std::string& damaged : {std::string("This is not a registry at all.\r\n"),
                                       healthy.substr(0, healthy.size() / 2), overwritten}) {
        {
            std::ofstream out(file, std::ios::binary | std::ios::trunc);
            out << damaged;
        }
        std::string message;
        const std::string value = readSetting("Acquirer", message);
        EXPECT_TRUE(value == "<failed>" || value == "Barclays") << value;
        if (value == "<failed>") {
            EXPECT_NE(message.find("registry database"), std::string::npos) << message;
        }
        TRegistry writer;
        writer.CreateKeyAndSaveValue(kKey, "ComPort", "COM9");
        TCcAddinRegistry settings;
        settings.ReadRegistry();
        settings.WriteRegistry(28);
        if (!writer.strErrorMessage().empty()) {
            EXPECT_EQ(readBytes(file), damaged) << "a refused write changed the damaged file";
        }
        EXPECT_GE(fs::file_size(file), std::min(damaged.size(), healthy.size() / 2))
            << "the store was recreated";
    }
}
