#include "ui/wizard_fixture.h"

#include "foundation/registry.h"
#include "settings/settings_table.h"
#include "support/demo_till_template.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

// Under LeakSanitizer: fontconfig keeps its font caches for the life of the process.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

namespace {
constexpr const char* kAddinKey = "SOFTWARE\\Tessaly\\ccaddin\\";

void ensureApplication() {
    static int argc = 1;
    static char name[] = "ui_tests";
    static char* argv[] = {name, nullptr};
    if (QApplication::instance() == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        new QApplication(argc, argv);
    }
}
} // namespace

WizardTest::WizardTest() {
    ensureApplication();
    fs::create_directories(clientFolder());
    fs::copy(repositoryRoot() / "demo" / "till" / "drive_c" / "Program Files" / "Tessaly",
             clientFolder(), fs::copy_options::recursive);
    plantSettings({{"AppendLineFeed", "0"}});
}

void WizardTest::plantSettings(const std::map<std::string, std::string>& values) {
    TRegistry registry;
    for (const auto& [name, value] : values) {
        registry.CreateKeyAndSaveValue(kAddinKey, name, value);
    }
}

std::string WizardTest::stored(const std::string& valueName) const {
    TRegistry registry;
    std::string value;
    registry.GetRegistryValue(kAddinKey, valueName, value);
    return value;
}

void WizardTest::expectSaved(const std::map<std::string, std::string>& texts) {
    form_->SaveSettings();
    const auto& table = settingsTable();
    for (const auto& [name, text] : texts) {
        const auto setting = std::find_if(
            table.begin(), table.end(), [&](const auto& entry) { return entry.valueName == name; });
        ASSERT_NE(setting, table.end()) << name;
        EXPECT_EQ(storedText(*form_->newSettings(), *setting), text) << name;
    }
}

fs::path WizardTest::clientFolder() const {
    return till_.driveC() / "Program Files" / "Tessaly";
}

frmTessalyConfig& WizardTest::open() {
    form_ = std::make_unique<frmTessalyConfig>(kClientFolder);
    return *form_;
}

void WizardTest::choose(const char* name, const QString& text) {
    QComboBox* box = combo(name);
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << name << ": " << text.toStdString();
    box->setCurrentIndex(index);
}

bool WizardTest::finishEnabled() const {
    return form_->findChild<QWidget*>("cmdfInish")->isEnabled();
}

QObject* whenModal(std::function<void(QWidget*)> answer) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer] {
        QWidget* window = QApplication::activeModalWidget();
        if (window != nullptr && window->isVisible()) {
            poll->stop();
            poll->deleteLater();
            answer(window);
        }
    });
    poll->start(10);
    return poll;
}

QAbstractButton* buttonOf(QWidget* window, const QString& text) {
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        if (button->text().remove('&') == text) {
            return button;
        }
    }
    return nullptr;
}
