// What the wizard asks of the window system beyond its controls: message boxes, the mouse
// pointer, its two modal dialogs and unloading the main form. A face implements it; the tests
// fake it.
#pragma once

#include <string>

namespace wizard {

class frmPTSerialConfig;
class frmTms;

enum class MessageIcon { Information, Exclamation, Critical };

enum class MousePointer { Default, Hourglass };

class Host {
public:
    virtual ~Host() = default;
    // Blocks until the user closes the box. `title` is the form's caption.
    virtual void MsgBox(const std::string& text, MessageIcon icon, const std::string& title) = 0;
    // Screen.MousePointer: for the whole screen, not one window.
    virtual void SetMousePointer(MousePointer pointer) = 0;
    // Each shows its dialog modally over the main form: the face builds the dialog's window from
    // its control table, binds the controls, sets the dialog's Unload, calls Form_Load and
    // returns once the dialog has called Unload. Closing the window any other way (its close
    // box, Escape) is the dialog's QueryUnload.
    virtual void ShowModal(frmPTSerialConfig& dialog) = 0;
    virtual void ShowModal(frmTms& dialog) = 0;
    // Unloads the main form, which ends the program.
    virtual void UnloadMainForm() = 0;
};

} // namespace wizard
