// How the wizard's code changes its controls, in one place. Where the forms' code has always run
// a control's handler after changing it in code, these do so themselves, since a face raises
// events only for what the user did:
// - selecting an entry runs the list's Click handler, even when that entry was already selected,
//   so a load always leaves the controls that depend on the list refreshed;
// - a check box's Click runs when its value changes, a text box's Change when its text does.
#pragma once

#include "wizard/controls.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace wizard {

void SetListIndex(ComboBox& box, int index);

// Selects the entry whose text is exactly `text`; when no entry has it the selection stays, so a
// value the list does not offer leaves the list's default in place. False when none has it.
bool SelectText(ComboBox& box, std::string_view text);

void SetValue(CheckBox& box, bool checked);
void SetText(TextBox& box, const std::string& text);

// Fills the list (without selecting): each entry keeps its position as its number.
template <typename Entries> void FillList(ComboBox& box, const Entries& entries) {
    box.Clear();
    for (const auto& entry : entries) {
        box.AddItem(std::string(entry));
        box.SetItemData(box.ListCount() - 1, box.ListCount() - 1);
    }
}

// Selects the entry standing for `number` (its position, unless FillList's numbering was
// changed); a stored number outside the list is shown as an extra entry holding it, captioned
// `shownAs` or "<number> (as installed)", so saving the page unchanged keeps what was installed.
void ChooseNumber(ComboBox& box, std::int32_t number, const std::string& shownAs = {});

// The number behind the selected entry; -1 with none selected.
std::int32_t ChosenNumber(const ComboBox& box);

// Sets the enabled flag and the background with it: the window colour when enabled, the button
// face when disabled, so a disabled text or combo box looks grey.
void EnableControl(bool enabled, Control& control);

} // namespace wizard
