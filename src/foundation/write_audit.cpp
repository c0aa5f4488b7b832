#include "foundation/write_audit.h"

#include "foundation/registry.h"
#include "platform/cp1252.h"
#include "platform/platform.h"

#include <algorithm>

namespace {

WriteAudit* openAudit = nullptr;

const std::string kMissing = "(missing)";

std::string shown(const std::string& name, const std::string& value) {
    return value == kMissing                         ? value
           : cp1252::iequals(name, "CorvixPassword") ? std::string("\"***\"")
                                                     : "\"" + value + "\"";
}

std::string registryNow(const std::string& keyPath, const std::string& name) {
    std::string value;
    return TRegistry().GetRegistryValue(keyPath, name, value) == 0 ? value : kMissing;
}

std::string iniNow(const std::string& file, const std::string& section, const std::string& key) {
    std::vector<char> buffer(65536);
    const char* const absent = "\x01";
    const unsigned long count =
        platform::getPrivateProfileString(section.c_str(), key.c_str(), absent, buffer.data(),
                                          static_cast<unsigned long>(buffer.size()), file);
    const std::string value(buffer.data(), count);
    return value == absent ? kMissing : value;
}

} // namespace

WriteAudit::WriteAudit() : previous_(openAudit) {
    openAudit = this;
}

WriteAudit::~WriteAudit() {
    openAudit = previous_;
}

void WriteAudit::registryWrite(const std::string& keyPath, const std::string& valueName,
                               const std::string& value) {
    if (openAudit != nullptr) {
        std::string path = keyPath;
        if (!path.empty() && path.back() == '\\') {
            path.pop_back();
        }
        openAudit->registry_[cp1252::toUpper(path + '\\' + valueName)] = {path, "", valueName,
                                                                          value};
    }
}

void WriteAudit::iniWrite(const std::string& file, const std::string& section,
                          const std::string& key, const std::string& value) {
    if (openAudit != nullptr) {
        openAudit->ini_[cp1252::toUpper(file + '\n' + section + '\n' + key)] = {
            file, section, key, platform::profileValueAsRead(value)};
    }
}

std::vector<std::string> WriteAudit::notHeld() const {
    std::vector<std::string> missing;
    for (const auto& [unused, write] : registry_) {
        const std::string found = registryNow(write.where, write.name);
        if (found != write.value) {
            missing.push_back("HKLM\\" + write.where + "\\" + write.name + ": expected " +
                              shown(write.name, write.value) + ", found " +
                              shown(write.name, found));
        }
    }
    for (const auto& [unused, write] : ini_) {
        const std::string found = iniNow(write.where, write.section, write.name);
        if (found != write.value) {
            missing.push_back(write.where + " [" + write.section + "] " + write.name +
                              ": expected " + shown(write.name, write.value) + ", found " +
                              shown(write.name, found));
        }
    }
    return missing;
}
