// What the wizard asks of the window system beyond its controls: message boxes, the mouse
// pointer, modal dialogs and unloading the main form. A face implements it; the tests fake it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace wizard {

enum class MessageIcon { Information, Exclamation, Critical };

enum class MousePointer { Default, Hourglass };

// A modal dialog's behaviour (frmPTSerialConfig, frmTms). The face builds the dialog's native
// window for Name(), binds its controls to the dialog's control set, calls Form_Load and runs a
// modal loop until the dialog calls Unload (set by the face before Form_Load). Closing the window
// from its close box or Escape is QueryUnload: the dialog decides what that means.
class Dialog {
public:
    virtual ~Dialog() = default;
    virtual std::string_view Name() const = 0;
    virtual void Form_Load() = 0;
    virtual void QueryUnload() = 0;

    std::function<void()> Unload;
};

class Host {
public:
    virtual ~Host() = default;
    // Blocks until the user closes the box. `title` is the form's caption.
    virtual void MsgBox(const std::string& text, MessageIcon icon, const std::string& title) = 0;
    // Screen.MousePointer: for the whole screen, not one window.
    virtual void SetMousePointer(MousePointer pointer) = 0;
    // Shows `dialog` modally over the main form and returns when it has unloaded.
    virtual void ShowModal(Dialog& dialog) = 0;
    // Unloads the main form, which ends the program.
    virtual void UnloadMainForm() = 0;
};

} // namespace wizard
