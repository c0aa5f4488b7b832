#include "ui/frm_pt_serial_config.h"
#include "ui/printer_serial.h"
#include "ui/wizard_fixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <sstream>

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

struct SerialDialog {
    frmPTSerialConfig dialog;
    // Port, baud rate, parity, data bits, stop bits, flow control and paper cut as shown.
    std::string shown() const {
        QStringList texts;
        for (const char* name : {"cboPort", "cboBaudRate", "cboParity", "cboDatabits", "cboStopbit",
                                 "cboFlowControl"}) {
            texts << dialog.findChild<QComboBox*>(name)->currentText();
        }
        texts << dialog.findChild<QLineEdit*>("txtPaperCut")->text();
        return texts.join(", ").toStdString();
    }
    void type(const char* name, const QString& text) {
        dialog.findChild<QComboBox*>(name)->setCurrentText(text);
    }
    void click(const char* name) { dialog.findChild<QPushButton*>(name)->click(); }
};
} // namespace

TEST_F(WizardTest, PagesTwoToFiveKeepEveryInstalledSettingThroughLoadAndSave) {
    const std::map<std::string, std::string> planted = pageSettings();
    plantSettings(planted);
    open();
    // Every value comes back as the text it was stored as, so a run changes none of them.
    expectSaved(planted);

    // The dependent fields are open exactly where the choices above use them.
    EXPECT_TRUE(control<QLineEdit>("txtWidth")->isEnabled());
    EXPECT_FALSE(control<QLineEdit>("txtHeight")->isEnabled()) << "screen height";
    EXPECT_TRUE(control<QLineEdit>("txtLeft")->isEnabled());
    EXPECT_TRUE(control<QLineEdit>("txtWindowsPrinterName")->isEnabled());
    EXPECT_FALSE(control<QLineEdit>("txtOposPrinterDeviceName")->isEnabled());
    EXPECT_FALSE(control<QPushButton>("cmdComPort")->isEnabled());
}

TEST_F(WizardTest, ChoicesOnThePagesBecomeTheirSettingsAndNumbersOutsideAListAreKept) {
    const std::map<std::string, std::string> outside = {{"PrinterType", "7"},
                                                        {"RmsReceiptPrinterNo", "3"},
                                                        {"StartupPosition", "9"},
                                                        {"DisplayMode", "4"}};
    plantSettings(outside);
    open();
    EXPECT_EQ(combo("cboRmsPrinterNo")->currentText(), "3");
    expectSaved(outside);

    choose("cboPosition", "Top right of screen");
    choose("cboRmsPrinterNo", "1");
    choose("cboSwipe", "Card is swiped on chip and pin device");
    choose("cboSplitTender", "Card split tendering is controlled by Credit Card Add-in");
    control<QCheckBox>("chkDcc")->setChecked(true);
    choose("cboDccOption", "Rate is offered on the Parvane front-end");
    choose("cboCashBackEntry",
           "Enter amount (including cent/pence) and do not display decimal point");
    choose("cboDisplaySize", "Specify width and height twip values");
    choose("cboHeight", "Enter height");
    control<QLineEdit>("txtHeight")->setText("7200");
    control<QLineEdit>("txtWidth")->setText("5000"); // "Screen width" still chosen
    expectSaved({{"StartupPosition", "2"},
                 {"RmsReceiptPrinterNo", "1"},
                 {"DisplayMode", "2"},
                 {"ExternalSwipe", "1"},
                 {"SplitTender", "1"},
                 {"DccEnabled", "1"},
                 {"DecimalInCashback", "1"},
                 {"AddinHeight", "7200"},
                 {"AddinWidth", "0"}});
    control<QCheckBox>("chkDcc")->setChecked(false);
    expectSaved({{"DccEnabled", "0"}}); // whatever the rate list shows
}

TEST_F(WizardTest, PrinterSettingsButtonHandsTheSerialLineToTheDialogAndBack) {
    std::map<std::string, std::string> line = {
        {"PrinterType", "2"},       {"PrinterPort", "COM2"},  {"PrinterBaudRate", "4800"},
        {"PrinterParity", "ODD"},   {"PrinterDatabits", "7"}, {"PrinterStopbit", "1"},
        {"PrinterFlowControl", "0"}};
    plantSettings(line);
    open();
    auto* button = control<QPushButton>("cmdComPort");
    ASSERT_TRUE(button->isEnabled()) << "a serial printer";

    QString shownPort;
    whenModal([&](QWidget* dialog) {
        shownPort = dialog->findChild<QComboBox*>("cboPort")->currentText();
        dialog->findChild<QComboBox*>("cboBaudRate")->setCurrentText("38400");
        // A port the line cannot use is not taken over by the page.
        dialog->findChild<QComboBox*>("cboPort")->setCurrentText("COM0");
        buttonOf(dialog, "OK")->click();
    });
    button->click();
    EXPECT_EQ(shownPort, "COM2");
    line["PrinterBaudRate"] = "38400";
    expectSaved(line);
}

TEST_F(WizardTest, SerialDialogShowsUsableStoredValuesOkStoresWhatIsTypedCancelKeepsThem) {
    // Unusable values give the defaults (a stored n reads as NONE).
    printerSerial = {"COM0", 14400, "n", 9, 1.25, 7, "", false};
    EXPECT_EQ(SerialDialog().shown(), "LPT1, 9600, NONE, 8, 1, Hardware, 1B64040D0A1B690D0A");
    printerSerial = {"COM3", 19200, "EVEN", 7, 1.5, 1, "not hex", false};
    {
        SerialDialog serial;
        EXPECT_EQ(serial.shown(), "COM3, 19200, EVEN, 7, 1.5, Xon/Xoff, not hex");
        serial.type("cboPort", "COM4");
        serial.type("cboBaudRate", "57600");
        serial.type("cboFlowControl", "None");
        serial.click("cmdOK");
        EXPECT_EQ(serial.dialog.result(), QDialog::Accepted);
    }
    EXPECT_TRUE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM4");
    EXPECT_EQ(printerSerial.baudRate, 57600);
    EXPECT_EQ(printerSerial.stopBits, 1.5);
    EXPECT_EQ(printerSerial.flowControl, 0);
    EXPECT_EQ(printerSerial.paperCut, "not hex");

    {
        // A baud rate that is no number ends OK with the port already stored and the dialog open.
        SerialDialog serial;
        serial.type("cboPort", "COM6");
        serial.type("cboBaudRate", "fast");
        serial.type("cboDatabits", "5");
        serial.dialog.show();
        serial.click("cmdOK");
        EXPECT_TRUE(serial.dialog.isVisible());
        EXPECT_EQ(printerSerial.port, "COM6");
        EXPECT_EQ(printerSerial.baudRate, 57600);
        EXPECT_EQ(printerSerial.dataBits, 7);

        serial.click("cmdCancel");
        EXPECT_FALSE(serial.dialog.isVisible());
    }
    EXPECT_FALSE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM6");
}
