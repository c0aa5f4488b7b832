// What the fault tests look at on the demo till (plantDemoTill makes a fresh one for each trial):
// snapshots of what a run may change (INI keys, settings, whole files).
#pragma once

#include "support/demo_till_template.h"
#include "support/temp_till.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>

extern const std::string kProgramFolder; // the payment client's folder on the demo till

// Every (section, key) a reader of the file can see, with the value it reads.
using IniValues = std::map<std::pair<std::string, std::string>, std::string>;
IniValues iniValues(const std::filesystem::path& file);

// The card add-in's settings as stored, by value name ("<missing>" for an absent value).
std::map<std::string, std::string> storedSettings();

// The host path of a file in the payment client's folder.
std::filesystem::path clientFile(const TempTill& till, const std::string& name);
