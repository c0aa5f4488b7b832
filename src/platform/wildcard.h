// File-name wildcards as FindFirstFileA matches them. Windows turns a DOS pattern into its "DOS
// wildcards" before matching, which is why "*.*" matches a name without any dot, "*." matches
// only names without an extension and "file?.txt" also finds "file.txt". Case is folded the way
// Windows folds ANSI names (Windows-1252).
#pragma once

#include <string_view>

namespace platform {

bool wildcardMatch(std::string_view pattern, std::string_view name);

} // namespace platform
