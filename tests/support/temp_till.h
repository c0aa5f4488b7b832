// A fresh till folder for one test: a temporary root with drive_c, named by PARVANE_ROOT for the
// test's lifetime, and removed afterwards.
#pragma once

#include <filesystem>
#include <string>

class TempTill {
public:
    TempTill();
    ~TempTill();
    TempTill(const TempTill&) = delete;
    TempTill& operator=(const TempTill&) = delete;

    const std::filesystem::path& root() const { return root_; }
    std::filesystem::path driveC() const { return root_ / "drive_c"; }

    // Writes `bytes` to the host file under drive_c named by a relative host path, making its
    // folders, and returns the full host path.
    std::filesystem::path plant(const std::string& relativeHostPath, const std::string& bytes);

private:
    std::filesystem::path root_;
    std::string previousRoot_;
    bool hadPreviousRoot_ = false;
};

// The whole content of a host file, byte for byte ("" when it cannot be read).
std::string readBytes(const std::filesystem::path& file);
