#include "ui/receipt_page.h"

#include "foundation/comm_parms.h"
#include "foundation/tessaly_string.h"
#include "settings/ccaddin_registry.h"
#include "ui/frm_pt_serial_config.h"
#include "ui/ui_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// The printer kinds, in the order of their number in "PrinterType".
enum PrinterKind { kOposPrinter = 0, kWindowsPrinter = 1, kSerialPrinter = 2 };

// The bits of "PrintReceipts" that the page shows as check boxes.
constexpr std::int32_t kMerchantReceiptBit = 1;
constexpr std::int32_t kCustomerReceiptBit = 2;

QString number(std::int32_t value) {
    return QString::number(value);
}

std::int32_t numberIn(const QLineEdit* text) {
    return TessalyString::StrToLong(tillText(text->text()));
}
} // namespace

ReceiptPage::ReceiptPage()
    : WizardPage(3, "Receipt Printing Configuration"),
      cboPrinterType(makeCombo("cboPrinterType",
                               {"OPOS printer", "Windows printer", "Serial printer (direct)"})),
      txtOposPrinterDeviceName(makeText("txtOposPrinterDeviceName")),
      txtWindowsPrinterName(makeText("txtWindowsPrinterName")),
      txtWindowsPrinterFontName(makeText("txtWindowsPrinterFontName")),
      txtWindowsFontSize(makeNumber("txtWindowsFontSize")),
      chkWindowsFontBold(makeCheck("chkWindowsFontBold", "Print &in bold")),
      cmdComPort(new QPushButton("&Printer Settings")), lblPrinterSerial(new QLabel),
      txtPrintNormalControl(makeText("txtPrintNormalControl")),
      txtPrintBoldControl(makeText("txtPrintBoldControl")),
      txtLineFeedsBeforePaperCut(makeNumber("txtLineFeedsBeforePaperCut")),
      chkAppendLineFeed(makeCheck("chkAppendLineFeed", "Append a line feed to every line")),
      cboRmsPrinterNo(makeCombo("cboRmsPrinterNo", {"1", "2"})),
      chkPrintMerchantReceipt(makeCheck("chkPrintMerchantReceipt", "Print &merchant receipt")),
      chkPrintCustomerReceipt(makeCheck("chkPrintCustomerReceipt", "Print c&ustomer receipt")),
      chkCustomerReceiptFirstIfPinVerified(makeCheck("chkCustomerReceiptFirstIfPinVerified",
                                                     "Customer receipt first if PIN verified")),
      chkCutPaperAfterMerchantCopy(
          makeCheck("chkCutPaperAfterMerchantCopy", "Cut paper after merchant copy")),
      chkCutPaperAfterCustomerCopy(
          makeCheck("chkCutPaperAfterCustomerCopy", "Cut paper after customer copy")),
      chkPrintMerchantHeader(makeCheck("chkPrintMerchantHeader", "Print merchant header")),
      chkPrintCustomerHeader(makeCheck("chkPrintCustomerHeader", "Print customer header")),
      chkRefundSigOnMerchCopy(
          makeCheck("chkRefundSigOnMerchCopy", "Refund signature on merchant copy")),
      chkRePrintReceipt(makeCheck("chkRePrintReceipt", "Offer a receipt reprint")),
      chkPromptTappedCustomerReceipt(
          makeCheck("chkPromptTappedCustomerReceipt", "Ask before customer receipt when tapped")),
      chkMakeMerchantReceiptsAvailableToClient(makeCheck(
          "chkMakeMerchantReceiptsAvailableToClient", "Merchant receipts available to clients")) {
    cmdComPort->setObjectName("cmdComPort");
    lblPrinterSerial->setObjectName("lblPrinterSerial");
    txtWindowsFontSize->setMaximumWidth(60);
    txtLineFeedsBeforePaperCut->setMaximumWidth(60);

    auto* grid = new QGridLayout;
    addRow(grid, 0, "Printer t&ype", cboPrinterType);
    addRow(grid, 0, "RMS Receipt Printer Number", cboRmsPrinterNo, 2);
    addRow(grid, 1, "&OPOS device name", txtOposPrinterDeviceName);
    addRow(grid, 1, "&Line feeds before cut", txtLineFeedsBeforePaperCut, 2);
    addRow(grid, 2, "&Windows printer", txtWindowsPrinterName);
    addRow(grid, 2, "Norm&al print code", txtPrintNormalControl, 2);
    addRow(grid, 3, "Windows fon&t", txtWindowsPrinterFontName);
    addRow(grid, 3, "Bol&d print code", txtPrintBoldControl, 2);
    addRow(grid, 4, "Font si&ze", txtWindowsFontSize);
    grid->addWidget(chkWindowsFontBold, 4, 2, 1, 2);
    grid->addWidget(cmdComPort, 5, 0);
    grid->addWidget(lblPrinterSerial, 5, 1, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    body()->addLayout(grid);

    auto* options = new QGridLayout;
    QCheckBox* checks[] = {chkPrintMerchantReceipt,
                           chkPrintCustomerReceipt,
                           chkCutPaperAfterMerchantCopy,
                           chkCutPaperAfterCustomerCopy,
                           chkPrintMerchantHeader,
                           chkPrintCustomerHeader,
                           chkCustomerReceiptFirstIfPinVerified,
                           chkRefundSigOnMerchCopy,
                           chkRePrintReceipt,
                           chkPromptTappedCustomerReceipt,
                           chkAppendLineFeed,
                           chkMakeMerchantReceiptsAvailableToClient};
    for (int i = 0; i < 12; ++i) {
        options->addWidget(checks[i], i / 2, i % 2);
    }
    body()->addLayout(options);
    body()->addStretch();

    // Tab goes down the left column, then the right, then the options row by row.
    QWidget* order[] = {cboPrinterType,        txtOposPrinterDeviceName,
                        txtWindowsPrinterName, txtWindowsPrinterFontName,
                        txtWindowsFontSize,    cmdComPort,
                        cboRmsPrinterNo,       txtLineFeedsBeforePaperCut,
                        txtPrintNormalControl, txtPrintBoldControl,
                        chkWindowsFontBold};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
    setTabOrder(chkWindowsFontBold, checks[0]);
    for (std::size_t i = 1; i < std::size(checks); ++i) {
        setTabOrder(checks[i - 1], checks[i]);
    }

    connect(cboPrinterType, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    connect(cmdComPort, &QPushButton::clicked, this, [this] { cmdComPort_Click(); });
    refresh();
    showSerial();
}

// Only the fields of the chosen kind of printer are open for editing.
void ReceiptPage::refresh() {
    const std::int32_t kind = chosenIndex(cboPrinterType);
    EnableControl(kind == kOposPrinter, txtOposPrinterDeviceName);
    for (QWidget* windows :
         {static_cast<QWidget*>(txtWindowsPrinterName),
          static_cast<QWidget*>(txtWindowsPrinterFontName),
          static_cast<QWidget*>(txtWindowsFontSize), static_cast<QWidget*>(chkWindowsFontBold)}) {
        EnableControl(kind == kWindowsPrinter, windows);
    }
    EnableControl(kind == kSerialPrinter, cmdComPort);
    EnableControl(kind == kSerialPrinter, lblPrinterSerial);
}

// The dialog works on the program-wide parameters; what it hands back is kept only where it is
// usable, so a mistyped value never replaces a good one.
void ReceiptPage::cmdComPort_Click() {
    printerSerial = serial_;
    frmPTSerialConfig dialog(this);
    dialog.exec();
    if (printerSerial.accepted) {
        const CommParms parms;
        const PrinterSerialParameters& chosen = printerSerial;
        if (!parms.GetCommPortStr(chosen.port).empty()) {
            serial_.port = chosen.port;
        }
        if (parms.IsValidBaudRate(chosen.baudRate)) {
            serial_.baudRate = chosen.baudRate;
        }
        if (const std::string parity = parms.GetParityStr(chosen.parity); !parity.empty()) {
            serial_.parity = parity;
        }
        if (parms.IsValidDataBits(chosen.dataBits)) {
            serial_.dataBits = chosen.dataBits;
        }
        if (parms.IsValidStopbit(chosen.stopBits)) {
            serial_.stopBits = chosen.stopBits;
        }
        if (parms.IsValidFlowControlID(chosen.flowControl)) {
            serial_.flowControl = chosen.flowControl;
        }
        serial_.paperCut = chosen.paperCut;
        showSerial();
    }
    notify();
}

void ReceiptPage::showSerial() {
    const CommParms parms;
    QString flow = qtText(parms.GetFlowControlStr(serial_.flowControl));
    lblPrinterSerial->setText(
        serial_.port.empty()
            ? QString("No serial line set")
            : QString("%1, %2 baud, parity %3, %4 data bits, %5 stop bits, %6 flow; cut %7")
                  .arg(qtText(serial_.port))
                  .arg(serial_.baudRate)
                  .arg(qtText(serial_.parity))
                  .arg(serial_.dataBits)
                  .arg(serial_.stopBits)
                  .arg(flow.isEmpty() ? QString::number(serial_.flowControl) : flow)
                  .arg(qtText(serial_.paperCut)));
}

void ReceiptPage::load(const TCcAddinRegistry& settings) {
    chooseIndex(cboPrinterType, settings.lPrinterType);
    txtOposPrinterDeviceName->setText(qtText(settings.strOposPrinterDeviceName));
    txtWindowsPrinterName->setText(qtText(settings.strWindowsPrinterName));
    txtWindowsPrinterFontName->setText(qtText(settings.strWindowsPrinterFontName));
    txtWindowsFontSize->setText(number(settings.lWindowsFontSize));
    chkWindowsFontBold->setChecked(settings.bWindowsFontBold);
    txtPrintNormalControl->setText(qtText(settings.strPrintNormalControl));
    txtPrintBoldControl->setText(qtText(settings.strPrintBoldControl));
    txtLineFeedsBeforePaperCut->setText(number(settings.lLineFeedsBeforePaperCut));
    chkAppendLineFeed->setChecked(settings.bAppendLineFeed);
    // Printer 1 and 2 are the list's entries; any other stored number is shown as it is.
    chooseIndex(cboRmsPrinterNo, settings.lRmsReceiptPrinterNo - 1,
                number(settings.lRmsReceiptPrinterNo));
    const std::int32_t bitmap = settings.lPrintReceiptsBitmap;
    chkPrintMerchantReceipt->setChecked((bitmap & kMerchantReceiptBit) != 0);
    chkPrintCustomerReceipt->setChecked((bitmap & kCustomerReceiptBit) != 0);
    otherReceiptBits_ = bitmap & ~(kMerchantReceiptBit | kCustomerReceiptBit);
    chkCustomerReceiptFirstIfPinVerified->setChecked(settings.bCustomerReceiptFirstIfPinVerified);
    chkCutPaperAfterMerchantCopy->setChecked(settings.bCutPaperAfterMerchantCopy);
    chkCutPaperAfterCustomerCopy->setChecked(settings.bCutPaperAfterCustomerCopy);
    chkPrintMerchantHeader->setChecked(settings.bPrintMerchantHeader);
    chkPrintCustomerHeader->setChecked(settings.bPrintCustomerHeader);
    chkRefundSigOnMerchCopy->setChecked(settings.bRefundSigOnMerchCopy);
    chkRePrintReceipt->setChecked(settings.bRePrintReceipt);
    chkPromptTappedCustomerReceipt->setChecked(settings.bPromptTappedCustomerReceipt);
    chkMakeMerchantReceiptsAvailableToClient->setChecked(
        settings.bMakeMerchantReceiptsAvailableToClient);
    serial_.port = settings.strPrinterPort;
    serial_.baudRate = settings.lPrinterBaudRate;
    serial_.parity = settings.strPrinterParity;
    serial_.dataBits = static_cast<std::int16_t>(settings.lPrinterdatabits);
    serial_.stopBits = settings.dPrinterStopbit;
    serial_.flowControl = static_cast<std::int16_t>(settings.lPrinterFlowControl);
    serial_.paperCut = settings.strPrinterCutPaper;
    refresh();
    showSerial();
}

void ReceiptPage::save(TCcAddinRegistry& settings) const {
    settings.lPrinterType = chosenIndex(cboPrinterType);
    settings.strOposPrinterDeviceName = tillText(txtOposPrinterDeviceName->text());
    settings.strWindowsPrinterName = tillText(txtWindowsPrinterName->text());
    settings.strWindowsPrinterFontName = tillText(txtWindowsPrinterFontName->text());
    settings.lWindowsFontSize = numberIn(txtWindowsFontSize);
    settings.bWindowsFontBold = chkWindowsFontBold->isChecked();
    settings.strPrintNormalControl = tillText(txtPrintNormalControl->text());
    settings.strPrintBoldControl = tillText(txtPrintBoldControl->text());
    settings.lLineFeedsBeforePaperCut = numberIn(txtLineFeedsBeforePaperCut);
    settings.bAppendLineFeed = chkAppendLineFeed->isChecked();
    settings.lRmsReceiptPrinterNo = chosenIndex(cboRmsPrinterNo) + 1;
    settings.lPrintReceiptsBitmap =
        otherReceiptBits_ | (chkPrintMerchantReceipt->isChecked() ? kMerchantReceiptBit : 0) |
        (chkPrintCustomerReceipt->isChecked() ? kCustomerReceiptBit : 0);
    settings.bCustomerReceiptFirstIfPinVerified = chkCustomerReceiptFirstIfPinVerified->isChecked();
    settings.bCutPaperAfterMerchantCopy = chkCutPaperAfterMerchantCopy->isChecked();
    settings.bCutPaperAfterCustomerCopy = chkCutPaperAfterCustomerCopy->isChecked();
    settings.bPrintMerchantHeader = chkPrintMerchantHeader->isChecked();
    settings.bPrintCustomerHeader = chkPrintCustomerHeader->isChecked();
    settings.bRefundSigOnMerchCopy = chkRefundSigOnMerchCopy->isChecked();
    settings.bRePrintReceipt = chkRePrintReceipt->isChecked();
    settings.bPromptTappedCustomerReceipt = chkPromptTappedCustomerReceipt->isChecked();
    settings.bMakeMerchantReceiptsAvailableToClient =
        chkMakeMerchantReceiptsAvailableToClient->isChecked();
    settings.strPrinterPort = serial_.port;
    settings.lPrinterBaudRate = serial_.baudRate;
    settings.strPrinterParity = serial_.parity;
    settings.lPrinterdatabits = serial_.dataBits;
    settings.dPrinterStopbit = serial_.stopBits;
    settings.lPrinterFlowControl = serial_.flowControl;
    settings.strPrinterCutPaper = serial_.paperCut;
}
