// The Qt face binds every control of the wizard's table to a widget of that name and kind, shows
// what the wizard sets, and hands the user's actions to the wizard; the rules themselves are
// tested on the toolkit-free wizard.
#include "foundation/registry.h"
#include "support/demo_till_template.h"
#include "support/temp_till.h"
#include "ui/qt/frm_tessaly_config.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <type_traits>

namespace fs = std::filesystem;

namespace {

class QtFaceTest : public ::testing::Test {
protected:
    QtFaceTest() {
        static int argc = 1;
        static char name[] = "ui_tests";
        static char* argv[] = {name, nullptr};
        if (QApplication::instance() == nullptr) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            new QApplication(argc, argv);
        }
        const fs::path client = till_.driveC() / "Program Files" / "Tessaly";
        fs::create_directories(client);
        fs::copy(repositoryRoot() / "demo" / "till" / "drive_c" / "Program Files" / "Tessaly",
                 client, fs::copy_options::recursive);
        TRegistry().CreateKeyAndSaveValue("SOFTWARE\\Tessaly\\ccaddin\\", "PrinterType", "2");
        window_ = std::make_unique<frmTessalyConfig>("C:\\Program Files\\Tessaly\\");
    }

    template <typename T> T* widget(const char* name) const {
        T* found = window_->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    // The user's choice of an entry, as the list reports it.
    void choose(const char* name, const QString& text) const {
        auto* box = widget<QComboBox>(name);
        box->setCurrentIndex(box->findText(text));
        emit box->activated(box->currentIndex());
    }

    TempTill till_;
    std::unique_ptr<frmTessalyConfig> window_;
};

// Runs `answer` on the next modal window once it shows.
void whenModal(std::function<void(QWidget*)> answer) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer] {
        if (QWidget* window = QApplication::activeModalWidget(); window && window->isVisible()) {
            poll->stop();
            poll->deleteLater();
            answer(window);
        }
    });
    poll->start(10);
}

QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// The widget of a control, by its name and its index in a control array.
QWidget* widgetOf(QWidget* window, const wizard::ControlInfo& info) {
    for (QWidget* found : window->findChildren<QWidget*>(qt(info.name))) {
        if (info.index < 0 || found->property("index").toInt() == info.index) {
            return found;
        }
    }
    return nullptr;
}

// The widget shows what the control says, and a change made through the control shows on the
// widget without raising the control's event.
template <typename Kind>
void expectBound(const wizard::ControlInfo& info, Kind& control, QWidget* w) {
    const std::string name(info.name);
    ASSERT_NE(w, nullptr) << name;
    EXPECT_EQ(control.Enabled(), w->isEnabled()) << name;
    control.SetEnabled(!w->isEnabled());
    EXPECT_EQ(control.Enabled(), w->isEnabled()) << name;
    control.SetEnabled(!control.Enabled());
    if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
        auto* box = qobject_cast<QComboBox*>(w);
        ASSERT_NE(box, nullptr) << name;
        EXPECT_EQ(control.ListCount(), box->count()) << name;
        bool raised = false;
        control.Click = [&raised] { raised = true; };
        control.AddItem("extra");
        control.SetListIndex(control.ListCount() - 1);
        EXPECT_EQ(box->currentText(), "extra") << name;
        EXPECT_FALSE(raised) << name << ": a change in code raises no event";
    } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
        auto* box = qobject_cast<QCheckBox*>(w);
        ASSERT_NE(box, nullptr) << name;
        EXPECT_EQ(box->text(), qt(info.caption));
        control.SetValue(!box->isChecked());
        EXPECT_EQ(control.Value(), box->isChecked()) << name;
    } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
        auto* text = qobject_cast<QLineEdit*>(w);
        ASSERT_NE(text, nullptr) << name;
        control.SetText("\xE9t\xE9");
        EXPECT_EQ(text->text(), QString::fromUtf8("\xC3\xA9t\xC3\xA9")) << name;
    } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
        auto* button = qobject_cast<QPushButton*>(w);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_EQ(button->text(), qt(info.caption));
    } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
        auto* label = qobject_cast<QLabel*>(w);
        ASSERT_NE(label, nullptr) << name;
        EXPECT_EQ(control.Caption(), label->text().toStdString()) << name;
    } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
        EXPECT_EQ(control.Visible(), !w->isHidden()) << name << info.index;
    } else if constexpr (std::is_same_v<Kind, wizard::ProgressBar>) {
        control.SetValue(40);
        EXPECT_EQ(qobject_cast<QProgressBar*>(w)->value(), 40);
    }
}

} // namespace

TEST_F(QtFaceTest, EveryControlOfTheTableIsAWidgetOfItsNameAndKindBoundToTheWizard) {
    wizard::WizardControls controls = window_->controls();
    int bound = 0;
    wizard::forEachControl(controls, [&](const wizard::ControlInfo& info, auto*& control) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(control)>>;
        if constexpr (!std::is_same_v<Kind, wizard::Timer>) {
            expectBound(info, *control, widgetOf(window_.get(), info));
            ++bound;
        }
    });
    EXPECT_EQ(bound, 85);
    window_->resize(window_->sizeHint());
    EXPECT_LE(window_->width(), 800) << "fits an 800x600 screen";
    EXPECT_LE(window_->height(), 600);
}

TEST_F(QtFaceTest, TheUsersChoicesReachTheWizardAndItsDialogsAndMessagesShow) {
    choose("cboConfigMode", "Semi Integrated");
    choose("cboCurrency", "GBP");
    choose("cboDevice", "VeriFone VX820");
    choose("cboPort", "COM5");
    auto* merchant = widget<QLineEdit>("txtCxMerchant");
    merchant->setText("M-7");
    emit merchant->textEdited("M-7");
    widget<QCheckBox>("chkCashback")->click();
    EXPECT_TRUE(widget<QComboBox>("cboCashBackEntry")->isEnabled());
    widget<QPushButton>("cmdNext")->click();
    EXPECT_EQ(window_->form().CurrentPage(), 1);

    // The printer dialog's widgets, bound and answered like the window's.
    whenModal([](QWidget* dialog) {
        EXPECT_EQ(dialog->objectName(), "frmPTSerialConfig");
        EXPECT_EQ(dialog->findChild<QComboBox*>("cboFlowControl")->currentText(), "Hardware");
        auto* baud = dialog->findChild<QComboBox*>("cboBaudRate");
        baud->setEditText("4800");
        emit baud->lineEdit()->textEdited("4800");
        dialog->findChild<QPushButton*>("cmdOK")->click();
    });
    widget<QPushButton>("cmdComPort")->click();
    EXPECT_TRUE(widget<QLabel>("lblPrinterSerial")->text().contains("4800 baud"));

    ASSERT_TRUE(widget<QPushButton>("cmdfInish")->isEnabled());
    QString said;
    whenModal([&said](QWidget* window) {
        auto* box = qobject_cast<QMessageBox*>(window);
        ASSERT_NE(box, nullptr);
        said = box->text();
        EXPECT_EQ(box->icon(), QMessageBox::Information);
        box->button(QMessageBox::Ok)->click();
    });
    widget<QPushButton>("cmdfInish")->click();
    EXPECT_EQ(said, "Configuration and installation successful.");
    std::string stored;
    TRegistry().GetRegistryValue("SOFTWARE\\Tessaly\\ccaddin\\", "CorvixMerchantId", stored);
    EXPECT_EQ(stored, "M-7");
    // The status timer goes on after the run and shows its last count: six jobs of eight.
    QElapsedTimer waited;
    waited.start();
    while (widget<QProgressBar>("ProgressBar1")->value() != 75 && waited.elapsed() < 2000) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    EXPECT_EQ(widget<QProgressBar>("ProgressBar1")->value(), 75);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    window_->show();
    widget<QPushButton>("cmdClose")->click();
    EXPECT_FALSE(window_->isVisible());
}
