// The wizard's window in Qt: the widgets of the control table laid out page by page, the window
// services the wizard asks for, and the wizard itself, which holds every rule.
#pragma once

#include "ui/qt/qt_controls.h"
#include "wizard/control_set.h"
#include "wizard/frm_tessaly_config.h"
#include "wizard/host.h"

#include <QWidget>
#include <memory>
#include <string>

class frmTessalyConfig;

class QtHost final : public wizard::Host {
public:
    explicit QtHost(frmTessalyConfig& window) : window_(window) {}
    void MsgBox(const std::string& text, wizard::MessageIcon icon,
                const std::string& title) override;
    void SetMousePointer(wizard::MousePointer pointer) override;
    void ShowModal(wizard::frmPTSerialConfig& dialog) override;
    void ShowModal(wizard::frmTms& dialog) override;
    void UnloadMainForm() override;

private:
    frmTessalyConfig& window_;
};

class frmTessalyConfig : public QWidget {
public:
    // `programFolder` ends in "\": where the data files are and the run writes its log.
    explicit frmTessalyConfig(const std::string& programFolder);
    ~frmTessalyConfig() override;

    wizard::frmTessalyConfig& form() { return *form_; }
    // The wizard's controls, each bound to one of this window's widgets.
    const wizard::WizardControls& controls() const { return controls_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();

    wizard::WizardControls controls_;
    QtControlSet widgets_;
    QtHost host_;
    std::unique_ptr<wizard::frmTessalyConfig> form_;
};
