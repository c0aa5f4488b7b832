// The loaders read keys "1" to "Count" one file read each, as the till always has; a fuzzed
// count of two billion is a correct but endless run, so the targets leave such files alone.
// A count that is not a number at all is loaded: that is the failure worth fuzzing.
#pragma once

#include "platform/platform.h"

#include <cstdlib>
#include <string>

namespace fuzzing {

inline bool countIsWorthLoading(const std::string& windowsFile) {
    char buffer[2048] = {}; // as much as the loaders read
    platform::getPrivateProfileString("GENERAL", "Count", "", buffer, sizeof buffer, windowsFile);
    // Read as the loaders' strict conversion reads it: "55e4" is 550,000, not 55.
    return std::strtod(buffer, nullptr) <= 300.5;
}

} // namespace fuzzing
