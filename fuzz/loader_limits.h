// The loaders read keys "1" to "Count" one file read each, as the till always has; a fuzzed
// count of two billion is a correct but endless run, so the targets leave such files alone.
#pragma once

#include "platform/platform.h"

#include <cstdlib>
#include <string>

namespace fuzzing {

inline bool countIsWorthLoading(const std::string& windowsFile) {
    char buffer[64] = {};
    platform::getPrivateProfileString("GENERAL", "Count", "", buffer, sizeof buffer, windowsFile);
    return std::strtoll(buffer, nullptr, 10) <= 300;
}

} // namespace fuzzing
