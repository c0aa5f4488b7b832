// "TMS Call": the user picks the kind of terminal-management call after a fully integrated run.
// The choice is left in the program-wide TmsTypeSelected: the list index, or -1 when cancelled.
#pragma once

#include "wizard/control_set.h"

#include <cstdint>
#include <functional>

namespace wizard {

extern std::int32_t TmsTypeSelected;

class frmTms {
public:
    TmsControls controls;
    std::function<void()> Unload; // set by the face that shows the dialog

    void Form_Load();
    // Closed from the window (its close box, Escape): no call is started that the user did not
    // ask for.
    void QueryUnload();

private:
    void cboTmsType_Change();
};

} // namespace wizard
