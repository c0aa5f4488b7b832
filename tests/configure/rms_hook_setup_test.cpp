#include "configure/rms_hook_setup.h"
#include "foundation/registry.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>
#include <string>

namespace {

const std::string kHooks =
    "SOFTWARE\\Microsoft\\Retail Management System\\Store Operations\\Hooks\\";

std::string read(const std::string& key, const char* name) {
    std::string value;
    return TRegistry().GetRegistryValue(kHooks + key, name, value) == 0 ? value : "<missing>";
}

void plant(const std::string& key, const char* name, const char* value) {
    TRegistry().CreateKeyAndSaveValue(kHooks + key, name, value);
}

// Caption, Description, HookType, ObjectName and Parameter of an entry.
std::string entry(const std::string& key) {
    std::string values;
    for (const char* name : {"Caption", "Description", "HookType", "ObjectName", "Parameter"}) {
        values += read(key, name) + "|";
    }
    return values;
}

const std::string kTransaction = "Tessaly CreditCard Transaction|Tessaly CreditCard Transaction|"
                                 "15|TessalyCCAddin.TRmsTransactionHook|1|";
const std::string kZReport =
    "Tessaly CreditCard Z Report|Tessaly CreditCard Z Report|1|TessalyCCAddin.TRmsReportHook|1|";

} // namespace

TEST(RmsHooks, ATillWithoutHooksGetsTwoEntriesAndASecondRunAddsNone) {
    TempTill till;
    TRmsHookSetup hooks;
    hooks.AddTransactionHook();
    hooks.AddZReportHook();
    EXPECT_EQ(read("", "Count"), "2");
    // The second run finds both by type and writes them again.
    plant("000", "Caption", "edited");
    hooks.AddTransactionHook();
    hooks.AddZReportHook();
    EXPECT_EQ(read("", "Count"), "2");
    EXPECT_EQ(entry("000"), kTransaction);
    EXPECT_EQ(entry("001"), kZReport);
    EXPECT_EQ(read("002", "HookType"), "<missing>");
}

TEST(RmsHooks, NewEntriesGetTwoLeadingZerosBelowAHundredAndTheFirstOfATypeIsTakenOver) {
    TempTill till;
    plant("", "Count", "12");
    plant("003", "HookType", "1");
    plant("003", "ObjectName", "Vendor.ZReport");
    plant("0010", "HookType", "1");
    plant("0010", "ObjectName", "Vendor.Second");
    TRmsHookSetup hooks;
    hooks.AddTransactionHook();
    hooks.AddZReportHook();
    EXPECT_EQ(entry("0012"), kTransaction);
    EXPECT_EQ(entry("003"), kZReport);
    EXPECT_EQ(read("0010", "ObjectName"), "Vendor.Second");
    EXPECT_EQ(read("0010", "Caption"), "<missing>");
    EXPECT_EQ(read("", "Count"), "13");

    plant("", "Count", "123");
    plant("003", "HookType", "2");
    plant("0010", "HookType", "2");
    hooks.AddZReportHook();
    EXPECT_EQ(entry("123"), kZReport);
    EXPECT_EQ(read("", "Count"), "124");
}
