// The parsed INI files of this process, kept between profile-string calls so that a loader
// reading thousands of keys parses each file once. A cached copy serves a call only while the file
// is provably the one it was read from: its device, inode, size, and its modification and change
// times to the nanosecond are checked on every call. A file modified within the last moments
// before it was read could be modified again within the same clock tick without any of those
// changing, so such a copy is never trusted: the next call reads the file again.
#pragma once

#include "platform/posix/ini_document.h"

#include <filesystem>
#include <mutex>

namespace platform::posix {

// A file's document, held under the cache's lock for one call. An edit made through it must be
// followed by stored() once the bytes are on disk, or by forget() when they could not be written.
class IniLease {
public:
    IniDocument& document() { return *document_; }
    bool fileExists() const { return exists_; }

private:
    friend class IniCache;
    IniLease(std::unique_lock<std::mutex> lock, IniDocument& document, bool exists)
        : lock_(std::move(lock)), document_(&document), exists_(exists) {}

    std::unique_lock<std::mutex> lock_;
    IniDocument* document_;
    bool exists_;
};

class IniCache {
public:
    // The file as it is now: an empty document when it does not exist (or its folder does not).
    // Throws std::system_error when it exists but cannot be read, or is a folder.
    IniLease open(const std::filesystem::path& file);

    // The lease's document has just been written to the file by this process.
    void stored(IniLease& lease, const std::filesystem::path& file);

    // The lease's document no longer matches the file.
    void forget(IniLease& lease, const std::filesystem::path& file);
};

// The process's one cache.
IniCache& iniCache();

} // namespace platform::posix
