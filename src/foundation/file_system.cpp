#include "foundation/file_system.h"

#include "foundation/event_pump.h"
#include "platform/platform.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

// A stream opened for writing (mode 1) gathers what is written and replaces the file in one step
// when it is closed, so a program killed while writing leaves the old file, not half a new one.
struct FileSystem::OpenStream {
    std::fstream file;
    bool reading = false;
    std::optional<std::string> replaces; // the Windows path of the file a writing stream replaces
    std::string written;

    OpenStream() = default;
    OpenStream(const OpenStream&) = delete;
    OpenStream& operator=(const OpenStream&) = delete;
    ~OpenStream() {
        if (!replaces) {
            return;
        }
        try {
            platform::replaceFileContents(*replaces, written);
        } catch (const std::exception&) {
            // Closing reports nothing; the file keeps what it held.
        }
    }
};

namespace {

// The descriptions follow the wording Windows uses for the same faults, so a message reads the
// same on either build.
[[noreturn]] void fault(const std::string& description) {
    throw std::runtime_error(description);
}

std::string describe(const std::exception& error) {
    // A filesystem_error's text carries host paths; its code's message is the fault itself.
    if (const auto* fsError = dynamic_cast<const fs::filesystem_error*>(&error)) {
        return fsError->code().message();
    }
    return error.what();
}

#ifdef _WIN32
// libstdc++ before GCC 13 takes any two files of one Windows drive for the same file (it compares
// inode numbers, which Windows does not have) and refuses every existing target, so an existing
// target is replaced through the platform's copy, made beside it and renamed over it. Host paths
// are Windows paths on this build.
void copyTree(const fs::path& from, const fs::path& to, bool overwrite) {
    for (const auto& entry : fs::recursive_directory_iterator(from)) {
        const fs::path target = to / fs::relative(entry.path(), from);
        if (entry.is_directory()) {
            fs::create_directories(target);
        } else if (!fs::exists(target)) {
            fs::copy_file(entry.path(), target);
        } else if (overwrite) {
            platform::copyFileOver(entry.path().string(), target.string());
        } else {
            throw fs::filesystem_error("cannot copy", entry.path(), target,
                                       std::make_error_code(std::errc::file_exists));
        }
    }
}
#else
void copyTree(const fs::path& from, const fs::path& to, bool overwrite) {
    fs::copy(from, to,
             fs::copy_options::recursive |
                 (overwrite ? fs::copy_options::overwrite_existing : fs::copy_options::none));
}
#endif

// An empty Windows path would map to the working folder; Windows finds nothing there.
fs::path host(const std::string& windowsPath) {
    if (windowsPath.empty()) {
        fault("Path not found");
    }
    return fs::path(platform::hostPath(windowsPath));
}

std::string withBackslash(const std::string& folder) {
    return !folder.empty() && folder.back() == '\\' ? folder : folder + "\\";
}

bool isReadOnly(const fs::path& file) {
    return (fs::status(file).permissions() & fs::perms::owner_write) == fs::perms::none;
}

// Windows deletes a read-only file inside a folder tree it is told to delete; Linux needs the
// write bits back first.
void makeWritable(const fs::path& folder) {
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add);
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_symlink()) {
            fs::permissions(entry.path(),
                            fs::perms::owner_read | fs::perms::owner_write |
                                (entry.is_directory() ? fs::perms::owner_exec : fs::perms::none),
                            fs::perm_options::add);
        }
    }
}

bool isInside(const fs::path& inner, const fs::path& outer) {
    const fs::path relative =
        fs::weakly_canonical(inner).lexically_relative(fs::weakly_canonical(outer));
    return !relative.empty() && *relative.begin() != "..";
}

// Files (never folders) of `folder` matching `pattern`; an empty pattern means every file.
std::vector<platform::FoundFile> matchingFiles(const std::string& folder,
                                               const std::string& pattern) {
    std::vector<platform::FoundFile> files;
    for (auto& entry :
         platform::findFiles(withBackslash(folder) + (pattern.empty() ? "*.*" : pattern))) {
        if (!entry.isFolder) {
            files.push_back(std::move(entry));
        }
    }
    return files;
}

// A FILETIME counts from 1601; an earlier moment has no system time.
bool toDate(std::chrono::system_clock::time_point moment, bool local, DateTime& date) {
    constexpr std::chrono::sys_days fileTimeEpoch =
        std::chrono::year{1601} / std::chrono::January / 1;
    // Compared in seconds: 1601 lies outside the range of a nanosecond clock.
    if (std::chrono::floor<std::chrono::seconds>(moment) <
        std::chrono::sys_seconds(fileTimeEpoch)) {
        return false;
    }
    date = brokenDown(moment, local);
    return true;
}

std::string readLine(std::fstream& file) {
    std::string line;
    std::getline(file, line);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

std::string readCharacters(std::fstream& file, long count) {
    if (count < 0) {
        fault("Invalid procedure call or argument");
    }
    std::string text(static_cast<std::size_t>(count), '\0');
    file.read(text.data(), count);
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

template <class Table> bool isOpenNumber(const Table& streams, long fileNumber) {
    return fileNumber >= 1 && static_cast<std::size_t>(fileNumber) <= streams.size() &&
           streams[static_cast<std::size_t>(fileNumber - 1)] != nullptr;
}

bool atEnd(std::fstream& file) {
    return file.peek() == std::char_traits<char>::eof();
}

} // namespace

FileSystem::FileSystem() = default;

// Destroying the table closes (and so flushes) every stream still open.
FileSystem::~FileSystem() = default;

void FileSystem::fail(const std::string& prefix, const std::exception& error) {
    strErrorMessage_ = prefix + describe(error);
}

// ---- Existence, folders -------------------------------------------------------------------

bool FileSystem::FileExists(const std::string& path) {
    try {
        const bool found = !platform::findFiles(path).empty();
        strErrorMessage_ = path + (found ? " already exists" : " does not exist");
        return found;
    } catch (const std::exception& e) {
        fail("Error in FileExists - ", e);
        return false;
    }
}

bool FileSystem::FolderExists(const std::string& folder) {
    try {
        return fs::is_directory(host(folder));
    } catch (const std::exception&) {
        return false;
    }
}

bool FileSystem::CreateFolder(const std::string& folder) {
    try {
        const fs::path dir = host(folder);
        if (fs::exists(dir)) {
            fault("File already exists");
        }
        fs::create_directory(dir);
        return false;
    } catch (const std::exception& e) {
        fail("CreateFolder() Failed - ", e);
        return true;
    }
}

bool FileSystem::DeleteFolder(const std::string& folder) {
    try {
        // Only one trailing "\" is taken off, as the folder object wants the bare name.
        std::string path = folder;
        if (!path.empty() && path.back() == '\\') {
            path.pop_back();
        }
        const fs::path dir = host(path);
        if (!fs::is_directory(dir) || (path.size() == 2 && path[1] == ':')) {
            fault("Path not found");
        }
        makeWritable(dir);
        fs::remove_all(dir);
        return false;
    } catch (const std::exception& e) {
        fail("DeleteFolder() Failed - ", e);
        return true;
    }
}

bool FileSystem::CopyFolder(const std::string& source, const std::string& destination,
                            bool overwrite) {
    try {
        const fs::path from = host(source);
        const fs::path to = host(destination);
        if (!fs::is_directory(from)) {
            fault("Path not found");
        }
        if (isInside(to, from)) {
            fault("Permission denied");
        }
        if (!fs::is_directory(to)) {
            fs::create_directory(to);
        }
        copyTree(from, to, overwrite);
        return true;
    } catch (const std::exception& e) {
        fail("Error in FileSystem::CopyFolder - ", e);
        return false;
    }
}

bool FileSystem::CopySubFolders(const std::string& source, const std::string& destination) {
    try {
        bool allCopied = true;
        for (const auto& entry : platform::findFiles(withBackslash(source) + "*.*")) {
            if (entry.isFolder) {
                allCopied = CopyFolder(withBackslash(source) + entry.name,
                                       withBackslash(destination) + entry.name, true) &&
                            allCopied;
            }
        }
        return allCopied;
    } catch (const std::exception& e) {
        fail("Error in FileSystem::CopySubFolders - ", e);
        return false;
    }
}

// ---- Single files -------------------------------------------------------------------------

void FileSystem::DeleteFile(const std::string& path, bool& failed) {
    failed = true;
    try {
        const fs::path file = host(path);
        if (!fs::is_regular_file(file)) {
            fault("File not found");
        }
        if (isReadOnly(file)) {
            fault("Permission denied");
        }
        fs::remove(file);
        failed = false;
    } catch (const std::exception& e) {
        fail("DeleteFile() Failed - ", e);
    }
}

void FileSystem::CopyFile(const std::string& source, const std::string& destination, bool& failed) {
    failed = true;
    try {
        const fs::path from = host(source);
        const fs::path to = host(destination);
        if (!fs::is_regular_file(from)) {
            fault("File not found");
        }
        if (fs::exists(to) && isReadOnly(to)) {
            fault("Permission denied");
        }
        // A copy killed part-way must not leave half a key file behind.
        platform::copyFileOver(source, destination);
        failed = false;
    } catch (const std::exception& e) {
        fail("CopyFile() Failed - ", e);
    }
}

void FileSystem::MoveFile(const std::string& source, const std::string& destination, bool& failed) {
    failed = true;
    try {
        const fs::path from = host(source);
        const fs::path to = host(destination);
        if (!fs::exists(from)) {
            fault("File not found");
        }
        if (fs::exists(to)) {
            fault("File already exists");
        }
        fs::rename(from, to);
        failed = false;
    } catch (const std::exception& e) {
        fail("MoveFile() Failed - ", e);
    }
}

std::int64_t FileSystem::GetFileSize(const std::string& path) {
    try {
        const fs::path file = host(path);
        if (!fs::is_regular_file(file)) {
            fault("File not found");
        }
        return static_cast<std::int64_t>(fs::file_size(file));
    } catch (const std::exception& e) {
        fail("GetFileSize() Failed - ", e);
        return 0;
    }
}

std::int64_t FileSystem::GetFolderSize(const std::string& folder) {
    try {
        const fs::path dir = host(folder);
        if (!fs::is_directory(dir)) {
            fault("Path not found");
        }
        std::int64_t total = 0;
        for (const auto& entry : fs::recursive_directory_iterator(dir)) {
            if (entry.is_regular_file()) {
                total += static_cast<std::int64_t>(entry.file_size());
            }
        }
        return total;
    } catch (const std::exception& e) {
        fail("GetFolderSize() Failed - ", e);
        return 0;
    }
}

// ---- Names and times --------------------------------------------------------------------

std::string FileSystem::GetFileNameFromPath(const std::string& path) const {
    const auto slash = path.rfind('\\');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string FileSystem::GetFileNameNoExt(const std::string& fileName) const {
    return fileName.substr(0, fileName.find('.'));
}

std::string FileSystem::GetFileExtension(const std::string& fileName) const {
    const auto dot = fileName.find('.');
    return dot == std::string::npos ? std::string() : fileName.substr(dot + 1);
}

bool FileSystem::GetFileTimes(const std::string& path, DateTime& creation, DateTime& lastAccess,
                              DateTime& lastWrite, bool local) {
    platform::FileTimes times;
    try {
        times = platform::getFileTimes(path);
    } catch (const std::exception& e) {
        fail("GetFileHandle() Failed - ", e);
        return false;
    }
    DateTime created;
    DateTime accessed;
    DateTime written;
    if (!toDate(times.creation, local, created) || !toDate(times.lastAccess, local, accessed) ||
        !toDate(times.lastWrite, local, written)) {
        strErrorMessage_ = "FileTimeToSystemTime Failed for :" + path;
        return false;
    }
    creation = created;
    lastAccess = accessed;
    lastWrite = written;
    return true;
}

// ---- Folders by pattern -------------------------------------------------------------------

std::vector<std::string> FileSystem::GetFilesInFolder(const std::string& folder,
                                                      const std::string& pattern) {
    try {
        std::vector<std::string> names;
        for (const auto& file : matchingFiles(folder, pattern)) {
            names.push_back(file.name);
        }
        return names;
    } catch (const std::exception& e) {
        fail("Error in FileSystem::GetFilesByPattern - ", e);
        return {};
    }
}

long FileSystem::NoOfFilesInFolder(const std::string& folder, const std::string& pattern) {
    try {
        return static_cast<long>(matchingFiles(folder, pattern).size());
    } catch (const std::exception& e) {
        fail("Error in FileSystem::NoOfFilesInFolder - ", e);
        return 0;
    }
}

void FileSystem::DeleteFilesInFolder(const std::string& folder, const std::string& pattern) {
    try {
        for (const auto& file : matchingFiles(folder, pattern)) {
            bool failed = false;
            DeleteFile(withBackslash(folder) + file.name, failed);
        }
    } catch (const std::exception& e) {
        fail("Error in FileSystem::GetFilesByPattern - ", e);
    }
}

void FileSystem::DeleteFilesInFolderByDay(const std::string& folder, const std::string& pattern,
                                          std::int16_t days) {
    try {
        const DateTime today = localNow();
        for (const auto& file : matchingFiles(folder, pattern)) {
            // Only days count: a file from late yesterday is one day old this morning.
            if (daysBetween(brokenDown(file.lastWrite, true), today) > days) {
                bool failed = false;
                DeleteFile(withBackslash(folder) + file.name, failed);
            }
        }
    } catch (const std::exception& e) {
        fail("Error in FileSystem::DeleteFilesInFolderByDay - ", e);
    }
}

bool FileSystem::SetFileAttributes(const std::string& path, std::uint32_t attributes) {
    try {
        if (!platform::setFileAttributes(path, attributes)) {
            strErrorMessage_ = "Failed setting attributes for file - " + path;
            return true;
        }
        return false;
    } catch (const std::exception& e) {
        fail("Error in FileSystem::SetFileAttributes - ", e);
        return true;
    }
}

// ---- Numbered text streams ----------------------------------------------------------------

FileSystem::OpenStream& FileSystem::streamFor(long fileNumber) {
    if (!isOpenNumber(streams_, fileNumber)) {
        fault("Bad file name or number");
    }
    return *streams_[static_cast<std::size_t>(fileNumber - 1)];
}

long FileSystem::OpenFile(const std::string& path, int mode) {
    try {
        const fs::path file = host(path);
        auto stream = std::make_unique<OpenStream>();
        stream->reading = mode == 0;
        if (stream->reading && !fs::is_regular_file(file)) {
            fault("File not found");
        }
        // A file to be replaced is opened for appending only to make it when missing and to learn
        // that it can be written; what is written reaches it when the stream is closed.
        const std::ios::openmode how = mode == 0 ? std::ios::in : std::ios::out | std::ios::app;
        errno = 0;
        stream->file.open(file, how | std::ios::binary);
        if (!stream->file.is_open()) {
            fault(errno != 0 ? std::generic_category().message(errno) : "Path not found");
        }
        if (mode == 1) {
            stream->file.close();
            stream->replaces = path;
        }
        // A freed number is given out again before the table grows.
        std::size_t slot = 0;
        while (slot < streams_.size() && streams_[slot]) {
            ++slot;
        }
        if (slot == streams_.size()) {
            streams_.push_back(std::move(stream));
        } else {
            streams_[slot] = std::move(stream);
        }
        ++openCount_;
        return static_cast<long>(slot + 1);
    } catch (const std::exception& e) {
        strErrorMessage_ = "Error Open File : " + path + " - " + describe(e);
        return 0;
    }
}

bool FileSystem::ReadData(long fileNumber, std::string& data, bool wholeLine, long count) {
    try {
        OpenStream& stream = streamFor(fileNumber);
        if (!stream.reading) {
            fault("Bad file mode");
        }
        if (atEnd(stream.file)) {
            fault("Input past end of file");
        }
        data = wholeLine ? readLine(stream.file) : readCharacters(stream.file, count);
        return false;
    } catch (const std::exception& e) {
        fail("ReadData() Failed - ", e);
        return true;
    }
}

bool FileSystem::WriteData(long fileNumber, const std::string& text, bool wholeLine) {
    try {
        OpenStream& stream = streamFor(fileNumber);
        if (stream.reading) {
            fault("Bad file mode");
        }
        const std::string data = wholeLine ? text + "\r\n" : text;
        if (stream.replaces) {
            stream.written += data;
            return false;
        }
        stream.file << data;
        if (!stream.file) {
            fault("Device I/O error");
        }
        return false;
    } catch (const std::exception& e) {
        fail("WriteData() Failed - ", e);
        return true;
    }
}

bool FileSystem::Eof(long fileNumber) {
    try {
        OpenStream& stream = streamFor(fileNumber);
        return !stream.reading || atEnd(stream.file);
    } catch (const std::exception&) {
        return true;
    }
}

void FileSystem::CloseFile(long fileNumber) {
    if (!isOpenNumber(streams_, fileNumber)) {
        return;
    }
    streams_[static_cast<std::size_t>(fileNumber - 1)].reset();
    if (--openCount_ == 0) {
        streams_.clear();
    }
}

long FileSystem::CountLines(const std::string& path) {
    try {
        std::ifstream file(host(path), std::ios::binary);
        if (!file.is_open()) {
            fault("File not found");
        }
        long lines = 0;
        for (std::string line; std::getline(file, line);) {
            ++lines;
            pumpEvents();
        }
        return lines;
    } catch (const std::exception& e) {
        fail("CountLines() Failed - ", e);
        return 0;
    }
}
