#include "wizard/frm_pt_serial_config.h"
#include "wizard/printer_serial.h"
#include "wizard/wizard_fixture.h"

#include <sstream>

using wizard::printerSerial;

namespace {
// Every setting of pages 2 to 5, stored with a value other than its default: "name=value;".
const char* const kPageSettingsText =
    "SplitTender=1;DecimalInSplitTender=1;CashbackEnabled=1;DecimalInCashback=2;DccEnabled=2;"
    "CustomerNotPresent=1;ObscureCardNumber=1;AutoAcceptOnPinVerification=1;"
    "AutoAcceptTappedNoVerification=1;OfflineModeEnabled=1;E2EEEnabled=1;DailyTmsCall=1;"
    "AutoRunReport=1;CloseBatch=1;PrinterType=1;OPOSPrinterDeviceName=TM-T88;"
    "WindowsPrinterName=Receipts \xE9t\xE9;WindowsPrinterFontName=Courier;WindowsFontSize=12;"
    "WindowsFontBold=0;PrintNormalControl=1B21;PrintBoldControl=1B2108;LineFeedsBeforePaperCut=5;"
    "AppendLineFeed=1;RmsReceiptPrinterNo=2;PrintReceipts=7;CustomerReceiptFirstIfPinVerified=1;"
    "CutPaperAfterMerchantCopy=0;CutPaperAfterCustomerCopy=0;PrintMerchantHeader=0;"
    "PrintCustomerHeader=0;RefundSigNoMerchantReceipt=1;ReprintReceipt=1;"
    "PromptTappedCustomerReceipt=1;MerchantReceiptsAvailableToClients=1;PrinterPort=COM7;"
    "PrinterBaudRate=19200;PrinterParity=EVEN;PrinterDatabits=7;PrinterStopbit=2;"
    "PrinterFlowControl=1;PrinterCutPaperSequence=1D5600;ComPort=COM9;ExternalSwipe=1;"
    "IdlePrompt1=WELCOME;IdlePrompt2=INSERT CARD;TrackStartID=25;TrackEndID=3A;DisplayMode=2;"
    "AddinWidth=9000;AddinHeight=0;StartupPosition=5;LeftTwips=120;TopTwips=-40;AlwaysOnTop=1;"
    "DisplayOndrelLogo=1;";

std::map<std::string, std::string> pageSettings() {
    std::map<std::string, std::string> values;
    std::istringstream text(kPageSettingsText);
    for (std::string pair; std::getline(text, pair, ';');) {
        values[pair.substr(0, pair.find('='))] = pair.substr(pair.find('=') + 1);
    }
    return values;
}

// Port, baud rate, parity, data bits, stop bits, flow control and paper cut as the dialog shows.
std::string shown(const FakeForm<wizard::PrinterSerialControls>& dialog) {
    std::string texts;
    for (const char* name :
         {"cboPort", "cboBaudRate", "cboParity", "cboDatabits", "cboStopbit", "cboFlowControl"}) {
        texts += dialog.combo(name).Text() + ", ";
    }
    return texts + dialog.text("txtPaperCut").Text();
}
} // namespace

TEST_F(WizardTest, PagesTwoToFiveKeepEveryInstalledSettingThroughLoadAndSave) {
    const std::map<std::string, std::string> planted = pageSettings();
    plantSettings(planted);
    open();
    // Every value comes back as the text it was stored as, so a run changes none of them.
    expectSaved(planted);

    // The dependent fields are open exactly where the choices above use them.
    EXPECT_TRUE(text("txtWidth").Enabled());
    EXPECT_FALSE(text("txtHeight").Enabled()) << "screen height";
    EXPECT_TRUE(text("txtLeft").Enabled());
    EXPECT_TRUE(text("txtWindowsPrinterName").Enabled());
    EXPECT_FALSE(text("txtOposPrinterDeviceName").Enabled());
    EXPECT_FALSE(button("cmdComPort").Enabled());
}

TEST_F(WizardTest, ChoicesOnThePagesBecomeTheirSettingsAndNumbersOutsideAListAreKept) {
    const std::map<std::string, std::string> outside = {{"PrinterType", "7"},
                                                        {"RmsReceiptPrinterNo", "3"},
                                                        {"StartupPosition", "9"},
                                                        {"DisplayMode", "4"}};
    plantSettings(outside);
    open();
    EXPECT_EQ(combo("cboRmsPrinterNo").Text(), "3");
    expectSaved(outside);

    combo("cboPosition").choose("Top right of screen");
    combo("cboEposType").choose("Till is a Microsoft Retail Management till (RMS V2)");
    combo("cboRmsPrinterNo").choose("1");
    combo("cboSwipe").choose("Card is swiped on chip and pin device");
    combo("cboSplitTender").choose("Card split tendering is controlled by Credit Card Add-in");
    check("chkDcc").tick(true);
    combo("cboDccOption").choose("Rate is offered on the Parvane front-end");
    check("chkCashback").tick(true);
    combo("cboCashBackEntry")
        .choose("Enter amount (including cent/pence) and do not display decimal point");
    combo("cboDisplaySize").choose("Specify width and height twip values");
    combo("cboHeight").choose("Enter height");
    text("txtHeight").type("7200");
    EXPECT_FALSE(text("txtWidth").Enabled()) << "\"Screen width\" is still chosen";
    expectSaved({{"StartupPosition", "2"},
                 {"RmsReceiptPrinterNo", "1"},
                 {"DisplayMode", "2"},
                 {"ExternalSwipe", "1"},
                 {"SplitTender", "1"},
                 {"DccEnabled", "1"},
                 {"DecimalInCashback", "1"},
                 {"AddinHeight", "7200"},
                 {"AddinWidth", "0"}});
    check("chkDcc").tick(false);
    EXPECT_FALSE(combo("cboDccOption").Enabled());
    expectSaved({{"DccEnabled", "0"}}); // whatever the rate list shows
}

TEST_F(WizardTest, PrinterSettingsButtonHandsTheSerialLineToTheDialogAndBack) {
    std::map<std::string, std::string> line = {
        {"PrinterType", "2"},       {"PrinterPort", "COM2"},  {"PrinterBaudRate", "4800"},
        {"PrinterParity", "ODD"},   {"PrinterDatabits", "7"}, {"PrinterStopbit", "1"},
        {"PrinterFlowControl", "0"}};
    plantSettings(line);
    open();
    ASSERT_TRUE(button("cmdComPort").Enabled()) << "a serial printer";

    host_.answerPrinterSettings = [](FakeForm<wizard::PrinterSerialControls>& dialog) {
        // A stored 0 is "None"; a port the line cannot use is not taken over by the page.
        EXPECT_EQ(shown(dialog), "COM2, 4800, ODD, 7, 1, None, 1B64040D0A1B690D0A");
        dialog.combo("cboBaudRate").type("38400");
        dialog.combo("cboPort").type("COM0");
        dialog.button("cmdOK").press();
    };
    text("txtCxClient").type("x"); // Finish is looked at again after the dialog
    button("cmdComPort").press();
    line["PrinterBaudRate"] = "38400";
    expectSaved(line);
    EXPECT_EQ(window_.label("lblPrinterSerial").Caption(),
              "COM2, 38400 baud, parity ODD, 7 data bits, 1 stop bits, None flow; cut "
              "1B64040D0A1B690D0A");
}

// A printer with nothing stored shows the dialog's own defaults, hardware flow control included,
// and saving the page unchanged stores nothing new.
TEST_F(WizardTest, APrinterWithNothingStoredShowsTheDialogsDefaults) {
    plantSettings({{"PrinterType", "2"}});
    open();
    host_.answerPrinterSettings = [](FakeForm<wizard::PrinterSerialControls>& dialog) {
        EXPECT_EQ(shown(dialog), "LPT1, 9600, NONE, 8, 1, Hardware, 1B64040D0A1B690D0A");
        dialog.button("cmdCancel").press();
    };
    button("cmdComPort").press();
    expectSaved({{"PrinterFlowControl", "0"}, {"PrinterPort", ""}});
}

TEST(PrinterSerialDialog, ShowsUsableStoredValuesOkStoresWhatIsTypedCancelKeepsThem) {
    FakeForm<wizard::PrinterSerialControls> window;
    const auto open = [&window]() -> std::unique_ptr<wizard::frmPTSerialConfig> {
        auto dialog = std::make_unique<wizard::frmPTSerialConfig>();
        dialog->controls = window.controls;
        dialog->Unload = [] {};
        dialog->Form_Load();
        return dialog;
    };
    // Unusable values give the defaults (a stored n reads as NONE).
    printerSerial = {"COM0", 14400, "n", 9, 1.25, 7, "", false};
    auto dialog = open();
    EXPECT_EQ(shown(window), "LPT1, 9600, NONE, 8, 1, Hardware, 1B64040D0A1B690D0A");
    printerSerial = {"COM3", 19200, "EVEN", 7, 1.5, 1, "not hex", false};
    dialog = open();
    EXPECT_EQ(shown(window), "COM3, 19200, EVEN, 7, 1.5, Xon/Xoff, not hex");
    bool unloaded = false;
    dialog->Unload = [&unloaded] { unloaded = true; };
    window.combo("cboPort").type("COM4");
    window.combo("cboBaudRate").type("57600");
    window.combo("cboFlowControl").choose("None");
    window.button("cmdOK").press();
    EXPECT_TRUE(unloaded);
    EXPECT_TRUE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM4");
    EXPECT_EQ(printerSerial.baudRate, 57600);
    EXPECT_EQ(printerSerial.stopBits, 1.5);
    EXPECT_EQ(printerSerial.flowControl, 0);
    EXPECT_EQ(printerSerial.paperCut, "not hex");

    // A baud rate that is no number ends OK with the port already stored and the dialog open.
    dialog = open();
    unloaded = false;
    dialog->Unload = [&unloaded] { unloaded = true; };
    window.combo("cboPort").type("COM6");
    window.combo("cboBaudRate").type("fast");
    window.combo("cboDatabits").type("5");
    window.button("cmdOK").press();
    EXPECT_FALSE(unloaded);
    EXPECT_EQ(printerSerial.port, "COM6");
    EXPECT_EQ(printerSerial.baudRate, 57600);
    EXPECT_EQ(printerSerial.dataBits, 7);
    window.button("cmdCancel").press();
    EXPECT_TRUE(unloaded);
    EXPECT_FALSE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM6");
}
