// The files of one folder before and after a run, so that files rewritten whole (the key file
// copy, the TMS script) are reported like the values written one by one.
#pragma once

#include "apply/till_changes.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>

class FolderSnapshot {
public:
    // Takes the folder's files (not its subfolders). `folder` is a Windows path ending in "\".
    explicit FolderSnapshot(const std::string& folder);

    // Every file written since the snapshot, except those named in `skip` (compared without
    // case): the files reported key by key, and the run's own log.
    std::vector<FileWrite> writtenSince(const std::vector<std::string>& skip) const;

private:
    struct Seen {
        std::uint64_t size = 0;
        std::chrono::system_clock::time_point lastWrite;
        std::optional<std::string> bytes; // kept for files small enough to compare
    };
    static std::map<std::string, Seen> take(const std::string& folder);

    std::string folder_;
    std::map<std::string, Seen> before_;
};
