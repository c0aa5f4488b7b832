#include "wizard/control_rules.h"

namespace wizard {
namespace {

void raise(const std::function<void()>& event) {
    if (event) {
        event();
    }
}

} // namespace

void SetListIndex(ComboBox& box, int index) {
    box.SetListIndex(index);
    raise(box.Click);
}

bool SelectText(ComboBox& box, std::string_view text) {
    for (int i = 0; i < box.ListCount(); ++i) {
        if (box.List(i) == text) {
            SetListIndex(box, i);
            return true;
        }
    }
    return false;
}

void SetValue(CheckBox& box, bool checked) {
    if (box.Value() != checked) {
        box.SetValue(checked);
        raise(box.Click);
    }
}

void SetText(TextBox& box, const std::string& text) {
    if (box.Text() != text) {
        box.SetText(text);
        raise(box.Change);
    }
}

void ChooseNumber(ComboBox& box, std::int32_t number, const std::string& shownAs) {
    int entry = -1;
    for (int i = 0; i < box.ListCount() && entry < 0; ++i) {
        if (box.ItemData(i) == number) {
            entry = i;
        }
    }
    if (entry < 0) {
        box.AddItem(shownAs.empty() ? std::to_string(number) + " (as installed)" : shownAs);
        entry = box.ListCount() - 1;
        box.SetItemData(entry, number);
    }
    SetListIndex(box, entry);
}

std::int32_t ChosenNumber(const ComboBox& box) {
    const int index = box.ListIndex();
    return index < 0 ? -1 : box.ItemData(index);
}

void EnableControl(bool enabled, Control& control) {
    control.SetEnabled(enabled);
    control.SetBackColor(enabled ? SystemColour::WindowBackground : SystemColour::ButtonFace);
}

} // namespace wizard
