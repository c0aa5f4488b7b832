// The Win32 face's side of the wizard's controls: a native control for every entry of a form's
// control table, one adapter each, and the routing of the controls' notifications back to the
// wizard. Controls are numbered in table order (the control table's name-to-ID mapping), so
// anything that finds a window by its ID (the face test, the end-to-end driver) agrees with it.
#pragma once

#include "wizard/control_set.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

// A control's key: its name, with the index of a control-array element ("fraInstall(2)").
std::string controlKey(const wizard::ControlInfo& info);

// The first control ID of a form; each control of the table takes the next.
constexpr int kFirstControlId = 1000;

// The control IDs of a form's table by key, without making any window.
template <typename Controls> std::map<std::string, int> controlIds() {
    Controls controls;
    std::map<std::string, int> ids;
    int next = kFirstControlId;
    wizard::forEachControl(
        controls, [&](const wizard::ControlInfo& info, auto*&) { ids[controlKey(info)] = next++; });
    return ids;
}

// What a control needs to know of the face: the font, and where each control of the table goes.
class Win32ControlSet;

struct Win32FormContext {
    HWND window; // the form's window, owner of its timer
    // The window a control sits on (its page, or the form's window), given the controls made so
    // far.
    std::function<HWND(const wizard::ControlInfo&, const Win32ControlSet&)> parentOf;
    HFONT font;
    HBITMAP picture; // for the Picture control
};

class Win32Adapter;

class Win32ControlSet {
public:
    template <typename Controls> Win32ControlSet(Controls& controls, const Win32FormContext& form);
    ~Win32ControlSet();
    Win32ControlSet(const Win32ControlSet&) = delete;
    Win32ControlSet& operator=(const Win32ControlSet&) = delete;

    // The window of a control by its key, and the label made beside a combo or text box.
    HWND window(const std::string& key) const;
    HWND label(const std::string& key) const;

    // A notification from one of the controls (WM_COMMAND); false when it is not one of ours.
    bool command(HWND control, WORD code) const;
    // The brush a control is painted with (WM_CTLCOLOR*), or nullptr for a window not ours.
    HBRUSH colour(HWND control, HDC dc) const;
    // A tick of a timer of this set (WM_TIMER).
    void timer(UINT_PTR id) const;

private:
    void add(const wizard::ControlInfo& info, HWND window, std::unique_ptr<Win32Adapter> adapter,
             const Win32FormContext& form);

    std::vector<std::unique_ptr<Win32Adapter>> adapters_;
    std::vector<std::unique_ptr<wizard::Timer>> timers_;
    std::map<std::string, HWND> windows_;
    std::map<std::string, HWND> labels_;
    std::map<HWND, Win32Adapter*> byWindow_;
    int nextId_ = kFirstControlId;
};

extern template Win32ControlSet::Win32ControlSet(wizard::WizardControls&, const Win32FormContext&);
extern template Win32ControlSet::Win32ControlSet(wizard::PrinterSerialControls&,
                                                 const Win32FormContext&);
extern template Win32ControlSet::Win32ControlSet(wizard::TmsControls&, const Win32FormContext&);
