#include "platform/posix/till_root.h"

#include "platform/cp1252.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace platform::posix {

fs::path executablePath() {
    std::error_code error;
    fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error) {
        throw std::runtime_error("cannot find the running program: " + error.message());
    }
    return self;
}

fs::path tillRoot() {
    if (const char* root = std::getenv("PARVANE_ROOT"); root != nullptr && *root != '\0') {
        // A relative root is made absolute once, for this process and the tools it starts: it
        // would name another folder after a change of the working folder.
        const fs::path given(root);
        if (given.is_relative()) {
            const fs::path absolute = fs::absolute(given);
            ::setenv("PARVANE_ROOT", absolute.c_str(), 1);
            return absolute;
        }
        return given;
    }
    const fs::path program = executablePath().parent_path();
    for (fs::path folder = program; folder.has_relative_path(); folder = folder.parent_path()) {
        if (cp1252::iequals(folder.filename().string(), "drive_c")) {
            return folder.parent_path();
        }
    }
    throw std::runtime_error("no till folder: set PARVANE_ROOT to the till folder (the folder "
                             "that holds drive_c), or run the program from inside its drive_c");
}

} // namespace platform::posix
