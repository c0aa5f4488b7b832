#include "support/fake_controls.h"

#include "wizard/frm_pt_serial_config.h"
#include "wizard/frm_tms.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace {

void raise(const std::function<void()>& event) {
    if (event) {
        event();
    }
}

// The fake for each kind of slot.
template <typename Kind> std::unique_ptr<Kind> makeFake(const wizard::ControlInfo& info) {
    if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
        return std::make_unique<FakeComboBox>(info.editable);
    } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
        return std::make_unique<FakeCheckBox>();
    } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
        return std::make_unique<FakeTextBox>();
    } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
        return std::make_unique<FakeButton>();
    } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
        return std::make_unique<FakeLabel>();
    } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
        return std::make_unique<FakeFrame>();
    } else if constexpr (std::is_same_v<Kind, wizard::Picture>) {
        return std::make_unique<FakePicture>();
    } else {
        static_assert(std::is_same_v<Kind, wizard::ProgressBar>);
        return std::make_unique<FakeProgressBar>();
    }
}

template <typename Controls, typename Answer>
void showModal(FakeHost& host, Controls& dialog, const char* name, const Answer& answer) {
    host.dialogsShown.push_back(name);
    FakeForm<std::remove_reference_t<decltype(dialog.controls)>> form;
    dialog.controls = form.controls;
    bool unloaded = false;
    dialog.Unload = [&unloaded] { unloaded = true; };
    dialog.Form_Load();
    if (answer) {
        answer(form);
    }
    if (!unloaded) {
        ADD_FAILURE() << name << " was left open";
        dialog.QueryUnload();
    }
}

} // namespace

void FakeComboBox::Clear() {
    items_.clear();
    index_ = -1;
}

void FakeComboBox::AddItem(const std::string& text) {
    items_.emplace_back(text, 0);
}

std::string FakeComboBox::List(int index) const {
    return index >= 0 && index < ListCount() ? items_[static_cast<std::size_t>(index)].first : "";
}

std::int32_t FakeComboBox::ItemData(int index) const {
    return index >= 0 && index < ListCount() ? items_[static_cast<std::size_t>(index)].second : 0;
}

void FakeComboBox::SetItemData(int index, std::int32_t data) {
    if (index >= 0 && index < ListCount()) {
        items_[static_cast<std::size_t>(index)].second = data;
    }
}

void FakeComboBox::SetListIndex(int index) {
    index_ = index >= 0 && index < ListCount() ? index : -1;
    if (editable_) {
        typed_ = List(index_);
    }
}

std::string FakeComboBox::Text() const {
    return editable_ ? typed_ : List(index_);
}

void FakeComboBox::SetText(const std::string& text) {
    int found = -1;
    for (int i = 0; i < ListCount() && found < 0; ++i) {
        if (List(i) == text) {
            found = i;
        }
    }
    if (editable_) {
        index_ = found;
        typed_ = text;
    } else if (found >= 0) {
        index_ = found;
    }
}

void FakeComboBox::choose(const std::string& text) {
    for (int i = 0; i < ListCount(); ++i) {
        if (List(i) == text) {
            chooseIndex(i);
            return;
        }
    }
    ADD_FAILURE() << "no entry " << text;
}

void FakeComboBox::chooseIndex(int index) {
    ASSERT_TRUE(Enabled()) << "a disabled list cannot be chosen from";
    SetListIndex(index);
    raise(Click);
}

void FakeComboBox::type(const std::string& text) {
    ASSERT_TRUE(editable_) << "only an editable box takes typing";
    SetText(text);
    raise(Change);
}

std::vector<std::string> FakeComboBox::entries() const {
    std::vector<std::string> texts;
    for (const auto& item : items_) {
        texts.push_back(item.first);
    }
    return texts;
}

void FakeCheckBox::tick(bool checked) {
    ASSERT_TRUE(Enabled()) << "a disabled box cannot be ticked";
    if (value_ != checked) {
        value_ = checked;
        raise(Click);
    }
}

void FakeTextBox::type(const std::string& text) {
    ASSERT_TRUE(Enabled()) << "a disabled box cannot be typed in";
    if (text_ != text) {
        text_ = text;
        raise(Change);
    }
}

void FakeButton::press() {
    ASSERT_TRUE(Enabled()) << "a disabled button cannot be pressed";
    raise(Click);
}

void FakeTimer::tick() {
    if (enabled_) {
        raise(Tick);
    }
}

template <typename Controls> FakeForm<Controls>::FakeForm() {
    wizard::forEachControl(controls, [this](const wizard::ControlInfo& info, auto*& slot) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(slot)>>;
        if constexpr (std::is_same_v<Kind, wizard::Timer>) {
            timer_ = std::make_unique<FakeTimer>();
            slot = timer_.get();
        } else {
            std::unique_ptr<Kind> fake = makeFake<Kind>(info);
            slot = fake.get();
            const std::string name =
                info.index >= 0 ? std::string(info.name) + "(" + std::to_string(info.index) + ")"
                                : std::string(info.name);
            byName_[name] = fake.get();
            owned_.push_back(std::move(fake));
        }
    });
}

template class FakeForm<wizard::WizardControls>;
template class FakeForm<wizard::PrinterSerialControls>;
template class FakeForm<wizard::TmsControls>;

void FakeHost::MsgBox(const std::string& text, wizard::MessageIcon icon, const std::string& title) {
    messages.push_back({text, icon, title});
    if (whileMessageShows) {
        whileMessageShows(messages.back());
    }
}

void FakeHost::ShowModal(wizard::frmPTSerialConfig& dialog) {
    showModal(*this, dialog, "frmPTSerialConfig", answerPrinterSettings);
}

void FakeHost::ShowModal(wizard::frmTms& dialog) {
    showModal(*this, dialog, "frmTms", answerTmsCall);
}
