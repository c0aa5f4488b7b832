// Page 3, "Receipt Printing Configuration": which printer prints the receipts and how, what is
// printed, and the serial line of a printer driven directly (through the printer serial dialog).
#pragma once

#include "ui/printer_serial.h"
#include "ui/wizard_page.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class TCcAddinRegistry;

class ReceiptPage : public WizardPage {
public:
    ReceiptPage();

    void load(const TCcAddinRegistry& settings);
    void save(TCcAddinRegistry& settings) const;

    QComboBox* cboPrinterType;
    QLineEdit* txtOposPrinterDeviceName;
    QLineEdit* txtWindowsPrinterName;
    QLineEdit* txtWindowsPrinterFontName;
    QLineEdit* txtWindowsFontSize;
    QCheckBox* chkWindowsFontBold;
    QPushButton* cmdComPort;
    QLabel* lblPrinterSerial;
    QLineEdit* txtPrintNormalControl;
    QLineEdit* txtPrintBoldControl;
    QLineEdit* txtLineFeedsBeforePaperCut;
    QCheckBox* chkAppendLineFeed;
    QComboBox* cboRmsPrinterNo;
    QCheckBox* chkPrintMerchantReceipt;
    QCheckBox* chkPrintCustomerReceipt;
    QCheckBox* chkCustomerReceiptFirstIfPinVerified;
    QCheckBox* chkCutPaperAfterMerchantCopy;
    QCheckBox* chkCutPaperAfterCustomerCopy;
    QCheckBox* chkPrintMerchantHeader;
    QCheckBox* chkPrintCustomerHeader;
    QCheckBox* chkRefundSigOnMerchCopy;
    QCheckBox* chkRePrintReceipt;
    QCheckBox* chkPromptTappedCustomerReceipt;
    QCheckBox* chkMakeMerchantReceiptsAvailableToClient;

private:
    void cmdComPort_Click();
    void refresh();
    void showSerial();

    // The serial line as this page keeps it between the dialog and the settings record.
    PrinterSerialParameters serial_;
    // Bits of the receipt bitmap that no check box shows are kept as they were installed.
    std::int32_t otherReceiptBits_ = 0;
};
