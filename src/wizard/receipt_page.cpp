#include "wizard/receipt_page.h"

#include "foundation/comm_parms.h"
#include "foundation/decimal_text.h"
#include "foundation/tessaly_string.h"
#include "settings/ccaddin_registry.h"
#include "settings/setting_fields.h"
#include "wizard/control_rules.h"
#include "wizard/frm_pt_serial_config.h"
#include "wizard/host.h"

#include <array>
#include <string_view>

namespace wizard {
namespace {

// The printer kinds, in the order of their number in "PrinterType".
constexpr std::array<std::string_view, 3> kPrinterTypes = {"OPOS printer", "Windows printer",
                                                           "Serial printer (direct)"};
enum PrinterKind { kOposPrinter = 0, kWindowsPrinter = 1, kSerialPrinter = 2 };

constexpr std::array<std::string_view, 2> kRmsPrinters = {"1", "2"};

// The bits of "PrintReceipts" that the page shows as check boxes.
constexpr std::int32_t kMerchantReceiptBit = 1;
constexpr std::int32_t kCustomerReceiptBit = 2;

// Takes over from the dialog only what the lists can show again, so a mistyped value never
// replaces a good one.
void takeUsable(PrinterSerialParameters& kept, const PrinterSerialParameters& chosen,
                bool& flowControlTaken) {
    const CommParms parms;
    if (!parms.GetCommPortStr(chosen.port).empty()) {
        kept.port = chosen.port;
    }
    if (parms.IsValidBaudRate(chosen.baudRate)) {
        kept.baudRate = chosen.baudRate;
    }
    if (const std::string parity = parms.GetParityStr(chosen.parity); !parity.empty()) {
        kept.parity = parity;
    }
    if (parms.IsValidDataBits(chosen.dataBits)) {
        kept.dataBits = chosen.dataBits;
    }
    if (parms.IsValidStopbit(chosen.stopBits)) {
        kept.stopBits = chosen.stopBits;
    }
    if (parms.IsValidFlowControlID(chosen.flowControl)) {
        kept.flowControl = chosen.flowControl;
        flowControlTaken = true;
    }
    kept.paperCut = chosen.paperCut;
}

} // namespace

ReceiptPage::ReceiptPage(ReceiptPageControls& controls, Host& host) : c_(controls), host_(host) {
    c_.cboPrinterType->Click = [this] { Refresh(); };
    c_.cmdComPort->Click = [this] { cmdComPort_Click(); };
}

void ReceiptPage::FillLists() {
    FillList(*c_.cboPrinterType, kPrinterTypes);
    SetListIndex(*c_.cboPrinterType, 0);
    FillList(*c_.cboRmsPrinterNo, kRmsPrinters);
    // The entries stand for printers 1 and 2, not for their positions.
    for (int entry = 0; entry < c_.cboRmsPrinterNo->ListCount(); ++entry) {
        c_.cboRmsPrinterNo->SetItemData(entry, entry + 1);
    }
    SetListIndex(*c_.cboRmsPrinterNo, 0);
    ShowSerial();
}

// Only the fields of the chosen kind of printer are open for editing.
void ReceiptPage::Refresh() {
    const std::int32_t kind = ChosenNumber(*c_.cboPrinterType);
    EnableControl(kind == kOposPrinter, *c_.txtOposPrinterDeviceName);
    for (Control* windows :
         std::initializer_list<Control*>{c_.txtWindowsPrinterName, c_.txtWindowsPrinterFontName,
                                         c_.txtWindowsFontSize, c_.chkWindowsFontBold}) {
        EnableControl(kind == kWindowsPrinter, *windows);
    }
    EnableControl(kind == kSerialPrinter, *c_.cmdComPort);
    EnableControl(kind == kSerialPrinter, *c_.lblPrinterSerial);
}

// The dialog works on the program-wide parameters.
void ReceiptPage::cmdComPort_Click() {
    printerSerial = serial_;
    if (!flowControlStored_) {
        printerSerial.flowControl = -1;
    }
    frmPTSerialConfig dialog;
    host_.ShowModal(dialog);
    if (printerSerial.accepted) {
        takeUsable(serial_, printerSerial, flowControlStored_);
        ShowSerial();
    }
}

void ReceiptPage::ShowSerial() {
    if (serial_.port.empty()) {
        c_.lblPrinterSerial->SetCaption("No serial line set");
        return;
    }
    const std::string flow = CommParms().GetFlowControlStr(serial_.flowControl);
    c_.lblPrinterSerial->SetCaption(serial_.port + ", " + std::to_string(serial_.baudRate) +
                                    " baud, parity " + serial_.parity + ", " +
                                    std::to_string(serial_.dataBits) + " data bits, " +
                                    decimal_text::shortestText(serial_.stopBits) + " stop bits, " +
                                    (flow.empty() ? std::to_string(serial_.flowControl) : flow) +
                                    " flow; cut " + serial_.paperCut);
}

void ReceiptPage::Load(const TCcAddinRegistry& settings) {
    ChooseNumber(*c_.cboPrinterType, settings.lPrinterType);
    SetText(*c_.txtOposPrinterDeviceName, settings.strOposPrinterDeviceName);
    SetText(*c_.txtWindowsPrinterName, settings.strWindowsPrinterName);
    SetText(*c_.txtWindowsPrinterFontName, settings.strWindowsPrinterFontName);
    SetText(*c_.txtWindowsFontSize, std::to_string(settings.lWindowsFontSize));
    SetValue(*c_.chkWindowsFontBold, settings.bWindowsFontBold);
    SetText(*c_.txtPrintNormalControl, settings.strPrintNormalControl);
    SetText(*c_.txtPrintBoldControl, settings.strPrintBoldControl);
    SetText(*c_.txtLineFeedsBeforePaperCut, std::to_string(settings.lLineFeedsBeforePaperCut));
    SetValue(*c_.chkAppendLineFeed, settings.bAppendLineFeed);
    // Printer 1 and 2 are the list's entries; any other stored number is shown as it is.
    ChooseNumber(*c_.cboRmsPrinterNo, settings.lRmsReceiptPrinterNo,
                 std::to_string(settings.lRmsReceiptPrinterNo));
    const std::int32_t bitmap = settings.lPrintReceiptsBitmap;
    SetValue(*c_.chkPrintMerchantReceipt, (bitmap & kMerchantReceiptBit) != 0);
    SetValue(*c_.chkPrintCustomerReceipt, (bitmap & kCustomerReceiptBit) != 0);
    otherReceiptBits_ = bitmap & ~(kMerchantReceiptBit | kCustomerReceiptBit);
    SetValue(*c_.chkCustomerReceiptFirstIfPinVerified, settings.bCustomerReceiptFirstIfPinVerified);
    SetValue(*c_.chkCutPaperAfterMerchantCopy, settings.bCutPaperAfterMerchantCopy);
    SetValue(*c_.chkCutPaperAfterCustomerCopy, settings.bCutPaperAfterCustomerCopy);
    SetValue(*c_.chkPrintMerchantHeader, settings.bPrintMerchantHeader);
    SetValue(*c_.chkPrintCustomerHeader, settings.bPrintCustomerHeader);
    SetValue(*c_.chkRefundSigOnMerchCopy, settings.bRefundSigOnMerchCopy);
    SetValue(*c_.chkRePrintReceipt, settings.bRePrintReceipt);
    SetValue(*c_.chkPromptTappedCustomerReceipt, settings.bPromptTappedCustomerReceipt);
    SetValue(*c_.chkMakeMerchantReceiptsAvailableToClient,
             settings.bMakeMerchantReceiptsAvailableToClient);
    serial_ = {settings.strPrinterPort,     settings.lPrinterBaudRate,
               settings.strPrinterParity,   static_cast<std::int16_t>(settings.lPrinterdatabits),
               settings.dPrinterStopbit,    static_cast<std::int16_t>(settings.lPrinterFlowControl),
               settings.strPrinterCutPaper, false};
    flowControlStored_ = settingStored(field::lPrinterFlowControl);
    Refresh();
    ShowSerial();
}

void ReceiptPage::Save(TCcAddinRegistry& settings) const {
    settings.lPrinterType = ChosenNumber(*c_.cboPrinterType);
    settings.strOposPrinterDeviceName = c_.txtOposPrinterDeviceName->Text();
    settings.strWindowsPrinterName = c_.txtWindowsPrinterName->Text();
    settings.strWindowsPrinterFontName = c_.txtWindowsPrinterFontName->Text();
    settings.lWindowsFontSize = TessalyString::StrToLong(c_.txtWindowsFontSize->Text());
    settings.bWindowsFontBold = c_.chkWindowsFontBold->Value();
    settings.strPrintNormalControl = c_.txtPrintNormalControl->Text();
    settings.strPrintBoldControl = c_.txtPrintBoldControl->Text();
    settings.lLineFeedsBeforePaperCut =
        TessalyString::StrToLong(c_.txtLineFeedsBeforePaperCut->Text());
    settings.bAppendLineFeed = c_.chkAppendLineFeed->Value();
    settings.lRmsReceiptPrinterNo = ChosenNumber(*c_.cboRmsPrinterNo);
    settings.lPrintReceiptsBitmap =
        otherReceiptBits_ | (c_.chkPrintMerchantReceipt->Value() ? kMerchantReceiptBit : 0) |
        (c_.chkPrintCustomerReceipt->Value() ? kCustomerReceiptBit : 0);
    settings.bCustomerReceiptFirstIfPinVerified = c_.chkCustomerReceiptFirstIfPinVerified->Value();
    settings.bCutPaperAfterMerchantCopy = c_.chkCutPaperAfterMerchantCopy->Value();
    settings.bCutPaperAfterCustomerCopy = c_.chkCutPaperAfterCustomerCopy->Value();
    settings.bPrintMerchantHeader = c_.chkPrintMerchantHeader->Value();
    settings.bPrintCustomerHeader = c_.chkPrintCustomerHeader->Value();
    settings.bRefundSigOnMerchCopy = c_.chkRefundSigOnMerchCopy->Value();
    settings.bRePrintReceipt = c_.chkRePrintReceipt->Value();
    settings.bPromptTappedCustomerReceipt = c_.chkPromptTappedCustomerReceipt->Value();
    settings.bMakeMerchantReceiptsAvailableToClient =
        c_.chkMakeMerchantReceiptsAvailableToClient->Value();
    settings.strPrinterPort = serial_.port;
    settings.lPrinterBaudRate = serial_.baudRate;
    settings.strPrinterParity = serial_.parity;
    settings.lPrinterdatabits = serial_.dataBits;
    settings.dPrinterStopbit = serial_.stopBits;
    settings.lPrinterFlowControl = serial_.flowControl;
    settings.strPrinterCutPaper = serial_.paperCut;
}

} // namespace wizard
