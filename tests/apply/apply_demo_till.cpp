#include "apply_demo_till.h"

#include "apply/apply_command.h"
#include "support/demo_till_template.h"

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

ApplyDemoTill::ApplyDemoTill() {
    fs::copy(demoTillTemplate(), till.root(),
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
