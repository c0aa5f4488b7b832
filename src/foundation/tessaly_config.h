// Folder paths are kept with a trailing backslash before a file name is appended.
#pragma once

#include <string>

namespace TessalyConfig {

// The path with a trailing "\" added when it has none; an empty path stays empty.
std::string AddBackslash(const std::string& path);

} // namespace TessalyConfig
