#include "apply/till_changes.h"

#include "platform/cp1252.h"
#include "platform/platform.h"

#include <algorithm>

namespace {

// Registry and INI names are case-insensitive, and a trailing "\" does not change a key.
bool sameKeyPath(std::string_view a, std::string_view b) {
    const auto bare = [](std::string_view path) {
        return path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
    };
    return cp1252::iequals(bare(a), bare(b));
}

// ShellExecute's success is any value above 32.
constexpr std::intptr_t kShellDone = 42;

} // namespace

bool TillChanges::anyChanged() const {
    return std::any_of(registry.begin(), registry.end(), [](auto& w) { return w.changed(); }) ||
           std::any_of(ini.begin(), ini.end(), [](auto& w) { return w.changed(); }) ||
           std::any_of(files.begin(), files.end(), [](auto& w) { return w.changed; });
}

ChangeRecorder::ChangeRecorder(TillChanges& changes, bool standIn)
    : changes_(changes), standIn_(standIn), previous_(platform::activeRecorder()) {
    platform::installRecorder(this);
}

ChangeRecorder::~ChangeRecorder() {
    platform::installRecorder(previous_);
}

// A value written twice in one run is one change: from what was there to what is left.
void ChangeRecorder::registryValueSet(const std::string& keyPath, const std::string& valueName,
                                      const std::optional<std::string>& before,
                                      const std::string& after) {
    for (RegistryWrite& write : changes_.registry) {
        if (sameKeyPath(write.keyPath, keyPath) && cp1252::iequals(write.valueName, valueName)) {
            write.after = after;
            return;
        }
    }
    changes_.registry.push_back({keyPath, valueName, before, after});
}

void ChangeRecorder::profileKeyWritten(const std::string& fileName, const std::string& section,
                                       const std::string& key,
                                       const std::optional<std::string>& before,
                                       const std::optional<std::string>& after, bool changed) {
    for (IniWrite& write : changes_.ini) {
        if (cp1252::iequals(write.file, fileName) && cp1252::iequals(write.section, section) &&
            cp1252::iequals(write.key, key)) {
            write.after = after;
            write.bytesChanged = write.bytesChanged || changed;
            return;
        }
    }
    changes_.ini.push_back({fileName, section, key, before, after, changed});
}

std::optional<std::uint32_t> ChangeRecorder::processStarting(const std::string& commandLine) {
    changes_.commands.push_back(commandLine);
    return standIn_ ? std::optional<std::uint32_t>(0) : std::nullopt;
}

std::optional<std::intptr_t> ChangeRecorder::shellOpening(const std::string& windowsFile,
                                                          const std::string& parameters) {
    changes_.commands.push_back("open " + windowsFile +
                                (parameters.empty() ? "" : " " + parameters));
    return standIn_ ? std::optional<std::intptr_t>(kShellDone) : std::nullopt;
}
