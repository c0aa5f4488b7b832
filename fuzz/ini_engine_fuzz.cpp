// The INI engine on any bytes: reading never crashes and never overruns the caller's buffer, and a
// write changes only the one key's logical value while every other byte of the file stays.
//
// Input: an operation line ("set", "delete key" or "delete section"), a section line, a key
// line, a value line, then the file's bytes.
#include "fuzz_till.h"
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "platform/posix/ini_document.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <vector>

using platform::posix::IniDocument;
using platform::posix::trimIniBlanks;

namespace {

const char* const kFile = "c:\\fuzz\\engine.ini";

// What a reader gets back for a written value: blanks trimmed, one pair of enclosing quotes gone.
std::string readForm(const std::string& value) {
    std::string text(trimIniBlanks(value));
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = text.substr(1, text.size() - 2);
    }
    return text;
}

bool sameName(const std::string& a, const std::string& b) {
    return cp1252::iequals(std::string(trimIniBlanks(a)), std::string(trimIniBlanks(b)));
}

// Every call, whatever the buffer size, ends its text inside the buffer.
void readEverything() {
    std::vector<char> buffer(70000);
    for (unsigned long size : {1UL, 2UL, 3UL, 7UL, 70000UL}) {
        std::fill(buffer.begin(), buffer.end(), 'x');
        const unsigned long sections =
            platform::getPrivateProfileString(nullptr, nullptr, "d", buffer.data(), size, kFile);
        fuzzing::check(sections < size && buffer[sections] == '\0', "section list overran");
        const std::string first(buffer.data(), sections > 0 ? std::strlen(buffer.data()) : 0);
        const unsigned long keys = platform::getPrivateProfileString(first.c_str(), nullptr, "d",
                                                                     buffer.data(), size, kFile);
        fuzzing::check(keys < size && buffer[keys] == '\0', "key list overran");
        const unsigned long value = platform::getPrivateProfileString(
            first.c_str(), "Count", "  default  ", buffer.data(), size, kFile);
        fuzzing::check(value < size && buffer[value] == '\0', "value overran");
    }
}

std::string readValue(const std::string& section, const std::string& key) {
    std::vector<char> buffer(70000);
    const unsigned long count = platform::getPrivateProfileString(
        section.c_str(), key.c_str(), "\x01missing", buffer.data(), buffer.size(), kFile);
    return std::string(buffer.data(), count);
}

// Every key the old file let a reader see keeps its value, unless `touched` says it is the one.
template <typename Touched>
void checkOtherKeys(const IniDocument& before, const IniDocument& after, Touched touched) {
    for (const std::string& section : before.sectionNames()) {
        for (const std::string& key : before.keyNames(section)) {
            if (!touched(section, key)) {
                fuzzing::check(before.value(section, key) == after.value(section, key),
                               "an untouched key changed: [" + section + "] " + key);
            }
        }
    }
}

// The bytes that differ between the files form one run that lies inside [from, to] of the old.
void checkOneChange(const std::string& before, const std::string& after, std::size_t from,
                    std::size_t to) {
    std::size_t prefix = 0;
    while (prefix < before.size() && prefix < after.size() && before[prefix] == after[prefix]) {
        ++prefix;
    }
    std::size_t suffix = 0;
    const std::size_t limit = std::min(before.size(), after.size()) - prefix;
    while (suffix < limit &&
           before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
        ++suffix;
    }
    if (before == after) {
        return;
    }
    fuzzing::check(prefix >= from && before.size() - suffix <= to,
                   "bytes outside the written line changed");
}

void checkSet(const std::string& section, const std::string& key, const std::string& value,
              const std::string& oldBytes, const std::string& newBytes) {
    const IniDocument before(oldBytes);
    const IniDocument after(newBytes);
    fuzzing::check(readValue(section, key) == readForm(value), "the written value reads back");
    checkOtherKeys(before, after, [&](const std::string& s, const std::string& k) {
        return sameName(s, section) && sameName(k, key);
    });
    std::size_t from = oldBytes.size();
    std::size_t to = oldBytes.size();
    if (const auto found = before.findSection(trimIniBlanks(section))) {
        if (const auto line = before.findKey(*found, trimIniBlanks(key))) {
            from = line->start;
            to = line->end;
        } else {
            from = 0; // a new key line goes somewhere inside its section: only inserted bytes
        }
    }
    if (from == 0 && to == oldBytes.size()) {
        // Insertion: nothing of the old file may be replaced.
        std::size_t prefix = 0;
        while (prefix < oldBytes.size() && prefix < newBytes.size() &&
               oldBytes[prefix] == newBytes[prefix]) {
            ++prefix;
        }
        fuzzing::check(newBytes.size() >= oldBytes.size() &&
                           newBytes.compare(newBytes.size() - (oldBytes.size() - prefix),
                                            std::string::npos, oldBytes, prefix) == 0,
                       "a new key replaced old bytes");
        return;
    }
    checkOneChange(oldBytes, newBytes, from, to);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::Parts parts = fuzzing::splitInput(data, size, 4);
    // Names pass through C strings: what follows a NUL is not part of them.
    const std::string operation = parts.lines[0].c_str();
    const std::string section = parts.lines[1].c_str();
    const std::string key = parts.lines[2].c_str();
    const std::string value = parts.lines[3].c_str();
    const auto file = fuzzing::tillFile("fuzz/engine.ini");
    fuzzing::writeBytes(file, parts.rest);
    // Half the inputs are an hour old, so that the engine keeps its parsed copy between calls;
    // the others were written just now and are read afresh on every call.
    if (parts.rest.size() % 2 == 1) {
        const timespec hourAgo[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 1}};
        ::utimensat(AT_FDCWD, file.c_str(), hourAgo, 0);
    }

    readEverything();

    bool written = false;
    if (operation == "delete section") {
        written = platform::writePrivateProfileString(section.c_str(), nullptr, nullptr, kFile);
    } else if (operation == "delete key") {
        written = platform::writePrivateProfileString(section.c_str(), key.c_str(), nullptr, kFile);
    } else {
        written =
            platform::writePrivateProfileString(section.c_str(), key.c_str(), value.c_str(), kFile);
    }
    const std::string after = fuzzing::readBytes(file);
    if (!written) {
        fuzzing::check(after == parts.rest, "a refused write changed the file");
        return 0;
    }
    if (operation == "delete section" || operation == "delete key") {
        const bool wholeSection = operation == "delete section";
        checkOtherKeys(IniDocument(parts.rest), IniDocument(after),
                       [&](const std::string& s, const std::string& k) {
                           return sameName(s, section) && (wholeSection || sameName(k, key));
                       });
        return 0;
    }
    checkSet(section, key, value, parts.rest, after);
    return 0;
}
