#include "wizard/general_page.h"

#include "settings/ccaddin_registry.h"
#include "wizard/control_rules.h"

#include <array>
#include <string_view>

namespace wizard {
namespace {

constexpr std::array<std::string_view, 2> kSplitTender = {
    "Card split tendering is controlled by EPOS application",
    "Card split tendering is controlled by Credit Card Add-in"};
constexpr std::array<std::string_view, 3> kCashBackEntry = {
    "Enter amount (including cent/pence) and display decimal point",
    "Enter amount (including cent/pence) and do not display decimal point",
    "Enter amount in whole euros/pounds with no cent/pence entry"};
constexpr std::array<std::string_view, 2> kDccOption = {
    "Rate is offered on the Parvane front-end", "Rate is offered on the attached chip&pin device"};

} // namespace

GeneralPage::GeneralPage(GeneralPageControls& controls) : c_(controls) {
    c_.chkCashback->Click = [this] { Refresh(); };
    c_.chkDcc->Click = [this] { Refresh(); };
}

void GeneralPage::FillLists() {
    FillList(*c_.cboSplitTender, kSplitTender);
    SetListIndex(*c_.cboSplitTender, 0);
    FillList(*c_.cboCashBackEntry, kCashBackEntry);
    SetListIndex(*c_.cboCashBackEntry, 0);
    FillList(*c_.cboDccOption, kDccOption);
    SetListIndex(*c_.cboDccOption, 0);
    Refresh();
}

void GeneralPage::ApplyMode(bool fullyIntegrated) {
    fullyIntegrated_ = fullyIntegrated;
    Refresh();
}

// Offline working, the till's own acceptance and the daily TMS call exist only when the add-in
// drives the chip and PIN device itself.
void GeneralPage::Refresh() {
    EnableControl(c_.chkCashback->Value(), *c_.cboCashBackEntry);
    EnableControl(c_.chkDcc->Value(), *c_.cboDccOption);
    for (CheckBox* control :
         {c_.chkAutoAcceptOnPinVerification, c_.chkAutoAcceptTappedNoVerification,
          c_.chkOfflineMode, c_.chkDailyTmsCall}) {
        EnableControl(fullyIntegrated_, *control);
    }
}

void GeneralPage::Load(const TCcAddinRegistry& settings) {
    ChooseNumber(*c_.cboSplitTender, settings.bSplitTender ? 1 : 0);
    SetValue(*c_.chkDecimalInSplitTender, settings.bDecimalInSplitTender);
    SetValue(*c_.chkCashback, settings.bCashback);
    ChooseNumber(*c_.cboCashBackEntry, settings.lCashbackEntryType);
    // DCC off is 0; on, the rate is offered on the front-end (1) or on the device (2).
    SetValue(*c_.chkDcc, settings.lDccType != 0);
    ChooseNumber(*c_.cboDccOption, settings.lDccType == 2 ? 1 : 0);
    SetValue(*c_.chkCustomerNotPresent, settings.bCustomerNotPresent);
    SetValue(*c_.chkObscureCardNumber, settings.bObscureCardNumber);
    SetValue(*c_.chkAutoAcceptOnPinVerification, settings.bAutoAcceptOnPinVerification);
    SetValue(*c_.chkAutoAcceptTappedNoVerification, settings.bAutoAcceptTappedNoVerification);
    SetValue(*c_.chkOfflineMode, settings.bOfflineMode);
    SetValue(*c_.chkE2EE, settings.bE2EEEnabled);
    SetValue(*c_.chkDailyTmsCall, settings.bDailyTmsCall);
    SetValue(*c_.chkAutoRunReport, settings.bAutoRunReport);
    SetValue(*c_.chkCloseBatch, settings.bCloseBatch);
    Refresh();
}

void GeneralPage::Save(TCcAddinRegistry& settings) const {
    settings.bSplitTender = ChosenNumber(*c_.cboSplitTender) == 1;
    settings.bDecimalInSplitTender = c_.chkDecimalInSplitTender->Value();
    settings.bCashback = c_.chkCashback->Value();
    settings.lCashbackEntryType = ChosenNumber(*c_.cboCashBackEntry);
    settings.lDccType = c_.chkDcc->Value() ? 1 + ChosenNumber(*c_.cboDccOption) : 0;
    settings.bCustomerNotPresent = c_.chkCustomerNotPresent->Value();
    settings.bObscureCardNumber = c_.chkObscureCardNumber->Value();
    settings.bAutoAcceptOnPinVerification = c_.chkAutoAcceptOnPinVerification->Value();
    settings.bAutoAcceptTappedNoVerification = c_.chkAutoAcceptTappedNoVerification->Value();
    settings.bOfflineMode = c_.chkOfflineMode->Value();
    settings.bE2EEEnabled = c_.chkE2EE->Value();
    settings.bDailyTmsCall = c_.chkDailyTmsCall->Value();
    settings.bAutoRunReport = c_.chkAutoRunReport->Value();
    settings.bCloseBatch = c_.chkCloseBatch->Value();
}

} // namespace wizard
