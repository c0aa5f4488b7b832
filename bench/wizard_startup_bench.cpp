// The wizard's start-up on the demo till, offscreen: from starting its program to its first page
// painted (the program ends there), Qt's own start included.
#include "bench_till.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace {

#ifdef PARVANE_FIRST_PAGE
void BM_WizardStartup_FirstPageOffscreen(benchmark::State& state) {
    BenchTill till;
    till.becomeDemo();
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    char program[] = PARVANE_FIRST_PAGE;
    char folder[] = "C:\\Program Files\\Tessaly\\";
    char* argv[] = {program, folder, nullptr};
    // Qt's notes about the offscreen platform would drown the report.
    posix_spawn_file_actions_t quiet;
    ::posix_spawn_file_actions_init(&quiet);
    ::posix_spawn_file_actions_addopen(&quiet, 2, "/dev/null", O_WRONLY, 0);
    for (auto _ : state) {
        pid_t pid = 0;
        int status = 0;
        if (::posix_spawn(&pid, program, &quiet, nullptr, argv, environ) != 0 ||
            ::waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError("the wizard did not start and end cleanly");
            break;
        }
    }
    ::posix_spawn_file_actions_destroy(&quiet);
}
BENCHMARK(BM_WizardStartup_FirstPageOffscreen)->Unit(benchmark::kMillisecond);
#endif

} // namespace
