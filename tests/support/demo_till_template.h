// The demo till as scripts/demo-till makes it, made once per test program in a temporary folder
// (removed when the program ends). Tests copy it into their own TempTill, so each case starts
// from the same installed till without running the script again.
#pragma once

#include <filesystem>

// The folder holding the demo till's drive_c and registry; throws when the script fails.
const std::filesystem::path& demoTillTemplate();

// The repository the tests were built from.
const std::filesystem::path& repositoryRoot();
