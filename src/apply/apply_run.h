// One unattended configuration run: the wizard's Finish sequence without the wizard. The same
// function makes a plan and a real run. For a plan it runs against a scratch copy of the registry
// and of the program folder, with every process start and shell open recorded instead of done,
// so the run's own code decides what a plan shows; nothing is written to the till and no tool is
// started. Either way the platform layer reports each write as it happens, and the report is
// built from those reports alone.
#pragma once

#include "apply/answer_file.h"
#include "apply/till_changes.h"
#include "settings/ccaddin_registry.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct RunOutcome {
    bool plan = false;
    std::int32_t result = 0; // the configuration run's result: 0 success, 1 failed
    std::string errorMessage;
    std::vector<std::string> progress; // the run's status texts, each once, in order
    bool tmsScriptUpdated = false;
    TillChanges changes;
};

struct RunRequest {
    TCcAddinRegistry installed;
    TCcAddinRegistry settings; // the installed settings with the answers laid over them
    std::string programFolder; // Windows path ending in "\"
    TmsChoice tms = TmsChoice::None;
    bool plan = false;
    std::function<void(const std::string&)> onStatus; // called with each new status text
};

// The run's log, in the program folder, as the wizard writes it.
inline constexpr std::string_view kRunLogName = "TessalyConfig.log";

// Runs the configuration and, after a successful fully integrated run, the TMS step. Throws a
// described std::runtime_error only when a plan's scratch copy cannot be made.
RunOutcome runConfiguration(const RunRequest& request);
