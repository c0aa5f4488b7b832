// A configuration run told to end, or killed, while the device manager is stopped for its
// ten-second pause: the service is never left stopped for good.
#include "configure/configure_tessaly.h"
#include "fault_till.h"
#include "foundation/event_pump.h"
#include "settings/ccaddin_registry.h"
#include "support/child_process.h"
#include "support/fake_clock.h"
#include "support/standin_tools.h"
#include "support/till_readers.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace fs = std::filesystem;

namespace {

// Time that passes twenty times faster than the wall clock's, so the pause lasts half a second.
class QuickClock final : public Clock {
public:
    QuickClock() { installClock(this); }
    ~QuickClock() override { installClock(nullptr); }
    std::chrono::system_clock::time_point now() const override { return now_; }
    void sleepFor(std::chrono::milliseconds duration) override {
        std::this_thread::sleep_for(duration / 20);
        now_ += duration;
    }

private:
    std::chrono::system_clock::time_point now_ = std::chrono::system_clock::now();
};

// In a child: the demo till's SC5000 moved to COM2, which stops the device manager; the parent
// hears "ready" once the service is stopped and the pause has begun.
ChildProcess startDeviceRun(const TempTill& till) {
    return ChildProcess([&till] {
        QuickClock clock;
        bool told = false;
        installEventPump([&] {
            if (!told && serviceState(till, "quenmar")["state"] == "stopped") {
                told = true;
                ChildProcess::ready();
            }
        });
        TCcAddinRegistry installed;
        installed.ReadRegistry();
        TCcAddinRegistry chosen = installed;
        chosen.strComPort = "COM2";
        TcOnfigureTessaly run;
        return run.Configure(installed, chosen, kProgramFolder);
    });
}

bool markLeft(const TempTill& till) {
    return fs::exists(clientFile(till, "QuenmarStopped.mark"));
}

} // namespace

TEST(InterruptedRun, ARequestToEndDuringThePauseIsHeldUntilTheServiceRunsAgain) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        TempTill till;
        plantDemoTill(till);
        ChildProcess run = startDeviceRun(till);
        ASSERT_TRUE(run.waitReady());
        EXPECT_EQ(serviceState(till, "quenmar")["state"], "stopped");
        run.signal(signal);
        EXPECT_EQ(run.wait(), -signal) << "the signal still ends the run, once the service runs";
        EXPECT_EQ(serviceState(till, "quenmar")["state"], "running") << signal;
        EXPECT_FALSE(markLeft(till));
        const Lines log = logMessages(clientFile(till, "TessalyConfig.log"));
        EXPECT_EQ(log.back(), "Starting Quenmar process finished") << signal;
    }
}

TEST(InterruptedRun, ARunKilledWithTheServiceStoppedLeavesAMarkAndTheNextRunStartsItFirst) {
    TempTill till;
    plantDemoTill(till);
    ChildProcess run = startDeviceRun(till);
    ASSERT_TRUE(run.waitReady());
    run.kill();
    EXPECT_EQ(serviceState(till, "quenmar")["state"], "stopped");
    EXPECT_TRUE(markLeft(till));

    // The next run, whatever it changes, starts the service before anything else.
    FakeClock clock(2026, 3, 14);
    TCcAddinRegistry installed;
    installed.ReadRegistry();
    TCcAddinRegistry chosen = installed;
    TcOnfigureTessaly next;
    EXPECT_EQ(next.Configure(installed, chosen, kProgramFolder), 0) << next.strErrorMessage;
    EXPECT_EQ(serviceState(till, "quenmar")["state"], "running");
    EXPECT_FALSE(markLeft(till));
    const Lines log = logMessages(clientFile(till, "TessalyConfig.log"));
    const auto restart = std::find(log.begin(), log.end(),
                                   "An earlier run ended with Quenmar stopped: starting it first");
    ASSERT_NE(restart, log.end());
    EXPECT_EQ(restart[-1], "Starting Tessaly Configuration");
    EXPECT_EQ(restart[1], "Starting Quenmar");
}
