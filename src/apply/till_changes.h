// What one configuration run did to the till, as the platform layer saw it happen: each registry
// value and INI key written (with the value it replaced), each file rewritten, each command line
// started. Both a plan and a real run are reported from this record, so they cannot describe the
// same answers differently.
#pragma once

#include "platform/recorder.h"

#include <optional>
#include <string>
#include <vector>

struct RegistryWrite {
    std::string keyPath;
    std::string valueName;
    std::optional<std::string> before; // empty: the value did not exist
    std::string after;
    bool changed() const { return before != after; }
};

struct IniWrite {
    std::string file;
    std::string section;
    std::string key;
    std::optional<std::string> before;
    std::optional<std::string> after; // empty: the key was deleted
    bool bytesChanged = false;
    bool changed() const { return bytesChanged; }
};

struct FileWrite {
    std::string file;
    std::string sameBytesAs; // an untouched file of the folder with the same bytes, if just one
    bool changed = false;
};

struct TillChanges {
    std::vector<RegistryWrite> registry; // one entry per value, in the order first written
    std::vector<IniWrite> ini;           // one entry per key, in the order first written
    std::vector<FileWrite> files;
    std::vector<std::string> commands; // command lines, and "open " + file for shell opens

    bool anyChanged() const;
};

// Collects the writes while installed. With `standIn` set nothing is started: each process is
// reported as started and ended at once, each shell open as done.
class ChangeRecorder : public platform::Recorder {
public:
    ChangeRecorder(TillChanges& changes, bool standIn);
    ~ChangeRecorder() override;
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    void registryValueSet(const std::string& keyPath, const std::string& valueName,
                          const std::optional<std::string>& before,
                          const std::string& after) override;
    void profileKeyWritten(const std::string& fileName, const std::string& section,
                           const std::string& key, const std::optional<std::string>& before,
                           const std::optional<std::string>& after, bool changed) override;
    std::optional<std::uint32_t> processStarting(const std::string& commandLine) override;
    std::optional<std::intptr_t> shellOpening(const std::string& windowsFile,
                                              const std::string& parameters) override;

private:
    TillChanges& changes_;
    bool standIn_;
    platform::Recorder* previous_;
};
