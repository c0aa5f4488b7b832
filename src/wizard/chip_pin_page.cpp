#include "wizard/chip_pin_page.h"

#include "configure/merchant_choices.h"
#include "settings/ccaddin_registry.h"
#include "wizard/control_rules.h"

#include <array>
#include <string_view>

namespace wizard {
namespace {

constexpr std::array<std::string_view, 2> kSwipe = {"Card is swiped on till",
                                                    "Card is swiped on chip and pin device"};

} // namespace

ChipPinPage::ChipPinPage(ChipPinPageControls& controls) : c_(controls) {}

void ChipPinPage::FillLists() {
    FillList(*c_.cboPort, merchant_choices::comPorts());
    SetListIndex(*c_.cboPort, 0);
    FillList(*c_.cboSwipe, kSwipe);
    SetListIndex(*c_.cboSwipe, 0);
}

// A stored port outside "COM1" to "COM255" leaves the empty entry shown.
void ChipPinPage::Load(const TCcAddinRegistry& settings) {
    SelectText(*c_.cboPort, settings.strComPort);
    ChooseNumber(*c_.cboSwipe, settings.bExternalSwipe ? 1 : 0);
    SetText(*c_.txtIdlePrompt1, settings.strIdlePrompt1);
    SetText(*c_.txtIdlePrompt2, settings.strIdlePrompt2);
    SetText(*c_.txtTrackStartId, settings.strTrackStartId);
    SetText(*c_.txtTrackEndId, settings.strTrackEndId);
}

void ChipPinPage::Save(TCcAddinRegistry& settings) const {
    settings.strComPort = c_.cboPort->Text();
    settings.bExternalSwipe = ChosenNumber(*c_.cboSwipe) == 1;
    settings.strIdlePrompt1 = c_.txtIdlePrompt1->Text();
    settings.strIdlePrompt2 = c_.txtIdlePrompt2->Text();
    settings.strTrackStartId = c_.txtTrackStartId->Text();
    settings.strTrackEndId = c_.txtTrackEndId->Text();
}

} // namespace wizard
