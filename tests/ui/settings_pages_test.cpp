#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"
#include "ui/printer_serial.h"
#include "ui/wizard_fixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

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
    std::string text = kPageSettingsText;
    for (std::size_t start = 0, end; (end = text.find(';', start)) != std::string::npos;
         start = end + 1) {
        const std::size_t equals = text.find('=', start);
        values[text.substr(start, equals - start)] = text.substr(equals + 1, end - equals - 1);
    }
    return values;
}
const std::map<std::string, std::string> kPageSettings = pageSettings();
} // namespace

TEST_F(WizardTest, PagesTwoToFiveKeepEveryInstalledSettingThroughLoadAndSave) {
    plantClientFiles();
    plantSettings(kPageSettings);
    open();
    form_->SaveSettings();

    // Every value comes back as the text it was stored as, so a run changes none of them.
    std::size_t checked = 0;
    for (const SettingDescriptor& setting : settingsTable()) {
        const auto planted = kPageSettings.find(std::string(setting.valueName));
        if (planted != kPageSettings.end()) {
            EXPECT_EQ(storedText(*form_->newSettings(), setting), planted->second)
                << setting.valueName;
            ++checked;
        }
    }
    EXPECT_EQ(checked, kPageSettings.size());

    // The dependent fields are open exactly where the choices above use them.
    EXPECT_TRUE(control<QLineEdit>("txtWidth")->isEnabled());
    EXPECT_FALSE(control<QLineEdit>("txtHeight")->isEnabled()) << "screen height";
    EXPECT_TRUE(control<QLineEdit>("txtLeft")->isEnabled());
    EXPECT_TRUE(control<QLineEdit>("txtWindowsPrinterName")->isEnabled());
    EXPECT_FALSE(control<QLineEdit>("txtOposPrinterDeviceName")->isEnabled());
    EXPECT_FALSE(control<QPushButton>("cmdComPort")->isEnabled());
}

TEST_F(WizardTest, NumbersOutsideAListAreShownAndKeptNotReplaced) {
    plantClientFiles();
    plantSettings({{"PrinterType", "7"},
                   {"RmsReceiptPrinterNo", "3"},
                   {"StartupPosition", "9"},
                   {"DisplayMode", "4"}});
    open();
    EXPECT_EQ(combo("cboRmsPrinterNo")->currentText(), "3");
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lPrinterType, 7);
    EXPECT_EQ(form_->newSettings()->lRmsReceiptPrinterNo, 3);
    EXPECT_EQ(form_->newSettings()->lStartupPosition, 9);
    EXPECT_EQ(form_->newSettings()->lDisplayMode, 4);

    choose("cboPosition", "Top right of screen");
    choose("cboDisplaySize", "Compact");
    choose("cboRmsPrinterNo", "1");
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lStartupPosition, 2);
    EXPECT_EQ(form_->newSettings()->lDisplayMode, 1);
    EXPECT_EQ(form_->newSettings()->lRmsReceiptPrinterNo, 1);
}

TEST_F(WizardTest, ChoicesOnThePagesBecomeTheirSettings) {
    plantClientFiles();
    open();
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
    form_->SaveSettings();
    const TCcAddinRegistry& out = *form_->newSettings();
    EXPECT_TRUE(out.bExternalSwipe);
    EXPECT_TRUE(out.bSplitTender);
    EXPECT_EQ(out.lDccType, 1);
    EXPECT_EQ(out.lCashbackEntryType, 1);
    EXPECT_EQ(out.lAddinHeight, 7200);
    EXPECT_EQ(out.lAddinWidth, 0);

    control<QCheckBox>("chkDcc")->setChecked(false);
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lDccType, 0) << "DCC off whatever the rate list shows";
}

TEST_F(WizardTest, EncryptionAloneLeavesFinishAsItWasAnyOtherOptionRechecksIt) {
    plantClientFiles();
    plantSettings({{"SemiIntegrated", "1"},
                   {"BaseCurrency", "EUR"},
                   {"ComPort", "COM1"},
                   {"ChipDeviceName", "VeriFone VX820"},
                   {"TessalyID", "AIB Live"}});
    open();
    ASSERT_FALSE(finishEnabled());
    control<QCheckBox>("chkE2EE")->setChecked(true);
    EXPECT_FALSE(finishEnabled());
    control<QCheckBox>("chkCloseBatch")->setChecked(true);
    EXPECT_TRUE(finishEnabled());
}

TEST_F(WizardTest, PrinterSettingsButtonHandsTheSerialLineToTheDialogAndBack) {
    plantClientFiles();
    plantSettings({{"PrinterType", "2"},
                   {"PrinterPort", "COM2"},
                   {"PrinterBaudRate", "4800"},
                   {"PrinterParity", "ODD"},
                   {"PrinterDatabits", "7"},
                   {"PrinterStopbit", "1"},
                   {"PrinterFlowControl", "0"}});
    open();
    auto* button = control<QPushButton>("cmdComPort");
    ASSERT_EQ(button->text(), "&Printer Settings");
    ASSERT_TRUE(button->isEnabled()) << "a serial printer";

    QString shownPort;
    QString shownCut;
    whenModal([&](QWidget* dialog) {
        shownPort = dialog->findChild<QComboBox*>("cboPort")->currentText();
        shownCut = dialog->findChild<QLineEdit*>("txtPaperCut")->text();
        dialog->findChild<QComboBox*>("cboBaudRate")->setCurrentText("38400");
        // A port the line cannot use is not taken over by the page.
        dialog->findChild<QComboBox*>("cboPort")->setCurrentText("COM0");
        buttonOf(dialog, "OK")->click();
    });
    button->click();
    EXPECT_EQ(shownPort, "COM2");
    EXPECT_EQ(shownCut, "1B64040D0A1B690D0A");
    EXPECT_TRUE(printerSerial.accepted);
    form_->SaveSettings();
    const TCcAddinRegistry& out = *form_->newSettings();
    EXPECT_EQ(out.lPrinterBaudRate, 38400);
    EXPECT_EQ(out.strPrinterPort, "COM2");
    EXPECT_EQ(out.strPrinterParity, "ODD");
    EXPECT_EQ(out.strPrinterCutPaper, "1B64040D0A1B690D0A");

    whenModal([](QWidget* dialog) {
        dialog->findChild<QComboBox*>("cboBaudRate")->setCurrentText("1200");
        buttonOf(dialog, "Cancel")->click();
    });
    button->click();
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lPrinterBaudRate, 38400) << "cancel keeps the line";
}
