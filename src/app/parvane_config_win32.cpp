// The configuration wizard on Windows: the program is its one window and ends when the window
// closes.
#include "platform/platform.h"
#include "ui/win32/win32_text.h"
#include "ui/win32/win32_wizard.h"
#include "wizard/control_set.h"

#include <exception>
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    std::string folder;
    try {
        folder = platform::programFolder();
    } catch (const std::exception& fault) {
        MessageBoxW(nullptr, wideText(fault.what()).c_str(),
                    wideText(wizard::kWizardCaption).c_str(), MB_OK | MB_ICONERROR);
        return 1;
    }
    Win32Wizard wizard(folder);
    return wizard.run();
}
