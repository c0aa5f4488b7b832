// The wizard's two modal dialogs as Qt windows: each lays out the widgets of its control table
// and hands every rule to the wizard's dialog. Escape and the close box are the dialog's
// QueryUnload.
#pragma once

#include "ui/qt/qt_controls.h"

#include <QDialog>

namespace wizard {
class frmPTSerialConfig;
class frmTms;
} // namespace wizard

class frmPTSerialConfig : public QDialog {
public:
    frmPTSerialConfig(wizard::frmPTSerialConfig& dialog, QWidget* parent);
    void reject() override;

private:
    wizard::frmPTSerialConfig& dialog_;
    QtControlSet controls_;
};

class frmTms : public QDialog {
public:
    frmTms(wizard::frmTms& dialog, QWidget* parent);
    void reject() override;

private:
    wizard::frmTms& dialog_;
    QtControlSet controls_;
};
