#include "ui/win32/win32_look.h"

#include "ui/win32/resource_ids.h"
#include "ui/win32/win32_wizard.h"

#include <commctrl.h>

namespace {

bool busy = false;

HFONT scaledFont(const LOGFONTW& base, double factor, bool bold) {
    LOGFONTW font = base;
    font.lfHeight = static_cast<LONG>(font.lfHeight * factor);
    if (bold) {
        font.lfWeight = FW_BOLD;
    }
    return CreateFontIndirectW(&font);
}

void registerClass(const wchar_t* name, WNDPROC procedure, UINT style, HBRUSH background) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = style;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = background;
    windowClass.hIcon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_PARVANE));
    windowClass.lpszClassName = name;
    RegisterClassExW(&windowClass);
}

Look makeLook() {
    INITCOMMONCONTROLSEX common{sizeof common, ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&common);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    Look made{
        CreateFontIndirectW(&metrics.lfMessageFont), scaledFont(metrics.lfMessageFont, 1.3, true),
        scaledFont(metrics.lfMessageFont, 1.5, true),
        static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDB_WELCOME),
                                        IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)),
        dpi > 0 ? dpi : 96};
    HBRUSH face = GetSysColorBrush(COLOR_BTNFACE);
    registerClass(L"ParvaneWizard", Win32Wizard::windowProcedure, 0, face);
    registerClass(L"ParvanePage", pageProcedure, CS_HREDRAW | CS_VREDRAW, face);
    return made;
}

} // namespace

const Look& look() {
    static const Look made = makeLook();
    return made;
}

void place(HWND control, int x, int y, int width, int height) {
    const Look& sizes = look();
    MoveWindow(control, sizes.scale(x), sizes.scale(y), sizes.scale(width), sizes.scale(height),
               FALSE);
}

bool busyPointer() {
    return busy;
}

void setBusyPointer(bool value) {
    busy = value;
    SetCursor(LoadCursorW(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

LRESULT CALLBACK pageProcedure(HWND page, UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_COMMAND:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
        return SendMessageW(GetParent(page), message, w, l);
    case WM_SETFONT:
        SetWindowLongPtrW(page, GWLP_USERDATA, static_cast<LONG_PTR>(w));
        return 0;
    case WM_GETFONT:
        return GetWindowLongPtrW(page, GWLP_USERDATA);
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(page, &paint);
        RECT frame;
        GetClientRect(page, &frame);
        DrawEdge(dc, &frame, EDGE_ETCHED, BF_RECT);
        wchar_t heading[128] = {};
        if (GetWindowTextW(page, heading, 128) > 0) {
            const Look& sizes = look();
            HGDIOBJ before =
                SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(page, WM_GETFONT, 0, 0)));
            SetBkMode(dc, TRANSPARENT);
            SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
            RECT text{sizes.scale(12), sizes.scale(8), frame.right - sizes.scale(12),
                      sizes.scale(36)};
            DrawTextW(dc, heading, -1, &text, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX);
            SelectObject(dc, before);
        }
        EndPaint(page, &paint);
        return 0;
    }
    default:
        return DefWindowProcW(page, message, w, l);
    }
}
