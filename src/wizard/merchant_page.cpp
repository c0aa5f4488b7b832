#include "wizard/merchant_page.h"

#include "configure/merchant_choices.h"
#include "settings/ccaddin_registry.h"
#include "wizard/control_rules.h"

namespace wizard {
namespace {

namespace choices = merchant_choices;

// The list's entry for the till type, by the order of kEposTypes.
int eposEntry(std::int32_t tillType) {
    for (std::size_t entry = 0; entry < choices::kEposTypes.size(); ++entry) {
        if (choices::eposTillType(entry) == tillType) {
            return static_cast<int>(entry);
        }
    }
    return -1;
}

} // namespace

MerchantPage::MerchantPage(MerchantPageControls& controls, std::string programFolder)
    : c_(controls), programFolder_(std::move(programFolder)) {}

void MerchantPage::FillLists() {
    const auto fill = [](ComboBox& box, const auto& entries) {
        FillList(box, entries);
        SetListIndex(box, 0);
    };
    fill(*c_.cboConfigMode, choices::kConfigModes);
    fill(*c_.cboSemiIntegratedMode, choices::kSemiIntegratedModes);
    fill(*c_.cboReceiptInfo, choices::kReceiptInfoModes);
    fill(*c_.cboAcquirer, choices::kAcquirers);
    fill(*c_.cboCurrency, choices::kCurrencies);
    // A fuel table that cannot be read simply offers fewer names.
    fill(*c_.cboFuel, choices::fuelNames(programFolder_));
    fill(*c_.cboInstallType, choices::kInstallTypes);
    fill(*c_.cboDevice, choices::kDevices);
    fill(*c_.cboEposType, choices::kEposTypes);
    SetText(*c_.txtCxMerchant, "");
    SetText(*c_.txtCxClient, "");
}

void MerchantPage::RefillProfiles() {
    c_.cboTessalyId->Clear();
    const bool test = c_.cboInstallType->Text() == "TEST";
    for (const std::string& name : choices::profileNames(programFolder_, test)) {
        c_.cboTessalyId->AddItem(name);
    }
    if (c_.cboTessalyId->ListCount() > 0) {
        SetListIndex(*c_.cboTessalyId, 0);
    }
}

void MerchantPage::Load(const TCcAddinRegistry& settings) {
    const std::int32_t mode = settings.lOperatingMode;
    SelectText(*c_.cboConfigMode, choices::kConfigModes[mode == 0 ? 0 : 1]);
    if (mode != 0) {
        SelectText(*c_.cboSemiIntegratedMode, choices::kSemiIntegratedModes[mode == 1 ? 0 : 1]);
    }
    if (mode >= 2 && mode <= choices::kHighestOperatingMode) {
        SelectText(*c_.cboReceiptInfo,
                   choices::kReceiptInfoModes[static_cast<std::size_t>(mode - 2)]);
    }
    SelectText(*c_.cboAcquirer, settings.strAcquirer);
    SelectText(*c_.cboCurrency, settings.strbaseCurrency);
    SelectText(*c_.cboFuel, settings.strFuelType);
    SelectText(*c_.cboInstallType, settings.bTestMode ? "TEST" : "LIVE");
    SelectText(*c_.cboTessalyId, settings.strTessalyID);
    SelectText(*c_.cboDevice, settings.strChipDeviceName);
    if (const int entry = eposEntry(settings.lTillType); entry >= 0) {
        SetListIndex(*c_.cboEposType, entry);
    }
    SetText(*c_.txtCxMerchant, settings.strCorvixMerchantId);
    SetText(*c_.txtCxClient, settings.strCorvixClientId);
}

void MerchantPage::Save(TCcAddinRegistry& settings) const {
    if (!SemiIntegrated()) {
        settings.lOperatingMode = 0;
    } else if (ReceiptOnTerminal()) {
        settings.lOperatingMode = 1;
    } else {
        const std::string lookup = c_.cboReceiptInfo->Text();
        for (std::size_t i = 0; i < choices::kReceiptInfoModes.size(); ++i) {
            if (lookup == choices::kReceiptInfoModes[i]) {
                settings.lOperatingMode = 2 + static_cast<std::int32_t>(i);
            }
        }
        // No lookup entry chosen: the mode the record already holds stays.
    }
    settings.strAcquirer = c_.cboAcquirer->Text();
    settings.strbaseCurrency = c_.cboCurrency->Text();
    settings.strFuelType = c_.cboFuel->Text();
    settings.bTestMode = c_.cboInstallType->Text() == "TEST";
    settings.strTessalyID = c_.cboTessalyId->Text();
    settings.strChipDeviceName = c_.cboDevice->Text();
    settings.lTillType =
        choices::eposTillType(static_cast<std::size_t>(c_.cboEposType->ListIndex()));
    settings.strCorvixMerchantId = c_.txtCxMerchant->Text();
    settings.strCorvixClientId = c_.txtCxClient->Text();
}

bool MerchantPage::SemiIntegrated() const {
    return c_.cboConfigMode->Text() == choices::kConfigModes[1];
}

bool MerchantPage::ReceiptOnTerminal() const {
    return c_.cboSemiIntegratedMode->Text() == choices::kSemiIntegratedModes[0];
}

bool MerchantPage::RmsV2Till() const {
    return c_.cboEposType->ListIndex() == eposEntry(1);
}

} // namespace wizard
