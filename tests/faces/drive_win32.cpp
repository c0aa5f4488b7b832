// Drives the Win32 wizard through window messages as a user's actions arrive, with the choices of
// a choices file, on this machine's till, and prints what the run left there:
//   wizard_drive_win32.exe CHOICES PROGRAM-FOLDER
#include "faces/end_to_end.h"
#include "ui/win32/win32_wizard.h"

#include <iostream>
#include <windows.h>

namespace {

std::wstring fromUtf8(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
    return wide;
}

// Answers every message box with OK, reporting what it said.
void answerMessages() {
    SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) {
        if (HWND box = FindWindowW(L"#32770", nullptr); box && IsWindowVisible(box)) {
            wchar_t text[512] = {};
            GetWindowTextW(GetDlgItem(box, 0xFFFF), text, 512);
            std::wcerr << L"message: " << text << L"\n";
            SendMessageW(box, WM_COMMAND, IDOK, 0);
        }
    });
}

bool act(Win32Wizard& wizard, const Choice& choice) {
    HWND control = wizard.control(choice.control);
    if (control == nullptr) {
        return false;
    }
    const std::wstring value = fromUtf8(choice.value);
    if (choice.action == "choose") {
        const LRESULT index = SendMessageW(control, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                           reinterpret_cast<LPARAM>(value.c_str()));
        if (index == CB_ERR) {
            return false;
        }
        SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(GetParent(control), WM_COMMAND,
                     MAKEWPARAM(GetDlgCtrlID(control), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(control));
    } else if (choice.action == "tick") {
        const bool ticked = SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
        if (ticked != (choice.value == "1")) {
            SendMessageW(control, BM_CLICK, 0, 0);
        }
    } else if (choice.action == "type") {
        SetWindowTextW(control, value.c_str());
    } else if (choice.action == "press") {
        if (!IsWindowEnabled(control)) {
            return false;
        }
        SendMessageW(control, BM_CLICK, 0, 0);
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: wizard_drive_win32.exe CHOICES PROGRAM-FOLDER\n";
        return 2;
    }
    Win32Wizard wizard(argv[2]);
    ShowWindow(wizard.window(), SW_SHOWNORMAL);
    answerMessages();
    for (const Choice& choice : readChoices(argv[1])) {
        if (!act(wizard, choice)) {
            std::cerr << "cannot " << choice.action << " " << choice.control << "\n";
            return 1;
        }
    }
    writeTillState(argv[2], std::cout);
    return 0;
}
