// The wizard's two modal dialogs as Win32 windows: each lays out the controls of its table and
// hands every rule to the wizard's dialog. The owner is disabled while one shows, as a modal
// dialog's owner is; Escape and the close box are the dialog's QueryUnload.
#include "ui/win32/win32_look.h"
#include "ui/win32/win32_text.h"
#include "ui/win32/win32_wizard.h"
#include "wizard/frm_pt_serial_config.h"
#include "wizard/frm_tms.h"

#include <functional>
#include <string_view>

namespace {

struct DialogState {
    const Win32ControlSet* controls = nullptr;
    std::function<void()> queryUnload;
    int defaultId = 0;
};

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto* state = reinterpret_cast<DialogState*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (state == nullptr || state->controls == nullptr) {
        return DefWindowProcW(window, message, w, l);
    }
    switch (message) {
    case WM_COMMAND:
        if (l != 0 && state->controls->command(reinterpret_cast<HWND>(l), HIWORD(w))) {
            return 0;
        }
        if (LOWORD(w) == IDCANCEL) {
            state->queryUnload();
            return 0;
        }
        break;
    case WM_CLOSE:
        state->queryUnload();
        return 0;
    case DM_GETDEFID:
        return MAKELRESULT(state->defaultId, DC_HASDEFID);
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        if (HBRUSH brush =
                state->controls->colour(reinterpret_cast<HWND>(l), reinterpret_cast<HDC>(w))) {
            return reinterpret_cast<LRESULT>(brush);
        }
        break;
    case WM_SETCURSOR:
        if (busyPointer()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, w, l);
}

HWND makeDialogWindow(HWND owner, std::string_view caption, int width, int height) {
    static const bool registered = [] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = dialogProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        windowClass.lpszClassName = L"ParvaneDialog";
        return RegisterClassExW(&windowClass) != 0;
    }();
    (void)registered;
    const Look& sizes = look();
    const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    RECT frame{0, 0, sizes.scale(width), sizes.scale(height)};
    AdjustWindowRectEx(&frame, style, FALSE, WS_EX_DLGMODALFRAME);
    RECT ownerFrame{};
    GetWindowRect(owner, &ownerFrame);
    const int outerWidth = frame.right - frame.left;
    const int outerHeight = frame.bottom - frame.top;
    return CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, L"ParvaneDialog",
                           wideText(caption).c_str(), style,
                           (ownerFrame.left + ownerFrame.right - outerWidth) / 2,
                           (ownerFrame.top + ownerFrame.bottom - outerHeight) / 2, outerWidth,
                           outerHeight, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
}

// A dialog's controls sit on the dialog, but for those inside its frame (the TMS type's list and
// description), which sit on the frame.
std::function<HWND(const wizard::ControlInfo&, const Win32ControlSet&)> sitsOn(HWND dialog) {
    return [dialog](const wizard::ControlInfo& info, const Win32ControlSet& made) {
        HWND frame = made.window("fraTmsType");
        return frame != nullptr && (info.name == "cboTmsType" || info.name == "lblDesc") ? frame
                                                                                         : dialog;
    };
}

// Builds the dialog's window, lets the wizard's dialog load, and runs its messages until the
// dialog unloads itself.
template <typename Dialog, typename LayOut>
void runModal(HWND owner, Dialog& dialog, std::string_view caption, int width, int height,
              const char* defaultButton, LayOut layOut) {
    HWND window = makeDialogWindow(owner, caption, width, height);
    DialogState state;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&state));
    const Win32ControlSet controls(dialog.controls, {window, sitsOn(window), look().font, nullptr});
    layOut(controls);
    HWND byDefault = controls.window(defaultButton);
    SendMessageW(byDefault, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    state.defaultId = GetDlgCtrlID(byDefault);
    state.queryUnload = [&dialog] { dialog.QueryUnload(); };
    state.controls = &controls;
    bool unloaded = false;
    dialog.Unload = [&unloaded] { unloaded = true; };
    dialog.Form_Load();
    EnableWindow(owner, FALSE);
    ShowWindow(window, SW_SHOW);
    SetFocus(GetNextDlgTabItem(window, nullptr, FALSE));
    MSG message;
    while (!unloaded) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        dispatchMessage(message);
    }
    EnableWindow(owner, TRUE);
    SetActiveWindow(owner);
    state.controls = nullptr;
    DestroyWindow(window);
}

} // namespace

void Win32Wizard::ShowModal(wizard::frmPTSerialConfig& dialog) {
    runModal(window_, dialog, wizard::kPrinterSerialCaption, 460, 296, "cmdOK",
             [](const Win32ControlSet& controls) {
                 int y = 12;
                 for (const char* name : {"cboPort", "cboBaudRate", "cboParity", "cboDatabits",
                                          "cboStopbit", "cboFlowControl", "txtPaperCut"}) {
                     place(controls.label(name), 12, y + 3, 236, 20);
                     place(controls.window(name), 252, y, 196, name[0] == 'c' ? 200 : 23);
                     y += 32;
                 }
                 place(controls.window("cmdOK"), 264, 256, 88, 28);
                 place(controls.window("cmdCancel"), 360, 256, 88, 28);
             });
}

void Win32Wizard::ShowModal(wizard::frmTms& dialog) {
    runModal(window_, dialog, wizard::kTmsCaption, 460, 212, "cmdTms",
             [](const Win32ControlSet& controls) {
                 place(controls.window("fraTmsType"), 12, 8, 436, 152);
                 place(controls.window("cboTmsType"), 12, 32, 412, 200);
                 place(controls.window("lblDesc"), 12, 66, 412, 76);
                 place(controls.window("cmdTms"), 244, 172, 112, 28);
                 place(controls.window("cmdCancel"), 364, 172, 84, 28);
             });
}
