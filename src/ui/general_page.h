// Page 2, "Configuration (General)": how the add-in handles cards, tenders, cashback, DCC,
// offline working and the end-of-day jobs.
#pragma once

#include "ui/wizard_page.h"

class QCheckBox;
class QComboBox;
class TCcAddinRegistry;

class GeneralPage : public WizardPage {
public:
    GeneralPage();

    void load(const TCcAddinRegistry& settings);
    void save(TCcAddinRegistry& settings) const;

    // Greys what the chosen integration does not use, and what an unticked option governs.
    void applyMode(bool fullyIntegrated);

    QComboBox* cboSplitTender;
    QCheckBox* chkDecimalInSplitTender;
    QCheckBox* chkCashback;
    QComboBox* cboCashBackEntry;
    QCheckBox* chkDcc;
    QComboBox* cboDccOption;
    QCheckBox* chkCustomerNotPresent;
    QCheckBox* chkObscureCardNumber;
    QCheckBox* chkAutoAcceptOnPinVerification;
    QCheckBox* chkAutoAcceptTappedNoVerification;
    QCheckBox* chkOfflineMode;
    QCheckBox* chkE2EE;
    QCheckBox* chkDailyTmsCall;
    QCheckBox* chkAutoRunReport;
    QCheckBox* chkCloseBatch;

private:
    void refresh();

    bool fullyIntegrated_ = true;
};
