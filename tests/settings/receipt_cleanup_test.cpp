#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace fs = std::filesystem;

namespace {

const std::string kKey = "SOFTWARE\\Tessaly\\ccaddin\\";

// The files still in the folder and the recorded day of the last clean-up.
std::string state(const TempTill& till) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(till.driveC() / "receipts")) {
        names.insert(entry.path().filename().string());
    }
    std::string text;
    for (const std::string& name : names) {
        text += name + " ";
    }
    std::string date;
    TRegistry().GetRegistryValue(kKey, "LastReceiptDeleteDate", date);
    return text + "| " + date;
}

} // namespace

TEST(ReceiptCleanup, RunsAtMostOnceADayAndRemovesOnlyReceiptsOlderThanTheDaysKept) {
    // 3 March 2025, with receipts ten, six and two days old and an old non-receipt.
    TempTill till;
    FakeClock clock{2025, 3, 3, 9, 30, 0};
    TRegistry().CreateKeyAndSaveValue(kKey, "LastReceiptDeleteDate", "unchanged");
    for (const auto& [file, age] : {std::pair{"old.rcpt", 10}, std::pair{"OLD2.RCPT", 6},
                                    std::pair{"young.rcpt", 2}, std::pair{"old.txt", 10}}) {
        fs::last_write_time(
            till.plant(std::string("receipts/") + file, "r"),
            std::chrono::file_clock::from_sys(clock.now() - std::chrono::days{age}));
    }
    const std::string allFiles = "OLD2.RCPT old.rcpt old.txt young.rcpt ";
    TCcAddinRegistry store;
    store.DeleteReceipts(0, "20250101", "c:\\receipts\\");
    store.DeleteReceipts(-5, "20250101", "c:\\receipts\\");
    store.DeleteReceipts(5, "20250303", "c:\\receipts\\");
    store.DeleteReceipts(5, "20251340", "c:\\receipts\\");     // rolls over into January 2026
    store.DeleteReceipts(40000, "20250101", "c:\\receipts\\"); // too many days for 16 bits
    EXPECT_EQ(state(till), allFiles + "| unchanged");
    // The first clean-up ever only records the day.
    store.DeleteReceipts(5, "", "c:\\receipts\\");
    EXPECT_EQ(state(till), allFiles + "| 20250303");
    // Day 0 of March is the last day of February, so the clean-up is due.
    store.DeleteReceipts(5, "20250300", "c:\\receipts");
    EXPECT_EQ(state(till), "old.txt young.rcpt | 20250303");
}
