// Page 1, "Merchant Configuration": who the merchant is and how the add-in is wired to the till.
// The wizard wires the handlers, since several of them reach other pages.
#pragma once

#include "ui/wizard_page.h"

#include <string>

class QComboBox;
class QLineEdit;
class TCcAddinRegistry;

class MerchantPage : public WizardPage {
public:
    MerchantPage();

    // The fixed lists and the fuel-card names of the fuel table in `programFolder`.
    void fillLists(const std::string& programFolder);

    // The connection profiles of the chosen installation type: live profiles for LIVE, test
    // profiles for TEST; the first one is selected.
    void refillProfiles(const std::string& programFolder);

    // Load in the order that lets each list's handler see the lists it depends on.
    void load(const TCcAddinRegistry& settings);
    void save(TCcAddinRegistry& settings) const;

    bool semiIntegrated() const;
    bool receiptOnTerminal() const;

    QComboBox* cboAcquirer;
    QComboBox* cboCurrency;
    QComboBox* cboInstallType;
    QComboBox* cboFuel;
    QComboBox* cboConfigMode;
    QComboBox* cboTessalyId;
    QComboBox* cboSemiIntegratedMode;
    QComboBox* cboReceiptInfo;
    QComboBox* cboDevice;
    QComboBox* cboEposType;
    QLineEdit* txtCxMerchant;
    QLineEdit* txtCxClient;
};
