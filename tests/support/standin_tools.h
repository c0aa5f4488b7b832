// The stand-ins for the device-manager vendor's command-line tools (tools/standins/), put into a
// test till, and what they leave behind there: the calls they recorded, the services, the
// machine's variables and the data sources.
#pragma once

#include "support/temp_till.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

// The repository's folder of stand-ins.
std::filesystem::path standinSourceFolder();

// Copies the named stand-ins (every one when the list is empty) and the script they share into
// a host folder, made when missing.
void copyStandins(const std::filesystem::path& folder, const std::vector<std::string>& tools = {});

// Packs everything inside `contents` into a new zip archive with 7-Zip. Throws when 7-Zip is
// missing or fails.
void makeZip(const std::filesystem::path& archive, const std::filesystem::path& contents);

// Every call the stand-ins recorded, in order: the tool's name, then each argument in "[...]".
std::vector<std::string> standinCalls(const TempTill& till);

// The service's recorded state (exe, display, start, state); empty when it is not installed.
std::map<std::string, std::string> serviceState(const TempTill& till, const std::string& name);

// What the other stand-ins keep, as files of the till: the machine's variables in
// environment/<NAME> (";"-separated), the data sources as NAME=FILE lines in odbc-datasources.
