#include "foundation/clock.h"
#include "settings/ccaddin_registry.h"
#include "support/standin_tools.h"
#include "ui/wizard_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <set>
#include <thread>

namespace fs = std::filesystem;

namespace {
struct Answered {
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

// Real time whose waits pass twenty times faster: the ten-second pause of an SC5000 change takes
// half a second, in which the wizard's 100 ms timer still ticks for real.
class HurriedClock final : public Clock {
public:
    HurriedClock() { installClock(this); }
    ~HurriedClock() override { installClock(nullptr); }
    std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::now() + ahead_;
    }
    void sleepFor(std::chrono::milliseconds duration) override {
        std::this_thread::sleep_for(duration / 20);
        ahead_ += duration - duration / 20;
    }

private:
    std::chrono::milliseconds ahead_{0};
};
} // namespace

class FinishTest : public WizardTest {
protected:
    void SetUp() override { open(); }

    // A complete merchant page, leaving the mode to the test.
    void chooseMerchant(const QString& mode, const QString& acquirer) {
        choose("cboConfigMode", mode);
        choose("cboAcquirer", acquirer);
        choose("cboCurrency", "GBP");
        choose("cboDevice", "VeriFone VX810");
        choose("cboPort", "COM3");
        ASSERT_TRUE(finishEnabled());
    }

    void expectBackOnTheWelcomePage() {
        EXPECT_EQ(form_->currentPage(), 0);
        EXPECT_TRUE(control<QPushButton>("cmdClose")->isEnabled());
        EXPECT_FALSE(control<QPushButton>("cmdfInish")->isEnabled());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }

    // Presses Finish, clicks OK on the message box the run ends with and keeps what it said.
    Answered finish() {
        Answered answered;
        QObject* watch = whenModal([&answered](QWidget* window) {
            auto* box = qobject_cast<QMessageBox*>(window);
            if (box == nullptr) {
                ADD_FAILURE() << "expected a message box, got "
                              << window->objectName().toStdString();
                window->close();
                return;
            }
            answered = {box->text(), box->icon()};
            box->button(QMessageBox::Ok)->click();
        });
        control<QPushButton>("cmdfInish")->click();
        delete watch;
        return answered;
    }
};

TEST_F(FinishTest, SemiIntegratedRunReportsSuccessOrItsFailureInOneBox) {
    chooseMerchant("Semi Integrated", "");
    choose("cboSemiIntegratedMode", "Transaction confirmation/receipt printing on till");
    choose("cboReceiptInfo", "Receipt information lookup after dcc transaction");
    Answered answered = finish();
    EXPECT_EQ(answered.text, "Configuration and installation successful.");
    EXPECT_EQ(answered.icon, QMessageBox::Information);
    expectBackOnTheWelcomePage();
    EXPECT_EQ(stored("SemiIntegrated"), "4");
    EXPECT_EQ(stored("ConfigFileLocation"), kClientFolder);
    EXPECT_EQ(form_->installedSettings().strComPort, "COM3") << "read again after the run";
    const fs::path clientFile = clientFolder() / "cxclientconfig.ini";
    EXPECT_NE(readBytes(clientFile).find("QMComPort=3"), std::string::npos);

    // Any change makes the wizard ready for another run, here one that cannot write the payment
    // client's file: a folder stands in its place.
    fs::remove(clientFile);
    fs::create_directory(clientFile);
    choose("cboPort", "COM4");
    answered = finish();
    EXPECT_EQ(answered.icon, QMessageBox::Warning);
    EXPECT_TRUE(answered.text.startsWith("TUpdateCxClientConfig.")) << answered.text.toStdString();
    EXPECT_TRUE(answered.text.endsWith("\r\nConfiguration and installation failed."));
    expectBackOnTheWelcomePage();
    EXPECT_EQ(stored("ComPort"), "COM4") << "the registry job ran before the failure";
}

TEST_F(FinishTest, FullyIntegratedRunOffersTheTmsCallAndStartsTheScriptUnlessCancelled) {
    copyStandins(till_.root() / "host", {"wscript.exe"});
    qputenv("PARVANE_SCRIPT_HOST", (till_.root() / "host" / "wscript.exe").string().c_str());
    chooseMerchant("Fully Integrated", "AIB");
    QObject* watch = whenModal([](QWidget* dialog) { buttonOf(dialog, "Cancel")->click(); });
    control<QPushButton>("cmdfInish")->click();
    delete watch;
    EXPECT_EQ(stored("Acquirer"), "AIB");

    choose("cboAcquirer", "Barclays");
    watch = whenModal([&](QWidget* dialog) {
        ASSERT_EQ(dialog->objectName(), "frmTms") << "no success message in this mode";
        dialog->findChild<QComboBox*>("cboTmsType")->setCurrentIndex(2);
        buttonOf(dialog, "Run TMS Call")->click();
    });
    control<QPushButton>("cmdfInish")->click();
    delete watch;
    qunsetenv("PARVANE_SCRIPT_HOST");

    expectBackOnTheWelcomePage();
    const std::string script = readBytes(clientFolder() / "tmscall.vbs");
    EXPECT_NE(script.find("Const COMPORT=3"), std::string::npos);
    EXPECT_NE(script.find("CONST APPLICATION_DOWNLOADVX810=\"GENPUBT\""), std::string::npos);

    // The script is started and not waited for: wait here until its host has recorded the call,
    // the only one: the cancelled dialog started none.
    QElapsedTimer clock;
    clock.start();
    std::vector<std::string> calls;
    while ((calls = standinCalls(till_)).empty() && clock.elapsed() < 10000) {
        QApplication::processEvents();
    }
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_NE(calls[0].find("tmscall.vbs"), std::string::npos) << calls[0];
    EXPECT_NE(calls[0].find("[2]"), std::string::npos) << calls[0];
}

TEST_F(FinishTest, TheProgressPageFollowsTheRunWhileItWaitsForTheDeviceManager) {
    chooseMerchant("Semi Integrated", "");
    choose("cboDevice", "VeriFone SC5000");
    auto* status = control<QLabel>("capstatus");
    auto* bar = control<QProgressBar>("ProgressBar1");
    std::set<std::pair<std::string, int>> seen;
    QTimer watch;
    watch.setInterval(10);
    QObject::connect(&watch, &QTimer::timeout, [&] {
        seen.insert({status->text().toStdString(), bar->value()});
    });
    watch.start();
    HurriedClock clock;
    const Answered answered = finish();

    // Two jobs of eight counted while the device manager is stopped and waited for.
    EXPECT_EQ(seen.count({"Configuring Quenmar database", 25}), 1u);
    EXPECT_EQ(answered.text, "Configuration and installation successful.");
}
