// The one description of the card add-in's 89 settings: field number, registry value name, the
// property it fills, and the rule that turns the stored text into the property's value. Reading,
// writing and anything else that walks the settings (comparing two records, listing them) go
// through this table, so a setting's registry format is stated in exactly one place.
#pragma once

#include "settings/ccaddin_registry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

// How the stored text becomes a value. The flag rules differ from setting to setting on purpose:
// each gives its setting the add-in's own default when the value is absent.
enum class ReadRule {
    Text,                // as stored
    TextWithBackslash,   // as stored, with a trailing "\" when not empty
    TextDefault,         // as stored; empty gives the descriptor's default text
    Integer,             // the number; empty or not a number gives 0
    IntegerDefault,      // empty gives the descriptor's default; not a number gives 0
    ThreeWay,            // empty or "0" gives 0, "1" gives 1, anything else 2
    Real,                // the number with "." as separator; not a number gives 0
    FlagOnlyOne,         // true only for "1"
    FlagNotEmptyNotZero, // true for anything but empty and "0"
    FlagEmptyOrOne,      // true for empty and "1"
    FlagFontBold,        // true for empty and "1" (kept apart: it is the font's own rule)
    FlagMerchantCut,     // empty or "1" true, "0" false, anything else leaves the value as it was
};

using SettingMember =
    std::variant<std::string TCcAddinRegistry::*, std::int32_t TCcAddinRegistry::*,
                 bool TCcAddinRegistry::*, double TCcAddinRegistry::*>;

struct SettingDescriptor {
    std::int32_t fieldNumber;
    std::string_view valueName; // the registry value, as the add-in spells it
    SettingMember member;
    ReadRule rule;
    // For TextDefault and IntegerDefault: the text an empty or missing value reads as.
    std::string_view emptyDefault;
};

inline constexpr std::size_t kSettingCount = 89;

// The key every setting lives under; the trailing "\" is part of the path passed on.
inline constexpr std::string_view kCcAddinKeyPath = "SOFTWARE\\Tessaly\\ccaddin\\";

// Ordered by field number: settingsTable()[n].fieldNumber == n.
const std::array<SettingDescriptor, kSettingCount>& settingsTable();

// The descriptor of a field number, or nullptr outside 0 to 88.
const SettingDescriptor* findSetting(std::int32_t fieldNumber);

// Sets the property from the stored text by the descriptor's rule (never fails: bad numeric text
// reads as 0).
void applyStoredText(TCcAddinRegistry& record, const SettingDescriptor& setting,
                     const std::string& stored);

// The text the property is stored as: flags "1"/"0", integers in decimal, the real in its
// shortest "." form that reads back to the same number, texts unchanged.
std::string storedText(const TCcAddinRegistry& record, const SettingDescriptor& setting);

// True when the two records hold the same value for the setting (texts compared
// case-sensitively, numbers and flags by value).
bool sameValue(const TCcAddinRegistry& left, const TCcAddinRegistry& right,
               const SettingDescriptor& setting);
