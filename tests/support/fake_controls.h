// Fake controls for the wizard's tests: plain state, no window. A test acts as the user would
// (choose, tick, type, press), which raises the control's event; the wizard's own changes in code
// raise none, as with a real face.
#pragma once

#include "wizard/control_set.h"
#include "wizard/host.h"

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

template <typename Base> class FakeControl : public Base {
public:
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    wizard::SystemColour BackColor() const override { return colour_; }
    void SetBackColor(wizard::SystemColour colour) override { colour_ = colour; }

private:
    bool enabled_ = true;
    wizard::SystemColour colour_ = wizard::SystemColour::WindowBackground;
};

class FakeComboBox final : public FakeControl<wizard::ComboBox> {
public:
    explicit FakeComboBox(bool editable) : editable_(editable) {}
    void Clear() override;
    void AddItem(const std::string& text) override;
    int ListCount() const override { return static_cast<int>(items_.size()); }
    std::string List(int index) const override;
    std::int32_t ItemData(int index) const override;
    void SetItemData(int index, std::int32_t data) override;
    int ListIndex() const override { return index_; }
    void SetListIndex(int index) override;
    std::string Text() const override;
    void SetText(const std::string& text) override;

    // The user picks the entry of this text (the test fails when there is none), or types over
    // the text field of an editable box.
    void choose(const std::string& text);
    void chooseIndex(int index);
    void type(const std::string& text);
    std::vector<std::string> entries() const;

private:
    bool editable_;
    std::vector<std::pair<std::string, std::int32_t>> items_;
    int index_ = -1;
    std::string typed_;
};

class FakeCheckBox final : public FakeControl<wizard::CheckBox> {
public:
    bool Value() const override { return value_; }
    void SetValue(bool checked) override { value_ = checked; }
    void tick(bool checked); // the user clicks until it shows `checked`

private:
    bool value_ = false;
};

class FakeTextBox final : public FakeControl<wizard::TextBox> {
public:
    std::string Text() const override { return text_; }
    void SetText(const std::string& text) override { text_ = text; }
    void type(const std::string& text);

private:
    std::string text_;
};

class FakeButton final : public FakeControl<wizard::Button> {
public:
    void press(); // a disabled button cannot be pressed
};

class FakeLabel final : public FakeControl<wizard::Label> {
public:
    std::string Caption() const override { return caption_; }
    void SetCaption(const std::string& caption) override { caption_ = caption; }

private:
    std::string caption_;
};

class FakeFrame final : public FakeControl<wizard::Frame> {
public:
    bool Visible() const override { return visible_; }
    void SetVisible(bool visible) override { visible_ = visible; }

private:
    bool visible_ = true;
};

class FakePicture final : public FakeControl<wizard::Picture> {};

class FakeProgressBar final : public FakeControl<wizard::ProgressBar> {
public:
    int Min() const override { return min_; }
    int Max() const override { return max_; }
    int Value() const override { return value_; }
    void SetMin(int min) override { min_ = min; }
    void SetMax(int max) override { max_ = max; }
    void SetValue(int value) override { value_ = value; }

private:
    int min_ = 0;
    int max_ = 100;
    int value_ = 0;
};

class FakeTimer final : public wizard::Timer {
public:
    int Interval() const override { return interval_; }
    void SetInterval(int milliseconds) override { interval_ = milliseconds; }
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    void tick(); // one interval passes (nothing happens while disabled)

private:
    int interval_ = 0;
    bool enabled_ = false;
};

// A form's control set with a fake in every slot, found again by name.
template <typename Controls> class FakeForm {
public:
    FakeForm();
    Controls controls;

    template <typename Fake> Fake& get(const std::string& name) const {
        const auto found = byName_.find(name);
        if (found == byName_.end()) {
            throw std::logic_error("no control " + name);
        }
        return dynamic_cast<Fake&>(*found->second);
    }
    FakeComboBox& combo(const std::string& name) const { return get<FakeComboBox>(name); }
    FakeCheckBox& check(const std::string& name) const { return get<FakeCheckBox>(name); }
    FakeTextBox& text(const std::string& name) const { return get<FakeTextBox>(name); }
    FakeButton& button(const std::string& name) const { return get<FakeButton>(name); }
    FakeLabel& label(const std::string& name) const { return get<FakeLabel>(name); }

    FakeTimer& timer() const { return *timer_; }

private:
    std::vector<std::unique_ptr<wizard::Control>> owned_;
    std::map<std::string, wizard::Control*> byName_;
    std::unique_ptr<FakeTimer> timer_;
};

extern template class FakeForm<wizard::WizardControls>;
extern template class FakeForm<wizard::PrinterSerialControls>;
extern template class FakeForm<wizard::TmsControls>;

// What the wizard asked of the window system, and the test's answers to its modal dialogs.
class FakeHost final : public wizard::Host {
public:
    struct Message {
        std::string text;
        wizard::MessageIcon icon;
        std::string title;
    };
    void MsgBox(const std::string& text, wizard::MessageIcon icon,
                const std::string& title) override;
    void SetMousePointer(wizard::MousePointer pointer) override { pointer_ = pointer; }
    void ShowModal(wizard::frmPTSerialConfig& dialog) override;
    void ShowModal(wizard::frmTms& dialog) override;
    void UnloadMainForm() override { unloaded = true; }

    // Each answers the next showing of its dialog, acting on its controls; a dialog the answer
    // leaves open is closed from its window, and counts as a fault of the test.
    std::function<void(FakeForm<wizard::PrinterSerialControls>&)> answerPrinterSettings;
    std::function<void(FakeForm<wizard::TmsControls>&)> answerTmsCall;
    // Called for each message box while it is showing.
    std::function<void(const Message&)> whileMessageShows;

    std::vector<Message> messages;
    std::vector<std::string> dialogsShown;
    wizard::MousePointer pointer_ = wizard::MousePointer::Default;
    bool unloaded = false;
};
