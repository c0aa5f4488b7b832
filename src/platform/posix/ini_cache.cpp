#include "platform/posix/ini_cache.h"

#include "platform/posix/atomic_file.h"

#include <cerrno>
#include <chrono>
#include <list>
#include <sys/stat.h>
#include <system_error>
#include <time.h>

namespace fs = std::filesystem;

namespace platform::posix {
namespace {

// Files kept at most; a loader works through a handful of files, the payment client's own.
constexpr std::size_t kMostFiles = 8;

struct Stamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    timespec modified{};
    timespec changed{};

    bool operator==(const Stamp& other) const {
        return device == other.device && inode == other.inode && size == other.size &&
               same(modified, other.modified) && same(changed, other.changed);
    }
    static bool same(const timespec& a, const timespec& b) {
        return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
    }
};

std::chrono::nanoseconds sinceEpoch(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Nothing for a missing file; throws for one that cannot be looked at, or a folder.
std::optional<Stamp> stampOf(const fs::path& file) {
    struct stat info {};
    if (::stat(file.c_str(), &info) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return std::nullopt;
        }
        throw std::system_error(errno, std::generic_category(), "cannot examine " + file.string());
    }
    if (S_ISDIR(info.st_mode)) {
        throw std::system_error(EISDIR, std::generic_category(), "cannot read " + file.string());
    }
    return Stamp{info.st_dev, info.st_ino, info.st_size, info.st_mtim, info.st_ctim};
}

// A copy read now may be trusted later only if the file's last change lies further back than the
// file system's clock can tell apart: a tick on file systems that keep nanoseconds (the kernel
// stamps files from a clock of a few milliseconds' grain), two seconds on those that keep whole
// seconds (FAT) or stamp nothing finer.
bool settled(const Stamp& stamp) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const bool wholeSeconds = stamp.modified.tv_nsec == 0 && stamp.changed.tv_nsec == 0;
    const std::chrono::nanoseconds grain =
        wholeSeconds ? std::chrono::seconds(2) : std::chrono::milliseconds(100);
    return sinceEpoch(now) - sinceEpoch(stamp.modified) >= grain;
}

struct Entry {
    std::string path;
    Stamp stamp;
    bool trusted = false;
    IniDocument document;
};

class Files {
public:
    std::mutex mutex;
    IniDocument scratch; // the document of a missing file, until it is written

    Entry* find(const fs::path& file) {
        for (auto it = entries_.begin(); it != entries_.end(); ++it) {
            if (it->path == file.native()) {
                entries_.splice(entries_.begin(), entries_, it);
                return &entries_.front();
            }
        }
        return nullptr;
    }

    Entry& add(const fs::path& file) {
        if (Entry* entry = find(file)) {
            return *entry;
        }
        entries_.push_front(Entry{file.native(), {}, false, IniDocument()});
        if (entries_.size() > kMostFiles) {
            entries_.pop_back();
        }
        return entries_.front();
    }

    void remove(const fs::path& file) {
        entries_.remove_if([&](const Entry& entry) { return entry.path == file.native(); });
    }

private:
    std::list<Entry> entries_; // most recently used first
};

Files& files() {
    static Files instance;
    return instance;
}

} // namespace

IniLease IniCache::open(const fs::path& file) {
    Files& cache = files();
    std::unique_lock lock(cache.mutex);
    const std::optional<Stamp> before = stampOf(file);
    if (!before) {
        cache.remove(file);
        cache.scratch = IniDocument();
        return IniLease(std::move(lock), cache.scratch, false);
    }
    if (Entry* entry = cache.find(file)) {
        if (entry->trusted && entry->stamp == *before) {
            return IniLease(std::move(lock), entry->document, true);
        }
        entry->document = IniDocument(); // let go of the old copy before the new one is read
    }
    std::optional<std::string> bytes = readFileBytes(file);
    if (!bytes) {
        cache.remove(file);
        cache.scratch = IniDocument();
        return IniLease(std::move(lock), cache.scratch, false);
    }
    // A file that changed while it was read is used for this call and read again on the next.
    const std::optional<Stamp> after = stampOf(file);
    Entry& entry = cache.add(file);
    entry.document = IniDocument(std::move(*bytes));
    entry.stamp = *before;
    entry.trusted = after && *after == *before && settled(*before);
    return IniLease(std::move(lock), entry.document, true);
}

// What this process just wrote is known byte for byte, whenever it was written.
void IniCache::stored(IniLease& lease, const fs::path& file) {
    Files& cache = files();
    std::optional<Stamp> stamp;
    try {
        stamp = stampOf(file);
    } catch (const std::system_error&) {
    }
    if (!stamp) {
        forget(lease, file);
        return;
    }
    Entry& entry = cache.add(file);
    if (lease.document_ == &cache.scratch) {
        entry.document = std::move(cache.scratch);
        cache.scratch = IniDocument();
        lease.document_ = &entry.document;
    }
    entry.stamp = *stamp;
    entry.trusted = true;
}

void IniCache::forget(IniLease&, const fs::path& file) {
    files().remove(file);
}

IniCache& iniCache() {
    static IniCache cache;
    return cache;
}

} // namespace platform::posix
