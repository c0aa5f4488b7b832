// The scratch till on Linux: a temporary till folder named by PARVANE_ROOT while it lives.
#include "platform/scratch_till.h"

#include "platform/platform.h"
#include "platform/posix/till_root.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {
namespace {

fs::path makeTemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "parvane-scratch-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make a scratch till: " +
                                 std::error_code(errno, std::generic_category()).message());
    }
    return pattern;
}

// The registry database with any journal SQLite keeps beside it.
void copyRegistry(const fs::path& from, const fs::path& to) {
    if (!fs::exists(from)) {
        return;
    }
    for (const auto& entry : fs::directory_iterator(from)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file() && name.starts_with("registry.db")) {
            fs::copy_file(entry.path(), to / name);
        }
    }
}

void copyFolderFiles(const fs::path& realRoot, const fs::path& scratchRoot,
                     const std::string& windowsFolder) {
    const fs::path host = fs::path(hostPath(windowsFolder)).lexically_normal();
    const fs::path inside = host.lexically_relative(realRoot.lexically_normal());
    if (inside.empty() || *inside.begin() == "..") {
        throw std::runtime_error("the folder " + windowsFolder +
                                 " is outside the till folder, so it cannot be copied aside");
    }
    const fs::path target = scratchRoot / inside;
    fs::create_directories(target);
    if (!fs::is_directory(host)) {
        return;
    }
    // A folder in the folder is made too, empty, so that a write the run would aim at it fails
    // in the plan as it would on the till. Permission bits come along with the files.
    for (const auto& entry : fs::directory_iterator(host)) {
        if (entry.is_regular_file()) {
            fs::copy_file(entry.path(), target / entry.path().filename());
        } else if (entry.is_directory()) {
            fs::create_directory(target / entry.path().filename());
        }
    }
}

} // namespace

ScratchTill::ScratchTill(const std::vector<std::string>& windowsFolders) {
    const fs::path realRoot = posix::tillRoot();
    root_ = makeTemporaryFolder();
    try {
        copyRegistry(realRoot, root_);
        for (const std::string& folder : windowsFolders) {
            copyFolderFiles(realRoot, root_, folder);
        }
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
        throw;
    }
    if (const char* previous = std::getenv("PARVANE_ROOT")) {
        previousRoot_ = previous;
    }
    ::setenv("PARVANE_ROOT", root_.c_str(), 1);
}

ScratchTill::~ScratchTill() {
    if (previousRoot_) {
        ::setenv("PARVANE_ROOT", previousRoot_->c_str(), 1);
    } else {
        ::unsetenv("PARVANE_ROOT");
    }
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

bool ScratchTill::available() {
    return true;
}

} // namespace platform
