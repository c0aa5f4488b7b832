#include "wizard/display_page.h"

#include "foundation/tessaly_string.h"
#include "settings/ccaddin_registry.h"
#include "wizard/control_rules.h"

#include <array>
#include <string_view>

namespace wizard {
namespace {

constexpr std::array<std::string_view, 3> kDisplaySizes = {"Standard", "Compact",
                                                           "Specify width and height twip values"};
constexpr std::array<std::string_view, 2> kWidths = {"Screen width", "Enter width"};
constexpr std::array<std::string_view, 2> kHeights = {"Screen height", "Enter height"};
constexpr std::array<std::string_view, 6> kPositions = {
    "Centered on screen",    "Top left of screen",     "Top right of screen",
    "Bottom left of screen", "Bottom right of screen", "Enter left and top twip values"};

constexpr std::int32_t kSpecifiedSize = 2;   // "Specify width and height twip values"
constexpr std::int32_t kEnteredPosition = 5; // "Enter left and top twip values"
constexpr std::int32_t kEnteredValue = 1;    // "Enter width" / "Enter height"

// A stored size of 0 means the screen's own size; any other number was entered.
void loadSize(ComboBox& choice, TextBox& value, std::int32_t stored) {
    ChooseNumber(choice, stored == 0 ? 0 : kEnteredValue);
    SetText(value, stored == 0 ? std::string() : std::to_string(stored));
}

std::int32_t savedSize(const ComboBox& choice, const TextBox& value) {
    return ChosenNumber(choice) == kEnteredValue ? TessalyString::StrToLong(value.Text()) : 0;
}

} // namespace

DisplayPage::DisplayPage(DisplayPageControls& controls) : c_(controls) {
    for (ComboBox* choice : {c_.cboDisplaySize, c_.cboWidth, c_.cboHeight, c_.cboPosition}) {
        choice->Click = [this] { Refresh(); };
    }
}

void DisplayPage::FillLists() {
    FillList(*c_.cboDisplaySize, kDisplaySizes);
    FillList(*c_.cboWidth, kWidths);
    FillList(*c_.cboHeight, kHeights);
    FillList(*c_.cboPosition, kPositions);
    for (ComboBox* choice : {c_.cboDisplaySize, c_.cboWidth, c_.cboHeight, c_.cboPosition}) {
        SetListIndex(*choice, 0);
    }
}

// Sizes are entered only for a specified display size, and positions only when the start-up
// position says so.
void DisplayPage::Refresh() {
    const bool specified = ChosenNumber(*c_.cboDisplaySize) == kSpecifiedSize;
    EnableControl(specified, *c_.cboWidth);
    EnableControl(specified, *c_.cboHeight);
    EnableControl(specified && ChosenNumber(*c_.cboWidth) == kEnteredValue, *c_.txtWidth);
    EnableControl(specified && ChosenNumber(*c_.cboHeight) == kEnteredValue, *c_.txtHeight);
    const bool entered = ChosenNumber(*c_.cboPosition) == kEnteredPosition;
    EnableControl(entered, *c_.txtLeft);
    EnableControl(entered, *c_.txtTop);
}

void DisplayPage::Load(const TCcAddinRegistry& settings) {
    ChooseNumber(*c_.cboDisplaySize, settings.lDisplayMode);
    loadSize(*c_.cboWidth, *c_.txtWidth, settings.lAddinWidth);
    loadSize(*c_.cboHeight, *c_.txtHeight, settings.lAddinHeight);
    ChooseNumber(*c_.cboPosition, settings.lStartupPosition);
    SetText(*c_.txtLeft, std::to_string(settings.lLeftTwips));
    SetText(*c_.txtTop, std::to_string(settings.lTopTwips));
    SetValue(*c_.chkAlwaysOnTop, settings.bAlwaysOnTop);
    SetValue(*c_.chkDisplayOndrelLogo, settings.bDisplayOndrelLogo);
}

void DisplayPage::Save(TCcAddinRegistry& settings) const {
    settings.lDisplayMode = ChosenNumber(*c_.cboDisplaySize);
    settings.lAddinWidth = savedSize(*c_.cboWidth, *c_.txtWidth);
    settings.lAddinHeight = savedSize(*c_.cboHeight, *c_.txtHeight);
    settings.lStartupPosition = ChosenNumber(*c_.cboPosition);
    settings.lLeftTwips = TessalyString::StrToLong(c_.txtLeft->Text());
    settings.lTopTwips = TessalyString::StrToLong(c_.txtTop->Text());
    settings.bAlwaysOnTop = c_.chkAlwaysOnTop->Value();
    settings.bDisplayOndrelLogo = c_.chkDisplayOndrelLogo->Value();
}

} // namespace wizard
