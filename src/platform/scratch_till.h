// A throw-away copy of the part of the till a run may touch, made the till in force while it
// lives: the registry and the files of the named folders. Whatever a run writes while it exists
// lands in the copy, which is deleted with it; the real till is never opened for writing.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class ScratchTill {
public:
    // Copies the registry and the files (not the subfolders) of each folder, given as Windows
    // paths. Throws a described std::runtime_error when a folder lies outside the till, where
    // the copy could not stand in for it.
    explicit ScratchTill(const std::vector<std::string>& windowsFolders);

    // Whether this build can make one: not on Windows, whose registry is the machine's own.
    static bool available();
    ~ScratchTill();
    ScratchTill(const ScratchTill&) = delete;
    ScratchTill& operator=(const ScratchTill&) = delete;

private:
    std::filesystem::path root_;
    std::optional<std::string> previousRoot_;
};

} // namespace platform
