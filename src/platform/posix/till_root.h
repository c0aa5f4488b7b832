// The till folder that stands for the till's drives on Linux.
#pragma once

#include <filesystem>

namespace platform::posix {

// PARVANE_ROOT when set; otherwise the folder above the "drive_c" that holds the running
// executable. Throws a described std::runtime_error when neither names a till, so that nothing
// is ever written into a guessed place.
std::filesystem::path tillRoot();

// The running executable's host path.
std::filesystem::path executablePath();

} // namespace platform::posix
