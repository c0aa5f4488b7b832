// GetPrivateProfileStringA and WritePrivateProfileStringA over the files of the Linux till. Each
// call sees the file as it is on disk at that moment: a parsed copy kept from an earlier call
// serves it only while the file is provably unchanged, and a write replaces the file before it
// returns.
#include "platform/platform.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/ini_cache.h"
#include "platform/posix/ini_document.h"
#include "platform/recorder.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {
namespace {

using posix::IniDocument;

std::string withoutTrailingBlanks(const char* text) {
    std::string_view view = text != nullptr ? text : "";
    while (!view.empty() && posix::isIniBlank(view.back())) {
        view.remove_suffix(1);
    }
    return std::string(view);
}

// A buffer of n characters holds at most n - 1 of them and the NUL.
unsigned long copyText(std::string_view text, char* buffer, unsigned long size) {
    const std::size_t count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
    return static_cast<unsigned long>(count);
}

// Each name NUL-ended, the list ended by a second NUL. A list that does not fit is cut inside
// its last name, still ends in two NULs, and the call returns size - 2, as Windows does.
unsigned long copyList(const std::vector<std::string>& names, char* buffer, unsigned long size) {
    std::string list;
    for (const std::string& name : names) {
        list += name;
        list += '\0';
    }
    if (list.size() < size) {
        std::memcpy(buffer, list.data(), list.size());
        buffer[list.size()] = '\0';
        if (list.empty() && size > 1) {
            buffer[1] = '\0';
        }
        return static_cast<unsigned long>(list.size());
    }
    if (size < 2) {
        buffer[0] = '\0';
        return 0;
    }
    std::memcpy(buffer, list.data(), size - 2);
    buffer[size - 2] = '\0';
    buffer[size - 1] = '\0';
    return size - 2;
}

bool hasLineBreak(const char* text) {
    return text != nullptr && std::strpbrk(text, "\r\n") != nullptr;
}

// Names and values that could not be read back are refused and the file is left alone. A line
// break would split the line in two: Windows writes such a broken file, we do not. A key holding
// "=" or starting with ";" or "[" would read back as another key, a comment or a header; a
// section holding "]" as another section.
bool canBeReadBack(const char* section, const char* key, const char* value) {
    if (hasLineBreak(section) || hasLineBreak(key) || hasLineBreak(value) ||
        std::strchr(section, ']') != nullptr) {
        return false;
    }
    const std::string_view name = posix::trimIniBlanks(key != nullptr ? key : "");
    return name.find('=') == std::string_view::npos && !name.starts_with(';') &&
           !name.starts_with('[');
}

// Windows refuses to write a file with the read-only attribute. Here that is a file without any
// write permission bit, checked by hand because a process running as root may write anyway.
bool isReadOnly(const fs::path& file) {
    struct stat info {};
    return ::stat(file.c_str(), &info) == 0 && (info.st_mode & 0222) == 0;
}

bool applyEdit(IniDocument& document, const char* section, const char* key, const char* value) {
    if (key == nullptr) {
        return document.deleteSection(section);
    }
    if (value == nullptr) {
        return document.deleteKey(section, key);
    }
    return document.setValue(section, key, value);
}

// The edited document goes to disk from the cached copy itself: a large file is never copied.
void store(posix::IniLease& lease, const fs::path& file) {
    try {
        posix::replaceFile(file, lease.document().bytes());
    } catch (...) {
        posix::iniCache().forget(lease, file);
        throw;
    }
    posix::iniCache().stored(lease, file);
}

unsigned long readFrom(const IniDocument& document, const char* section, const char* key,
                       const std::string& fallback, char* buffer, unsigned long size) {
    if (section == nullptr) {
        return copyList(document.sectionNames(), buffer, size);
    }
    if (key == nullptr) {
        // A section without keys gives the default rather than an empty list.
        const std::vector<std::string> names = document.keyNames(section);
        return names.empty() ? copyText(fallback, buffer, size) : copyList(names, buffer, size);
    }
    return copyText(document.value(section, key).value_or(fallback), buffer, size);
}

} // namespace

unsigned long getPrivateProfileString(const char* section, const char* key,
                                      const char* defaultValue, char* buffer, unsigned long size,
                                      const std::string& fileName) {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    const fs::path file = hostPath(fileName);
    const std::string fallback = withoutTrailingBlanks(defaultValue);
    try {
        posix::IniLease lease = posix::iniCache().open(file);
        return readFrom(lease.document(), section, key, fallback, buffer, size);
    } catch (const std::system_error&) {
        // A file that exists but cannot be read gives the defaults, like a missing one.
        return readFrom(IniDocument(), section, key, fallback, buffer, size);
    } catch (const std::exception&) {
        return copyText(fallback, buffer, size);
    }
}

bool writePrivateProfileString(const char* section, const char* key, const char* value,
                               const std::string& fileName) {
    if (section == nullptr) {
        // With everything null Windows only flushes its cache; ours is written through.
        return key == nullptr && value == nullptr;
    }
    const fs::path file = hostPath(fileName);
    if (!canBeReadBack(section, key, value)) {
        return false;
    }
    try {
        if (isReadOnly(file)) {
            return false;
        }
        posix::IniLease lease = posix::iniCache().open(file);
        std::error_code error;
        if (!lease.fileExists() && !fs::is_directory(file.parent_path(), error)) {
            return false;
        }
        IniDocument& document = lease.document();
        const std::optional<std::string> before =
            key != nullptr ? document.storedValue(section, key) : std::nullopt;
        const bool changed = applyEdit(document, section, key, value);
        if (changed) {
            store(lease, file);
        }
        if (Recorder* recorder = activeRecorder(); recorder != nullptr && key != nullptr) {
            recorder->profileKeyWritten(
                fileName, section, key, before,
                value != nullptr ? std::optional<std::string>(value) : std::nullopt, changed);
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace platform
