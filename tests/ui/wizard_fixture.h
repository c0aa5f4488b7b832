// What the wizard's tests share: a Qt application on the offscreen platform, a till with the
// demo payment client's files, the installed settings planted in its registry, and answers to
// the message boxes and dialogs the wizard shows modally.
#pragma once

#include "support/temp_till.h"
#include "ui/frm_tessaly_config.h"

#include <QComboBox>
#include <QString>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

class QAbstractButton;
class QWidget;

// The payment client's folder of the demo till, as the program sees it.
inline constexpr const char* kClientFolder = "C:\\Program Files\\Tessaly\\";

class WizardTest : public ::testing::Test {
protected:
    // A till with the demo payment client's files and the add-in's key.
    WizardTest();

    // Stores these values under the add-in's key (made when missing).
    void plantSettings(const std::map<std::string, std::string>& values);

    // A registry value of the add-in's key as stored now.
    std::string stored(const std::string& valueName) const;

    // Saves the wizard's settings and expects these registry texts among them, by value name.
    void expectSaved(const std::map<std::string, std::string>& texts);

    // The payment client's folder on the host.
    std::filesystem::path clientFolder() const;

    // Opens the wizard on the payment client's folder.
    frmTessalyConfig& open();

    template <typename T> T* control(const char* name) const {
        T* found = form_->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QComboBox* combo(const char* name) const { return control<QComboBox>(name); }
    void choose(const char* name, const QString& text);
    bool finishEnabled() const;

    TempTill till_;
    std::unique_ptr<frmTessalyConfig> form_;
};

// Runs `answer` on the next modal window (a message box or a dialog) once it is showing. The
// watch stops when the returned object is deleted.
QObject* whenModal(std::function<void(QWidget*)> answer);

// The button of a modal window with this text, mnemonics ignored.
QAbstractButton* buttonOf(QWidget* window, const QString& text);
