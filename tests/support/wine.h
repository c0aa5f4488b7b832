// Whether the Windows build runs under Wine, an independent implementation of the Windows
// functions that differs from Windows in a few known places. A test that meets one says so and
// checks what can be checked there; on Linux and on Windows this is always false.
#pragma once

#include "support/temp_till.h"

#include <filesystem>
#include <string>

bool runningUnderWine();

// Every value of a profile file as "[section] key=value" lines, read through the profile-string
// functions: what two files hold when their layout cannot be compared byte for byte.
std::string profileValues(const std::string& windowsFile);

// Expects `file` to hold `expected`: byte for byte, or under Wine, which rewrites a whole profile
// file in its own layout, value for value.
void expectProfileFile(const TempTill& till, const std::filesystem::path& file,
                       const std::string& expected);
