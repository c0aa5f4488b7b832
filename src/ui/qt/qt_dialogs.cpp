#include "ui/qt/qt_dialogs.h"

#include "wizard/frm_pt_serial_config.h"
#include "wizard/frm_tms.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmPTSerialConfig::frmPTSerialConfig(wizard::frmPTSerialConfig& dialog, QWidget* parent)
    : QDialog(parent), dialog_(dialog), controls_(dialog.controls) {
    setObjectName("frmPTSerialConfig");
    setWindowTitle(qtText(std::string(wizard::kPrinterSerialCaption)));
    auto* form = new QFormLayout;
    for (const char* name : {"cboPort", "cboBaudRate", "cboParity", "cboDatabits", "cboStopbit",
                             "cboFlowControl", "txtPaperCut"}) {
        form->addRow(controls_.label(name), controls_.widget(name));
    }
    controls_.widget("txtPaperCut")
        ->setMinimumWidth(controls_.widget("txtPaperCut")->fontMetrics().horizontalAdvance("0") *
                          28);
    auto* ok = static_cast<QPushButton*>(controls_.widget("cmdOK"));
    ok->setDefault(true);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(static_cast<QPushButton*>(controls_.widget("cmdCancel")),
                       QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    dialog_.Unload = [this] { done(0); };
}

void frmPTSerialConfig::reject() {
    dialog_.QueryUnload();
}

frmTms::frmTms(wizard::frmTms& dialog, QWidget* parent)
    : QDialog(parent), dialog_(dialog), controls_(dialog.controls) {
    setObjectName("frmTms");
    setWindowTitle(qtText(std::string(wizard::kTmsCaption)));
    auto* frame = static_cast<QFrame*>(controls_.widget("fraTmsType"));
    auto* group = new QGroupBox(controls_.caption("fraTmsType"));
    auto* inFrame = new QVBoxLayout(group);
    auto* description = static_cast<QLabel*>(controls_.widget("lblDesc"));
    description->setWordWrap(true);
    description->setMinimumHeight(description->fontMetrics().lineSpacing() * 4);
    description->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    inFrame->addWidget(controls_.widget("cboTmsType"));
    inFrame->addWidget(description);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    frameLayout->addWidget(group);
    auto* run = static_cast<QPushButton*>(controls_.widget("cmdTms"));
    run->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(run);
    buttons->addWidget(controls_.widget("cmdCancel"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);
    setMinimumWidth(440);
    dialog_.Unload = [this] { done(0); };
}

void frmTms::reject() {
    dialog_.QueryUnload();
}
