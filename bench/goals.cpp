// The performance goals, measured on generated tills in a release build; scripts/bench prints
// them with the goals and Wine's times. Prints one "name value" line each:
//   loader3000_ms, loader100000_ms  the profile loader reading every profile of connectioninfo.ini
//   bigrun_s, bigrun_peak_ratio     a whole run on a till whose cxclientconfig.ini is 100 MiB, and
//                                   that process's peak resident memory over the file's size
//   readregistry_ms                 ReadRegistry of the 89 settings
//   demorun_ms                      a whole run on the demo till, not an SC5000, flushes included
// Usage: parvane_goals                      every goal
//        parvane_goals --demo-run           the demo run alone
//        parvane_goals --profiles N FILE    writes the connectioninfo.ini of N profiles
//        parvane_goals --big-run            (the child that makes the 100 MiB run)
#include "bench_till.h"
#include "configure/configure_tessaly.h"
#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "settings/connection_info.h"
#include "settings/settings_table.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace fs = std::filesystem;
using Steady = std::chrono::steady_clock;

namespace {

constexpr std::uintmax_t kBigFile = 100ull * 1024 * 1024;
const char* const kClientFolder = "C:\\Program Files\\Tessaly\\";

double millisSince(Steady::time_point start) {
    return std::chrono::duration<double, std::milli>(Steady::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// A till's files were written long before the wizard runs; a file written a moment ago is read
// afresh on every call, however unchanged it is.
void age(const fs::path& file) {
    const timespec hourAgo[2] = {{::time(nullptr) - 3600, 0}, {::time(nullptr) - 3600, 0}};
    ::utimensat(AT_FDCWD, file.c_str(), hourAgo, 0);
}

std::string profiles(int count) {
    std::string text = "[GENERAL]\r\nCount=" + std::to_string(count) + "\r\n";
    for (int i = 1; i <= count; ++i) {
        const std::string host = std::to_string(i / 250 % 250) + "." + std::to_string(i % 250);
        text += std::to_string(i) + "=" + (i % 2 ? "0" : "1") + ",Profile " + std::to_string(i) +
                ",10.1." + host + ",10.2." + host + ",10.3." + host + ",9101,9102,9103\r\n";
    }
    return text;
}

double loaderMillis(int count) {
    BenchTill till;
    const std::string text = profiles(count);
    std::vector<double> times;
    for (int rep = 0; rep < 5; ++rep) {
        age(till.plant("Tessaly/connectioninfo.ini", text)); // a new file: nothing cached
        const auto start = Steady::now();
        TConnectionInfo loaded;
        bool failed = false;
        loaded.ReadConfiguration("c:\\Tessaly\\", failed);
        times.push_back(millisSince(start));
        if (loaded.lConnectionCount() != count) {
            throw std::runtime_error("the loader did not read every profile");
        }
    }
    return median(times);
}

TCcAddinRegistry changedSettings(const TCcAddinRegistry& installed) {
    TCcAddinRegistry chosen = installed;
    chosen.strChipDeviceName = "VeriFone VX820"; // not an SC5000: no device-manager job
    chosen.strComPort = "COM4";
    chosen.bTestMode = !chosen.bTestMode;
    chosen.strCorvixMerchantId = "55555";
    return chosen;
}

// One configuration run on the till as it is; the time of Configure alone.
double runMillis() {
    TCcAddinRegistry installed;
    installed.ReadRegistry();
    TCcAddinRegistry chosen = changedSettings(installed);
    TcOnfigureTessaly run;
    const auto start = Steady::now();
    if (run.Configure(installed, chosen, kClientFolder) != 0) {
        throw std::runtime_error("the run failed: " + run.strErrorMessage);
    }
    return millisSince(start);
}

double demoRunMillis() {
    BenchTill till;
    std::vector<double> times;
    for (int rep = 0; rep < 15; ++rep) {
        till.becomeDemo();
        times.push_back(runMillis());
    }
    return median(times);
}

double readRegistryMillis() {
    BenchTill till;
    TRegistry().CreateKeyAndSaveValue(std::string(kCcAddinKeyPath), "Acquirer", "Barclays");
    TCcAddinRegistry all;
    all.ReadRegistry();
    for (std::int32_t field = 0; field < static_cast<std::int32_t>(kSettingCount); ++field) {
        all.WriteRegistry(field);
    }
    std::vector<double> times;
    for (int rep = 0; rep < 7; ++rep) {
        const auto start = Steady::now();
        for (int call = 0; call < 1000; ++call) {
            TCcAddinRegistry settings;
            settings.ReadRegistry();
        }
        times.push_back(millisSince(start) / 1000);
    }
    return median(times);
}

// The demo till with its payment-client file grown to 100 MiB by sections of history the run
// never reads, written a megabyte at a time so this process never holds the file.
int bigRunChild() {
    BenchTill till;
    till.becomeDemo();
    const fs::path client =
        till.root() / "drive_c" / "Program Files" / "Tessaly" / "cxclientconfig.ini";
    std::string chunk;
    for (int section = 0; chunk.size() < 1024 * 1024; ++section) {
        chunk += "[HISTORY " + std::to_string(section) + "]\r\n";
        for (int key = 0; key < 50; ++key) {
            chunk += "Entry" + std::to_string(key) + "=20260101120000,0000,APPROVED,12.50\r\n";
        }
    }
    {
        std::ofstream out(client, std::ios::binary | std::ios::app);
        out << "\r\n";
        while (fs::file_size(client) + chunk.size() <= kBigFile) {
            out << chunk;
            out.flush();
        }
    }
    fs::resize_file(client, fs::file_size(client)); // the last partial chunk is not needed
    age(client);
    chunk = std::string();
    std::printf("%.3f %ju\n", runMillis() / 1000,
                static_cast<std::uintmax_t>(fs::file_size(client)));
    return 0;
}

void bigRun() {
    const fs::path out =
        fs::temp_directory_path() / ("parvane-goals-" + std::to_string(::getpid()));
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                       0600);
    char self[] = "/proc/self/exe";
    char mode[] = "--big-run";
    char* argv[] = {self, mode, nullptr};
    pid_t pid = 0;
    int status = 0;
    rusage usage{};
    if (::posix_spawn(&pid, self, &actions, nullptr, argv, environ) != 0 ||
        ::wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error("the 100 MiB run failed");
    }
    ::posix_spawn_file_actions_destroy(&actions);
    double seconds = 0;
    std::uintmax_t size = 0;
    std::ifstream(out) >> seconds >> size;
    fs::remove(out);
    std::printf("bigrun_s %.2f\nbigrun_peak_ratio %.2f\n", seconds,
                static_cast<double>(usage.ru_maxrss) * 1024 / static_cast<double>(size));
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::string mode = argc > 1 ? argv[1] : "";
        if (mode == "--big-run") {
            return bigRunChild();
        }
        if (mode == "--demo-run") {
            std::printf("demorun_ms %.2f\n", demoRunMillis());
            return 0;
        }
        if (mode == "--profiles" && argc == 4) {
            std::ofstream(argv[3], std::ios::binary) << profiles(std::atoi(argv[2]));
            return 0;
        }
        std::printf("loader3000_ms %.2f\n", loaderMillis(3000));
        std::printf("loader100000_ms %.1f\n", loaderMillis(100000));
        std::printf("readregistry_ms %.4f\n", readRegistryMillis());
        std::printf("demorun_ms %.2f\n", demoRunMillis());
        std::fflush(stdout);
        bigRun();
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "parvane_goals: %s\n", e.what());
        return 1;
    }
}
