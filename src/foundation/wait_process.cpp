#include "foundation/wait_process.h"

#include "platform/platform.h"

namespace WaitProcess {

void RunHiddenAndWait(const std::string& commandLine) {
    // A start that fails is not caught here: the caller's own trap names the failure.
    const std::uint32_t processId = platform::startHidden(commandLine);
    WaitForProcessEnd(static_cast<std::int32_t>(processId));
}

void WaitForProcessEnd(std::int32_t processId) {
    // Id 0 names no process: there is nothing to wait for.
    if (processId == 0) {
        return;
    }
    try {
        platform::waitForProcess(static_cast<std::uint32_t>(processId));
    } catch (...) {
        // Waiting is best effort; a tool that cannot be waited for is treated as ended.
    }
}

} // namespace WaitProcess
