// A whole configuration run on a fresh demo till with a VX820 chosen instead of its SC5000, so
// the device-manager job and its ten-second pause do not run. Making the fresh till and reading
// its installed settings are not timed.
#include "bench_till.h"
#include "configure/configure_tessaly.h"
#include "foundation/clock.h"
#include "settings/ccaddin_registry.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

// The run's pauses go through the clock; a stand-in clock makes them cost nothing, so only the
// run's own work is timed.
class NoPauseClock final : public Clock {
public:
    NoPauseClock() { installClock(this); }
    ~NoPauseClock() override { installClock(nullptr); }
    std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::now();
    }
    void sleepFor(std::chrono::milliseconds) override {}
};

void BM_ConfigureRun_DemoTillNotSc5000(benchmark::State& state) {
    BenchTill till;
    NoPauseClock clock;
    for (auto _ : state) {
        state.PauseTiming();
        till.becomeDemo();
        // The wizard read the installed settings when it started, not on Finish.
        TCcAddinRegistry installed;
        installed.ReadRegistry();
        TCcAddinRegistry chosen = installed;
        chosen.strChipDeviceName = "VeriFone VX820";
        chosen.strComPort = "COM4";
        chosen.bTestMode = !chosen.bTestMode;
        chosen.strCorvixMerchantId = "55555";
        TcOnfigureTessaly run;
        state.ResumeTiming();
        if (run.Configure(installed, chosen, "C:\\Program Files\\Tessaly\\") != 0) {
            state.SkipWithError(run.strErrorMessage.c_str());
            break;
        }
    }
}
BENCHMARK(BM_ConfigureRun_DemoTillNotSc5000)->Unit(benchmark::kMillisecond);

} // namespace
