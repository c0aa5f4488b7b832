// "Printer Settings": the serial line and paper-cut sequence of a receipt printer driven over a
// serial port. Reads and writes the program-wide printer serial parameters, never arguments.
#pragma once

#include "wizard/control_set.h"

#include <functional>

namespace wizard {

class frmPTSerialConfig {
public:
    PrinterSerialControls controls;
    std::function<void()> Unload; // set by the face that shows the dialog

    void Form_Load();
    // Closed from the window (its close box, Escape): the same as Cancel.
    void QueryUnload();

private:
    void FillLists();
    void ShowCurrentValues();
    void cmdOK_Click();
    void cmdCancel_Click();
};

} // namespace wizard
