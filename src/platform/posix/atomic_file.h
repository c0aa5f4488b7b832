// Whole-file reads and crash-safe replacement of small text files (INI files).
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace platform::posix {

// The file's bytes; nothing when it does not exist (or its folder does not). Throws
// std::system_error when it exists but cannot be read.
std::optional<std::string> readFileBytes(const std::filesystem::path& file);

// Makes `file` hold exactly `bytes`. The bytes go to a temporary file in the same folder, which
// is flushed to disk, given the original's permission bits and owner, and renamed over the
// original; so a crash or a full disk leaves the old file or the new one, never a mix. A new
// file gets the usual permissions (0666 less the umask). Throws std::system_error after removing
// the temporary file; the original is then untouched. A symbolic link is kept and its target
// replaced. With `permissions` the new file gets those bits instead (a copy keeps its source's).
void replaceFile(const std::filesystem::path& file, std::string_view bytes,
                 std::optional<unsigned> permissions = std::nullopt);

} // namespace platform::posix
