#include "ui/wizard_fixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QPalette>

namespace {
const QString kOnTerminal = "Transaction confirmation/receipt printing on terminal";
const QString kOnTill = "Transaction confirmation/receipt printing on till";

bool looksGrey(const QWidget* control) {
    return control->palette().color(QPalette::Active, QPalette::Base) ==
           QApplication::palette().color(QPalette::Active, QPalette::Button);
}

QStringList entries(const QComboBox* box) {
    QStringList texts;
    for (int i = 0; i < box->count(); ++i) {
        texts << box->itemText(i);
    }
    return texts;
}
} // namespace

TEST_F(WizardTest, ModeAndReceiptChoicesGreyWhatTheModeDoesNotUse) {
    open();
    QComboBox* semiMode = combo("cboSemiIntegratedMode");
    QComboBox* receiptInfo = combo("cboReceiptInfo");
    auto* offline = control<QCheckBox>("chkOfflineMode");

    choose("cboConfigMode", "Fully Integrated");
    EXPECT_FALSE(semiMode->isEnabled());
    EXPECT_FALSE(receiptInfo->isEnabled());
    EXPECT_TRUE(looksGrey(receiptInfo));
    EXPECT_TRUE(offline->isEnabled());

    choose("cboConfigMode", "Semi Integrated");
    EXPECT_TRUE(semiMode->isEnabled());
    EXPECT_FALSE(looksGrey(semiMode));
    EXPECT_FALSE(offline->isEnabled());
    choose("cboSemiIntegratedMode", kOnTerminal);
    EXPECT_FALSE(receiptInfo->isEnabled());
    choose("cboSemiIntegratedMode", kOnTill);
    EXPECT_TRUE(receiptInfo->isEnabled());
    EXPECT_FALSE(looksGrey(receiptInfo));

    // Printing on the terminal is mode 1 whatever the lookup list still shows.
    choose("cboReceiptInfo", "Receipt information lookup after dcc transaction");
    expectSaved({{"SemiIntegrated", "4"}});
    choose("cboSemiIntegratedMode", kOnTerminal);
    expectSaved({{"SemiIntegrated", "1"}});
    choose("cboConfigMode", "Fully Integrated");
    expectSaved({{"SemiIntegrated", "0"}});
}

TEST_F(WizardTest, InstallationTypeRefillsTheProfilesAndEposTypeSwitchesTheRmsPrinterNumber) {
    open();
    QComboBox* profiles = combo("cboTessalyId");
    EXPECT_EQ(entries(profiles), QStringList({"Barclays Live", "AIB Live"}));
    profiles->setCurrentIndex(1);
    choose("cboInstallType", "TEST");
    EXPECT_EQ(entries(profiles), QStringList({"Barclays Test", "AIB Test"}));
    EXPECT_EQ(profiles->currentText(), "Barclays Test") << "the earlier choice is lost";
    choose("cboInstallType", "LIVE");
    EXPECT_EQ(profiles->currentText(), "Barclays Live");

    QComboBox* printerNo = combo("cboRmsPrinterNo");
    choose("cboEposType", "Till is a Microsoft Retail Management till (RMS V3)");
    EXPECT_FALSE(printerNo->isEnabled()) << "an RMS V3 till gets no printer number";
    EXPECT_FALSE(looksGrey(printerNo)) << "this handler never changed the background";
    choose("cboEposType", "Till is a Microsoft Retail Management till (RMS V2)");
    EXPECT_TRUE(printerNo->isEnabled());
    choose("cboEposType", "Till is not a Microsoft Retail Management till");
    EXPECT_FALSE(printerNo->isEnabled());
    expectSaved({{"Mode", "0"}, {"TessalyID", "Barclays Live"}, {"RmsTill", "0"}});
}

TEST_F(WizardTest, StoredMerchantSettingsAreShownAsLoaded) {
    const std::map<std::string, std::string> planted = {
        {"SemiIntegrated", "3"}, {"Acquirer", "AIB"},         {"BaseCurrency", "EUR"},
        {"Mode", "1"},           {"TessalyID", "AIB Test"},   {"ChipDeviceName", "VeriFone VX810"},
        {"RmsTill", "2"},        {"CorvixMerchantId", "M-1"}, {"CorvixClientId", "C-2"}};
    plantSettings(planted);
    open();
    // Mode 3 (printing on the till, a lookup after every transaction) opens the lookup list; an
    // RMS V3 till gets no printer number.
    EXPECT_TRUE(combo("cboReceiptInfo")->isEnabled());
    EXPECT_FALSE(combo("cboRmsPrinterNo")->isEnabled());
    // Each value is shown as the choice that saves it back, mode 3 included.
    expectSaved(planted);
}

// The lists' texts are the system's own: a setting is stored as the chosen text, or as the
// chosen text's position, so a misspelt or misplaced entry would reach the till.
TEST_F(WizardTest, FixedListsHoldTheirEntriesInOrder) {
    open();
    const std::map<const char*, QStringList> lists = {
        {"cboConfigMode", {"Fully Integrated", "Semi Integrated"}},
        {"cboSemiIntegratedMode", {kOnTerminal, kOnTill}},
        {"cboReceiptInfo",
         {"No receipt information lookup", "Receipt information lookup after every transaction",
          "Receipt information lookup after dcc transaction"}},
        {"cboAcquirer", {"", "AIB", "Elavon", "Barclays", "Streamline", "Lloyds", "HSBC"}},
        {"cboCurrency", {"", "EUR", "GBP"}},
        {"cboInstallType", {"LIVE", "TEST"}},
        {"cboDevice", {"", "VeriFone SC5000", "VeriFone VX810", "VeriFone VX820"}},
        {"cboEposType",
         {"Till is a Microsoft Retail Management till (RMS V2)",
          "Till is a Microsoft Retail Management till (RMS V3)",
          "Till is not a Microsoft Retail Management till"}},
        {"cboSwipe", {"Card is swiped on till", "Card is swiped on chip and pin device"}},
        {"cboSplitTender",
         {"Card split tendering is controlled by EPOS application",
          "Card split tendering is controlled by Credit Card Add-in"}},
        {"cboRmsPrinterNo", {"1", "2"}},
        {"cboDisplaySize", {"Standard", "Compact", "Specify width and height twip values"}},
        {"cboWidth", {"Screen width", "Enter width"}},
        {"cboHeight", {"Screen height", "Enter height"}},
        {"cboPosition",
         {"Centered on screen", "Top left of screen", "Top right of screen",
          "Bottom left of screen", "Bottom right of screen", "Enter left and top twip values"}},
        {"cboCashBackEntry",
         {"Enter amount (including cent/pence) and display decimal point",
          "Enter amount (including cent/pence) and do not display decimal point",
          "Enter amount in whole euros/pounds with no cent/pence entry"}},
        {"cboDccOption",
         {"Rate is offered on the Parvane front-end",
          "Rate is offered on the attached chip&pin device"}},
    };
    for (const auto& [name, expected] : lists) {
        EXPECT_EQ(entries(combo(name)), expected) << name;
    }
    const QStringList ports = entries(combo("cboPort"));
    ASSERT_EQ(ports.size(), 256);
    EXPECT_EQ(ports.front() + "|" + ports[1] + "|" + ports.back(), "|COM1|COM255");
    EXPECT_EQ(entries(combo("cboFuel")).front(), "");
}
