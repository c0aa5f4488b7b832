#include "apply/write_check.h"

#include "apply/apply_report.h"
#include "foundation/registry.h"
#include "platform/platform.h"

#include <vector>

namespace {

const std::string kMissing = "(missing)";

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

// What a reader gets back for a written value: outer blanks gone, then one pair of quotes.
std::string readForm(const std::string& written) {
    std::string_view text = written;
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
        text.back() == text.front()) {
        text = text.substr(1, text.size() - 2);
    }
    return std::string(text);
}

std::string iniValue(const IniWrite& write) {
    std::vector<char> buffer(65536);
    const char* const absent = "\x01";
    const unsigned long count = platform::getPrivateProfileString(
        write.section.c_str(), write.key.c_str(), absent, buffer.data(),
        static_cast<unsigned long>(buffer.size()), write.file);
    const std::string value(buffer.data(), count);
    return value == absent ? kMissing : value;
}

} // namespace

std::vector<std::string> writesNotHeld(const TillChanges& intended) {
    std::vector<std::string> missing;
    for (const RegistryWrite& write : intended.registry) {
        std::string found;
        if (TRegistry().GetRegistryValue(write.keyPath, write.valueName, found) != 0) {
            found = kMissing;
        }
        if (found != write.after) {
            missing.push_back(
                "HKLM\\" + write.keyPath + (write.keyPath.ends_with('\\') ? "" : "\\") +
                write.valueName + ": expected " + quoted(shownValue(write.valueName, write.after)) +
                ", found " +
                (found == kMissing ? found : quoted(shownValue(write.valueName, found))));
        }
    }
    for (const IniWrite& write : intended.ini) {
        const std::string expected = write.after ? readForm(*write.after) : kMissing;
        const std::string found = iniValue(write);
        if (found != expected) {
            missing.push_back(write.file + " [" + write.section + "] " + write.key + ": expected " +
                              (write.after ? quoted(expected) : expected) + ", found " +
                              (found == kMissing ? found : quoted(found)));
        }
    }
    return missing;
}
