#include "wizard/wizard_fixture.h"

#include "foundation/event_pump.h"
#include "foundation/registry.h"
#include "settings/settings_table.h"
#include "support/demo_till_template.h"
#include "support/till_readers.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {
const std::string kAddinKey(kCcAddinKeyPath);
} // namespace

WizardTest::WizardTest() {
    fs::create_directories(clientFolder());
    fs::copy(repositoryRoot() / "demo" / "till" / "drive_c" / "Program Files" / "Tessaly",
             clientFolder(), fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    plantSettings({{"AppendLineFeed", "0"}});
    // While the run lets window events in, the progress timer's interval passes.
    installEventPump([this] { window_.timer().tick(); });
}

WizardTest::~WizardTest() {
    installEventPump({});
}

void WizardTest::plantSettings(const std::map<std::string, std::string>& values) {
    TRegistry registry;
    for (const auto& [name, value] : values) {
        registry.CreateKeyAndSaveValue(kAddinKey, name, value);
    }
}

fs::path WizardTest::clientFolder() const {
    return till_.driveC() / "Program Files" / "Tessaly";
}

wizard::frmTessalyConfig& WizardTest::open() {
    form_ = std::make_unique<wizard::frmTessalyConfig>(window_.controls, host_, kClientFolder);
    form_->Form_Load();
    return *form_;
}

void WizardTest::expectSaved(const std::map<std::string, std::string>& texts) {
    form_->SaveSettings();
    const auto& table = settingsTable();
    for (const auto& [name, text] : texts) {
        const auto setting = std::find_if(
            table.begin(), table.end(), [&](const auto& entry) { return entry.valueName == name; });
        ASSERT_NE(setting, table.end()) << name;
        EXPECT_EQ(storedText(*form_->NewSettings(), *setting), text) << name;
    }
}
