#include "bench_till.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const fs::path& demoTemplate() {
    static const struct Demo {
        fs::path folder;
        Demo() {
            folder =
                fs::temp_directory_path() / ("parvane-bench-demo-" + std::to_string(::getpid()));
            fs::remove_all(folder);
            std::string command;
#ifdef PARVANE_REGEDIT
            command = "PARVANE_REGEDIT='" PARVANE_REGEDIT "' ";
#endif
            command +=
                "'" PARVANE_SOURCE "/scripts/demo-till' '" + folder.string() + "' >/dev/null";
            if (std::system(command.c_str()) != 0) {
                throw std::runtime_error("scripts/demo-till failed");
            }
        }
        ~Demo() {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
        }
    } demo;
    return demo.folder;
}

} // namespace

BenchTill::BenchTill() {
    char pattern[] = "/tmp/parvane-bench-XXXXXX";
    if (::mkdtemp(pattern) == nullptr) {
        throw std::runtime_error("cannot make a till folder");
    }
    root_ = pattern;
    fs::create_directories(root_ / "drive_c");
    ::setenv("PARVANE_ROOT", root_.c_str(), 1);
}

BenchTill::~BenchTill() {
    ::unsetenv("PARVANE_ROOT");
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

fs::path BenchTill::plant(const std::string& relative, const std::string& bytes) const {
    const fs::path file = root_ / "drive_c" / relative;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    return file;
}

void BenchTill::becomeDemo() const {
    for (const auto& entry : fs::directory_iterator(root_)) {
        fs::remove_all(entry.path());
    }
    fs::copy(demoTemplate(), root_, fs::copy_options::recursive);
}

std::string repositoryFile(const std::string& relative) {
    std::ifstream in(fs::path(PARVANE_SOURCE) / relative, std::ios::binary);
    if (!in) {
        throw std::runtime_error("missing repository file " + relative);
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string bigIni(int lines) {
    std::string text = "; generated\r\n";
    for (int i = 0; i < lines; ++i) {
        if (i % 50 == 0) {
            text += "[Section" + std::to_string(i / 50) + "]\r\n";
        }
        text += "Key" + std::to_string(i) + "=value " + std::to_string(i) + "\r\n";
    }
    return text;
}
