// parvane-apply as a fleet tool starts it: the built program, from the till's program folder.
#include "apply_demo_till.h"
#include "support/demo_till_template.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>

namespace fs = std::filesystem;

namespace {

std::string shellWord(const fs::path& path) {
    return "'" + path.string() + "'";
}

// The program copied into the demo till's program folder, where the wizard sits.
fs::path installProgram(const ApplyDemoTill& demo) {
    const fs::path program = demo.programFolder() / "parvane-apply";
    fs::copy_file(PARVANE_APPLY_EXE, program, fs::copy_options::overwrite_existing);
    return program;
}

} // namespace

TEST(ApplyProgram, FindsItsTillFromItsOwnFolder) {
    ApplyDemoTill demo;
    const fs::path program = installProgram(demo);
    const std::string answers = demo.answers("[ccaddin]\nAcquirer=AIB\nBaseCurrency=EUR\n"
                                             "TessalyID=AIB Live\n");
    // No PARVANE_ROOT: the till is the folder above the drive_c the program sits in.
    const CommandResult run = runShell("env -u PARVANE_ROOT " + shellWord(program) + " --answers " +
                                       shellWord(answers) + " --json");
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_NE(run.out.find("\"changed\": true"), std::string::npos);
    // Outside any till, with no PARVANE_ROOT, nothing can be read.
    EXPECT_EQ(runShell("env -u PARVANE_ROOT " + shellWord(PARVANE_APPLY_EXE) + " --answers " +
                       shellWord(answers) + " 2>&1")
                  .exitCode,
              3);
}

// The fleet example: the playbook copies the answers and runs the program; Ansible's "changed"
// comes from the program's report. Needs Debian's ansible-core (scripts/test installs it).
TEST(ApplyProgram, AnsiblePlaybookReportsNoChangeTheSecondTime) {
    if (runShell("command -v ansible-playbook").exitCode != 0) {
        GTEST_SKIP() << "ansible-playbook is not installed";
    }
    ApplyDemoTill demo;
    installProgram(demo);
    const fs::path example = repositoryRoot() / "examples" / "ansible";
    const fs::path work = demo.till.root() / "ansible";
    fs::create_directories(work);
    const std::string command =
        "cd " + shellWord(example) + " && ANSIBLE_LOCAL_TEMP=" + shellWord(work / "local") +
        " ANSIBLE_REMOTE_TEMP=" + shellWord(work / "remote") + " ANSIBLE_HOME=" + shellWord(work) +
        " ansible-playbook -i localhost, -c local apply.yml -e till_group=all" +
        " -e \"parvane_folder='" + demo.programFolder().string() + "'\"" +
        " -e answers_dest=" + shellWord(work / "answers.ini") + " 2>&1";
    const std::regex recap(R"(ok=\d+\s+changed=(\d+)\s+unreachable=0\s+failed=0)");
    std::smatch found;

    const CommandResult first = runShell(command);
    ASSERT_EQ(first.exitCode, 0) << first.out;
    ASSERT_TRUE(std::regex_search(first.out, found, recap)) << first.out;
    EXPECT_EQ(found[1], "2"); // the copy and the configuration
    const CommandResult second = runShell(command);
    ASSERT_EQ(second.exitCode, 0) << second.out;
    ASSERT_TRUE(std::regex_search(second.out, found, recap)) << second.out;
    EXPECT_EQ(found[1], "0") << second.out;
}
