#include "ui/win32/win32_controls.h"

#include "ui/win32/win32_text.h"

#include <commctrl.h>
#include <type_traits>

std::string controlKey(const wizard::ControlInfo& info) {
    return info.index >= 0 ? std::string(info.name) + "(" + std::to_string(info.index) + ")"
                           : std::string(info.name);
}

// Routing from the window procedures to the adapter of the control a message came from.
class Win32Adapter {
public:
    virtual ~Win32Adapter() = default;
    virtual void notify(WORD) {}
    // The brush of a box whose back colour the wizard sets; nullptr for the other controls.
    virtual HBRUSH brush(HDC) const { return nullptr; }
};

namespace {

void raise(const std::function<void()>& event) {
    if (event) {
        event();
    }
}

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

template <typename Base> class Win32Control : public Base, public Win32Adapter {
public:
    explicit Win32Control(HWND window) : w(window) {}
    bool Enabled() const override { return IsWindowEnabled(w) != FALSE; }
    void SetEnabled(bool enabled) override { EnableWindow(w, enabled ? TRUE : FALSE); }
    wizard::SystemColour BackColor() const override { return colour_; }
    void SetBackColor(wizard::SystemColour colour) override {
        colour_ = colour;
        InvalidateRect(w, nullptr, TRUE);
    }

protected:
    // What a text or combo box is filled with: the window colour, or the button face when the
    // wizard has greyed it.
    HBRUSH fill(HDC dc) const {
        const int index =
            colour_ == wizard::SystemColour::ButtonFace ? COLOR_BTNFACE : COLOR_WINDOW;
        SetBkColor(dc, GetSysColor(index));
        return GetSysColorBrush(index);
    }

    HWND w;

private:
    wizard::SystemColour colour_ = wizard::SystemColour::WindowBackground;
};

class Win32ComboBox final : public Win32Control<wizard::ComboBox> {
public:
    Win32ComboBox(HWND box, bool editable) : Win32Control(box), editable_(editable) {}
    void Clear() override { SendMessageW(w, CB_RESETCONTENT, 0, 0); }
    void AddItem(const std::string& text) override {
        const std::wstring wide = wideText(text);
        const LRESULT index =
            SendMessageW(w, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str()));
        SendMessageW(w, CB_SETITEMDATA, static_cast<WPARAM>(index), 0);
    }
    int ListCount() const override { return static_cast<int>(SendMessageW(w, CB_GETCOUNT, 0, 0)); }
    std::string List(int index) const override {
        const LRESULT length = SendMessageW(w, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
        if (length == CB_ERR) {
            return {};
        }
        std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
        SendMessageW(w, CB_GETLBTEXT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(length));
        return tillText(text);
    }
    std::int32_t ItemData(int index) const override {
        const LRESULT data = SendMessageW(w, CB_GETITEMDATA, static_cast<WPARAM>(index), 0);
        return data == CB_ERR ? 0 : static_cast<std::int32_t>(data);
    }
    void SetItemData(int index, std::int32_t data) override {
        SendMessageW(w, CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data));
    }
    int ListIndex() const override {
        const LRESULT index = SendMessageW(w, CB_GETCURSEL, 0, 0);
        return index == CB_ERR ? -1 : static_cast<int>(index);
    }
    void SetListIndex(int index) override {
        SendMessageW(w, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
    // A list shows its selected entry; an editable box what its text field holds.
    std::string Text() const override {
        return editable_ ? tillText(windowText(w)) : List(ListIndex());
    }
    void SetText(const std::string& text) override {
        const std::wstring wide = wideText(text);
        const LRESULT found = SendMessageW(w, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                           reinterpret_cast<LPARAM>(wide.c_str()));
        if (found != CB_ERR) {
            SendMessageW(w, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
        }
        if (editable_) {
            if (found == CB_ERR) {
                SendMessageW(w, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
            }
            SetWindowTextW(w, wide.c_str());
        }
    }
    void notify(WORD code) override {
        if (code == CBN_SELCHANGE) {
            raise(Click);
        } else if (code == CBN_EDITCHANGE) {
            raise(Change);
        }
    }
    HBRUSH brush(HDC dc) const override { return fill(dc); }

private:
    bool editable_;
};

class Win32CheckBox final : public Win32Control<wizard::CheckBox> {
public:
    using Win32Control::Win32Control;
    bool Value() const override { return SendMessageW(w, BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void SetValue(bool checked) override {
        SendMessageW(w, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    void notify(WORD code) override {
        if (code == BN_CLICKED) {
            raise(Click);
        }
    }
};

// An edit control tells of every change of its text, the program's own included: only the
// user's edits are the control's Change.
class Win32TextBox final : public Win32Control<wizard::TextBox> {
public:
    using Win32Control::Win32Control;
    std::string Text() const override { return tillText(windowText(w)); }
    void SetText(const std::string& text) override {
        setting_ = true;
        SetWindowTextW(w, wideText(text).c_str());
        setting_ = false;
    }
    void notify(WORD code) override {
        if (code == EN_CHANGE && !setting_) {
            raise(Change);
        }
    }
    HBRUSH brush(HDC dc) const override { return fill(dc); }

private:
    bool setting_ = false;
};

class Win32Button final : public Win32Control<wizard::Button> {
public:
    using Win32Control::Win32Control;
    void notify(WORD code) override {
        if (code == BN_CLICKED && Enabled()) {
            raise(Click);
        }
    }
};

class Win32Label final : public Win32Control<wizard::Label> {
public:
    using Win32Control::Win32Control;
    std::string Caption() const override { return tillText(windowText(w)); }
    void SetCaption(const std::string& caption) override {
        SetWindowTextW(w, wideText(caption).c_str());
    }
};

class Win32Frame final : public Win32Control<wizard::Frame> {
public:
    using Win32Control::Win32Control;
    // Shown or hidden within its window, whether or not the window itself is showing yet.
    bool Visible() const override { return (GetWindowLongW(w, GWL_STYLE) & WS_VISIBLE) != 0; }
    void SetVisible(bool visible) override { ShowWindow(w, visible ? SW_SHOW : SW_HIDE); }
};

class Win32Picture final : public Win32Control<wizard::Picture> {
public:
    using Win32Control::Win32Control;
};

class Win32ProgressBar final : public Win32Control<wizard::ProgressBar> {
public:
    using Win32Control::Win32Control;
    int Min() const override { return static_cast<int>(SendMessageW(w, PBM_GETRANGE, TRUE, 0)); }
    int Max() const override { return static_cast<int>(SendMessageW(w, PBM_GETRANGE, FALSE, 0)); }
    int Value() const override { return static_cast<int>(SendMessageW(w, PBM_GETPOS, 0, 0)); }
    void SetMin(int min) override { SendMessageW(w, PBM_SETRANGE32, min, Max()); }
    void SetMax(int max) override { SendMessageW(w, PBM_SETRANGE32, Min(), max); }
    void SetValue(int value) override {
        SendMessageW(w, PBM_SETPOS, static_cast<WPARAM>(value), 0);
    }
};

// A window timer of the form's window, numbered like a control.
class Win32Timer final : public wizard::Timer {
public:
    Win32Timer(HWND window, UINT_PTR id) : window_(window), id_(id) {}
    ~Win32Timer() override { SetEnabled(false); }
    int Interval() const override { return interval_; }
    void SetInterval(int milliseconds) override {
        interval_ = milliseconds;
        if (enabled_) {
            SetTimer(window_, id_, static_cast<UINT>(interval_), nullptr);
        }
    }
    bool Enabled() const override { return enabled_; }
    void SetEnabled(bool enabled) override {
        enabled_ = enabled;
        if (enabled) {
            SetTimer(window_, id_, static_cast<UINT>(interval_), nullptr);
        } else {
            KillTimer(window_, id_);
        }
    }
    UINT_PTR id() const { return id_; }

private:
    HWND window_;
    UINT_PTR id_;
    int interval_ = 0;
    bool enabled_ = false;
};

struct NativeKind {
    const wchar_t* windowClass;
    DWORD style;
    DWORD extendedStyle;
};

template <typename Kind> NativeKind nativeKind(const wizard::ControlInfo& info) {
    if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
        return {
            WC_COMBOBOXW,
            static_cast<DWORD>(WS_TABSTOP | WS_VSCROLL |
                               (info.editable ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST)),
            0};
    } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
        return {WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX, 0};
    } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
        return {WC_EDITW, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
        return {WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON, 0};
    } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
        // The wizard's own texts are shown as they are: an "&" in them is no Alt key.
        return {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0};
    } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
        // A frame is a window of its own that holds its controls and draws its heading.
        return {L"ParvanePage", 0, WS_EX_CONTROLPARENT};
    } else if constexpr (std::is_same_v<Kind, wizard::Picture>) {
        return {WC_STATICW, SS_BITMAP, 0};
    } else {
        return {PROGRESS_CLASSW, 0, 0};
    }
}

template <typename Kind> std::unique_ptr<Win32Adapter> adapterFor(HWND window, bool editable) {
    if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
        return std::make_unique<Win32ComboBox>(window, editable);
    } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
        return std::make_unique<Win32CheckBox>(window);
    } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
        return std::make_unique<Win32TextBox>(window);
    } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
        return std::make_unique<Win32Button>(window);
    } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
        return std::make_unique<Win32Label>(window);
    } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
        return std::make_unique<Win32Frame>(window);
    } else if constexpr (std::is_same_v<Kind, wizard::Picture>) {
        return std::make_unique<Win32Picture>(window);
    } else {
        return std::make_unique<Win32ProgressBar>(window);
    }
}

HWND createChild(const NativeKind& kind, const std::wstring& caption, HWND parent, int id,
                 HFONT font) {
    HWND window = CreateWindowExW(kind.extendedStyle, kind.windowClass, caption.c_str(),
                                  WS_CHILD | WS_VISIBLE | kind.style, 0, 0, 0, 0, parent,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return window;
}

} // namespace

template <typename Controls>
Win32ControlSet::Win32ControlSet(Controls& controls, const Win32FormContext& form) {
    wizard::forEachControl(controls, [&](const wizard::ControlInfo& info, auto*& slot) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(slot)>>;
        const int id = nextId_++;
        if constexpr (std::is_same_v<Kind, wizard::Timer>) {
            auto timer = std::make_unique<Win32Timer>(form.window, static_cast<UINT_PTR>(id));
            slot = timer.get();
            timers_.push_back(std::move(timer));
        } else {
            const bool input =
                std::is_same_v<Kind, wizard::ComboBox> || std::is_same_v<Kind, wizard::TextBox>;
            HWND parent = form.parentOf(info, *this);
            const std::wstring caption = wideText(info.caption);
            if (input && !info.caption.empty()) {
                // The label goes first: an Alt key on it moves to the control that follows.
                labels_[controlKey(info)] =
                    createChild({WC_STATICW, SS_LEFT, 0}, caption, parent, -1, form.font);
            }
            HWND window = createChild(nativeKind<Kind>(info), input ? std::wstring() : caption,
                                      parent, id, form.font);
            if constexpr (std::is_same_v<Kind, wizard::Picture>) {
                SendMessageW(window, STM_SETIMAGE, IMAGE_BITMAP,
                             reinterpret_cast<LPARAM>(form.picture));
            }
            std::unique_ptr<Win32Adapter> adapter = adapterFor<Kind>(window, info.editable);
            slot = dynamic_cast<Kind*>(adapter.get());
            add(info, window, std::move(adapter), form);
        }
    });
}

template Win32ControlSet::Win32ControlSet(wizard::WizardControls&, const Win32FormContext&);
template Win32ControlSet::Win32ControlSet(wizard::PrinterSerialControls&, const Win32FormContext&);
template Win32ControlSet::Win32ControlSet(wizard::TmsControls&, const Win32FormContext&);

Win32ControlSet::~Win32ControlSet() = default;

void Win32ControlSet::add(const wizard::ControlInfo& info, HWND window,
                          std::unique_ptr<Win32Adapter> adapter, const Win32FormContext&) {
    windows_[controlKey(info)] = window;
    byWindow_[window] = adapter.get();
    adapters_.push_back(std::move(adapter));
}

HWND Win32ControlSet::window(const std::string& key) const {
    const auto found = windows_.find(key);
    return found != windows_.end() ? found->second : nullptr;
}

HWND Win32ControlSet::label(const std::string& key) const {
    const auto found = labels_.find(key);
    return found != labels_.end() ? found->second : nullptr;
}

bool Win32ControlSet::command(HWND control, WORD code) const {
    const auto found = byWindow_.find(control);
    if (found == byWindow_.end()) {
        return false;
    }
    found->second->notify(code);
    return true;
}

HBRUSH Win32ControlSet::colour(HWND control, HDC dc) const {
    const auto found = byWindow_.find(control);
    if (found != byWindow_.end()) {
        return found->second->brush(dc);
    }
    // The edit field inside an editable combo box paints with its box.
    const auto parent = byWindow_.find(GetParent(control));
    return parent != byWindow_.end() ? parent->second->brush(dc) : nullptr;
}

void Win32ControlSet::timer(UINT_PTR id) const {
    for (const auto& timer : timers_) {
        if (static_cast<Win32Timer*>(timer.get())->id() == id) {
            raise(timer->Tick);
        }
    }
}
