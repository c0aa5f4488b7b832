#include "installer/quenmar_commands.h"

#include "installer/quenmar_layout.h"

namespace quenmar {
namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string withoutTrailingBackslash(const std::string& folder) {
    if (!folder.empty() && folder.back() == '\\') {
        return folder.substr(0, folder.size() - 1);
    }
    return folder;
}

// The tools are always run from the program folder of the installation being set up, even to
// stop and remove the service of the one being replaced.
std::string tool(const std::string& name) {
    return kProgramFolder + name;
}

} // namespace

std::string unpackCommand(const std::string& sourceFolder, const std::string& archive,
                          const std::string& targetFolder) {
    return quoted(sourceFolder + kArchiver) + " x " + quoted(sourceFolder + archive) + " -o" +
           targetFolder + " -r";
}

// The two blanks before "-value" have always been there; the tool does not mind them.
std::string pathRemoveCommand(const std::string& folder) {
    return tool("setenvironmentvariable.exe") + " -name PATH -action remove  -value " +
           withoutTrailingBackslash(folder);
}

std::string pathAppendCommand(const std::string& folder) {
    return tool("setenvironmentvariable.exe") + " -name PATH -action append  -value " +
           withoutTrailingBackslash(folder);
}

std::string dataSourceCommand() {
    return tool("createaccessdatasource.exe") + " -dsn " + quoted(kDataSourceName) + " -filename " +
           quoted(kDatabaseFolder + kDatabaseFile);
}

std::string serviceCommand(const std::string& verb) {
    return tool("svccontrol.exe") + " -verb " + verb + " -name " + kServiceName;
}

std::string serviceInstallCommand() {
    return serviceCommand("install") + " -exe " + kProgramFolder + kServiceProgram + " -display " +
           quoted(kServiceDisplayName);
}

std::string sqlCommand(const std::string& statement) {
    return tool("executesql.exe") + " -dsn " + quoted(kDataSourceName) + " -command " +
           quoted(statement);
}

} // namespace quenmar
