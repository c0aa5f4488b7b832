#include "ui/frm_pt_serial_config.h"

#include "foundation/comm_parms.h"
#include "foundation/strict_number.h"
#include "ui/printer_serial.h"
#include "ui/ui_text.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr const char* kDefaultPaperCut = "1B64040D0A1B690D0A";

QComboBox* makeCombo(const char* name) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    return box;
}
} // namespace

frmPTSerialConfig::frmPTSerialConfig(QWidget* parent)
    : QDialog(parent), cboPort(makeCombo("cboPort")), cboBaudRate(makeCombo("cboBaudRate")),
      cboParity(makeCombo("cboParity")), cboDatabits(makeCombo("cboDatabits")),
      cboStopbit(makeCombo("cboStopbit")), cboFlowControl(makeCombo("cboFlowControl")),
      txtPaperCut(new QLineEdit), cmdOK(new QPushButton("OK")),
      cmdCancel(new QPushButton("&Cancel")) {
    setObjectName("frmPTSerialConfig");
    setWindowTitle("Printer Settings");
    setModal(true);
    txtPaperCut->setObjectName("txtPaperCut");
    cmdOK->setObjectName("cmdOK");
    cmdCancel->setObjectName("cmdCancel");
    cmdOK->setDefault(true);
    txtPaperCut->setMinimumWidth(txtPaperCut->fontMetrics().horizontalAdvance("0") * 28);

    auto* form = new QFormLayout;
    form->addRow("Port", cboPort);
    form->addRow("Baud Rate", cboBaudRate);
    form->addRow("Parity", cboParity);
    form->addRow("Databits", cboDatabits);
    form->addRow("Stopbit", cboStopbit);
    form->addRow("Flow Control", cboFlowControl);
    form->addRow("Paper Cut Sequence (Hexadecimal)", txtPaperCut);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);

    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    // Escape and the window's close box cancel, as the Cancel button does.
    connect(this, &QDialog::rejected, this, [] { printerSerial.accepted = false; });

    try {
        fillLists();
        showCurrentValues();
    } catch (...) {
    }
}

void frmPTSerialConfig::fillLists() {
    const CommParms parms;
    ComboList port(cboPort), baud(cboBaudRate), parity(cboParity), dataBits(cboDatabits),
        stopBits(cboStopbit), flow(cboFlowControl);
    parms.FillBoxWithPorts(port);
    cboPort->setCurrentIndex(0);
    parms.FillBoxWithBaudRates(baud);
    cboBaudRate->setCurrentText("9600");
    parms.FillBoxWithParity(parity);
    cboParity->setCurrentText("NONE");
    parms.FillBoxWithDatabits(dataBits);
    cboDatabits->setCurrentText("8");
    parms.FillBoxWithStopBits(stopBits);
    cboStopbit->setCurrentText("1");
    parms.FillBoxWithFlowControlTypes(flow);
    cboFlowControl->setCurrentText("Hardware");
}

void frmPTSerialConfig::showCurrentValues() {
    const CommParms parms;
    const PrinterSerialParameters& now = printerSerial;
    if (!parms.GetCommPortStr(now.port).empty()) {
        cboPort->setCurrentText(qtText(now.port));
    }
    if (parms.IsValidBaudRate(now.baudRate)) {
        cboBaudRate->setCurrentText(QString::number(now.baudRate));
    }
    if (const std::string parity = parms.GetParityStr(now.parity); !parity.empty()) {
        cboParity->setCurrentText(qtText(parity));
    }
    if (parms.IsValidDataBits(now.dataBits)) {
        cboDatabits->setCurrentText(QString::number(now.dataBits));
    }
    if (parms.IsValidStopbit(now.stopBits)) {
        cboStopbit->setCurrentText(QString::number(now.stopBits));
    }
    if (parms.IsValidFlowControlID(now.flowControl)) {
        cboFlowControl->setCurrentText(qtText(parms.GetFlowControlStr(now.flowControl)));
    }
    txtPaperCut->setText(now.paperCut.empty() ? QString(kDefaultPaperCut) : qtText(now.paperCut));
}

// Nothing is checked here: the values are checked when they are next shown and where the
// wizard keeps them. A number that cannot be read ends the routine with the values read so far
// already stored, and the dialog stays open.
void frmPTSerialConfig::cmdOK_Click() {
    try {
        printerSerial.port = comboText(cboPort);
        printerSerial.baudRate = strictToLong(comboText(cboBaudRate));
        printerSerial.parity = comboText(cboParity);
        printerSerial.dataBits = strictToInt(comboText(cboDatabits));
        printerSerial.stopBits = strictToDouble(comboText(cboStopbit));
        printerSerial.flowControl = CommParms().GetFlowControlID(comboText(cboFlowControl));
        printerSerial.paperCut = tillText(txtPaperCut->text());
        printerSerial.accepted = true;
        done(QDialog::Accepted);
    } catch (...) {
    }
}

void frmPTSerialConfig::cmdCancel_Click() {
    printerSerial.accepted = false;
    done(QDialog::Rejected);
}
