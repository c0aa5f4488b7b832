#include "wizard/frm_pt_serial_config.h"

#include "foundation/comm_parms.h"
#include "foundation/error_trap.h"
#include "foundation/strict_number.h"
#include "wizard/control_rules.h"
#include "wizard/printer_serial.h"

namespace wizard {
namespace {

constexpr const char* kDefaultPaperCut = "1B64040D0A1B690D0A";

std::string shortest(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (!text.empty() && text.back() == '.') {
        text.pop_back();
    }
    return text;
}

} // namespace

PrinterSerialParameters printerSerial;

void frmPTSerialConfig::Form_Load() {
    PrinterSerialControls& c = controls;
    c.cmdOK->Click = [this] { cmdOK_Click(); };
    c.cmdCancel->Click = [this] { cmdCancel_Click(); };
    quietly([this] {
        FillLists();
        ShowCurrentValues();
    });
}

void frmPTSerialConfig::QueryUnload() {
    cmdCancel_Click();
}

void frmPTSerialConfig::FillLists() {
    const CommParms parms;
    PrinterSerialControls& c = controls;
    parms.FillBoxWithPorts(*c.cboPort);
    SetListIndex(*c.cboPort, 0);
    parms.FillBoxWithBaudRates(*c.cboBaudRate);
    c.cboBaudRate->SetText("9600");
    parms.FillBoxWithParity(*c.cboParity);
    c.cboParity->SetText("NONE");
    parms.FillBoxWithDatabits(*c.cboDatabits);
    c.cboDatabits->SetText("8");
    parms.FillBoxWithStopBits(*c.cboStopbit);
    c.cboStopbit->SetText("1");
    parms.FillBoxWithFlowControlTypes(*c.cboFlowControl);
    c.cboFlowControl->SetText("Hardware");
}

// Each stored value is shown only when it is one the lists can take; otherwise the default stays.
void frmPTSerialConfig::ShowCurrentValues() {
    const CommParms parms;
    const PrinterSerialParameters& now = printerSerial;
    PrinterSerialControls& c = controls;
    if (!parms.GetCommPortStr(now.port).empty()) {
        c.cboPort->SetText(now.port);
    }
    if (parms.IsValidBaudRate(now.baudRate)) {
        c.cboBaudRate->SetText(std::to_string(now.baudRate));
    }
    if (const std::string parity = parms.GetParityStr(now.parity); !parity.empty()) {
        c.cboParity->SetText(parity);
    }
    if (parms.IsValidDataBits(now.dataBits)) {
        c.cboDatabits->SetText(std::to_string(now.dataBits));
    }
    if (parms.IsValidStopbit(now.stopBits)) {
        c.cboStopbit->SetText(shortest(now.stopBits));
    }
    if (parms.IsValidFlowControlID(now.flowControl)) {
        c.cboFlowControl->SetText(parms.GetFlowControlStr(now.flowControl));
    }
    c.txtPaperCut->SetText(now.paperCut.empty() ? std::string(kDefaultPaperCut) : now.paperCut);
}

// Nothing is checked here: the values are checked when they are next shown and where the
// wizard keeps them. A number that cannot be read ends the routine with the values read so far
// already stored, and the dialog stays open.
void frmPTSerialConfig::cmdOK_Click() {
    quietly([this] {
        PrinterSerialControls& c = controls;
        printerSerial.port = c.cboPort->Text();
        printerSerial.baudRate = strictToLong(c.cboBaudRate->Text());
        printerSerial.parity = c.cboParity->Text();
        printerSerial.dataBits = strictToInt(c.cboDatabits->Text());
        printerSerial.stopBits = strictToDouble(c.cboStopbit->Text());
        printerSerial.flowControl = CommParms().GetFlowControlID(c.cboFlowControl->Text());
        printerSerial.paperCut = c.txtPaperCut->Text();
        printerSerial.accepted = true;
        Unload();
    });
}

void frmPTSerialConfig::cmdCancel_Click() {
    printerSerial.accepted = false;
    if (Unload) {
        Unload();
    }
}

} // namespace wizard
