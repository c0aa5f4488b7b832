// Captures every page of the Win32 wizard, the printer serial dialog and the TMS dialog as BMP
// files: parvane-screenshots.exe DIR PROGRAM-FOLDER. Needs a display (under Wine, Xvfb serves).
//
// Given the payment client's folder of a demo till with a VeriFone SC5000, the progress page and
// the TMS dialog are taken from a real run: a new chip and PIN port makes the run reconfigure the
// device manager, and the page is captured during its ten-second pause. Use a throwaway till.
#include "ui/win32/win32_text.h"
#include "ui/win32/win32_wizard.h"
#include "wizard/frm_tms.h"

#include <commctrl.h>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <windows.h>

namespace {

// Lets the window paint everything it has been asked to.
void settle() {
    const DWORD until = GetTickCount() + 300;
    while (GetTickCount() < until) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            dispatchMessage(message);
        }
        Sleep(10);
    }
}

// The window's client area as a 24-bit BMP file.
bool capture(HWND window, const std::string& file) {
    RECT client{};
    GetClientRect(window, &client);
    const int width = client.right;
    const int height = client.bottom;
    HDC source = GetDC(window);
    HDC memory = CreateCompatibleDC(source);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const DWORD rowBytes = static_cast<DWORD>((width * 3 + 3) & ~3);
    const DWORD imageBytes = rowBytes * static_cast<DWORD>(height);
    BITMAPFILEHEADER header{
        0x4D42,
        static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + imageBytes), 0, 0,
        sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)};
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&header), sizeof header);
    out.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
    out.write(static_cast<const char*>(bits), imageBytes);
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
    std::printf("%s %s\n", out ? "wrote" : "FAILED", file.c_str());
    return static_cast<bool>(out);
}

std::function<bool()> onTimer;

// Runs `action` every `every` milliseconds, even inside a modal loop, until it returns true.
void poll(UINT every, std::function<bool()> action) {
    onTimer = std::move(action);
    SetTimer(nullptr, 0, every, [](HWND, UINT, UINT_PTR id, DWORD) {
        // A capture lets the window paint, which lets this timer's next ticks in: those wait.
        static bool running = false;
        if (running) {
            return;
        }
        running = true;
        std::function<bool()> action = onTimer;
        if (!action || action()) {
            KillTimer(nullptr, id);
        }
        running = false;
    });
}

// The next dialog showing over the wizard: captured, then closed from its window.
void captureDialog(const std::string& file, bool& saved) {
    poll(200, [file, &saved] {
        HWND dialog = FindWindowW(L"ParvaneDialog", nullptr);
        if (dialog == nullptr || !IsWindowVisible(dialog)) {
            return false;
        }
        settle();
        saved = capture(dialog, file);
        PostMessageW(dialog, WM_CLOSE, 0, 0);
        onTimer = nullptr;
        return true;
    });
}

void choose(HWND box, int index) {
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(GetParent(box), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(box), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
}

// A run on an SC5000 till, with the progress page captured in the device manager's pause and
// the TMS dialog after it; false when there is no SC5000 till to run on.
bool captureRealRun(Win32Wizard& wizard, const std::string& dir, bool& tmsSaved) {
    HWND device = wizard.control("cboDevice");
    HWND port = wizard.control("cboPort");
    wchar_t shown[64] = {};
    GetWindowTextW(device, shown, 64);
    if (std::wstring(shown) != L"VeriFone SC5000") {
        return false;
    }
    choose(port, SendMessageW(port, CB_GETCURSEL, 0, 0) == 2 ? 3 : 2);
    if (!IsWindowEnabled(wizard.control("cmdfInish"))) {
        return false;
    }
    bool pageSaved = false;
    const DWORD started = GetTickCount();
    poll(100, [&] {
        if (GetTickCount() - started < 3500) {
            return false;
        }
        pageSaved = capture(wizard.window(), dir + "\\page-6.bmp");
        captureDialog(dir + "\\tms-call.bmp", tmsSaved);
        return false; // the dialog's own poll has taken over
    });
    SendMessageW(wizard.control("cmdfInish"), BM_CLICK, 0, 0);
    return pageSaved;
}

} // namespace

int main(int argc, char** argv); // as a console program would, from WinMain

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return main(__argc, __argv);
}

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: parvane-screenshots.exe DIR PROGRAM-FOLDER\n");
        return 2;
    }
    const std::string dir = argv[1];
    CreateDirectoryA(dir.c_str(), nullptr);
    Win32Wizard wizard(argv[2]);
    ShowWindow(wizard.window(), SW_SHOWNORMAL);
    bool ok = true;
    for (int page = 0; page <= 5; ++page) {
        wizard.form().ShowPage(page);
        settle();
        ok = capture(wizard.window(), dir + "\\page-" + std::to_string(page) + ".bmp") && ok;
    }
    // The printer settings are open to a serial printer only.
    bool saved = false;
    wizard.form().ShowPage(3);
    choose(wizard.control("cboPrinterType"), 2);
    captureDialog(dir + "\\printer-settings.bmp", saved);
    SendMessageW(wizard.control("cmdComPort"), BM_CLICK, 0, 0);
    ok = saved && ok;

    bool tmsSaved = false;
    if (!captureRealRun(wizard, dir, tmsSaved)) {
        std::printf("no SC5000 demo till: the progress page is shown as it stands mid-run\n");
        wizard.form().ShowPage(6);
        SendMessageW(wizard.control("ProgressBar1"), PBM_SETPOS, 25, 0);
        SetWindowTextW(wizard.control("capstatus"), L"Configuring Quenmar database");
        settle();
        ok = capture(wizard.window(), dir + "\\page-6.bmp") && ok;
    }
    if (!tmsSaved) {
        wizard::frmTms tms;
        captureDialog(dir + "\\tms-call.bmp", tmsSaved);
        wizard.ShowModal(tms);
    }
    return ok && tmsSaved ? 0 : 1;
}
