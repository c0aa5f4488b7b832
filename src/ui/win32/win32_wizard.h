// The wizard's window in Win32: the native controls of the control table laid out page by page on
// a 780 x 540 client area (an 800 x 600 screen), the window services the wizard asks for, and the
// wizard itself, which holds every rule.
#pragma once

#include "ui/win32/win32_controls.h"
#include "wizard/control_set.h"
#include "wizard/frm_tessaly_config.h"
#include "wizard/host.h"

#include <memory>
#include <string>
#include <windows.h>

class Win32Wizard final : public wizard::Host {
public:
    // Makes the (hidden) window and loads the wizard on `programFolder`.
    explicit Win32Wizard(const std::string& programFolder);
    ~Win32Wizard() override;
    Win32Wizard(const Win32Wizard&) = delete;
    Win32Wizard& operator=(const Win32Wizard&) = delete;

    HWND window() const { return window_; }
    // A control's window by its key ("cboAcquirer", "fraInstall(3)").
    HWND control(const std::string& key) const { return controls_->window(key); }
    const wizard::WizardControls& controls() const { return slots_; }
    wizard::frmTessalyConfig& form() { return *form_; }

    // Runs the window's messages until it is closed; returns the program's exit code.
    int run();

    void MsgBox(const std::string& text, wizard::MessageIcon icon,
                const std::string& title) override;
    void SetMousePointer(wizard::MousePointer pointer) override;
    void ShowModal(wizard::frmPTSerialConfig& dialog) override;
    void ShowModal(wizard::frmTms& dialog) override;
    void UnloadMainForm() override;

    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);

private:
    LRESULT handle(UINT message, WPARAM w, LPARAM l);
    void layOut();

    HWND window_ = nullptr;
    wizard::WizardControls slots_;
    std::unique_ptr<Win32ControlSet> controls_;
    std::unique_ptr<wizard::frmTessalyConfig> form_;
};

// Hands a message to the window or dialog it belongs to, Tab, Enter, Escape and Alt keys
// included; used by every message loop of the face.
void dispatchMessage(MSG& message);
