#include "apply_demo_till.h"

#include "apply/apply_command.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class DemoTemplate {
public:
    static const fs::path& folder() {
        static DemoTemplate demo;
        return demo.folder_;
    }

private:
    DemoTemplate() {
        char name[] = "/tmp/parvane-apply-demo-XXXXXX";
        if (::mkdtemp(name) == nullptr) {
            throw std::runtime_error("cannot make a folder for the demo till");
        }
        folder_ = name;
        const std::string command = "PARVANE_REGEDIT='" PARVANE_REGEDIT "' '" +
                                    (kRepository / "scripts" / "demo-till").string() + "' '" +
                                    folder_.string() + "' >/dev/null";
        if (std::system(command.c_str()) != 0) {
            throw std::runtime_error("scripts/demo-till failed");
        }
    }
    ~DemoTemplate() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    fs::path folder_;
};

} // namespace

ApplyDemoTill::ApplyDemoTill() {
    fs::copy(DemoTemplate::folder(), till.root(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

fs::path ApplyDemoTill::programFolder() const {
    return till.driveC() / "Program Files" / "Tessaly";
}

std::string ApplyDemoTill::answers(const std::string& text) const {
    static int count = 0;
    const fs::path file = till.root() / ("answers" + std::to_string(++count) + ".ini");
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

CommandResult ApplyDemoTill::apply(const std::vector<std::string>& arguments) const {
    std::ostringstream out;
    std::ostringstream err;
    const int code = applyCommand(arguments, kProgramFolder, out, err);
    return {code, out.str(), err.str()};
}

std::string ApplyDemoTill::state() const {
    std::string all = readBytes(till.root() / "registry.db");
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(programFolder())) {
        if (entry.is_regular_file() && entry.path().filename() != "TessalyConfig.log") {
            files[entry.path().filename().string()] = readBytes(entry.path());
        }
    }
    for (const auto& [name, bytes] : files) {
        all += "\n--- " + name + "\n" + bytes;
    }
    return all;
}

CommandResult runShell(const std::string& commandLine) {
    CommandResult result;
    FILE* pipe = ::popen(commandLine.c_str(), "r");
    if (pipe == nullptr) {
        result.exitCode = -1;
        return result;
    }
    std::array<char, 4096> buffer{};
    while (std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        result.out.append(buffer.data(), got);
    }
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}
