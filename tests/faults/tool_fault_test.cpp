// External tools that hang or fail. The run waits for a tool with no time-out, as the till's
// installer always has, and lets no window events run meanwhile, so the window stays exactly as
// it was until the tool ends; a tool that ends with an error code does not stop anything.
#include "foundation/event_pump.h"
#include "foundation/wait_process.h"
#include "support/child_process.h"
#include "support/temp_till.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;

namespace {

fs::path plantTool(TempTill& till, const std::string& name, const std::string& body) {
    const fs::path tool = till.plant("tools/" + name, "#!/bin/sh\n" + body + "\n");
    ::chmod(tool.c_str(), 0755);
    return tool;
}

} // namespace

TEST(ToolFaults, AHangingToolIsWaitedForWithoutEventsAndAFailingOneStopsNothing) {
    TempTill till;
    const fs::path released = till.root() / "released";
    plantTool(till, "hang.exe",
              "while [ ! -e '" + released.string() + "' ]; do sleep 0.05; done; exit 0");
    plantTool(till, "fail.exe", "exit 3");

    // The wait happens in a child, so the test can look at it from outside.
    ChildProcess waiter([] {
        int events = 0;
        installEventPump([&events] { ++events; });
        ChildProcess::ready();
        WaitProcess::RunHiddenAndWait("c:\\tools\\hang.exe");
        return events;
    });
    ASSERT_TRUE(waiter.waitReady());
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    EXPECT_TRUE(waiter.running()) << "the wait gave up on a hanging tool";
    std::ofstream(released) << "go";
    EXPECT_EQ(waiter.wait(), 0) << "window events ran while the tool hung";

    // A tool that fails is waited for and reported as nothing at all.
    EXPECT_NO_THROW(WaitProcess::RunHiddenAndWait("c:\\tools\\fail.exe"));
}
