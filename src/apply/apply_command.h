// The command line of parvane-apply: reads the arguments, the till and the answer file, makes
// the plan or the run, prints the report and gives the exit code. Kept apart from main() so that
// the whole program runs in-process in tests.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// `programFolder` is the Windows folder of the executable (ending in "\"), the folder the wizard
// works in; empty when it could not be found. Returns the exit code: 0 success, 1 the run failed,
// 2 bad arguments or answers, 3 the till could not be read.
int applyCommand(const std::vector<std::string>& arguments, const std::string& programFolder,
                 std::ostream& out, std::ostream& err);
