// Readable descriptions of Windows error codes, for the faults the platform layer throws.
#pragma once

#include <cstdint>
#include <string>

namespace platform::win32 {

// The system's message for an error code (GetLastError's), without its trailing line break;
// "error <code>" when the system has no text for it.
std::string errorDescription(std::uint32_t code);

// The system's message for the calling thread's last error.
std::string lastErrorDescription();

} // namespace platform::win32
