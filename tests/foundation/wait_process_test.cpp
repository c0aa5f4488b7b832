#include "foundation/wait_process.h"
#include "platform/platform.h"
#include "support/temp_till.h"

#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>

TEST(WaitProcess, RunHiddenAndWaitReturnsOnlyAfterTheToolHasEnded) {
    TempTill till;
    const auto marker = till.driveC() / "done.txt";
#ifdef _WIN32
    WaitProcess::RunHiddenAndWait("cmd /c \"ping -n 2 127.0.0.1 >nul & echo done>" +
                                  marker.string() + "\"");
    EXPECT_EQ(readBytes(marker), "done\r\n");
#else
    WaitProcess::RunHiddenAndWait("z:\\bin\\sh -c \"sleep 0.3; echo done > '" + marker.string() +
                                  "'\"");
    EXPECT_EQ(readBytes(marker), "done\n");
#endif
    EXPECT_THROW(WaitProcess::RunHiddenAndWait("c:\\tools\\missing.exe /x"), std::runtime_error);
}

TEST(WaitProcess, WaitingOnAnEndedOrUnknownProcessReturnsAtOnce) {
    TempTill till;
#ifdef _WIN32
    const auto id = static_cast<std::int32_t>(platform::startHidden("cmd /c exit"));
#else
    const auto id = static_cast<std::int32_t>(platform::startHidden("z:\\bin\\true"));
#endif
    WaitProcess::WaitForProcessEnd(id);
    const auto start = std::chrono::steady_clock::now();
    for (const std::int32_t ended : {id, 0, -1}) {
        EXPECT_NO_THROW(WaitProcess::WaitForProcessEnd(ended));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}
