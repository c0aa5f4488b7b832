#include "wizard/wizard_fixture.h"

namespace {
const std::string kOnTerminal = "Transaction confirmation/receipt printing on terminal";
const std::string kOnTill = "Transaction confirmation/receipt printing on till";

bool looksGrey(const wizard::Control& control) {
    return control.BackColor() == wizard::SystemColour::ButtonFace;
}
} // namespace

TEST_F(WizardTest, ModeAndReceiptChoicesGreyWhatTheModeDoesNotUse) {
    open();
    FakeComboBox& semiMode = combo("cboSemiIntegratedMode");
    FakeComboBox& receiptInfo = combo("cboReceiptInfo");
    FakeCheckBox& offline = check("chkOfflineMode");

    combo("cboConfigMode").choose("Fully Integrated");
    EXPECT_FALSE(semiMode.Enabled());
    EXPECT_FALSE(receiptInfo.Enabled());
    EXPECT_TRUE(looksGrey(receiptInfo));
    EXPECT_TRUE(offline.Enabled());

    combo("cboConfigMode").choose("Semi Integrated");
    EXPECT_TRUE(semiMode.Enabled());
    EXPECT_FALSE(looksGrey(semiMode));
    EXPECT_FALSE(offline.Enabled());
    semiMode.choose(kOnTerminal);
    EXPECT_FALSE(receiptInfo.Enabled());
    semiMode.choose(kOnTill);
    EXPECT_TRUE(receiptInfo.Enabled());
    EXPECT_FALSE(looksGrey(receiptInfo));

    // Printing on the terminal is mode 1 whatever the lookup list still shows.
    receiptInfo.choose("Receipt information lookup after dcc transaction");
    expectSaved({{"SemiIntegrated", "4"}});
    semiMode.choose(kOnTerminal);
    expectSaved({{"SemiIntegrated", "1"}});
    combo("cboConfigMode").choose("Fully Integrated");
    expectSaved({{"SemiIntegrated", "0"}});
}

TEST_F(WizardTest, InstallationTypeRefillsTheProfilesAndEposTypeSwitchesTheRmsPrinterNumber) {
    open();
    FakeComboBox& profiles = combo("cboTessalyId");
    EXPECT_EQ(profiles.entries(), (std::vector<std::string>{"Barclays Live", "AIB Live"}));
    profiles.chooseIndex(1);
    combo("cboInstallType").choose("TEST");
    EXPECT_EQ(profiles.entries(), (std::vector<std::string>{"Barclays Test", "AIB Test"}));
    EXPECT_EQ(profiles.Text(), "Barclays Test") << "the earlier choice is lost";
    combo("cboInstallType").choose("LIVE");
    EXPECT_EQ(profiles.Text(), "Barclays Live");

    FakeComboBox& printerNo = combo("cboRmsPrinterNo");
    combo("cboEposType").choose("Till is a Microsoft Retail Management till (RMS V3)");
    EXPECT_FALSE(printerNo.Enabled()) << "an RMS V3 till gets no printer number";
    EXPECT_FALSE(looksGrey(printerNo)) << "this handler never changed the background";
    combo("cboEposType").choose("Till is a Microsoft Retail Management till (RMS V2)");
    EXPECT_TRUE(printerNo.Enabled());
    combo("cboEposType").choose("Till is not a Microsoft Retail Management till");
    EXPECT_FALSE(printerNo.Enabled());
    expectSaved({{"Mode", "0"}, {"TessalyID", "Barclays Live"}, {"RmsTill", "0"}});
}

TEST_F(WizardTest, StoredMerchantSettingsAreShownAsLoaded) {
    const std::map<std::string, std::string> planted = {
        {"SemiIntegrated", "3"}, {"Acquirer", "AIB"},         {"BaseCurrency", "EUR"},
        {"Mode", "1"},           {"TessalyID", "AIB Test"},   {"ChipDeviceName", "VeriFone VX810"},
        {"RmsTill", "2"},        {"CorvixMerchantId", "M-1"}, {"CorvixClientId", "C-2"},
        {"FuelType", ""}};
    plantSettings(planted);
    open();
    // Mode 3 (printing on the till, a lookup after every transaction) opens the lookup list; an
    // RMS V3 till gets no printer number.
    EXPECT_TRUE(combo("cboReceiptInfo").Enabled());
    EXPECT_FALSE(combo("cboRmsPrinterNo").Enabled());
    EXPECT_EQ(combo("cboReceiptInfo").Text(), "Receipt information lookup after every transaction");
    // Each value is shown as the choice that saves it back, mode 3 included.
    expectSaved(planted);
}

TEST_F(WizardTest, TextsBoundForTheTmsScriptOrTheDeviceDropQuotesAndControlCharacters) {
    open();
    text("txtCxMerchant").type("1\":Run \"calc\"\r\n");
    text("txtIdlePrompt1").type(std::string("HEL\0LO\"", 7));
    EXPECT_EQ(text("txtCxMerchant").Text(), "1:Run calc");
    EXPECT_EQ(text("txtIdlePrompt1").Text(), "HELLO");
    text("txtCxClient").type("caf\xE9 & co");
    EXPECT_EQ(text("txtCxClient").Text(), "caf\xE9 & co");
}
