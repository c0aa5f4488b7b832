#include "regedit/registry_file.h"

#include "foundation/registry.h"
#include "platform/platform.h"

#include <optional>
#include <stdexcept>
#include <string>

namespace {

const std::string kHive = "HKEY_LOCAL_MACHINE\\";

std::string withoutLineEnd(std::string line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
        line.pop_back();
    }
    return line;
}

// A quoted text starting at `at`, with regedit's escapes \\ and \"; `at` ends after the
// closing quote.
std::optional<std::string> quoted(const std::string& line, std::size_t& at) {
    if (at >= line.size() || line[at] != '"') {
        return std::nullopt;
    }
    std::string text;
    for (++at; at < line.size(); ++at) {
        if (line[at] == '"') {
            ++at;
            return text;
        }
        if (line[at] == '\\' && at + 1 < line.size()) {
            ++at;
        }
        text += line[at];
    }
    return std::nullopt;
}

// The key path below the hive, created now so that keys without values exist too.
std::string openKey(const std::string& line) {
    const std::string path = line.substr(1, line.size() - 2);
    if (path.size() < kHive.size() || path.compare(0, kHive.size(), kHive) != 0) {
        throw std::runtime_error("only HKEY_LOCAL_MACHINE keys can be imported");
    }
    const std::string subKey = path.substr(kHive.size());
    platform::RegKey key = 0;
    if (const long status = platform::regCreateKey(subKey, key);
        status != platform::kErrorSuccess) {
        throw std::runtime_error("cannot create the key (status " + std::to_string(status) + ")");
    }
    platform::regCloseKey(key);
    return subKey + "\\";
}

void storeValue(const std::string& keyPath, const std::string& line) {
    std::size_t at = 0;
    const std::optional<std::string> name = quoted(line, at);
    if (!name || at >= line.size() || line[at] != '=') {
        throw std::runtime_error("expected \"name\"=\"text\"");
    }
    ++at;
    const std::optional<std::string> value = quoted(line, at);
    if (!value || at != line.size()) {
        throw std::runtime_error("only string values (\"name\"=\"text\") can be imported");
    }
    if (keyPath.empty()) {
        throw std::runtime_error("a value before the first [key] line");
    }
    TRegistry registry;
    registry.CreateKeyAndSaveValue(keyPath, *name, *value);
    if (!registry.strErrorMessage().empty()) {
        throw std::runtime_error(registry.strErrorMessage());
    }
}

} // namespace

void importRegistryFile(std::istream& in) {
    std::string keyPath;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        line = withoutLineEnd(line);
        try {
            if (line.empty() || line.front() == ';' ||
                line.starts_with("Windows Registry Editor")) {
                continue;
            }
            if (line.front() == '[' && line.back() == ']') {
                keyPath = openKey(line);
            } else {
                storeValue(keyPath, line);
            }
        } catch (const std::exception& fault) {
            throw std::runtime_error("line " + std::to_string(number) + ": " + fault.what());
        }
    }
}
