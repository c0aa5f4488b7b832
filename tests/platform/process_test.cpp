#include "platform/platform.h"
#include "support/temp_till.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

// A stand-in tool: records each argument in brackets and where its output goes, then, after a
// pause, "done", so that the record is complete only once the tool has ended.
const char* const kRecorder = "#!/bin/sh\n"
                              "out=\"$(dirname \"$0\")/args.txt\"\n"
                              "for a in \"$@\"; do printf '[%s]\\n' \"$a\" >> \"$out\"; done\n"
                              "echo \"out=$(readlink /proc/$$/fd/1)\" >> \"$out\"\n"
                              "sleep 0.3\n"
                              "echo done >> \"$out\"\n";

fs::path plantTool(TempTill& till, const std::string& relativePath, const std::string& text,
                   fs::perms perms = fs::perms::owner_all) {
    const fs::path tool = till.plant(relativePath, text);
    fs::permissions(tool, perms);
    return tool;
}

// Runs a command line to its end; the start's error text, or "ran".
std::string run(const std::string& commandLine) {
    try {
        platform::waitForProcess(platform::startHidden(commandLine));
        return "ran";
    } catch (const std::runtime_error& e) {
        return e.what();
    }
}

std::string awaitRecord(const fs::path& file) {
    for (int i = 0; i < 100 && !readBytes(file).ends_with("done\n"); ++i) {
        std::this_thread::sleep_for(50ms);
    }
    return readBytes(file);
}

} // namespace

TEST(StartHidden, FindsTheProgramAsWindowsDoesPassesItsArgumentsWaitsAndNamesItOnFailure) {
    TempTill till;
    const fs::path tool = plantTool(till, "Stand In/7z.exe", kRecorder);
    const fs::path record = tool.parent_path() / "args.txt";

    // ".exe" is tried when the name has no extension; names match whatever their case.
    const std::uint32_t pid = platform::startHidden(
        R"("c:\stand in\7Z" x "c:\tessaly\lumora\\" "" "two words" a\\"b c")");
    platform::waitForProcess(pid);
    EXPECT_EQ(readBytes(record),
              "[x]\n[c:\\tessaly\\lumora\\]\n[]\n[two words]\n[a\\b c]\nout=/dev/null\ndone\n");

    // Waiting again, or on ids that name no process, returns at once.
    auto start = std::chrono::steady_clock::now();
    for (std::uint32_t id : {pid, 0u, static_cast<std::uint32_t>(INT_MAX), UINT32_MAX}) {
        platform::waitForProcess(id);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);

    // A live process that is not our child (the shell's background job) is waited for.
    FILE* shell = ::popen("sleep 0.6 >/dev/null & echo $!", "r");
    ASSERT_NE(shell, nullptr);
    unsigned grandchild = 0;
    ASSERT_EQ(std::fscanf(shell, "%u", &grandchild), 1);
    ::pclose(shell);
    start = std::chrono::steady_clock::now();
    platform::waitForProcess(grandchild);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 400ms);

    // A bare name is looked for in the current folder, and along PATH.
    fs::remove(record);
    const fs::path previous = fs::current_path();
    fs::current_path(tool.parent_path());
    EXPECT_EQ(run("7z two"), "ran");
    fs::current_path(previous);
    EXPECT_EQ(readBytes(record), "[two]\nout=/dev/null\ndone\n");
    EXPECT_EQ(run("true"), "ran");

    // A program that cannot run is a failed start naming it.
    EXPECT_EQ(run(R"(c:\tools\7z.exe x -y)"),
              "cannot start c:\\tools\\7z.exe: No such file or directory");
    plantTool(till, "tools/locked.exe", kRecorder, fs::perms::owner_read);
    EXPECT_EQ(run(R"(c:\tools\locked.exe)"),
              "cannot start c:\\tools\\locked.exe: Permission denied");
    plantTool(till, "tools/garbage.exe", "MZ not a program\n");
    EXPECT_EQ(run(R"(c:\tools\garbage.exe)"),
              "cannot start c:\\tools\\garbage.exe: Exec format error");
}

TEST(ShellOpen, HandsTheFileToTheScriptHostWithoutWaitingOrLeavingAZombie) {
    TempTill till;
    const fs::path host = plantTool(till, "host bin/cscript", kRecorder);
    const fs::path script = till.plant("Tessaly/tmscall.vbs", "' script\r\n");

    setenv("PARVANE_SCRIPT_HOST", host.c_str(), 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(platform::shellOpen("c:\\tessaly\\TMSCALL.VBS", "2"), 42);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 250ms);
    EXPECT_TRUE(::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD) << "a child is left";
    EXPECT_EQ(awaitRecord(host.parent_path() / "args.txt"),
              "[" + script.string() + "]\n[2]\nout=/dev/null\ndone\n");

    EXPECT_EQ(platform::shellOpen("c:\\tessaly\\missing.vbs"), 2);
    setenv("PARVANE_SCRIPT_HOST", (host.string() + "-gone").c_str(), 1);
    EXPECT_LE(platform::shellOpen("c:\\tessaly\\tmscall.vbs"), 32);
    unsetenv("PARVANE_SCRIPT_HOST");
    EXPECT_EQ(platform::shellOpen("c:\\tessaly\\tmscall.vbs"), 31);
}
