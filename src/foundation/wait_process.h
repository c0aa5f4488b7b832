// Running an external tool hidden and blocking until it has ended.
#pragma once

#include <cstdint>
#include <string>

namespace WaitProcess {

// Starts the command line hidden, without a command interpreter, and waits for it with no
// time-out. The exit code is not reported. A start that fails throws the platform's
// std::runtime_error to the caller, whose own trap reports it.
void RunHiddenAndWait(const std::string& commandLine);

// Waits with no time-out for the process to end; returns at once when it has already ended.
// Never reports a failure.
void WaitForProcessEnd(std::int32_t processId);

} // namespace WaitProcess
