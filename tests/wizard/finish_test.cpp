#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "support/child_process.h"
#include "support/scoped_environment.h"
#include "support/standin_tools.h"
#include "support/wine.h"
#include "wizard/frm_tms.h"
#include "wizard/wizard_fixture.h"

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>
#ifndef _WIN32
#include <unistd.h>
#endif

namespace fs = std::filesystem;
using wizard::MessageIcon;

class FinishTest : public WizardTest {
protected:
    void SetUp() override { open(); }

    // A complete merchant page, leaving the mode to the test.
    void chooseMerchant(const std::string& mode, const std::string& acquirer) {
        combo("cboConfigMode").choose(mode);
        combo("cboAcquirer").choose(acquirer);
        combo("cboCurrency").choose("GBP");
        combo("cboDevice").choose("VeriFone VX810");
        combo("cboPort").choose("COM3");
        ASSERT_TRUE(finishEnabled());
    }

    void expectBackOnTheWelcomePage() {
        EXPECT_EQ(form_->CurrentPage(), 0);
        EXPECT_TRUE(button("cmdClose").Enabled());
        EXPECT_FALSE(finishEnabled());
        EXPECT_EQ(host_.pointer_, wizard::MousePointer::Default);
    }

    // Presses Finish and returns the one message the run ended with.
    FakeHost::Message finish() {
        host_.messages.clear();
        button("cmdfInish").press();
        EXPECT_EQ(host_.messages.size(), 1u);
        return host_.messages.empty() ? FakeHost::Message{} : host_.messages.back();
    }
};

TEST_F(FinishTest, SemiIntegratedRunReportsSuccessOrItsFailureInOneBox) {
    chooseMerchant("Semi Integrated", "");
    combo("cboSemiIntegratedMode").choose("Transaction confirmation/receipt printing on till");
    combo("cboReceiptInfo").choose("Receipt information lookup after dcc transaction");
    // While the box shows, the run is over and the wizard has gone back to the welcome page.
    host_.whileMessageShows = [this](const FakeHost::Message&) {
        EXPECT_EQ(form_->CurrentPage(), 0);
        EXPECT_FALSE(button("cmdClose").Enabled()) << "Close comes back once the box is closed";
    };
    FakeHost::Message said = finish();
    EXPECT_EQ(said.text, "Configuration and installation successful.");
    EXPECT_EQ(said.icon, MessageIcon::Information);
    EXPECT_EQ(said.title, "Corvix Parvane Configuration Utility ");
    expectBackOnTheWelcomePage();
    EXPECT_EQ(addinValue("SemiIntegrated"), "4");
    EXPECT_EQ(addinValue("ConfigFileLocation"), kClientFolder);
    EXPECT_EQ(form_->InstalledSettings().strComPort, "COM3") << "read again after the run";
    const fs::path clientFile = clientFolder() / "cxclientconfig.ini";
    EXPECT_NE(readBytes(clientFile).find("QMComPort=3"), std::string::npos);

    // Any change makes the wizard ready for another run, here one that cannot write the payment
    // client's file: a folder stands in its place.
    host_.whileMessageShows = {};
    fs::remove(clientFile);
    fs::create_directory(clientFile);
    combo("cboPort").choose("COM4");
    said = finish();
    EXPECT_EQ(said.icon, MessageIcon::Exclamation);
    EXPECT_EQ(said.text.rfind("TUpdateCxClientConfig.", 0), 0u) << said.text;
    EXPECT_TRUE(said.text.ends_with("\r\nConfiguration and installation failed.")) << said.text;
    expectBackOnTheWelcomePage();
    EXPECT_EQ(addinValue("ComPort"), "COM4") << "the registry job ran before the failure";
}

TEST_F(FinishTest, FullyIntegratedRunOffersTheTmsCallAndStartsTheScriptUnlessCancelled) {
    chooseMerchant("Fully Integrated", "AIB");
    host_.answerTmsCall = [](FakeForm<wizard::TmsControls>& dialog) {
        EXPECT_EQ(dialog.combo("cboTmsType").ListIndex(), 0);
        dialog.combo("cboTmsType").chooseIndex(1);
        EXPECT_EQ(dialog.label("lblDesc").Caption().rfind("If there is an application", 0), 0u);
        dialog.button("cmdCancel").press();
    };
    button("cmdfInish").press();
    EXPECT_TRUE(host_.messages.empty()) << "no success message in this mode";
    EXPECT_EQ(host_.dialogsShown, std::vector<std::string>{"frmTms"});
    EXPECT_EQ(wizard::TmsTypeSelected, -1);
    EXPECT_EQ(addinValue("Acquirer"), "AIB");
    const std::string script = readBytes(clientFolder() / "tmscall.vbs");
    EXPECT_NE(script.find("Const COMPORT=3"), std::string::npos);
    EXPECT_NE(script.find("CONST APPLICATION_DOWNLOADVX810=\"GENPUAT\""), std::string::npos);
    expectBackOnTheWelcomePage();

#ifndef _WIN32
    // Run: the script host is handed the script and the chosen type, and not waited for.
    copyStandins(till_.root() / "host", {"wscript.exe"});
    ScopedEnvironment host("PARVANE_SCRIPT_HOST", (till_.root() / "host" / "wscript.exe").string());
    combo("cboAcquirer").choose("Barclays");
    host_.answerTmsCall = [](FakeForm<wizard::TmsControls>& dialog) {
        dialog.combo("cboTmsType").chooseIndex(2);
        dialog.button("cmdTms").press();
    };
    button("cmdfInish").press();
    EXPECT_EQ(wizard::TmsTypeSelected, 2);
    std::vector<std::string> calls;
    for (int wait = 0; wait < 500 && (calls = standinCalls(till_)).empty(); ++wait) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_NE(calls[0].find("tmscall.vbs"), std::string::npos) << calls[0];
    EXPECT_NE(calls[0].find("[2]"), std::string::npos) << calls[0];
#endif
}

TEST_F(FinishTest, TheProgressPageFollowsTheRunWhileItWaitsForTheDeviceManager) {
    chooseMerchant("Semi Integrated", "");
    combo("cboDevice").choose("VeriFone SC5000");
    std::set<std::pair<std::string, int>> seen;
    window_.timer().Tick = [this, &seen, tick = window_.timer().Tick] {
        tick();
        seen.insert({window_.label("capstatus").Caption(),
                     window_.get<FakeProgressBar>("ProgressBar1").Value()});
        EXPECT_EQ(host_.pointer_, wizard::MousePointer::Hourglass);
        EXPECT_FALSE(button("cmdClose").Enabled());
        EXPECT_FALSE(form_->QueryUnload()) << "no closing in the middle of a run";
    };
    EXPECT_EQ(finish().text, "Configuration and installation successful.");
    // Two jobs of eight counted while the device manager is stopped and waited for.
    EXPECT_EQ(seen.count({"Configuring Quenmar database", 25}), 1u);
    EXPECT_EQ(window_.timer().Interval(), 100);
    EXPECT_TRUE(window_.timer().Enabled()) << "the timer goes on reading the finished run";
    EXPECT_TRUE(form_->QueryUnload());
}

TEST(WizardProgress, TheBarMovesOnlyWithJobsCountedAndNotPastItsEnd) {
    FakeProgressBar bar;
    bar.SetValue(40);
    const struct {
        int done, total, value;
    } steps[] = {{3, 0, 40}, {1, 4, 25}, {5, 4, 25}, {4, 4, 100}, {2, -1, 100}};
    for (const auto& step : steps) {
        wizard::frmTessalyConfig::SetProgress(bar, 0, 100, step.done, step.total);
        EXPECT_EQ(bar.Value(), step.value) << step.done << " of " << step.total;
        EXPECT_EQ(bar.Min(), 0);
        EXPECT_EQ(bar.Max(), 100);
    }
}

#ifndef _WIN32
// Another wizard or parvane-apply configuring the till keeps Finish on its page, saving nothing.
TEST_F(FinishTest, FinishWaitsItsTurnWhileAnotherRunHoldsTheTill) {
    chooseMerchant("Semi Integrated", "");
    const int page = form_->CurrentPage();
    ChildProcess other = anotherRunHoldingTheTill();
    ASSERT_TRUE(other.waitReady());
    const FakeHost::Message said = finish();
    EXPECT_TRUE(said.text.starts_with("Another configuration run is in progress")) << said.text;
    EXPECT_EQ(form_->CurrentPage(), page);
    EXPECT_TRUE(finishEnabled());
    EXPECT_EQ(addinValue("SemiIntegrated"), "<missing>");
    other.kill();
    EXPECT_EQ(finish().text, "Configuration and installation successful.");
}
#endif

// What the run asked to write but the till does not hold (here the ZonTalk profiles, whose
// refused writes the run passes over) is logged and listed after the run's own message.
TEST_F(FinishTest, WritesThatDidNotHoldAreLoggedAndListedAfterTheRunsOwnMessage) {
    if (runningUnderWine()) {
        GTEST_SKIP() << "Wine keeps the read-only mark as host permissions, which root ignores";
    }
    chooseMerchant("Semi Integrated", "");
    fs::permissions(clientFolder() / "zontalkclient.ini",
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    host_.messages.clear();
    button("cmdfInish").press();
    ASSERT_EQ(host_.messages.size(), 2u);
    EXPECT_EQ(host_.messages[0].text, "Configuration and installation successful.");
    const FakeHost::Message& warning = host_.messages[1];
    EXPECT_TRUE(warning.text.starts_with("Read back after the run, these settings did not hold:"))
        << warning.text;
    EXPECT_NE(warning.text.find("zontalkclient.ini ["), std::string::npos) << warning.text;
    EXPECT_EQ(warning.icon, MessageIcon::Exclamation);
    const Lines log = logMessages(clientFolder() / "TessalyConfig.log");
    EXPECT_TRUE(log.back().starts_with("Read back after the run, this did not hold: "))
        << log.back();
}
