// What the fault tests look at on the demo till (plantDemoTill makes a fresh one for each trial):
// snapshots of what a run may change (INI keys, settings, whole files).
#pragma once

#include "support/demo_till_template.h"
#include "support/temp_till.h"
#include "support/till_readers.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>

extern const std::string kProgramFolder; // the payment client's folder on the demo till

// The host path of a file in the payment client's folder.
std::filesystem::path clientFile(const TempTill& till, const std::string& name);
