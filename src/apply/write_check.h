// Reading back what a run meant to write. The settings store and the hook setup swallow their own
// failures, as the add-in always has; a fleet needs to know all the same when a value did not land.
#pragma once

#include "apply/till_changes.h"

#include <string>
#include <vector>

// Each registry value and INI key of `intended` (a plan of the run) that the till does not hold
// now, as "where: expected ..., found ...".
std::vector<std::string> writesNotHeld(const TillChanges& intended);
