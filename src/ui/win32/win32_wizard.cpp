#include "ui/win32/win32_wizard.h"

#include "foundation/event_pump.h"
#include "ui/win32/win32_look.h"
#include "ui/win32/win32_text.h"

#include <commctrl.h>
#include <initializer_list>

namespace {

constexpr int kClientWidth = 780;
constexpr int kClientHeight = 540;

// One page's controls, placed by name on a 96 dpi grid within the page.
class PagePlacer {
public:
    explicit PagePlacer(const Win32ControlSet& controls) : controls_(controls) {}
    // The control with its label in front of it (the label's width is `labelWidth`).
    void row(const char* name, int x, int y, int labelWidth, int width) const {
        if (HWND label = controls_.label(name)) {
            place(label, x, y + 3, labelWidth - 6, 20);
        }
        at(name, x + labelWidth, y, width, heightOf(name));
    }
    void at(const char* name, int x, int y, int width, int height) const {
        place(controls_.window(name), x, y, width, height);
    }
    // Check boxes in columns, row by row.
    void checks(std::initializer_list<const char*> names, int x, int y, int columnWidth,
                int columns) const {
        int i = 0;
        for (const char* name : names) {
            at(name, x + (i % columns) * columnWidth, y + (i / columns) * 24, columnWidth - 8, 20);
            ++i;
        }
    }

private:
    // A drop-down list's window includes the list it drops.
    int heightOf(const char* name) const {
        wchar_t windowClass[32] = {};
        GetClassNameW(controls_.window(name), windowClass, 32);
        return lstrcmpiW(windowClass, WC_COMBOBOXW) == 0 ? 240 : 23;
    }

    const Win32ControlSet& controls_;
};

void layOutWelcome(const PagePlacer& page) {
    page.at("Picture1", 16, 16, 240, 320);
    page.at("Label1", 272, 20, 476, 56);
    page.at("lblGuide", 272, 84, 476, 120);
}

void layOutMerchant(const PagePlacer& page) {
    const char* pairs[][2] = {{"cboAcquirer", "cboCurrency"},
                              {"cboInstallType", "cboTessalyId"},
                              {"cboFuel", "cboDevice"},
                              {"txtCxMerchant", "txtCxClient"}};
    int y = 48;
    for (const auto& pair : pairs) {
        page.row(pair[0], 12, y, 136, 220);
        page.row(pair[1], 384, y, 128, 236);
        y += 32;
    }
    for (const char* wide :
         {"cboConfigMode", "cboSemiIntegratedMode", "cboReceiptInfo", "cboEposType"}) {
        page.row(wide, 12, y, 136, 600);
        y += 32;
    }
}

void layOutGeneral(const PagePlacer& page) {
    page.row("cboSplitTender", 12, 48, 200, 536);
    page.at("chkDecimalInSplitTender", 212, 80, 536, 20);
    page.at("chkCashback", 212, 106, 536, 20);
    page.row("cboCashBackEntry", 12, 132, 200, 536);
    page.at("chkDcc", 212, 164, 536, 20);
    page.row("cboDccOption", 12, 190, 200, 536);
    page.checks({"chkCustomerNotPresent", "chkOfflineMode", "chkObscureCardNumber", "chkE2EE",
                 "chkAutoAcceptOnPinVerification", "chkDailyTmsCall",
                 "chkAutoAcceptTappedNoVerification", "chkAutoRunReport"},
                12, 236, 376, 2);
    page.at("chkCloseBatch", 388, 236 + 4 * 24, 360, 20);
}

void layOutReceipt(const PagePlacer& page) {
    page.row("cboPrinterType", 12, 48, 124, 220);
    page.row("cboRmsPrinterNo", 384, 48, 180, 80);
    page.row("txtOposPrinterDeviceName", 12, 80, 124, 220);
    page.row("txtLineFeedsBeforePaperCut", 384, 80, 180, 60);
    page.row("txtWindowsPrinterName", 12, 112, 124, 220);
    page.row("txtPrintNormalControl", 384, 112, 180, 180);
    page.row("txtWindowsPrinterFontName", 12, 144, 124, 220);
    page.row("txtPrintBoldControl", 384, 144, 180, 180);
    page.row("txtWindowsFontSize", 12, 176, 124, 60);
    page.at("chkWindowsFontBold", 384, 178, 360, 20);
    page.at("cmdComPort", 12, 210, 120, 26);
    page.at("lblPrinterSerial", 140, 215, 608, 20);
    page.checks({"chkPrintMerchantReceipt", "chkPrintCustomerReceipt",
                 "chkCutPaperAfterMerchantCopy", "chkCutPaperAfterCustomerCopy",
                 "chkPrintMerchantHeader", "chkPrintCustomerHeader",
                 "chkCustomerReceiptFirstIfPinVerified", "chkRefundSigOnMerchCopy",
                 "chkRePrintReceipt", "chkPromptTappedCustomerReceipt", "chkAppendLineFeed",
                 "chkMakeMerchantReceiptsAvailableToClient"},
                12, 252, 376, 2);
}

void layOutChipPin(const PagePlacer& page, const Win32ControlSet& controls) {
    place(controls.label("cboPort"), 12, 48, 500, 20);
    page.at("cboPort", 12, 70, 150, 240);
    page.row("cboSwipe", 12, 112, 212, 320);
    page.row("txtIdlePrompt1", 12, 144, 212, 320);
    page.row("txtIdlePrompt2", 12, 176, 212, 320);
    page.row("txtTrackStartId", 12, 208, 212, 60);
    page.row("txtTrackEndId", 12, 240, 212, 60);
}

void layOutDisplay(const PagePlacer& page) {
    page.row("cboDisplaySize", 12, 48, 140, 300);
    page.row("cboWidth", 12, 80, 140, 300);
    page.row("txtWidth", 468, 80, 56, 100);
    page.row("cboHeight", 12, 112, 140, 300);
    page.row("txtHeight", 468, 112, 56, 100);
    page.row("cboPosition", 12, 144, 140, 300);
    page.row("txtLeft", 12, 176, 140, 100);
    page.row("txtTop", 12, 208, 140, 100);
    page.at("chkAlwaysOnTop", 152, 244, 400, 20);
    page.at("chkDisplayOndrelLogo", 152, 270, 400, 20);
}

void layOutProgress(const PagePlacer& page) {
    page.at("Label18", 12, 20, 740, 30);
    page.at("Label19", 12, 80, 740, 20);
    page.at("ProgressBar1", 12, 104, 740, 22);
    page.at("capstatus", 12, 134, 740, 20);
}

} // namespace

void dispatchMessage(MSG& message) {
    HWND keys = GetAncestor(message.hwnd, GA_ROOT);
    if (keys != nullptr && IsDialogMessageW(keys, &message)) {
        return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

Win32Wizard::Win32Wizard(const std::string& programFolder) {
    const Look& sizes = look();
    RECT frame{0, 0, sizes.scale(kClientWidth), sizes.scale(kClientHeight)};
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    AdjustWindowRectEx(&frame, style, FALSE, WS_EX_CONTROLPARENT);
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"ParvaneWizard",
                              wideText(wizard::kWizardCaption).c_str(), style, CW_USEDEFAULT,
                              CW_USEDEFAULT, frame.right - frame.left, frame.bottom - frame.top,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    Win32FormContext context{window_,
                             [this](const wizard::ControlInfo& info, const Win32ControlSet& made) {
                                 if (info.page < 0 || info.name == "fraInstall") {
                                     return window_;
                                 }
                                 return made.window("fraInstall(" + std::to_string(info.page) +
                                                    ")");
                             },
                             sizes.font, sizes.picture};
    controls_ = std::make_unique<Win32ControlSet>(slots_, context);
    layOut();
    // The run hands control back between its jobs; this is where the progress page gets it.
    installEventPump([] {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            dispatchMessage(message);
        }
    });
    form_ = std::make_unique<wizard::frmTessalyConfig>(slots_, *this, programFolder);
    form_->Form_Load();
}

Win32Wizard::~Win32Wizard() {
    installEventPump({});
    if (IsWindow(window_)) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
}

void Win32Wizard::layOut() {
    const PagePlacer page(*controls_);
    for (int index = 0; index < 7; ++index) {
        HWND frame = controls_->window("fraInstall(" + std::to_string(index) + ")");
        place(frame, 8, 8, 764, 484);
        SendMessageW(frame, WM_SETFONT, reinterpret_cast<WPARAM>(look().heading), FALSE);
    }
    layOutWelcome(page);
    layOutMerchant(page);
    layOutGeneral(page);
    layOutReceipt(page);
    layOutChipPin(page, *controls_);
    layOutDisplay(page);
    layOutProgress(page);
    SendMessageW(controls_->window("Label1"), WM_SETFONT, reinterpret_cast<WPARAM>(look().title),
                 FALSE);
    SendMessageW(controls_->window("Label18"), WM_SETFONT, reinterpret_cast<WPARAM>(look().heading),
                 FALSE);
    int x = 396;
    for (const char* name : {"cmdBack", "cmdNext", "cmdfInish", "cmdClose"}) {
        place(controls_->window(name), x, 502, 88, 28);
        x += 96;
    }
}

int Win32Wizard::run() {
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        dispatchMessage(message);
    }
    return 0;
}

void Win32Wizard::MsgBox(const std::string& text, wizard::MessageIcon icon,
                         const std::string& title) {
    const UINT style = icon == wizard::MessageIcon::Information   ? MB_ICONINFORMATION
                       : icon == wizard::MessageIcon::Exclamation ? MB_ICONEXCLAMATION
                                                                  : MB_ICONERROR;
    MessageBoxW(window_, wideText(text).c_str(), wideText(title).c_str(), MB_OK | style);
}

void Win32Wizard::SetMousePointer(wizard::MousePointer pointer) {
    setBusyPointer(pointer == wizard::MousePointer::Hourglass);
}

void Win32Wizard::UnloadMainForm() {
    DestroyWindow(window_);
}

LRESULT CALLBACK Win32Wizard::windowProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto* wizard = reinterpret_cast<Win32Wizard*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return wizard != nullptr ? wizard->handle(message, w, l)
                             : DefWindowProcW(window, message, w, l);
}

LRESULT Win32Wizard::handle(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_COMMAND:
        if (l != 0 && controls_->command(reinterpret_cast<HWND>(l), HIWORD(w))) {
            return 0;
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        if (HBRUSH brush = controls_->colour(reinterpret_cast<HWND>(l), reinterpret_cast<HDC>(w))) {
            return reinterpret_cast<LRESULT>(brush);
        }
        break;
    case WM_TIMER:
        controls_->timer(w);
        return 0;
    case DM_GETDEFID:
        // Enter moves on through the pages.
        return MAKELRESULT(GetDlgCtrlID(controls_->window("cmdNext")), DC_HASDEFID);
    case WM_SETCURSOR:
        if (busyPointer()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case WM_CLOSE:
        // The window closes only when the wizard allows it (never during a run).
        if (form_ && form_->QueryUnload()) {
            DestroyWindow(window_);
        }
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window_, message, w, l);
}
