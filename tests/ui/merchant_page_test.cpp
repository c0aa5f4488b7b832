#include "settings/ccaddin_registry.h"
#include "ui/wizard_fixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPalette>
#include <filesystem>

namespace {
const QString kOnTerminal = "Transaction confirmation/receipt printing on terminal";
const QString kOnTill = "Transaction confirmation/receipt printing on till";
const QString kRmsV2 = "Till is a Microsoft Retail Management till (RMS V2)";
const QString kRmsV3 = "Till is a Microsoft Retail Management till (RMS V3)";
const QString kNotRms = "Till is not a Microsoft Retail Management till";

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

TEST_F(WizardTest, MerchantListsHoldTheirEntriesInOrderStartingOnTheFirst) {
    plantClientFiles();
    open();
    EXPECT_EQ(entries(combo("cboAcquirer")),
              QStringList({"", "AIB", "Elavon", "Barclays", "Streamline", "Lloyds", "HSBC"}));
    EXPECT_EQ(entries(combo("cboCurrency")), QStringList({"", "EUR", "GBP"}));
    const QStringList fuels = entries(combo("cboFuel"));
    ASSERT_GT(fuels.size(), 1) << "the demo fuel table's names follow the empty entry";
    EXPECT_EQ(fuels.front(), "");
    // Nothing stored: the lists stand on their first entries, except where the record's
    // defaults choose another (till type 0 is the "not" entry).
    EXPECT_EQ(combo("cboConfigMode")->currentText(), "Fully Integrated");
    EXPECT_EQ(combo("cboTessalyId")->currentText(), "Barclays Live");
    EXPECT_EQ(combo("cboEposType")->currentText(), kNotRms);
}

TEST_F(WizardTest, ModeAndReceiptChoicesGreyWhatTheModeDoesNotUse) {
    plantClientFiles();
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
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lOperatingMode, 4);
    choose("cboSemiIntegratedMode", kOnTerminal);
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lOperatingMode, 1);
    choose("cboConfigMode", "Fully Integrated");
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lOperatingMode, 0);
}

TEST_F(WizardTest, InstallationTypeOffersOnlyProfilesOfItsKind) {
    plantClientFiles();
    open();
    QComboBox* profiles = combo("cboTessalyId");
    EXPECT_EQ(entries(profiles), QStringList({"Barclays Live", "AIB Live"}));
    profiles->setCurrentIndex(1);

    choose("cboInstallType", "TEST");
    EXPECT_EQ(entries(profiles), QStringList({"Barclays Test", "AIB Test"}));
    EXPECT_EQ(profiles->currentText(), "Barclays Test") << "the earlier choice is lost";
    choose("cboInstallType", "LIVE");
    EXPECT_EQ(profiles->currentText(), "Barclays Live");
    form_->SaveSettings();
    EXPECT_FALSE(form_->newSettings()->bTestMode);
    EXPECT_EQ(form_->newSettings()->strTessalyID, "Barclays Live");
}

TEST_F(WizardTest, WithoutAProfileFileTheProfileListStaysEmptyAndFinishOutOfReach) {
    plantClientFiles();
    std::filesystem::remove(till_.driveC() / "Program Files" / "Tessaly" / "connectioninfo.ini");
    open();
    choose("cboAcquirer", "AIB");
    choose("cboCurrency", "EUR");
    choose("cboDevice", "VeriFone VX810");
    choose("cboPort", "COM1");
    choose("cboInstallType", "TEST");
    EXPECT_EQ(combo("cboTessalyId")->count(), 0);
    EXPECT_FALSE(finishEnabled());
}

TEST_F(WizardTest, EposTypeSwitchesTheRmsPrinterNumberWithoutGreyingIt) {
    plantClientFiles();
    open();
    QComboBox* printerNo = combo("cboRmsPrinterNo");
    choose("cboEposType", kRmsV3);
    EXPECT_FALSE(printerNo->isEnabled()) << "an RMS V3 till gets no printer number";
    EXPECT_FALSE(looksGrey(printerNo)) << "this handler never changed the background";
    choose("cboEposType", kRmsV2);
    EXPECT_TRUE(printerNo->isEnabled());
    choose("cboEposType", kNotRms);
    EXPECT_FALSE(printerNo->isEnabled());
    form_->SaveSettings();
    EXPECT_EQ(form_->newSettings()->lTillType, 0);
}

TEST_F(WizardTest, StoredMerchantSettingsAreShownAsLoaded) {
    plantClientFiles();
    plantSettings({{"SemiIntegrated", "3"},
                   {"Acquirer", "AIB"},
                   {"BaseCurrency", "EUR"},
                   {"Mode", "1"},
                   {"TessalyID", "AIB Test"},
                   {"ChipDeviceName", "VeriFone VX810"},
                   {"RmsTill", "2"},
                   {"CorvixMerchantId", "M-1"},
                   {"CorvixClientId", "C-2"}});
    open();
    EXPECT_EQ(combo("cboConfigMode")->currentText(), "Semi Integrated");
    EXPECT_EQ(combo("cboSemiIntegratedMode")->currentText(), kOnTill);
    EXPECT_EQ(combo("cboReceiptInfo")->currentText(),
              "Receipt information lookup after every transaction");
    EXPECT_TRUE(combo("cboReceiptInfo")->isEnabled());
    EXPECT_EQ(combo("cboAcquirer")->currentText(), "AIB");
    EXPECT_EQ(combo("cboCurrency")->currentText(), "EUR");
    EXPECT_EQ(combo("cboInstallType")->currentText(), "TEST");
    EXPECT_EQ(combo("cboTessalyId")->currentText(), "AIB Test");
    EXPECT_EQ(combo("cboDevice")->currentText(), "VeriFone VX810");
    EXPECT_EQ(combo("cboEposType")->currentText(), kRmsV3);
    EXPECT_FALSE(combo("cboRmsPrinterNo")->isEnabled());
    EXPECT_EQ(control<QLineEdit>("txtCxMerchant")->text(), "M-1");
    EXPECT_EQ(control<QLineEdit>("txtCxClient")->text(), "C-2");

    form_->SaveSettings();
    const TCcAddinRegistry& saved = *form_->newSettings();
    EXPECT_EQ(saved.lOperatingMode, 3);
    EXPECT_TRUE(saved.bTestMode);
    EXPECT_EQ(saved.strTessalyID, "AIB Test");
    EXPECT_EQ(saved.lTillType, 2);
}
