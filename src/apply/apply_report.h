// The report of an unattended run, as text for a person and as one JSON document for fleet tools.
// Both show the same content; the Corvix password is shown as "***" in each.
#pragma once

#include "apply/answer_file.h"
#include "apply/apply_run.h"

#include <optional>
#include <string>
#include <vector>

enum class ApplyExit { Success = 0, RunFailed = 1, BadAnswers = 2, TillUnreadable = 3 };

struct ApplyReport {
    bool plan = false;
    ApplyExit exit = ApplyExit::Success;
    std::string answersFile;
    TmsChoice tms = TmsChoice::None;
    std::vector<AnswerProblem> problems; // why the answers were refused
    std::string fault;                   // why the till could not be read
    std::vector<std::string> notHeld;    // writes the till does not hold after the run
    std::optional<RunOutcome> outcome;   // present once the run (or plan) was made
};

// Why a run could not start while another one holds the till.
inline constexpr std::string_view kAnotherRun = "another configuration run is in progress";

// The failure line the wizard puts under a failed run's message.
inline constexpr std::string_view kRunFailedLine = "Configuration and installation failed.";

// The value as shown: "***" for the Corvix password, the text itself otherwise.
std::string shownValue(std::string_view valueName, const std::string& value);

std::string reportText(const ApplyReport& report);
std::string reportJson(const ApplyReport& report);
