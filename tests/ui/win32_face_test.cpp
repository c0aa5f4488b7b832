// The Win32 face binds every control of the wizard's table to a native control of that kind,
// shows what the wizard sets, and hands what arrives as window messages (the user's actions) to
// the wizard; the rules themselves are tested on the toolkit-free wizard.
#include "foundation/registry.h"
#include "support/demo_till_template.h"
#include "support/temp_till.h"
#include "ui/win32/win32_text.h"
#include "ui/win32/win32_wizard.h"

#include <commctrl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <type_traits>
#include <windows.h>

namespace fs = std::filesystem;

namespace {

std::wstring textOf(HWND window) {
    wchar_t text[512] = {};
    GetWindowTextW(window, text, 512);
    return text;
}

std::wstring classOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

// What arrives when the user picks an entry of a list: the selection, then its notification.
void choose(HWND box, const wchar_t* text) {
    const LRESULT index = SendMessageW(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(text));
    ASSERT_NE(index, CB_ERR) << tillText(text);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(GetParent(box), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(box), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
}

// Runs `answer` on the next window of this class that shows while a modal loop runs.
void whenShown(const wchar_t* windowClass, std::function<void(HWND)> answer) {
    static std::function<void()> poll;
    poll = [windowClass, answer] {
        if (HWND shown = FindWindowW(windowClass, nullptr); shown && IsWindowVisible(shown)) {
            KillTimer(nullptr, 0);
            auto keep = answer;
            poll = nullptr;
            keep(shown);
        }
    };
    SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR id, DWORD) {
        if (poll) {
            poll();
        } else {
            KillTimer(nullptr, id);
        }
    });
}

class Win32FaceTest : public ::testing::Test {
protected:
    Win32FaceTest() {
        const fs::path client = till_.driveC() / "Program Files" / "Tessaly";
        fs::create_directories(client);
        fs::copy(repositoryRoot() / "demo" / "till" / "drive_c" / "Program Files" / "Tessaly",
                 client, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        TRegistry().CreateKeyAndSaveValue("SOFTWARE\\Tessaly\\ccaddin\\", "PrinterType", "2");
        wizard_ = std::make_unique<Win32Wizard>("C:\\Program Files\\Tessaly\\");
    }

    HWND control(const char* name) const { return wizard_->control(name); }

    TempTill till_;
    std::unique_ptr<Win32Wizard> wizard_;
};

// The native control shows what the control says, and a change made through the control shows
// on it without raising the control's event.
template <typename Kind>
void expectBound(const wizard::ControlInfo& info, Kind& control, HWND native) {
    const std::string name(info.name);
    ASSERT_NE(native, nullptr) << name;
    EXPECT_EQ(control.Enabled(), IsWindowEnabled(native) != FALSE) << name;
    control.SetEnabled(!control.Enabled());
    EXPECT_EQ(control.Enabled(), IsWindowEnabled(native) != FALSE) << name;
    control.SetEnabled(!control.Enabled());
    const std::wstring caption = wideText(info.caption);
    const LONG style = GetWindowLongW(native, GWL_STYLE);
    if constexpr (std::is_same_v<Kind, wizard::ComboBox>) {
        EXPECT_EQ(classOf(native), WC_COMBOBOXW) << name;
        EXPECT_EQ(control.ListCount(), SendMessageW(native, CB_GETCOUNT, 0, 0)) << name;
        bool raised = false;
        control.Click = [&raised] { raised = true; };
        control.AddItem("extra \xE9");
        control.SetListIndex(control.ListCount() - 1);
        EXPECT_EQ(textOf(native), L"extra \u00E9") << name;
        EXPECT_FALSE(raised) << name << ": a change in code raises no event";
    } else if constexpr (std::is_same_v<Kind, wizard::CheckBox>) {
        EXPECT_EQ(style & BS_TYPEMASK, BS_AUTOCHECKBOX) << name;
        EXPECT_EQ(textOf(native), caption) << name;
        control.SetValue(!control.Value());
        EXPECT_EQ(control.Value(), SendMessageW(native, BM_GETCHECK, 0, 0) == BST_CHECKED);
    } else if constexpr (std::is_same_v<Kind, wizard::TextBox>) {
        EXPECT_EQ(classOf(native), WC_EDITW) << name;
        bool raised = false;
        control.Change = [&raised] { raised = true; };
        control.SetText("\xE9t\xE9");
        EXPECT_EQ(textOf(native), L"\u00E9t\u00E9") << name;
        EXPECT_FALSE(raised) << name << ": a change in code raises no event";
    } else if constexpr (std::is_same_v<Kind, wizard::Button>) {
        EXPECT_EQ(style & BS_TYPEMASK & ~BS_DEFPUSHBUTTON, BS_PUSHBUTTON) << name;
        EXPECT_EQ(textOf(native), caption) << name;
    } else if constexpr (std::is_same_v<Kind, wizard::Label>) {
        EXPECT_EQ(classOf(native), WC_STATICW) << name;
        EXPECT_EQ(control.Caption(), tillText(textOf(native))) << name;
    } else if constexpr (std::is_same_v<Kind, wizard::Frame>) {
        EXPECT_EQ(control.Visible(), (style & WS_VISIBLE) != 0) << name << info.index;
        EXPECT_EQ(textOf(native), caption) << name << info.index;
    } else if constexpr (std::is_same_v<Kind, wizard::ProgressBar>) {
        control.SetValue(40);
        EXPECT_EQ(SendMessageW(native, PBM_GETPOS, 0, 0), 40);
    }
}

} // namespace

TEST_F(Win32FaceTest, EveryControlOfTheTableIsANativeControlOfItsKindBoundToTheWizard) {
    wizard::WizardControls controls = wizard_->controls();
    int bound = 0;
    wizard::forEachControl(controls, [&](const wizard::ControlInfo& info, auto*& control) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(control)>>;
        if constexpr (!std::is_same_v<Kind, wizard::Timer>) {
            expectBound(info, *control, wizard_->control(controlKey(info)));
            ++bound;
        }
    });
    EXPECT_EQ(bound, 85);
    RECT client{};
    GetClientRect(wizard_->window(), &client);
    EXPECT_EQ(client.right, MulDiv(780, GetDeviceCaps(GetDC(nullptr), LOGPIXELSY), 96));
}

TEST_F(Win32FaceTest, TheUsersMessagesReachTheWizardAndItsDialogsAndMessagesShow) {
    ShowWindow(wizard_->window(), SW_SHOW);
    choose(control("cboConfigMode"), L"Semi Integrated");
    choose(control("cboCurrency"), L"GBP");
    choose(control("cboDevice"), L"VeriFone VX820");
    choose(control("cboPort"), L"COM5");
    SetWindowTextW(control("txtCxMerchant"), L"M-\u00E9"); // typing arrives as a text change
    SendMessageW(control("chkCashback"), BM_CLICK, 0, 0);
    EXPECT_TRUE(IsWindowEnabled(control("cboCashBackEntry")));
    SendMessageW(control("cmdNext"), BM_CLICK, 0, 0);
    EXPECT_EQ(wizard_->form().CurrentPage(), 1);
    EXPECT_TRUE(IsWindowVisible(control("fraInstall(1)")));

    // The printer dialog's controls, bound and answered like the window's.
    std::wstring flow;
    whenShown(L"ParvaneDialog", [&flow](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Printer Settings");
        const auto ids = controlIds<wizard::PrinterSerialControls>();
        const auto item = [&](const char* name) { return GetDlgItem(dialog, ids.at(name)); };
        flow = textOf(item("cboFlowControl"));
        HWND baud = item("cboBaudRate");
        SetWindowTextW(baud, L"4800");
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(baud), CBN_EDITCHANGE),
                     reinterpret_cast<LPARAM>(baud));
        SendMessageW(item("cmdOK"), BM_CLICK, 0, 0);
    });
    SendMessageW(control("cmdComPort"), BM_CLICK, 0, 0);
    EXPECT_EQ(flow, L"Hardware");
    EXPECT_NE(textOf(control("lblPrinterSerial")).find(L"4800 baud"), std::wstring::npos);

    ASSERT_TRUE(IsWindowEnabled(control("cmdfInish")));
    std::wstring said;
    whenShown(L"#32770", [&said](HWND box) {
        said = textOf(GetDlgItem(box, 0xFFFF));
        SendMessageW(box, WM_COMMAND, IDOK, 0);
    });
    SendMessageW(control("cmdfInish"), BM_CLICK, 0, 0);
    EXPECT_EQ(said, L"Configuration and installation successful.");
    std::string stored;
    TRegistry().GetRegistryValue("SOFTWARE\\Tessaly\\ccaddin\\", "CorvixMerchantId", stored);
    EXPECT_EQ(stored, "M-\xE9");
    EXPECT_TRUE(IsWindowVisible(control("fraInstall(0)")));

    SendMessageW(control("cmdClose"), BM_CLICK, 0, 0);
    EXPECT_FALSE(IsWindow(wizard_->window()));
}
