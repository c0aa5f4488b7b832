#include "settings/ccaddin_registry.h"

#include "foundation/clock.h"
#include "foundation/file_system.h"
#include "foundation/registry.h"
#include "foundation/tessaly_config.h"
#include "foundation/tessaly_string.h"
#include "settings/settings_table.h"

#include <limits>
#include <stdexcept>

namespace {

const std::string kKeyPath(kCcAddinKeyPath);

// Characters `first` to `first + count - 1` (counted from 1), or fewer when the text is short.
std::string middle(const std::string& text, std::size_t first, std::size_t count) {
    const std::size_t start = first - 1;
    return start < text.size() ? text.substr(start, count) : std::string();
}

// A stored "YYYYMMDD" as a date; out-of-range parts roll over as a calendar does.
DateTime storedDay(const std::string& stamp) {
    return dateFromParts(TessalyString::StrToInt(middle(stamp, 1, 4)),
                         TessalyString::StrToInt(middle(stamp, 5, 2)),
                         TessalyString::StrToInt(middle(stamp, 7, 2)));
}

// The file-system helper counts days in 16 bits; a larger count is an overflow fault, as it
// always was, and ends the clean-up without deleting anything.
std::int16_t daysAs16Bit(std::int32_t days) {
    if (days > std::numeric_limits<std::int16_t>::max()) {
        throw std::overflow_error("Overflow");
    }
    return static_cast<std::int16_t>(days);
}

void saveMoment(const char* valueName) {
    const DateTime now = localNow();
    TRegistry registry;
    registry.SaveRegistryValue(kKeyPath, valueName, formatYmd(now) + formatHms(now));
}

} // namespace

// Each operation swallows its faults: the store never reports failure, and a read that breaks
// off keeps the settings it had already loaded.

void TCcAddinRegistry::ReadRegistry() {
    try {
        const RegistryReadBatch batch;
        TRegistry registry;
        std::string stored;
        for (const SettingDescriptor& setting : settingsTable()) {
            // The status is not looked at: anything that is not a stored string reads as empty.
            registry.GetRegistryValue(kKeyPath, std::string(setting.valueName), stored);
            applyStoredText(*this, setting, stored);
        }
    } catch (...) {
    }
}

void TCcAddinRegistry::WriteRegistry(std::int32_t fieldNumber) {
    try {
        TRegistry registry;
        const SettingDescriptor* setting = findSetting(fieldNumber);
        if (setting == nullptr) {
            return;
        }
        registry.SaveRegistryValue(kKeyPath, std::string(setting->valueName),
                                   storedText(*this, *setting));
    } catch (...) {
    }
}

void TCcAddinRegistry::DeleteReceipts(std::int32_t daysToKeep, const std::string& lastDeleteDate,
                                      const std::string& receiptFolder) {
    try {
        if (daysToKeep <= 0) {
            return;
        }
        const DateTime today = localNow();
        // At most once a day: a clean-up stamped today or later has nothing left to do.
        if (!lastDeleteDate.empty() && daysBetween(storedDay(lastDeleteDate), today) <= 0) {
            return;
        }
        if (!lastDeleteDate.empty()) {
            FileSystem files;
            files.DeleteFilesInFolderByDay(TessalyConfig::AddBackslash(receiptFolder), "*.rcpt",
                                           daysAs16Bit(daysToKeep));
        }
        TRegistry registry;
        registry.SaveRegistryValue(kKeyPath, "LastReceiptDeleteDate", formatYmd(today));
    } catch (...) {
    }
}

void TCcAddinRegistry::SaveZReportDate() {
    try {
        saveMoment("LastZReportDate");
    } catch (...) {
    }
}

void TCcAddinRegistry::SaveLastTmsCallDate() {
    try {
        saveMoment("LastTmsCallDate");
    } catch (...) {
    }
}

bool settingStored(std::int32_t fieldNumber) {
    try {
        const SettingDescriptor* setting = findSetting(fieldNumber);
        std::string stored;
        return setting != nullptr &&
               TRegistry().GetRegistryValue(kKeyPath, std::string(setting->valueName), stored) ==
                   0 &&
               !stored.empty();
    } catch (...) {
        return false;
    }
}
