#include "configure/rms_hook_setup.h"
#include "foundation/registry.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

const std::string kHooks =
    "SOFTWARE\\Microsoft\\Retail Management System\\Store Operations\\Hooks\\";

std::string read(const std::string& key, const std::string& name) {
    TRegistry registry;
    std::string value;
    return registry.GetRegistryValue(kHooks + key, name, value) == 0 ? value : "<missing>";
}

void plantHook(const std::string& entry, const std::string& hookType,
               const std::string& objectName) {
    TRegistry registry;
    registry.CreateKeyAndSaveValue(kHooks + entry, "HookType", hookType);
    registry.CreateKeyAndSaveValue(kHooks + entry, "ObjectName", objectName);
}

void setCount(const std::string& count) {
    TRegistry registry;
    registry.CreateKeyAndSaveValue(kHooks, "Count", count);
}

// The five values of an entry, in the order they are written.
std::vector<std::string> entry(const std::string& key) {
    std::vector<std::string> values;
    for (const char* name : {"Caption", "Description", "HookType", "ObjectName", "Parameter"}) {
        values.push_back(read(key, name));
    }
    return values;
}

const std::vector<std::string> kTransaction{"Tessaly CreditCard Transaction",
                                            "Tessaly CreditCard Transaction", "15",
                                            "TessalyCCAddin.TRmsTransactionHook", "1"};
const std::vector<std::string> kZReport{"Tessaly CreditCard Z Report",
                                        "Tessaly CreditCard Z Report", "1",
                                        "TessalyCCAddin.TRmsReportHook", "1"};

} // namespace

TEST(RmsHooks, ATillWithoutHooksGetsTwoEntriesAndASecondRunAddsNone) {
    TempTill till;
    TRmsHookSetup hooks;
    hooks.AddTransactionHook();
    EXPECT_EQ(entry("000"), kTransaction);
    EXPECT_EQ(read("", "Count"), "1");
    hooks.AddZReportHook();
    EXPECT_EQ(entry("001"), kZReport);
    EXPECT_EQ(read("", "Count"), "2");

    // Someone renamed the caption; the next run puts it back and adds nothing.
    TRegistry().SaveRegistryValue(kHooks + "000", "Caption", "edited");
    hooks.AddTransactionHook();
    hooks.AddZReportHook();
    EXPECT_EQ(read("", "Count"), "2");
    EXPECT_EQ(entry("000"), kTransaction);
    EXPECT_EQ(entry("001"), kZReport);
    EXPECT_EQ(read("002", "HookType"), "<missing>");
}

TEST(RmsHooks, EntriesAreNamedWithTwoLeadingZerosBelowAHundred) {
    TempTill till;
    setCount("12"); // entries 000 to 0011, none of them ours
    plantHook("003", "7", "Other.Hook");
    plantHook("0011", "150", "Other.Big");
    TRmsHookSetup hooks;
    hooks.AddTransactionHook();
    EXPECT_EQ(entry("0012"), kTransaction);
    EXPECT_EQ(read("", "Count"), "13");
    EXPECT_EQ(read("012", "HookType"), "<missing>");
    EXPECT_EQ(read("003", "ObjectName"), "Other.Hook");

    setCount("123");
    hooks.AddZReportHook();
    EXPECT_EQ(entry("123"), kZReport);
    EXPECT_EQ(read("", "Count"), "124");
}

TEST(RmsHooks, TheFirstEntryOfTheSameTypeIsTakenOverWhateverItNames) {
    TempTill till;
    setCount("4");
    plantHook("000", "3", "Pos.Other");
    plantHook("001", "1", "Vendor.ZReport");
    plantHook("002", "1", "Vendor.Second");
    plantHook("003", "15", "Vendor.Transaction");
    TRmsHookSetup hooks;
    hooks.AddZReportHook();
    hooks.AddTransactionHook();
    EXPECT_EQ(entry("001"), kZReport);
    EXPECT_EQ(read("002", "ObjectName"), "Vendor.Second");
    EXPECT_EQ(read("002", "Caption"), "<missing>");
    EXPECT_EQ(entry("003"), kTransaction);
    EXPECT_EQ(read("", "Count"), "4");
    EXPECT_EQ(read("000", "ObjectName"), "Pos.Other");
}

TEST(RmsHooks, ACountThatIsNotANumberOrBelowZeroMeansNoEntries) {
    TempTill till;
    plantHook("000", "15", "Vendor.Transaction");
    setCount("lots");
    TRmsHookSetup hooks;
    hooks.AddTransactionHook();
    EXPECT_EQ(entry("000"), kTransaction);
    EXPECT_EQ(read("", "Count"), "1");

    setCount("-3");
    hooks.AddZReportHook();
    EXPECT_EQ(entry("000"), kZReport);
    EXPECT_EQ(read("", "Count"), "1");
}
