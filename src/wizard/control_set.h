// Every control of the wizard's forms, by the name the forms give it, with its page and caption:
// the one table both faces build their windows from and the tests fill with fakes. A face creates
// a native control for each entry (its caption as given, "&" marking the Alt key), lays it out as
// it likes, and sets the slot to its adapter; the wizard's forms then talk to the slots only.
//
// The caption of a button, check box, frame or label is its own text; that of a combo or text box
// is the text of the label beside it (empty: no label).
#pragma once

#include "wizard/controls.h"

#include <array>
#include <string_view>

namespace wizard {

struct ControlInfo {
    std::string_view name;
    int page = -1;  // index of the fraInstall page it sits on; -1 outside the pages
    int index = -1; // for a control array (fraInstall): the element's index
    std::string_view caption;
    bool editable = false; // a combo box whose text can be typed over
};

struct MerchantPageControls {
    ComboBox* cboAcquirer = nullptr;
    ComboBox* cboCurrency = nullptr;
    ComboBox* cboInstallType = nullptr;
    ComboBox* cboTessalyId = nullptr;
    ComboBox* cboFuel = nullptr;
    ComboBox* cboDevice = nullptr;
    TextBox* txtCxMerchant = nullptr;
    TextBox* txtCxClient = nullptr;
    ComboBox* cboConfigMode = nullptr;
    ComboBox* cboSemiIntegratedMode = nullptr;
    ComboBox* cboReceiptInfo = nullptr;
    ComboBox* cboEposType = nullptr;
};

struct GeneralPageControls {
    ComboBox* cboSplitTender = nullptr;
    CheckBox* chkDecimalInSplitTender = nullptr;
    CheckBox* chkCashback = nullptr;
    ComboBox* cboCashBackEntry = nullptr;
    CheckBox* chkDcc = nullptr;
    ComboBox* cboDccOption = nullptr;
    CheckBox* chkCustomerNotPresent = nullptr;
    CheckBox* chkObscureCardNumber = nullptr;
    CheckBox* chkAutoAcceptOnPinVerification = nullptr;
    CheckBox* chkAutoAcceptTappedNoVerification = nullptr;
    CheckBox* chkOfflineMode = nullptr;
    CheckBox* chkE2EE = nullptr;
    CheckBox* chkDailyTmsCall = nullptr;
    CheckBox* chkAutoRunReport = nullptr;
    CheckBox* chkCloseBatch = nullptr;
};

struct ReceiptPageControls {
    ComboBox* cboPrinterType = nullptr;
    TextBox* txtOposPrinterDeviceName = nullptr;
    TextBox* txtWindowsPrinterName = nullptr;
    TextBox* txtWindowsPrinterFontName = nullptr;
    TextBox* txtWindowsFontSize = nullptr;
    CheckBox* chkWindowsFontBold = nullptr;
    Button* cmdComPort = nullptr;
    Label* lblPrinterSerial = nullptr;
    TextBox* txtPrintNormalControl = nullptr;
    TextBox* txtPrintBoldControl = nullptr;
    TextBox* txtLineFeedsBeforePaperCut = nullptr;
    CheckBox* chkAppendLineFeed = nullptr;
    ComboBox* cboRmsPrinterNo = nullptr;
    CheckBox* chkPrintMerchantReceipt = nullptr;
    CheckBox* chkPrintCustomerReceipt = nullptr;
    CheckBox* chkCustomerReceiptFirstIfPinVerified = nullptr;
    CheckBox* chkCutPaperAfterMerchantCopy = nullptr;
    CheckBox* chkCutPaperAfterCustomerCopy = nullptr;
    CheckBox* chkPrintMerchantHeader = nullptr;
    CheckBox* chkPrintCustomerHeader = nullptr;
    CheckBox* chkRefundSigOnMerchCopy = nullptr;
    CheckBox* chkRePrintReceipt = nullptr;
    CheckBox* chkPromptTappedCustomerReceipt = nullptr;
    CheckBox* chkMakeMerchantReceiptsAvailableToClient = nullptr;
};

struct ChipPinPageControls {
    ComboBox* cboPort = nullptr;
    ComboBox* cboSwipe = nullptr;
    TextBox* txtIdlePrompt1 = nullptr;
    TextBox* txtIdlePrompt2 = nullptr;
    TextBox* txtTrackStartId = nullptr;
    TextBox* txtTrackEndId = nullptr;
};

struct DisplayPageControls {
    ComboBox* cboDisplaySize = nullptr;
    ComboBox* cboWidth = nullptr;
    TextBox* txtWidth = nullptr;
    ComboBox* cboHeight = nullptr;
    TextBox* txtHeight = nullptr;
    ComboBox* cboPosition = nullptr;
    TextBox* txtLeft = nullptr;
    TextBox* txtTop = nullptr;
    CheckBox* chkAlwaysOnTop = nullptr;
    CheckBox* chkDisplayOndrelLogo = nullptr;
};

// frmTessalyConfig: the wizard window.
struct WizardControls {
    std::array<Frame*, 7> fraInstall{};
    Label* Label1 = nullptr;
    Picture* Picture1 = nullptr;
    Label* lblGuide = nullptr;
    MerchantPageControls merchant;
    GeneralPageControls general;
    ReceiptPageControls receipt;
    ChipPinPageControls chipPin;
    DisplayPageControls display;
    Label* Label18 = nullptr;
    Label* Label19 = nullptr;
    ProgressBar* ProgressBar1 = nullptr;
    Label* capstatus = nullptr;
    Button* cmdBack = nullptr;
    Button* cmdNext = nullptr;
    Button* cmdfInish = nullptr;
    Button* cmdClose = nullptr;
    Timer* tmrStatus = nullptr;
};

// frmPTSerialConfig, "Printer Settings".
struct PrinterSerialControls {
    ComboBox* cboPort = nullptr;
    ComboBox* cboBaudRate = nullptr;
    ComboBox* cboParity = nullptr;
    ComboBox* cboDatabits = nullptr;
    ComboBox* cboStopbit = nullptr;
    ComboBox* cboFlowControl = nullptr;
    TextBox* txtPaperCut = nullptr;
    Button* cmdOK = nullptr;
    Button* cmdCancel = nullptr;
};

// frmTms, "TMS Call".
struct TmsControls {
    Frame* fraTmsType = nullptr;
    ComboBox* cboTmsType = nullptr;
    Label* lblDesc = nullptr;
    Button* cmdTms = nullptr;
    Button* cmdCancel = nullptr;
};

inline constexpr std::string_view kWizardCaption = "Corvix Parvane Configuration Utility ";
inline constexpr std::string_view kPrinterSerialCaption = "Printer Settings";
inline constexpr std::string_view kTmsCaption = "TMS Call";

// Calls visit(info, slot) for every control of the form, in tab order page by page; `slot` is a
// reference to the pointer of the control's own kind.
template <typename Visit> void forEachControl(MerchantPageControls& c, Visit&& visit) {
    visit(ControlInfo{"cboAcquirer", 1, -1, "Merchant's Acquirer"}, c.cboAcquirer);
    visit(ControlInfo{"cboCurrency", 1, -1, "Merchant's Currency"}, c.cboCurrency);
    visit(ControlInfo{"cboInstallType", 1, -1, "Installation Type"}, c.cboInstallType);
    visit(ControlInfo{"cboTessalyId", 1, -1, "Ondrel ID"}, c.cboTessalyId);
    visit(ControlInfo{"cboFuel", 1, -1, "Merchant's Fuel Type"}, c.cboFuel);
    visit(ControlInfo{"cboDevice", 1, -1, "Chip and Pin Device"}, c.cboDevice);
    visit(ControlInfo{"txtCxMerchant", 1, -1, "Corvix Merchant ID"}, c.txtCxMerchant);
    visit(ControlInfo{"txtCxClient", 1, -1, "Corvix Client ID"}, c.txtCxClient);
    visit(ControlInfo{"cboConfigMode", 1, -1, "Configuration Mode"}, c.cboConfigMode);
    visit(ControlInfo{"cboSemiIntegratedMode", 1, -1, "Receipt/Confirm Mode"},
          c.cboSemiIntegratedMode);
    visit(ControlInfo{"cboReceiptInfo", 1, -1, "Receipt Info Mode"}, c.cboReceiptInfo);
    visit(ControlInfo{"cboEposType", 1, -1, "EPOS Type"}, c.cboEposType);
}

template <typename Visit> void forEachControl(GeneralPageControls& c, Visit&& visit) {
    visit(ControlInfo{"cboSplitTender", 2, -1, "&Split tender"}, c.cboSplitTender);
    visit(ControlInfo{"chkDecimalInSplitTender", 2, -1,
                      "&Decimal point entered in split tender amounts"},
          c.chkDecimalInSplitTender);
    visit(ControlInfo{"chkCashback", 2, -1, "Cashbac&k enabled"}, c.chkCashback);
    visit(ControlInfo{"cboCashBackEntry", 2, -1, "Cashback entr&y"}, c.cboCashBackEntry);
    visit(ControlInfo{"chkDcc", 2, -1, "Dynamic currency con&version (DCC) enabled"}, c.chkDcc);
    visit(ControlInfo{"cboDccOption", 2, -1, "&Where the DCC rate is offered"}, c.cboDccOption);
    visit(ControlInfo{"chkCustomerNotPresent", 2, -1,
                      "Customer not &present (mail/phone order) allowed"},
          c.chkCustomerNotPresent);
    visit(ControlInfo{"chkObscureCardNumber", 2, -1, "&Obscure card numbers"},
          c.chkObscureCardNumber);
    visit(ControlInfo{"chkAutoAcceptOnPinVerification", 2, -1,
                      "&Accept automatically when PIN verified"},
          c.chkAutoAcceptOnPinVerification);
    visit(ControlInfo{"chkAutoAcceptTappedNoVerification", 2, -1,
                      "Accept &tapped cards with no verification"},
          c.chkAutoAcceptTappedNoVerification);
    visit(ControlInfo{"chkOfflineMode", 2, -1, "Offl&ine mode enabled"}, c.chkOfflineMode);
    visit(ControlInfo{"chkE2EE", 2, -1, "&End-to-end encryption (E2EE) enabled"}, c.chkE2EE);
    visit(ControlInfo{"chkDailyTmsCall", 2, -1, "Dai&ly TMS call"}, c.chkDailyTmsCall);
    visit(ControlInfo{"chkAutoRunReport", 2, -1, "&Run the end-of-day report automatically"},
          c.chkAutoRunReport);
    visit(ControlInfo{"chkCloseBatch", 2, -1, "Close the batc&h at end of day"}, c.chkCloseBatch);
}

template <typename Visit> void forEachControl(ReceiptPageControls& c, Visit&& visit) {
    visit(ControlInfo{"cboPrinterType", 3, -1, "Printer t&ype"}, c.cboPrinterType);
    visit(ControlInfo{"txtOposPrinterDeviceName", 3, -1, "&OPOS device name"},
          c.txtOposPrinterDeviceName);
    visit(ControlInfo{"txtWindowsPrinterName", 3, -1, "&Windows printer"}, c.txtWindowsPrinterName);
    visit(ControlInfo{"txtWindowsPrinterFontName", 3, -1, "Windows fon&t"},
          c.txtWindowsPrinterFontName);
    visit(ControlInfo{"txtWindowsFontSize", 3, -1, "Font si&ze"}, c.txtWindowsFontSize);
    visit(ControlInfo{"cmdComPort", 3, -1, "&Printer Settings"}, c.cmdComPort);
    visit(ControlInfo{"lblPrinterSerial", 3, -1, ""}, c.lblPrinterSerial);
    visit(ControlInfo{"cboRmsPrinterNo", 3, -1, "RMS Receipt Printer Number"}, c.cboRmsPrinterNo);
    visit(ControlInfo{"txtLineFeedsBeforePaperCut", 3, -1, "&Line feeds before cut"},
          c.txtLineFeedsBeforePaperCut);
    visit(ControlInfo{"txtPrintNormalControl", 3, -1, "Norm&al print code"},
          c.txtPrintNormalControl);
    visit(ControlInfo{"txtPrintBoldControl", 3, -1, "Bol&d print code"}, c.txtPrintBoldControl);
    visit(ControlInfo{"chkWindowsFontBold", 3, -1, "Print &in bold"}, c.chkWindowsFontBold);
    visit(ControlInfo{"chkPrintMerchantReceipt", 3, -1, "Print &merchant receipt"},
          c.chkPrintMerchantReceipt);
    visit(ControlInfo{"chkPrintCustomerReceipt", 3, -1, "Print c&ustomer receipt"},
          c.chkPrintCustomerReceipt);
    visit(ControlInfo{"chkCutPaperAfterMerchantCopy", 3, -1, "Cut paper after merchant copy"},
          c.chkCutPaperAfterMerchantCopy);
    visit(ControlInfo{"chkCutPaperAfterCustomerCopy", 3, -1, "Cut paper after customer copy"},
          c.chkCutPaperAfterCustomerCopy);
    visit(ControlInfo{"chkPrintMerchantHeader", 3, -1, "Print merchant header"},
          c.chkPrintMerchantHeader);
    visit(ControlInfo{"chkPrintCustomerHeader", 3, -1, "Print customer header"},
          c.chkPrintCustomerHeader);
    visit(ControlInfo{"chkCustomerReceiptFirstIfPinVerified", 3, -1,
                      "Customer receipt first if PIN verified"},
          c.chkCustomerReceiptFirstIfPinVerified);
    visit(ControlInfo{"chkRefundSigOnMerchCopy", 3, -1, "Refund signature on merchant copy"},
          c.chkRefundSigOnMerchCopy);
    visit(ControlInfo{"chkRePrintReceipt", 3, -1, "Offer a receipt reprint"}, c.chkRePrintReceipt);
    visit(ControlInfo{"chkPromptTappedCustomerReceipt", 3, -1,
                      "Ask before customer receipt when tapped"},
          c.chkPromptTappedCustomerReceipt);
    visit(ControlInfo{"chkAppendLineFeed", 3, -1, "Append a line feed to every line"},
          c.chkAppendLineFeed);
    visit(ControlInfo{"chkMakeMerchantReceiptsAvailableToClient", 3, -1,
                      "Merchant receipts available to clients"},
          c.chkMakeMerchantReceiptsAvailableToClient);
}

template <typename Visit> void forEachControl(ChipPinPageControls& c, Visit&& visit) {
    visit(ControlInfo{"cboPort", 4, -1, "Select Serial (COM) Port for Chip And Pin Device"},
          c.cboPort);
    visit(ControlInfo{"cboSwipe", 4, -1, "Card s&wipe"}, c.cboSwipe);
    visit(ControlInfo{"txtIdlePrompt1", 4, -1, "Idle prompt line &1"}, c.txtIdlePrompt1);
    visit(ControlInfo{"txtIdlePrompt2", 4, -1, "Idle prompt line &2"}, c.txtIdlePrompt2);
    visit(ControlInfo{"txtTrackStartId", 4, -1, "Track data &start marker (hex)"},
          c.txtTrackStartId);
    visit(ControlInfo{"txtTrackEndId", 4, -1, "Track data &end marker (hex)"}, c.txtTrackEndId);
}

template <typename Visit> void forEachControl(DisplayPageControls& c, Visit&& visit) {
    visit(ControlInfo{"cboDisplaySize", 5, -1, "&Display size"}, c.cboDisplaySize);
    visit(ControlInfo{"cboWidth", 5, -1, "&Width"}, c.cboWidth);
    visit(ControlInfo{"txtWidth", 5, -1, "twip&s"}, c.txtWidth);
    visit(ControlInfo{"cboHeight", 5, -1, "&Height"}, c.cboHeight);
    visit(ControlInfo{"txtHeight", 5, -1, "tw&ips"}, c.txtHeight);
    visit(ControlInfo{"cboPosition", 5, -1, "Start-up &position"}, c.cboPosition);
    visit(ControlInfo{"txtLeft", 5, -1, "L&eft (twips)"}, c.txtLeft);
    visit(ControlInfo{"txtTop", 5, -1, "&Top (twips)"}, c.txtTop);
    visit(ControlInfo{"chkAlwaysOnTop", 5, -1, "&Always on top of the till's screens"},
          c.chkAlwaysOnTop);
    visit(ControlInfo{"chkDisplayOndrelLogo", 5, -1, "Display the Ondrel &logo"},
          c.chkDisplayOndrelLogo);
}

template <typename Visit> void forEachControl(WizardControls& c, Visit&& visit) {
    constexpr std::array<std::string_view, 7> kHeadings = {"",
                                                           "Merchant Configuration",
                                                           "Configuration (General)",
                                                           "Receipt Printing Configuration",
                                                           "Chip And Pin Device Configuration",
                                                           "Size, Positioning and Logo",
                                                           ""};
    for (int page = 0; page < 7; ++page) {
        visit(ControlInfo{"fraInstall", page, page, kHeadings[static_cast<std::size_t>(page)]},
              c.fraInstall[static_cast<std::size_t>(page)]);
    }
    visit(ControlInfo{"Picture1", 0, -1, ""}, c.Picture1);
    visit(ControlInfo{"Label1", 0, -1, ""}, c.Label1);
    visit(ControlInfo{"lblGuide", 0, -1,
                      "This wizard sets up the card-payment add-in of this till: the merchant, the "
                      "chip and PIN device, card handling, receipt printing and the add-in's "
                      "window.\n\nPress Next to go through the pages, and Finish to apply the "
                      "settings."},
          c.lblGuide);
    forEachControl(c.merchant, visit);
    forEachControl(c.general, visit);
    forEachControl(c.receipt, visit);
    forEachControl(c.chipPin, visit);
    forEachControl(c.display, visit);
    visit(ControlInfo{"Label18", 6, -1, "Installing and configuring software"}, c.Label18);
    visit(ControlInfo{"Label19", 6, -1, "Please wait ..."}, c.Label19);
    visit(ControlInfo{"ProgressBar1", 6, -1, ""}, c.ProgressBar1);
    visit(ControlInfo{"capstatus", 6, -1, ""}, c.capstatus);
    visit(ControlInfo{"cmdBack", -1, -1, "<< &Back"}, c.cmdBack);
    visit(ControlInfo{"cmdNext", -1, -1, "&Next >>"}, c.cmdNext);
    visit(ControlInfo{"cmdfInish", -1, -1, "&Finish"}, c.cmdfInish);
    visit(ControlInfo{"cmdClose", -1, -1, "&Close"}, c.cmdClose);
    visit(ControlInfo{"tmrStatus", -1, -1, ""}, c.tmrStatus);
}

template <typename Visit> void forEachControl(PrinterSerialControls& c, Visit&& visit) {
    visit(ControlInfo{"cboPort", -1, -1, "Port", true}, c.cboPort);
    visit(ControlInfo{"cboBaudRate", -1, -1, "Baud Rate", true}, c.cboBaudRate);
    visit(ControlInfo{"cboParity", -1, -1, "Parity", true}, c.cboParity);
    visit(ControlInfo{"cboDatabits", -1, -1, "Databits", true}, c.cboDatabits);
    visit(ControlInfo{"cboStopbit", -1, -1, "Stopbit", true}, c.cboStopbit);
    visit(ControlInfo{"cboFlowControl", -1, -1, "Flow Control", true}, c.cboFlowControl);
    visit(ControlInfo{"txtPaperCut", -1, -1, "Paper Cut Sequence (Hexadecimal)"}, c.txtPaperCut);
    visit(ControlInfo{"cmdOK", -1, -1, "OK"}, c.cmdOK);
    visit(ControlInfo{"cmdCancel", -1, -1, "&Cancel"}, c.cmdCancel);
}

template <typename Visit> void forEachControl(TmsControls& c, Visit&& visit) {
    visit(ControlInfo{"fraTmsType", -1, -1, "Select TMS Type"}, c.fraTmsType);
    visit(ControlInfo{"cboTmsType", -1, -1, ""}, c.cboTmsType);
    visit(ControlInfo{"lblDesc", -1, -1, ""}, c.lblDesc);
    visit(ControlInfo{"cmdTms", -1, -1, "&Run TMS Call"}, c.cmdTms);
    visit(ControlInfo{"cmdCancel", -1, -1, "&Cancel"}, c.cmdCancel);
}

} // namespace wizard
