// What the tests read back from a till after the system ran: registry values, the card add-in's
// settings, the log's messages, INI keys and the rows of an SQLite file.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

// A REG_SZ value as the system reads it, or "<missing>".
std::string registryValue(const std::string& key, const std::string& name);
// A value under the card add-in's key, or "<missing>".
std::string addinValue(const std::string& name);
// Every setting of the card add-in by value name, "<missing>" for an absent one.
std::map<std::string, std::string> addinSettings();

// The log's lines without their line ends; without the time stamp unless `stamped`.
Lines logMessages(const std::filesystem::path& log, bool stamped = false);

#ifndef _WIN32
// Every (section, key) a reader of the file sees, with the value it reads.
using IniValues = std::map<std::pair<std::string, std::string>, std::string>;
IniValues iniValues(const std::filesystem::path& file);

// Runs statements on an SQLite file and gives the first column of each row they return.
Lines sqlRows(const std::filesystem::path& database, const std::string& statements);
// The device manager's reader rows (Localhost|DeviceName|Hostname|Type|Capabilities).
Lines readerRows(const std::filesystem::path& database);
#endif
