// A demo till for the unattended front end's tests: scripts/demo-till run once per test
// program, copied afresh for each case, with helpers that run parvane-apply on it in-process.
#pragma once

#include "apply/answer_file.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

inline const std::string kProgramFolder = "C:\\Program Files\\Tessaly\\";

struct CommandResult {
    int exitCode = 0;
    std::string out;
    std::string err;
};

class ApplyDemoTill {
public:
    ApplyDemoTill();

    std::filesystem::path programFolder() const;
    // Writes an answer file into the till's root (outside drive_c) and returns its host path.
    std::string answers(const std::string& text) const;
    // parvane-apply with these arguments, run in-process in the demo till's program folder.
    CommandResult apply(const std::vector<std::string>& arguments) const;
    // Every byte of the registry and of the program folder (without the run's log).
    std::string state() const;

    FakeClock clock{2026, 3, 14, 9, 30, 0};
    TempTill till;
};

// Runs a shell command line; its exit code and standard output.
CommandResult runShell(const std::string& commandLine);

// A problem prints as "line: message" in a failed expectation.
inline void PrintTo(const AnswerProblem& problem, std::ostream* out) {
    *out << problem.line << ": " << problem.message;
}

inline std::vector<int> problemLines(const std::vector<AnswerProblem>& problems) {
    std::vector<int> lines;
    for (const AnswerProblem& problem : problems) {
        lines.push_back(problem.line);
    }
    return lines;
}
