// The Windows till: the machine's own C: drive and HKEY_LOCAL_MACHINE. The tests run in a
// scratch Wine prefix, so a test may use the drive; it leaves behind only what was there before.
#ifdef _WIN32
#include "support/temp_till.h"

#include <algorithm>
#include <windows.h>

namespace fs = std::filesystem;

namespace {

// The keys the system writes, in the 32-bit view the system's registry access uses.
const char* const kSystemKeys[] = {
    "SOFTWARE\\Tessaly",
    "SOFTWARE\\Microsoft\\Retail Management System",
};

void removeSystemKeys() {
    for (const char* path : kSystemKeys) {
        const std::string text = path;
        const std::size_t slash = text.rfind('\\');
        HKEY parent = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, text.substr(0, slash).c_str(), 0,
                          KEY_ALL_ACCESS | KEY_WOW64_32KEY, &parent) == ERROR_SUCCESS) {
            RegDeleteTreeA(parent, text.substr(slash + 1).c_str());
            RegCloseKey(parent);
        }
    }
}

// The payment client's folder lies inside "Program Files", which the machine already has: it goes
// as the registry keys go, before and after each test.
const char* const kSystemFolder = "C:\\Program Files\\Tessaly";

// Tests make files read-only on purpose; they are given back before the tree is removed.
void removeTree(const fs::path& tree) {
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(tree, ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::permissions(tree, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(tree, ignored);
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    std::error_code ignored;
    for (fs::directory_iterator it(folder, ignored), end; it != end; it.increment(ignored)) {
        entries.push_back(it->path());
    }
    return entries;
}

} // namespace

TempTill::TempTill() : root_("C:\\"), driveC_("C:\\"), presentAtStart_(entriesOf(driveC_)) {
    removeSystemKeys();
    removeTree(kSystemFolder);
}

TempTill::~TempTill() {
    for (const fs::path& entry : entriesOf(driveC_)) {
        if (std::find(presentAtStart_.begin(), presentAtStart_.end(), entry) ==
            presentAtStart_.end()) {
            removeTree(entry);
        }
    }
    removeSystemKeys();
    removeTree(kSystemFolder);
}
#endif
