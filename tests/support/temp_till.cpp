#include "support/temp_till.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

// The Windows till is made and cleared in temp_till_windows.cpp.
#ifndef _WIN32
TempTill::TempTill() {
    std::random_device random;
    const fs::path base = fs::temp_directory_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path candidate = base / ("parvane-till-" + std::to_string(random()));
        if (fs::create_directory(candidate)) {
            root_ = candidate;
            break;
        }
    }
    if (root_.empty()) {
        throw std::runtime_error("cannot make a temporary till folder");
    }
    driveC_ = root_ / "drive_c";
    fs::create_directory(driveC_);
    if (const char* previous = std::getenv("PARVANE_ROOT")) {
        previousRoot_ = previous;
        hadPreviousRoot_ = true;
    }
    setenv("PARVANE_ROOT", root_.c_str(), 1);
}

TempTill::~TempTill() {
    if (hadPreviousRoot_) {
        setenv("PARVANE_ROOT", previousRoot_.c_str(), 1);
    } else {
        unsetenv("PARVANE_ROOT");
    }
    std::error_code ignored;
    // Tests make folders read-only on purpose; give them back before removing the tree.
    for (auto it = fs::recursive_directory_iterator(root_, ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(root_, ignored);
}

#endif

fs::path TempTill::plant(const std::string& relativeHostPath, const std::string& bytes) const {
    const fs::path file = driveC() / relativeHostPath;
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file;
}

std::string readBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
