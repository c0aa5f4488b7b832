#include "faces/end_to_end.h"

#include "foundation/registry.h"
#include "platform/platform.h"
#include "settings/settings_table.h"
#include "support/till_readers.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace {

// "\u00e9" and the like as UTF-8.
std::string unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "\\u") == 0 && i + 6 <= text.size()) {
            const unsigned code =
                static_cast<unsigned>(std::stoul(text.substr(i + 2, 4), nullptr, 16));
            if (code < 0x80) {
                out += static_cast<char>(code);
            } else if (code < 0x800) {
                out += static_cast<char>(0xC0 | (code >> 6));
                out += static_cast<char>(0x80 | (code & 0x3F));
            } else {
                out += static_cast<char>(0xE0 | (code >> 12));
                out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
                out += static_cast<char>(0x80 | (code & 0x3F));
            }
            i += 5;
        } else {
            out += text[i];
        }
    }
    return out;
}

// The NUL-separated names a profile-string listing gives.
std::vector<std::string> listed(const char* section, const std::string& file) {
    std::vector<char> buffer(65536);
    const unsigned long length = platform::getPrivateProfileString(
        section, nullptr, "", buffer.data(), static_cast<unsigned long>(buffer.size()), file);
    std::vector<std::string> names;
    for (std::size_t at = 0; at < length;) {
        const std::string name(buffer.data() + at);
        names.push_back(name);
        at += name.size() + 1;
    }
    return names;
}

} // namespace

std::vector<Choice> readChoices(const std::string& file) {
    std::ifstream in(file);
    if (!in) {
        throw std::runtime_error("cannot read " + file);
    }
    std::vector<Choice> choices;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t blank = line.find(' ');
        if (blank == std::string::npos) {
            throw std::runtime_error("not a choice: " + line);
        }
        const std::size_t equals = line.find('=', blank);
        Choice choice{line.substr(0, blank),
                      line.substr(blank + 1, equals == std::string::npos ? std::string::npos
                                                                         : equals - blank - 1),
                      equals == std::string::npos ? "" : unescaped(line.substr(equals + 1))};
        choices.push_back(choice);
    }
    return choices;
}

void writeTillState(const std::string& clientFolder, std::ostream& out) {
    std::vector<std::string> lines;
    for (const auto& [name, value] : addinSettings()) {
        lines.push_back("registry: " + name + "=" + value);
    }
    for (const char* name : {"cxclientconfig.ini", "zontalkclient.ini"}) {
        const std::string file = clientFolder + name;
        for (const std::string& section : listed(nullptr, file)) {
            for (const std::string& key : listed(section.c_str(), file)) {
                char value[4096] = {};
                platform::getPrivateProfileString(section.c_str(), key.c_str(), "", value,
                                                  sizeof value, file);
                lines.push_back(std::string(name) + " [" + section + "]: " + key + "=" + value);
            }
        }
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& line : lines) {
        out << line << "\n";
    }
}
