#include "ui/general_page.h"

#include "settings/ccaddin_registry.h"
#include "ui/ui_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QVBoxLayout>

GeneralPage::GeneralPage()
    : WizardPage(2, "Configuration (General)"),
      cboSplitTender(makeCombo("cboSplitTender",
                               {"Card split tendering is controlled by EPOS application",
                                "Card split tendering is controlled by Credit Card Add-in"})),
      chkDecimalInSplitTender(
          makeCheck("chkDecimalInSplitTender", "&Decimal point entered in split tender amounts")),
      chkCashback(makeCheck("chkCashback", "Cashbac&k enabled")),
      cboCashBackEntry(
          makeCombo("cboCashBackEntry",
                    {"Enter amount (including cent/pence) and display decimal point",
                     "Enter amount (including cent/pence) and do not display decimal point",
                     "Enter amount in whole euros/pounds with no cent/pence entry"})),
      chkDcc(makeCheck("chkDcc", "Dynamic currency con&version (DCC) enabled")),
      cboDccOption(makeCombo("cboDccOption", {"Rate is offered on the Parvane front-end",
                                              "Rate is offered on the attached chip&pin device"})),
      chkCustomerNotPresent(
          makeCheck("chkCustomerNotPresent", "Customer not &present (mail/phone order) allowed")),
      chkObscureCardNumber(makeCheck("chkObscureCardNumber", "&Obscure card numbers")),
      chkAutoAcceptOnPinVerification(
          makeCheck("chkAutoAcceptOnPinVerification", "&Accept automatically when PIN verified")),
      chkAutoAcceptTappedNoVerification(makeCheck("chkAutoAcceptTappedNoVerification",
                                                  "Accept &tapped cards with no verification")),
      chkOfflineMode(makeCheck("chkOfflineMode", "Offl&ine mode enabled")),
      // Switching encryption does not re-check Finish: it cannot make the settings incomplete.
      chkE2EE(makeCheck("chkE2EE", "&End-to-end encryption (E2EE) enabled", false)),
      chkDailyTmsCall(makeCheck("chkDailyTmsCall", "Dai&ly TMS call")),
      chkAutoRunReport(makeCheck("chkAutoRunReport", "&Run the end-of-day report automatically")),
      chkCloseBatch(makeCheck("chkCloseBatch", "Close the batc&h at end of day")) {
    auto* grid = new QGridLayout;
    addRow(grid, 0, "&Split tender", cboSplitTender);
    grid->addWidget(chkDecimalInSplitTender, 1, 1);
    grid->addWidget(chkCashback, 2, 1);
    addRow(grid, 3, "Cashback entr&y", cboCashBackEntry);
    grid->addWidget(chkDcc, 4, 1);
    addRow(grid, 5, "&Where the DCC rate is offered", cboDccOption);
    grid->setColumnStretch(1, 1);
    body()->addLayout(grid);

    auto* options = new QGridLayout;
    QCheckBox* left[] = {chkCustomerNotPresent, chkObscureCardNumber,
                         chkAutoAcceptOnPinVerification, chkAutoAcceptTappedNoVerification};
    QCheckBox* right[] = {chkOfflineMode, chkE2EE, chkDailyTmsCall, chkAutoRunReport,
                          chkCloseBatch};
    for (int row = 0; row < 4; ++row) {
        options->addWidget(left[row], row, 0);
    }
    for (int row = 0; row < 5; ++row) {
        options->addWidget(right[row], row, 1);
    }
    body()->addLayout(options);
    body()->addStretch();

    connect(chkCashback, &QCheckBox::toggled, this, [this] { refresh(); });
    connect(chkDcc, &QCheckBox::toggled, this, [this] { refresh(); });
    refresh();
}

void GeneralPage::applyMode(bool fullyIntegrated) {
    fullyIntegrated_ = fullyIntegrated;
    refresh();
}

// Offline working, the till's own acceptance and the daily TMS call exist only when the add-in
// drives the chip and PIN device itself.
void GeneralPage::refresh() {
    EnableControl(chkCashback->isChecked(), cboCashBackEntry);
    EnableControl(chkDcc->isChecked(), cboDccOption);
    for (QWidget* control :
         {static_cast<QWidget*>(chkAutoAcceptOnPinVerification),
          static_cast<QWidget*>(chkAutoAcceptTappedNoVerification),
          static_cast<QWidget*>(chkOfflineMode), static_cast<QWidget*>(chkDailyTmsCall)}) {
        EnableControl(fullyIntegrated_, control);
    }
}

void GeneralPage::load(const TCcAddinRegistry& settings) {
    chooseIndex(cboSplitTender, settings.bSplitTender ? 1 : 0);
    chkDecimalInSplitTender->setChecked(settings.bDecimalInSplitTender);
    chkCashback->setChecked(settings.bCashback);
    chooseIndex(cboCashBackEntry, settings.lCashbackEntryType);
    // DCC off is 0; on, the rate is offered on the front-end (1) or on the device (2).
    chkDcc->setChecked(settings.lDccType != 0);
    chooseIndex(cboDccOption, settings.lDccType == 2 ? 1 : 0);
    chkCustomerNotPresent->setChecked(settings.bCustomerNotPresent);
    chkObscureCardNumber->setChecked(settings.bObscureCardNumber);
    chkAutoAcceptOnPinVerification->setChecked(settings.bAutoAcceptOnPinVerification);
    chkAutoAcceptTappedNoVerification->setChecked(settings.bAutoAcceptTappedNoVerification);
    chkOfflineMode->setChecked(settings.bOfflineMode);
    chkE2EE->setChecked(settings.bE2EEEnabled);
    chkDailyTmsCall->setChecked(settings.bDailyTmsCall);
    chkAutoRunReport->setChecked(settings.bAutoRunReport);
    chkCloseBatch->setChecked(settings.bCloseBatch);
    refresh();
}

void GeneralPage::save(TCcAddinRegistry& settings) const {
    settings.bSplitTender = chosenIndex(cboSplitTender) == 1;
    settings.bDecimalInSplitTender = chkDecimalInSplitTender->isChecked();
    settings.bCashback = chkCashback->isChecked();
    settings.lCashbackEntryType = chosenIndex(cboCashBackEntry);
    settings.lDccType = chkDcc->isChecked() ? 1 + chosenIndex(cboDccOption) : 0;
    settings.bCustomerNotPresent = chkCustomerNotPresent->isChecked();
    settings.bObscureCardNumber = chkObscureCardNumber->isChecked();
    settings.bAutoAcceptOnPinVerification = chkAutoAcceptOnPinVerification->isChecked();
    settings.bAutoAcceptTappedNoVerification = chkAutoAcceptTappedNoVerification->isChecked();
    settings.bOfflineMode = chkOfflineMode->isChecked();
    settings.bE2EEEnabled = chkE2EE->isChecked();
    settings.bDailyTmsCall = chkDailyTmsCall->isChecked();
    settings.bAutoRunReport = chkAutoRunReport->isChecked();
    settings.bCloseBatch = chkCloseBatch->isChecked();
}
