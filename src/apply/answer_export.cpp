#include "apply/answer_export.h"

#include "platform/cp1252.h"
#include "settings/settings_table.h"

namespace {

// Outer blanks and outer quotes would be lost on reading without a pair of quotes around them.
bool needsQuotes(const std::string& value) {
    if (value.empty()) {
        return false;
    }
    const auto blank = [](char c) { return c == ' ' || c == '\t'; };
    return blank(value.front()) || blank(value.back()) ||
           (value.size() >= 2 && value.front() == '"' && value.back() == '"');
}

} // namespace

std::string exportAnswers(const TCcAddinRegistry& settings) {
    std::string text = "; Settings of the card add-in, as installed on this till.\r\n"
                       "; Apply with: parvane-apply --answers FILE\r\n"
                       "[ccaddin]\r\n";
    for (const SettingDescriptor& setting : settingsTable()) {
        const std::string name(setting.valueName);
        if (name == "CorvixPassword") {
            text += "; CorvixPassword is not exported: the run keeps an installed password\r\n";
            continue;
        }
        const std::string value = storedText(settings, setting);
        if (value.find_first_of("\r\n") != std::string::npos) {
            text += "; " + name + " holds a line break and cannot be written here\r\n";
            continue;
        }
        text += name + "=" + (needsQuotes(value) ? "\"" + value + "\"" : value) + "\r\n";
    }
    return cp1252::toUtf8(text);
}
