#include "configure/rms_hook_setup.h"

#include "foundation/registry.h"
#include "foundation/tessaly_string.h"

#include <cstdint>
#include <string>

namespace {

const std::string kHooksKey =
    "SOFTWARE\\Microsoft\\Retail Management System\\Store Operations\\Hooks\\";

struct HookEntry {
    const char* caption; // also the description
    std::int32_t hookType;
    const char* objectName;
};

const HookEntry kTransactionHook{"Tessaly CreditCard Transaction", 15,
                                 "TessalyCCAddin.TRmsTransactionHook"};
const HookEntry kZReportHook{"Tessaly CreditCard Z Report", 1, "TessalyCCAddin.TRmsReportHook"};

// Entries below 100 get two leading zeros whatever their width ("007", "0012"): installed tills
// carry keys named this way, so the rule cannot change.
std::string entryKey(std::int64_t entry) {
    const std::string digits = std::to_string(entry);
    return kHooksKey + (entry < 100 ? "00" + digits : digits);
}

void addHook(const HookEntry& hook) {
    try {
        TRegistry registry;
        std::string text;
        registry.GetRegistryValue(kHooksKey, "Count", text);
        // Taken as it reads: a damaged count below zero searches nothing and names its new entry
        // with the minus sign ("00-3"), as the hooks have always been registered.
        const std::int64_t count = TessalyString::StrToLong(text);

        std::int64_t target = count;
        for (std::int64_t entry = 0; entry < count; ++entry) {
            registry.GetRegistryValue(entryKey(entry), "HookType", text);
            // The type alone decides: the till carries one card-payment hook of each type, so
            // an entry of this type is ours to rewrite whatever class it names.
            if (TessalyString::StrToLong(text) == hook.hookType) {
                target = entry;
                break;
            }
        }

        // Neither the entry nor the Hooks key itself need exist yet.
        const std::string key = entryKey(target);
        registry.CreateKeyAndSaveValue(key, "Caption", hook.caption);
        registry.CreateKeyAndSaveValue(key, "Description", hook.caption);
        registry.CreateKeyAndSaveValue(key, "HookType", std::to_string(hook.hookType));
        registry.CreateKeyAndSaveValue(key, "ObjectName", hook.objectName);
        registry.CreateKeyAndSaveValue(key, "Parameter", "1");
        if (target == count) {
            registry.CreateKeyAndSaveValue(kHooksKey, "Count", std::to_string(count + 1));
        }
    } catch (...) {
        // The configuration run goes on without hooks; RMS simply does not call the add-in.
    }
}

} // namespace

void TRmsHookSetup::AddTransactionHook() {
    addHook(kTransactionHook);
}

void TRmsHookSetup::AddZReportHook() {
    addHook(kZReportHook);
}
