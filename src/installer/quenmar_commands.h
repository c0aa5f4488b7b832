// The command lines of the vendor's tools that install and run the device-manager service. They
// are fixed to the character, blanks and quotes included: the tools parse their own arguments
// and the installer's log is compared against them when a till is investigated.
#pragma once

#include <string>

namespace quenmar {

// Unpacks an archive from the source folder. The target is not quoted and keeps its "\".
std::string unpackCommand(const std::string& sourceFolder, const std::string& archive,
                          const std::string& targetFolder);

// Takes a folder off, or puts it at the end of, the machine's PATH.
std::string pathRemoveCommand(const std::string& folder);
std::string pathAppendCommand(const std::string& folder);

// Creates the ODBC data source of the service's database.
std::string dataSourceCommand();

// Runs one verb of the service tool: "stop", "start", "automatic", "remove".
std::string serviceCommand(const std::string& verb);

// Registers the service with its program and display name.
std::string serviceInstallCommand();

// Runs one SQL statement against the data source.
std::string sqlCommand(const std::string& statement);

} // namespace quenmar
