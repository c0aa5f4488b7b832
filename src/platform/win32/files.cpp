// Directory searches, file times and attributes through the Windows file functions.
#include "platform/platform.h"
#include "platform/win32/win32_error.h"

#include <stdexcept>
#include <windows.h>

namespace platform {

namespace {

// FILETIME counts 100-nanosecond steps from 1601-01-01 (UTC); the system clock counts from 1970.
constexpr std::int64_t kFileTimeAtUnixEpoch = 116444736000000000;

std::chrono::system_clock::time_point toTimePoint(const FILETIME& time) {
    const std::int64_t ticks =
        static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
    const std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>> sinceEpoch(
        ticks - kFileTimeAtUnixEpoch);
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}

FoundFile describe(const WIN32_FIND_DATAA& data) {
    FoundFile found;
    found.name = data.cFileName;
    found.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    found.size = found.isFolder ? 0 : (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    found.lastWrite = toTimePoint(data.ftLastWriteTime);
    return found;
}

bool isDotEntry(const char* name) {
    const std::string text = name;
    return text == "." || text == "..";
}

} // namespace

std::vector<FoundFile> findFiles(const std::string& windowsPattern) {
    std::vector<FoundFile> found;
    WIN32_FIND_DATAA data{};
    const HANDLE search = FindFirstFileA(windowsPattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return found;
    }
    do {
        if (!isDotEntry(data.cFileName)) {
            found.push_back(describe(data));
        }
    } while (FindNextFileA(search, &data) != FALSE);
    FindClose(search);
    return found;
}

FileTimes getFileTimes(const std::string& windowsPath) {
    const HANDLE file =
        CreateFileA(windowsPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot open " + windowsPath + ": " +
                                 win32::lastErrorDescription());
    }
    FILETIME creation{};
    FILETIME lastAccess{};
    FILETIME lastWrite{};
    const BOOL read = GetFileTime(file, &creation, &lastAccess, &lastWrite);
    const DWORD error = GetLastError();
    CloseHandle(file);
    if (!read) {
        throw std::runtime_error("cannot read the times of " + windowsPath + ": " +
                                 win32::errorDescription(error));
    }
    return FileTimes{toTimePoint(creation), toTimePoint(lastAccess), toTimePoint(lastWrite)};
}

bool setFileAttributes(const std::string& windowsPath, std::uint32_t attributes) {
    return SetFileAttributesA(windowsPath.c_str(), attributes) != FALSE;
}

namespace {

// MOVEFILE_WRITE_THROUGH waits for the rename only, not for the data of the file renamed, so the
// copy is flushed first: a crash after the rename must not leave a target that is empty on disk.
void flushToDisk(const std::string& fresh) {
    const HANDLE file = CreateFileA(fresh.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    const bool flushed = file != INVALID_HANDLE_VALUE && FlushFileBuffers(file);
    const std::string fault = flushed ? std::string() : win32::lastErrorDescription();
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    if (!flushed) {
        DeleteFileA(fresh.c_str());
        throw std::runtime_error(fault);
    }
}

// The finished copy beside the target takes the target's place, or goes.
void moveOver(const std::string& fresh, const std::string& target) {
    if (!MoveFileExA(fresh.c_str(), target.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        const std::string fault = win32::lastErrorDescription();
        DeleteFileA(fresh.c_str());
        throw std::runtime_error(fault);
    }
}

} // namespace

void copyFileOver(const std::string& windowsSource, const std::string& windowsTarget) {
    const std::string fresh = windowsTarget + ".copying";
    if (!CopyFileA(windowsSource.c_str(), fresh.c_str(), FALSE)) {
        throw std::runtime_error(win32::lastErrorDescription());
    }
    flushToDisk(fresh);
    moveOver(fresh, windowsTarget);
}

void replaceFileContents(const std::string& windowsFile, std::string_view bytes) {
    const std::string fresh = windowsFile + ".writing";
    const HANDLE file = CreateFileA(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error(win32::lastErrorDescription());
    }
    DWORD written = 0;
    const bool done =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
        written == bytes.size() && FlushFileBuffers(file);
    const std::string fault = done ? std::string() : win32::lastErrorDescription();
    CloseHandle(file);
    if (!done) {
        DeleteFileA(fresh.c_str());
        throw std::runtime_error(fault);
    }
    moveOver(fresh, windowsFile);
}

} // namespace platform
