// Windows command lines split into arguments the way CommandLineToArgvW splits them, so that a
// tool started on Linux receives exactly the arguments it would receive on a till.
#pragma once

#include <string>
#include <vector>

namespace platform {

// The program name and its arguments. The program name ends at the first blank or tab outside
// double quotes; inside it quotes only group and backslashes are plain characters. An empty
// command line gives no words at all.
std::vector<std::string> splitCommandLine(const std::string& commandLine);

// The arguments of a command line without its program name, as ShellExecute passes its
// parameter string on.
std::vector<std::string> splitArguments(const std::string& arguments);

} // namespace platform
