// One key read and one key written through the INI file access, on a 5,000-line file and on the
// demo till's payment-client file. A write includes its flush to disk.
#include "bench_till.h"
#include "foundation/ini_file.h"

#include <benchmark/benchmark.h>

namespace {

const char* const kDemoClientFile = "demo/till/drive_c/Program Files/Tessaly/cxclientconfig.ini";

TTLIniFile iniAt(const std::string& name) {
    TTLIniFile ini;
    ini.strIniFileDir = "c:\\bench\\";
    ini.strIniFileName = name;
    return ini;
}

// The key near the end of the file: the reader walks nearly every line to find it.
void BM_IniRead_5000Lines(benchmark::State& state) {
    BenchTill till;
    till.plant("bench/big.ini", bigIni(5000));
    const TTLIniFile ini = iniAt("big.ini");
    for (auto _ : state) {
        benchmark::DoNotOptimize(ini.GetINIString("Section99", "Key4990", ""));
    }
}
BENCHMARK(BM_IniRead_5000Lines)->Unit(benchmark::kMillisecond);

void BM_IniWrite_5000Lines(benchmark::State& state) {
    BenchTill till;
    till.plant("bench/big.ini", bigIni(5000));
    TTLIniFile ini = iniAt("big.ini");
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ini.SetINIString("Section99", "Key4990", std::to_string(++i)));
    }
}
BENCHMARK(BM_IniWrite_5000Lines)->Unit(benchmark::kMillisecond);

void BM_IniRead_DemoClientFile(benchmark::State& state) {
    BenchTill till;
    till.plant("bench/cxclientconfig.ini", repositoryFile(kDemoClientFile));
    const TTLIniFile ini = iniAt("cxclientconfig.ini");
    for (auto _ : state) {
        benchmark::DoNotOptimize(ini.GetINIString("SERIAL COMMUNICATIONS", "ComPort", ""));
    }
}
BENCHMARK(BM_IniRead_DemoClientFile)->Unit(benchmark::kMillisecond);

void BM_IniWrite_DemoClientFile(benchmark::State& state) {
    BenchTill till;
    till.plant("bench/cxclientconfig.ini", repositoryFile(kDemoClientFile));
    TTLIniFile ini = iniAt("cxclientconfig.ini");
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            ini.SetINIString("SERIAL COMMUNICATIONS", "ComPort", std::to_string(++i)));
    }
}
BENCHMARK(BM_IniWrite_DemoClientFile)->Unit(benchmark::kMillisecond);

} // namespace
