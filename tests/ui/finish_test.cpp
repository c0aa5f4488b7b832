#include "foundation/clock.h"
#include "settings/ccaddin_registry.h"
#include "support/standin_tools.h"
#include "support/temp_till.h"
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

// Clicks OK on the next message box and keeps what it said.
QObject* answerMessage(Answered& answered) {
    return whenModal([&answered](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (box == nullptr) {
            ADD_FAILURE() << "expected a message box, got " << window->objectName().toStdString();
            window->close();
            return;
        }
        answered = {box->text(), box->icon()};
        box->button(QMessageBox::Ok)->click();
    });
}

fs::path clientFolder(const TempTill& till) {
    return till.driveC() / "Program Files" / "Tessaly";
}

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
    void SetUp() override {
        plantClientFiles();
        open();
    }

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
        EXPECT_TRUE(control<QPushButton>("cmdNext")->isEnabled());
        EXPECT_FALSE(control<QPushButton>("cmdBack")->isEnabled());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
};

TEST_F(FinishTest, SemiIntegratedRunWritesTheTillAndReportsSuccess) {
    chooseMerchant("Semi Integrated", "");
    choose("cboSemiIntegratedMode", "Transaction confirmation/receipt printing on till");
    choose("cboReceiptInfo", "Receipt information lookup after dcc transaction");
    Answered answered;
    QObject* watch = answerMessage(answered);
    control<QPushButton>("cmdfInish")->click();
    delete watch;

    EXPECT_EQ(answered.text, "Configuration and installation successful.");
    EXPECT_EQ(answered.icon, QMessageBox::Information);
    expectBackOnTheWelcomePage();
    EXPECT_EQ(stored("SemiIntegrated"), "4");
    EXPECT_EQ(stored("ComPort"), "COM3");
    EXPECT_EQ(stored("ConfigFileLocation"), kClientFolder);
    EXPECT_EQ(form_->installedSettings().strComPort, "COM3") << "read again after the run";
    const std::string clientFile = readBytes(clientFolder(till_) / "cxclientconfig.ini");
    EXPECT_NE(clientFile.find("QMComPort=3"), std::string::npos);
    EXPECT_NE(readBytes(clientFolder(till_) / "TessalyConfig.log").find("Ending Tessaly"),
              std::string::npos);

    // Any change makes the wizard ready for another run.
    choose("cboAcquirer", "AIB");
    EXPECT_TRUE(finishEnabled());
}

TEST_F(FinishTest, FullyIntegratedRunOffersTheTmsCallAndStartsTheScript) {
    copyStandins(till_.root() / "host", {"wscript.exe"});
    qputenv("PARVANE_SCRIPT_HOST", (till_.root() / "host" / "wscript.exe").string().c_str());
    chooseMerchant("Fully Integrated", "Barclays");

    QObject* watch = whenModal([&](QWidget* dialog) {
        ASSERT_EQ(dialog->objectName(), "frmTms") << "no success message in this mode";
        dialog->findChild<QComboBox*>("cboTmsType")->setCurrentIndex(2);
        buttonOf(dialog, "Run TMS Call")->click();
    });
    control<QPushButton>("cmdfInish")->click();
    delete watch;
    qunsetenv("PARVANE_SCRIPT_HOST");

    expectBackOnTheWelcomePage();
    EXPECT_EQ(stored("Acquirer"), "Barclays");
    const std::string script = readBytes(clientFolder(till_) / "tmscall.vbs");
    EXPECT_NE(script.find("Const COMPORT=3"), std::string::npos);
    EXPECT_NE(script.find("CONST APPLICATION_DOWNLOADVX810=\"GENPUBT\""), std::string::npos);

    // The script is started and not waited for: wait here until its host has recorded the call.
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

TEST_F(FinishTest, CancelledTmsDialogStartsNoCall) {
    copyStandins(till_.root() / "host", {"wscript.exe"});
    qputenv("PARVANE_SCRIPT_HOST", (till_.root() / "host" / "wscript.exe").string().c_str());
    chooseMerchant("Fully Integrated", "AIB");
    QObject* watch = whenModal([](QWidget* dialog) { buttonOf(dialog, "Cancel")->click(); });
    control<QPushButton>("cmdfInish")->click();
    delete watch;
    qunsetenv("PARVANE_SCRIPT_HOST");
    EXPECT_TRUE(standinCalls(till_).empty());
    EXPECT_EQ(stored("Acquirer"), "AIB");
}

TEST_F(FinishTest, FailedRunShowsTheRunsMessageAndTheFailureLineInOneBox) {
    // A folder where the payment client's file should be: the file cannot be written.
    fs::remove(clientFolder(till_) / "cxclientconfig.ini");
    fs::create_directory(clientFolder(till_) / "cxclientconfig.ini");
    chooseMerchant("Semi Integrated", "");
    Answered answered;
    QObject* watch = answerMessage(answered);
    control<QPushButton>("cmdfInish")->click();
    delete watch;

    EXPECT_EQ(answered.icon, QMessageBox::Warning);
    EXPECT_TRUE(answered.text.startsWith("TUpdateCxClientConfig.")) << answered.text.toStdString();
    EXPECT_TRUE(answered.text.endsWith("\r\nConfiguration and installation failed."));
    expectBackOnTheWelcomePage();
    EXPECT_EQ(stored("ComPort"), "COM3") << "the registry job ran before the failure";
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
    Answered answered;
    QObject* box = answerMessage(answered);
    control<QPushButton>("cmdfInish")->click();
    delete box;

    // Two jobs of eight counted while the device manager is stopped and waited for.
    EXPECT_EQ(seen.count({"Configuring Quenmar database", 25}), 1u);
    EXPECT_EQ(answered.text, "Configuration and installation successful.");
}
