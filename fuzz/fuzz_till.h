// What every fuzz target shares: one till folder for the whole fuzzing process (on a memory
// file system when there is one, so that flushes cost nothing), and the way an input is cut into
// a few parameter lines followed by a file's bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

// The till root, made with its drive_c on first use and named by PARVANE_ROOT from then on.
const std::filesystem::path& tillRoot();

// <till root>/drive_c/<relative>, its folders made.
std::filesystem::path tillFile(const std::string& relative);

void writeBytes(const std::filesystem::path& file, std::string_view bytes);
std::string readBytes(const std::filesystem::path& file);

// The first `count` lines of the input (LF-ended, a CR before the LF kept) and the rest of it.
// Missing lines are empty.
struct Parts {
    std::vector<std::string> lines;
    std::string rest;
};
Parts splitInput(const std::uint8_t* data, std::size_t size, std::size_t count);

// Aborts with the message, so that libFuzzer keeps the input as a crash.
[[noreturn]] void fail(const std::string& what);
inline void check(bool condition, const std::string& what) {
    if (!condition) {
        fail(what);
    }
}

} // namespace fuzzing
