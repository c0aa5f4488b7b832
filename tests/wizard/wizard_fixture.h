// What the wizard's tests share: a till with the demo payment client's files and the add-in's
// key, a wizard over fake controls and a fake window system, and the settings it would save.
#pragma once

#include "support/fake_clock.h"
#include "support/fake_controls.h"
#include "support/temp_till.h"
#include "support/till_readers.h"
#include "wizard/frm_tessaly_config.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

// The payment client's folder of the demo till, as the program sees it.
inline constexpr const char* kClientFolder = "C:\\Program Files\\Tessaly\\";

class WizardTest : public ::testing::Test {
protected:
    WizardTest();
    ~WizardTest() override;

    // Stores these values under the add-in's key (made when missing).
    void plantSettings(const std::map<std::string, std::string>& values);
    // A registry value of the add-in's key as stored now.
    // The payment client's folder on the host.
    std::filesystem::path clientFolder() const;

    // Starts the wizard on the payment client's folder, as the program does.
    wizard::frmTessalyConfig& open();

    // Saves the wizard's settings and expects these registry texts among them, by value name.
    void expectSaved(const std::map<std::string, std::string>& texts);

    FakeComboBox& combo(const std::string& name) const { return window_.combo(name); }
    FakeCheckBox& check(const std::string& name) const { return window_.check(name); }
    FakeTextBox& text(const std::string& name) const { return window_.text(name); }
    FakeButton& button(const std::string& name) const { return window_.button(name); }
    bool finishEnabled() const { return window_.button("cmdfInish").Enabled(); }

    TempTill till_;
    FakeClock clock_{2025, 3, 3, 14, 5, 9};
    FakeForm<wizard::WizardControls> window_;
    FakeHost host_;
    std::unique_ptr<wizard::frmTessalyConfig> form_;
};
