// A fresh till folder for one test: a temporary root with drive_c, named by PARVANE_ROOT for the
// test's lifetime, and removed afterwards. On Windows the till is the machine's own C: drive (a
// scratch Wine prefix in the test runs): what the test adds there and the registry keys the
// system writes are removed afterwards.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class TempTill {
public:
    TempTill();
    ~TempTill();
    TempTill(const TempTill&) = delete;
    TempTill& operator=(const TempTill&) = delete;

    const std::filesystem::path& root() const { return root_; }
    std::filesystem::path driveC() const { return driveC_; }

    // Writes `bytes` to the host file under drive_c named by a relative host path, making its
    // folders, and returns the full host path.
    std::filesystem::path plant(const std::string& relativeHostPath,
                                const std::string& bytes) const;

private:
    std::filesystem::path root_;
    std::filesystem::path driveC_;
    std::vector<std::filesystem::path> presentAtStart_; // Windows: C:\ entries not ours to remove
    std::string previousRoot_;
    bool hadPreviousRoot_ = false;
};

// The whole content of a host file, byte for byte ("" when it cannot be read).
std::string readBytes(const std::filesystem::path& file);
