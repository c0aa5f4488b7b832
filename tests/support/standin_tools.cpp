#include "support/standin_tools.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> kAllTools = {"7z.exe", "executesql.exe", "svccontrol.exe",
                                            "setenvironmentvariable.exe",
                                            "createaccessdatasource.exe"};

std::vector<std::string> linesOf(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

// Temporary tills never have a quote in their paths.
std::string singleQuoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

} // namespace

// Found from this file's own place in the repository, so the tests need no configuration.
fs::path standinSourceFolder() {
    return fs::path(__FILE__).parent_path().parent_path().parent_path() / "tools" / "standins";
}

void copyStandins(const fs::path& folder, const std::vector<std::string>& tools) {
    fs::create_directories(folder);
    const fs::path source = standinSourceFolder();
    fs::copy_file(source / "standin-common.sh", folder / "standin-common.sh",
                  fs::copy_options::overwrite_existing);
    for (const std::string& tool : tools.empty() ? kAllTools : tools) {
        fs::copy_file(source / tool, folder / tool, fs::copy_options::overwrite_existing);
    }
}

void makeZip(const fs::path& archive, const fs::path& contents) {
    fs::create_directories(archive.parent_path());
    const std::string command = "cd " + singleQuoted(contents) +
                                " && { command -v 7zz || command -v 7z; } >/dev/null" +
                                " && $(command -v 7zz || command -v 7z) a -tzip " +
                                singleQuoted(fs::absolute(archive)) + " . >/dev/null 2>&1";
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("cannot make " + archive.string() + ": is 7-Zip installed?");
    }
}

std::vector<std::string> standinCalls(const TempTill& till) {
    return linesOf(till.root() / "standin-calls.log");
}

std::map<std::string, std::string> serviceState(const TempTill& till, const std::string& name) {
    std::map<std::string, std::string> state;
    for (const std::string& line : linesOf(till.root() / "services" / name)) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) {
            state[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return state;
}
