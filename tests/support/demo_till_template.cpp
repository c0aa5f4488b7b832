#include "support/demo_till_template.h"

#include "regedit/registry_file.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {

#ifndef _WIN32
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
#endif

} // namespace

const fs::path& repositoryRoot() {
#ifdef _WIN32
    // A cross build run under Wine knows its sources by their Linux path, which Wine shows as Z:.
    static const fs::path root = PARVANE_SOURCE_DIR[0] == '/' ? fs::path("Z:" PARVANE_SOURCE_DIR)
                                                              : fs::path(PARVANE_SOURCE_DIR);
#else
    static const fs::path root = PARVANE_SOURCE_DIR;
#endif
    return root;
}

#ifndef _WIN32
const fs::path& demoTillTemplate() {
    static DemoTemplate demo;
    return demo.folder_;
}

void plantDemoTill(const TempTill& till) {
    for (const auto& entry : fs::directory_iterator(till.root())) {
        fs::remove_all(entry.path());
    }
    fs::copy(demoTillTemplate(), till.root(), fs::copy_options::recursive);
}
#else
void plantDemoTill(const TempTill& till) {
    fs::copy(repositoryRoot() / "demo" / "till" / "drive_c", till.driveC(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    std::ifstream registry(repositoryRoot() / "demo" / "till" / "registry.reg", std::ios::binary);
    importRegistryFile(registry);
}
#endif
