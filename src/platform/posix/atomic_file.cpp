#include "platform/posix/atomic_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace platform::posix {
namespace {

[[noreturn]] void fail(const std::string& what, const fs::path& path, int error = errno) {
    throw std::system_error(error, std::generic_category(), what + " \"" + path.string() + "\"");
}

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return fd_; }
    // close() is where some file systems report a failed write, so its result counts.
    int release() { return ::close(std::exchange(fd_, -1)); }

private:
    int fd_;
};

// Removes the temporary file unless it has become the original.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path path) : path_(std::move(path)) {}
    ~TemporaryFile() {
        if (!path_.empty()) {
            ::unlink(path_.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const fs::path& path() const { return path_; }
    void keep() { path_.clear(); }

private:
    fs::path path_;
};

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// A writer killed between writing its temporary file and renaming it leaves the temporary
// behind; the next write of the file removes those whose writer is gone.
void removeStaleTemporaries(const fs::path& file) {
    const std::string prefix = "." + file.filename().string() + ".new-";
    std::error_code error;
    for (fs::directory_iterator it(folderOf(file), error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (!name.starts_with(prefix)) {
            continue;
        }
        const pid_t writer = static_cast<pid_t>(std::atol(name.c_str() + prefix.size()));
        if (writer > 0 && ::kill(writer, 0) != 0 && errno == ESRCH) {
            ::unlink(it->path().c_str());
        }
    }
}

// A name no one else uses: the process id and a counter, with O_EXCL as the final word.
int createTemporary(const fs::path& file, fs::path& temporary) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        temporary = folderOf(file) / ("." + file.filename().string() + ".new-" +
                                      std::to_string(::getpid()) + "-" + std::to_string(counter++));
        const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) {
            return fd;
        }
    }
    return -1;
}

void writeAll(int fd, std::string_view bytes, const fs::path& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            fail("cannot write", path, written < 0 ? errno : ENOSPC);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void takeOverAttributes(int fd, const struct stat& original, const fs::path& path) {
    if (::fchmod(fd, original.st_mode & 07777) != 0) {
        fail("cannot set the permissions of", path);
    }
    // Only a privileged process may give a file away; others keep their own ownership.
    if (original.st_uid != ::geteuid() || original.st_gid != ::getegid()) {
        [[maybe_unused]] const int ignored = ::fchown(fd, original.st_uid, original.st_gid);
    }
}

// Makes the rename itself durable. Some file systems cannot sync a folder; the new file is in
// place by then, so that is not reported as a failed write.
void syncFolder(const fs::path& folder) {
    const Descriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd.get() >= 0) {
        ::fsync(fd.get());
    }
}

std::size_t readSome(int fd, char* into, std::size_t size, const fs::path& file) {
    for (;;) {
        const ssize_t got = ::read(fd, into, size);
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            fail("cannot read", file);
        }
    }
}

fs::path withLinksResolved(const fs::path& file) {
    std::error_code error;
    return fs::is_symlink(file, error) ? fs::weakly_canonical(file) : file;
}

} // namespace

std::optional<std::string> readFileBytes(const fs::path& file) {
    Descriptor fd(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return std::nullopt;
        }
        fail("cannot open", file);
    }
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0) {
        fail("cannot examine", file);
    }
    if (S_ISDIR(info.st_mode)) {
        fail("cannot read", file, EISDIR);
    }
    // Read straight into a string of the file's size: growing it chunk by chunk would hold two
    // copies of a large file at once while it moved. Room is kept for the edits a run makes, so
    // that a longer value does not move the whole file either (room never written takes no
    // memory).
    const auto size = static_cast<std::size_t>(std::max<off_t>(info.st_size, 0));
    std::string bytes;
    bytes.reserve(size + size / 64 + 4096);
    bytes.resize(size);
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const std::size_t got =
            readSome(fd.get(), bytes.data() + filled, bytes.size() - filled, file);
        if (got == 0) {
            bytes.resize(filled); // the file shrank while it was read
            return bytes;
        }
        filled += got;
    }
    // Whatever a writer appended meanwhile.
    char chunk[65536];
    while (const std::size_t got = readSome(fd.get(), chunk, sizeof chunk, file)) {
        bytes.append(chunk, got);
    }
    return bytes;
}

void replaceFile(const fs::path& target, std::string_view bytes,
                 std::optional<unsigned> permissions) {
    const fs::path file = withLinksResolved(target);
    struct stat original {};
    const bool exists = ::stat(file.c_str(), &original) == 0;
    if (!exists && errno != ENOENT) {
        fail("cannot examine", file);
    }
    if (exists && !S_ISREG(original.st_mode)) {
        fail("cannot replace", file, S_ISDIR(original.st_mode) ? EISDIR : EINVAL);
    }
    removeStaleTemporaries(file);
    fs::path temporaryPath;
    Descriptor fd(createTemporary(file, temporaryPath));
    if (fd.get() < 0) {
        fail("cannot create a temporary file for", file);
    }
    TemporaryFile temporary(temporaryPath);
    if (exists) {
        takeOverAttributes(fd.get(), original, temporary.path());
    }
    if (permissions && ::fchmod(fd.get(), *permissions & 07777) != 0) {
        fail("cannot set the permissions of", temporary.path());
    }
    writeAll(fd.get(), bytes, temporary.path());
    if (::fsync(fd.get()) != 0) {
        fail("cannot flush", temporary.path());
    }
    if (fd.release() != 0) {
        fail("cannot write", temporary.path());
    }
    if (::rename(temporary.path().c_str(), file.c_str()) != 0) {
        fail("cannot replace", file);
    }
    temporary.keep();
    syncFolder(folderOf(file));
}

} // namespace platform::posix
