// A full disk, a read-only payment-client file and a read-only folder: the write or the run
// fails, says so, and the file it could not write is byte for byte what it was.
#include "configure/configure_tessaly.h"
#include "fault_till.h"
#include "foundation/ini_file.h"
#include "settings/ccaddin_registry.h"
#include "support/child_process.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// The payment-client file's first write is the operating mode; its refusal is handed up as the
// run's message.
const char* const kClientFileMessage =
    "TUpdateCxClientConfig.UpdateOperatingModeSection() Failed - ";

// In a child: no file may grow past `bytes`; a write beyond fails with EFBIG instead of killing.
void limitFileSize(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

// Runs the configuration on the demo till with a few changes that touch every job.
int configureDemo(const std::filesystem::path& messageFile) {
    TCcAddinRegistry installed;
    installed.ReadRegistry();
    TCcAddinRegistry chosen = installed;
    chosen.strChipDeviceName = "VeriFone VX820";
    chosen.strComPort = "COM4";
    chosen.strCorvixMerchantId = "55555";
    TcOnfigureTessaly run;
    const int result = run.Configure(installed, chosen, kProgramFolder);
    std::ofstream(messageFile) << run.strErrorMessage;
    return result;
}

bool noTemporaryLeft(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().string().find(".new-") != std::string::npos) {
            return false;
        }
    }
    return true;
}

// The demo till before a run that must fail on the payment client's file.
struct FailingRun {
    FakeClock clock{2026, 3, 14};
    TempTill till;
    fs::path client;
    std::string original;
    fs::path message;

    FailingRun() { plant(); }
    void plant() {
        plantDemoTill(till);
        client = clientFile(till, "cxclientconfig.ini");
        original = readBytes(client);
        message = till.root() / "message.txt";
    }
    // The run failed with the client file's message and left the file and its folder as they were.
    void expectFailedAndKept(int result) const {
        EXPECT_EQ(result, 1);
        EXPECT_TRUE(readBytes(message).starts_with(kClientFileMessage)) << readBytes(message);
        EXPECT_EQ(readBytes(client), original);
        EXPECT_TRUE(noTemporaryLeft(client.parent_path()));
    }
};

} // namespace

TEST(FullDisk, AnIniWriteThatDoesNotFitFailsAndLeavesTheFileAndFolderAsTheyWere) {
    TempTill till;
    std::string text = "[GENERAL]\r\n";
    for (int i = 0; i < 2000; ++i) {
        text += "Key" + std::to_string(i) + "=value\r\n";
    }
    const fs::path file = till.plant("disk/full.ini", text);
    ChildProcess writer([&] {
        limitFileSize(text.size() + 100);
        TTLIniFile ini;
        ini.strIniFileDir = "c:\\disk\\";
        ini.strIniFileName = "full.ini";
        return ini.SetINIString("GENERAL", "Key1000", std::string(500, 'x')) == 0 ? 0 : 1;
    });
    EXPECT_EQ(writer.wait(), 0) << "the write was not refused";
    EXPECT_EQ(readBytes(file), text);
    EXPECT_TRUE(noTemporaryLeft(file.parent_path()));
}

TEST(FullDisk, ARunThatCannotWriteThePaymentClientFileFailsWithItsJobsMessage) {
    FailingRun t;
    // Room for the registry's and the key file's writes, not for a new payment-client file.
    ChildProcess run([&] {
        limitFileSize(t.original.size() - 1);
        return configureDemo(t.message);
    });
    t.expectFailedAndKept(run.wait());
}

TEST(ReadOnly, AReadOnlyPaymentClientFileOrFolderFailsTheRunAndKeepsTheFile) {
    FailingRun t;
    fs::permissions(t.client,
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    t.expectFailedAndKept(configureDemo(t.message));

    // A read-only folder. Root may write anywhere, so the run is made by an ordinary user.
    t.plant();
    const fs::path folder = t.client.parent_path();
    ChildProcess run([&] {
        if (::geteuid() == 0) {
            const uid_t nobody = 65534;
            for (const auto& entry : fs::recursive_directory_iterator(t.till.root())) {
                (void)::lchown(entry.path().c_str(), nobody, nobody);
            }
            (void)::chown(t.till.root().c_str(), nobody, nobody);
            fs::permissions(
                folder, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                fs::perm_options::remove);
            if (::setgid(nobody) != 0 || ::setuid(nobody) != 0) {
                return 90;
            }
        } else {
            fs::permissions(folder, fs::perms::owner_write, fs::perm_options::remove);
        }
        // The log cannot be written either; the run goes on without it, as it always has.
        return configureDemo(t.till.root() / "message.txt");
    });
    const int result = run.wait();
    fs::permissions(folder, fs::perms::owner_all);
    t.expectFailedAndKept(result);
}
