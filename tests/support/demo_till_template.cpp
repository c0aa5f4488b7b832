#ifndef _WIN32
#include "support/demo_till_template.h"

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class DemoTemplate {
public:
    DemoTemplate() {
        std::string name = (fs::temp_directory_path() / "parvane-demo-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make a folder for the demo till");
        }
        folder_ = name;
        // demo-till makes a till only in an empty folder.
        const std::string command = "PARVANE_REGEDIT='" PARVANE_REGEDIT "' '" +
                                    (repositoryRoot() / "scripts" / "demo-till").string() + "' '" +
                                    folder_.string() + "' >/dev/null";
        if (std::system(command.c_str()) != 0) {
            throw std::runtime_error("scripts/demo-till failed");
        }
    }
    ~DemoTemplate() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    DemoTemplate(const DemoTemplate&) = delete;
    DemoTemplate& operator=(const DemoTemplate&) = delete;

    fs::path folder_;
};

} // namespace

const fs::path& repositoryRoot() {
    static const fs::path root = PARVANE_SOURCE_DIR;
    return root;
}

const fs::path& demoTillTemplate() {
    static DemoTemplate demo;
    return demo.folder_;
}
#endif
