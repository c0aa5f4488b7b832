// The demo till as scripts/demo-till makes it, made once per test program in a temporary folder
// (removed when the program ends). Tests copy it into their own TempTill, so each case starts
// from the same installed till without running the script again.
#pragma once

#include "support/temp_till.h"

#include <filesystem>

// The folder holding the demo till's drive_c and registry; throws when the script fails. Linux
// only: the script is bash, and its stand-ins for the vendor's tools are shell scripts.
const std::filesystem::path& demoTillTemplate();

// Makes `till` the demo till, replacing what it held. On Linux that is the whole template; on
// Windows, whose till is the machine's own C: drive, the payment client's files of demo/till and
// its registry settings, without the device manager and its tools.
void plantDemoTill(const TempTill& till);

// The repository the tests were built from.
const std::filesystem::path& repositoryRoot();
