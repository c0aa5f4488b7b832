#include "ui/merchant_page.h"

#include "configure/merchant_choices.h"
#include "settings/ccaddin_registry.h"
#include "ui/ui_text.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {
namespace choices = merchant_choices;

const QString kFullyIntegrated = qtEntry(choices::kConfigModes[0]);
const QString kSemiIntegrated = qtEntry(choices::kConfigModes[1]);
const QString kOnTerminal = qtEntry(choices::kSemiIntegratedModes[0]);
const QString kOnTill = qtEntry(choices::kSemiIntegratedModes[1]);
const QStringList kReceiptInfo = qtList(choices::kReceiptInfoModes);
const QStringList kEposTypes = qtList(choices::kEposTypes);

void refill(QComboBox* box, const QStringList& entries) {
    box->clear();
    box->addItems(entries);
    box->setCurrentIndex(0);
}
} // namespace

MerchantPage::MerchantPage()
    : WizardPage(1, "Merchant Configuration"), cboAcquirer(makeCombo("cboAcquirer", {}, false)),
      cboCurrency(makeCombo("cboCurrency", {}, false)),
      cboInstallType(makeCombo("cboInstallType", {}, false)),
      cboFuel(makeCombo("cboFuel", {}, false)),
      cboConfigMode(makeCombo("cboConfigMode", {}, false)),
      cboTessalyId(makeCombo("cboTessalyId", {}, false)),
      cboSemiIntegratedMode(makeCombo("cboSemiIntegratedMode", {}, false)),
      cboReceiptInfo(makeCombo("cboReceiptInfo", {}, false)),
      cboDevice(makeCombo("cboDevice", {}, false)),
      cboEposType(makeCombo("cboEposType", {}, false)),
      txtCxMerchant(makeText("txtCxMerchant", false)), txtCxClient(makeText("txtCxClient", false)) {
    auto* grid = new QGridLayout;
    int row = 0;
    addRow(grid, row, "Merchant's Acquirer", cboAcquirer);
    addRow(grid, row++, "Merchant's Currency", cboCurrency, 2);
    addRow(grid, row, "Installation Type", cboInstallType);
    addRow(grid, row++, "Ondrel ID", cboTessalyId, 2);
    addRow(grid, row, "Merchant's Fuel Type", cboFuel);
    addRow(grid, row++, "Chip and Pin Device", cboDevice, 2);
    addRow(grid, row, "Corvix Merchant ID", txtCxMerchant);
    addRow(grid, row++, "Corvix Client ID", txtCxClient, 2);
    addRow(grid, row++, "Configuration Mode", cboConfigMode);
    addRow(grid, row++, "Receipt/Confirm Mode", cboSemiIntegratedMode);
    addRow(grid, row++, "Receipt Info Mode", cboReceiptInfo);
    addRow(grid, row++, "EPOS Type", cboEposType);
    // The long entries of the last four lists need the page's whole width.
    for (int r = 4; r < row; ++r) {
        if (QLayoutItem* item = grid->itemAtPosition(r, 1)) {
            grid->removeItem(item);
            grid->addItem(item, r, 1, 1, 3);
        }
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    body()->addLayout(grid);
    body()->addStretch();

    // Tab follows the page: across each pair of the upper rows, then down.
    setTabOrder(cboAcquirer, cboCurrency);
    setTabOrder(cboCurrency, cboInstallType);
    setTabOrder(cboInstallType, cboTessalyId);
    setTabOrder(cboTessalyId, cboFuel);
    setTabOrder(cboFuel, cboDevice);
    setTabOrder(cboDevice, txtCxMerchant);
    setTabOrder(txtCxMerchant, txtCxClient);
    setTabOrder(txtCxClient, cboConfigMode);
    setTabOrder(cboConfigMode, cboSemiIntegratedMode);
    setTabOrder(cboSemiIntegratedMode, cboReceiptInfo);
    setTabOrder(cboReceiptInfo, cboEposType);
}

void MerchantPage::fillLists(const std::string& programFolder) {
    refill(cboConfigMode, qtList(choices::kConfigModes));
    refill(cboSemiIntegratedMode, qtList(choices::kSemiIntegratedModes));
    refill(cboReceiptInfo, kReceiptInfo);
    refill(cboAcquirer, qtList(choices::kAcquirers));
    refill(cboCurrency, qtList(choices::kCurrencies));
    // A fuel table that cannot be read simply offers fewer names.
    refill(cboFuel, qtList(choices::fuelNames(programFolder)));
    refill(cboInstallType, qtList(choices::kInstallTypes));
    refill(cboDevice, qtList(choices::kDevices));
    refill(cboEposType, kEposTypes);
    txtCxMerchant->clear();
    txtCxClient->clear();
}

void MerchantPage::refillProfiles(const std::string& programFolder) {
    cboTessalyId->clear();
    const bool test = cboInstallType->currentText() == "TEST";
    cboTessalyId->addItems(qtList(choices::profileNames(programFolder, test)));
    // Adding the first entry has already selected it; this runs the handler once more so that a
    // refill is always followed by the profile list's own handler.
    if (cboTessalyId->count() > 0) {
        chooseText(cboTessalyId, cboTessalyId->itemText(0));
    }
}

void MerchantPage::load(const TCcAddinRegistry& settings) {
    const std::int32_t mode = settings.lOperatingMode;
    chooseText(cboConfigMode, mode == 0 ? kFullyIntegrated : kSemiIntegrated);
    if (mode != 0) {
        chooseText(cboSemiIntegratedMode, mode == 1 ? kOnTerminal : kOnTill);
    }
    if (mode >= 2 && mode <= 4) {
        chooseText(cboReceiptInfo, kReceiptInfo[mode - 2]);
    }
    chooseText(cboAcquirer, qtText(settings.strAcquirer));
    chooseText(cboCurrency, qtText(settings.strbaseCurrency));
    chooseText(cboFuel, qtText(settings.strFuelType));
    chooseText(cboInstallType, settings.bTestMode ? "TEST" : "LIVE");
    chooseText(cboTessalyId, qtText(settings.strTessalyID));
    chooseText(cboDevice, qtText(settings.strChipDeviceName));
    for (std::size_t entry = 0; entry < choices::kEposTypes.size(); ++entry) {
        if (choices::eposTillType(entry) == settings.lTillType) {
            chooseText(cboEposType, kEposTypes[static_cast<qsizetype>(entry)]);
        }
    }
    txtCxMerchant->setText(qtText(settings.strCorvixMerchantId));
    txtCxClient->setText(qtText(settings.strCorvixClientId));
}

void MerchantPage::save(TCcAddinRegistry& settings) const {
    if (!semiIntegrated()) {
        settings.lOperatingMode = 0;
    } else if (receiptOnTerminal()) {
        settings.lOperatingMode = 1;
    } else if (const auto lookup = kReceiptInfo.indexOf(cboReceiptInfo->currentText());
               lookup >= 0) {
        settings.lOperatingMode = 2 + static_cast<std::int32_t>(lookup);
    } // no lookup entry chosen: the mode the record already holds stays
    settings.strAcquirer = comboText(cboAcquirer);
    settings.strbaseCurrency = comboText(cboCurrency);
    settings.strFuelType = comboText(cboFuel);
    settings.bTestMode = cboInstallType->currentText() == "TEST";
    settings.strTessalyID = comboText(cboTessalyId);
    settings.strChipDeviceName = comboText(cboDevice);
    const auto epos = kEposTypes.indexOf(cboEposType->currentText());
    settings.lTillType = choices::eposTillType(static_cast<std::size_t>(epos));
    settings.strCorvixMerchantId = tillText(txtCxMerchant->text());
    settings.strCorvixClientId = tillText(txtCxClient->text());
}

bool MerchantPage::semiIntegrated() const {
    return cboConfigMode->currentText() == kSemiIntegrated;
}

bool MerchantPage::receiptOnTerminal() const {
    return cboSemiIntegratedMode->currentText() == kOnTerminal;
}
