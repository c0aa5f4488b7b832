// The settings store on a registry holding all 89 settings: loading them all, storing one.
#include "bench_till.h"
#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"

#include <benchmark/benchmark.h>

namespace {

// A registry with every setting, as a configured till has it.
void plantSettings() {
    TRegistry registry;
    registry.CreateKeyAndSaveValue(std::string(kCcAddinKeyPath), "Acquirer", "Barclays");
    TCcAddinRegistry settings;
    settings.ReadRegistry();
    for (std::int32_t field = 0; field < static_cast<std::int32_t>(kSettingCount); ++field) {
        settings.WriteRegistry(field);
    }
}

void BM_ReadRegistry_AllSettings(benchmark::State& state) {
    BenchTill till;
    plantSettings();
    for (auto _ : state) {
        TCcAddinRegistry settings;
        settings.ReadRegistry();
        benchmark::DoNotOptimize(settings.strAcquirer);
    }
}
BENCHMARK(BM_ReadRegistry_AllSettings)->Unit(benchmark::kMillisecond);

void BM_WriteRegistry_OneSetting(benchmark::State& state) {
    BenchTill till;
    plantSettings();
    TCcAddinRegistry settings;
    settings.ReadRegistry();
    int i = 0;
    for (auto _ : state) {
        settings.strComPort = "COM" + std::to_string(++i % 9 + 1);
        settings.WriteRegistry(28);
    }
}
BENCHMARK(BM_WriteRegistry_OneSetting)->Unit(benchmark::kMillisecond);

} // namespace
