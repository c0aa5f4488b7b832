// Directory searches, file times and the read-only attribute over the till folder.
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "platform/posix/atomic_file.h"
#include "platform/wildcard.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace platform {
namespace {

using TimePoint = std::chrono::system_clock::time_point;

TimePoint toTimePoint(std::int64_t seconds, std::uint32_t nanoseconds) {
    return TimePoint(std::chrono::duration_cast<std::chrono::system_clock::duration>(
        std::chrono::seconds(seconds) + std::chrono::nanoseconds(nanoseconds)));
}

TimePoint toTimePoint(const struct statx_timestamp& stamp) {
    return toTimePoint(stamp.tv_sec, stamp.tv_nsec);
}

// The folder part of a search pattern and the pattern itself ("c:\x\*.txt", "c:*.txt", "*.txt").
std::pair<std::string, std::string> splitPattern(const std::string& windowsPattern) {
    const std::size_t slash = windowsPattern.find_last_of("\\/");
    if (slash != std::string::npos) {
        return {windowsPattern.substr(0, slash + 1), windowsPattern.substr(slash + 1)};
    }
    if (windowsPattern.size() >= 2 && windowsPattern[1] == ':') {
        return {windowsPattern.substr(0, 2), windowsPattern.substr(2)};
    }
    return {"", windowsPattern};
}

FoundFile describe(const fs::path& folder, const std::string& name) {
    FoundFile found;
    found.name = name;
    struct stat info {};
    // A dangling link still shows up in a listing, as a file of no size.
    if (::stat((folder / name).c_str(), &info) != 0 &&
        ::lstat((folder / name).c_str(), &info) != 0) {
        return found;
    }
    found.isFolder = S_ISDIR(info.st_mode);
    found.size = found.isFolder ? 0 : static_cast<std::uint64_t>(info.st_size);
    found.lastWrite =
        toTimePoint(info.st_mtim.tv_sec, static_cast<std::uint32_t>(info.st_mtim.tv_nsec));
    return found;
}

// NTFS hands out a folder's entries in the order of their upper-case names; callers that take
// "the first match" see the same one here.
bool ntfsOrder(const FoundFile& a, const FoundFile& b) {
    return cp1252::toUpper(a.name) < cp1252::toUpper(b.name);
}

} // namespace

std::vector<FoundFile> findFiles(const std::string& windowsPattern) {
    const auto [windowsFolder, pattern] = splitPattern(windowsPattern);
    const fs::path folder = hostPath(windowsFolder.empty() ? "." : windowsFolder);
    std::vector<FoundFile> found;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (wildcardMatch(pattern, name)) {
            found.push_back(describe(folder, name));
        }
    }
    std::sort(found.begin(), found.end(), ntfsOrder);
    return found;
}

FileTimes getFileTimes(const std::string& windowsPath) {
    const std::string host = hostPath(windowsPath);
    const int fd = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        throw std::runtime_error("cannot open " + windowsPath + ": " + std::strerror(errno));
    }
    struct statx info {};
    const int result = ::statx(fd, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &info);
    const int statError = errno;
    ::close(fd);
    if (result != 0) {
        throw std::runtime_error("cannot read the times of " + windowsPath + ": " +
                                 std::strerror(statError));
    }
    // CreateFileA without backup semantics cannot open a folder, so neither can this.
    if (S_ISDIR(info.stx_mode)) {
        throw std::runtime_error("cannot open " + windowsPath + ": it is a folder");
    }
    FileTimes times;
    // Not every file system records a birth time; the change time is the nearest stand-in.
    times.creation =
        toTimePoint((info.stx_mask & STATX_BTIME) != 0 ? info.stx_btime : info.stx_ctime);
    times.lastAccess = toTimePoint(info.stx_atime);
    times.lastWrite = toTimePoint(info.stx_mtime);
    return times;
}

bool setFileAttributes(const std::string& windowsPath, std::uint32_t attributes) {
    constexpr std::uint32_t kReadOnly = 1;
    const std::string host = hostPath(windowsPath);
    struct stat info {};
    if (::stat(host.c_str(), &info) != 0) {
        return false;
    }
    // Windows ignores the read-only bit on folders; on Linux it would stop files being made.
    if (S_ISDIR(info.st_mode)) {
        return true;
    }
    mode_t mode = info.st_mode & 07777;
    mode = (attributes & kReadOnly) != 0 ? mode & ~mode_t{0222} : mode | S_IWUSR;
    return ::chmod(host.c_str(), mode) == 0;
}

void copyFileOver(const std::string& windowsSource, const std::string& windowsTarget) {
    const std::string source = hostPath(windowsSource);
    const std::optional<std::string> bytes = posix::readFileBytes(source);
    if (!bytes) {
        throw std::runtime_error("File not found");
    }
    // As CopyFile does, the copy takes its source's attributes: a key file kept private stays so.
    struct stat info {};
    std::optional<unsigned> permissions;
    if (::stat(source.c_str(), &info) == 0) {
        permissions = info.st_mode & 07777;
    }
    posix::replaceFile(hostPath(windowsTarget), *bytes, permissions);
}

void replaceFileContents(const std::string& windowsFile, std::string_view bytes) {
    posix::replaceFile(hostPath(windowsFile), bytes);
}

} // namespace platform
