// An observer of the till-changing calls of the platform layer. While one is installed, every
// registry value set, every profile-string key written, every hidden process and every shell
// open is reported to it as it happens, with the value it replaces. The observer may also take
// over a start: a dry run answers it with a made-up result, so that the code above runs exactly
// as it would and nothing is started. Without an observer the calls behave as documented in
// platform.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

class Recorder {
public:
    virtual ~Recorder() = default;

    // A value was stored under `keyPath` (as the caller named it); `before` is the value it
    // replaced, empty when there was none.
    virtual void registryValueSet(const std::string& keyPath, const std::string& valueName,
                                  const std::optional<std::string>& before,
                                  const std::string& after) = 0;

    // A profile-string key was written (`after` empty: deleted). `before` is the value as a
    // reader got it before; `changed` says whether the file's bytes changed (a value written with
    // quotes reads back without them, so the two texts alone cannot say).
    virtual void profileKeyWritten(const std::string& fileName, const std::string& section,
                                   const std::string& key, const std::optional<std::string>& before,
                                   const std::optional<std::string>& after, bool changed) = 0;

    // About to start a hidden process. A process id to report instead of starting it, or empty to
    // start it. The id 0 makes waitForProcess return at once.
    virtual std::optional<std::uint32_t> processStarting(const std::string& commandLine) = 0;

    // About to open a file through the shell. A result to report instead of opening it, or empty
    // to open it.
    virtual std::optional<std::intptr_t> shellOpening(const std::string& windowsFile,
                                                      const std::string& parameters) = 0;
};

// The observer in force, or nullptr.
Recorder* activeRecorder();

// Installs an observer (nullptr removes it). The caller keeps it alive while installed.
void installRecorder(Recorder* recorder);

} // namespace platform
