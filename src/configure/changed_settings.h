// The settings the configuration run writes only when the user changed them, in the run's order.
#pragma once

class TCcAddinRegistry;

// Compares each listed setting of `settings` (the new record) with `installed` and writes to the
// registry, through the new record, every one that differs. The base currency brings its name
// and exponent with it. True when a difference was seen in a setting the add-in must be told
// about; the display and layout settings at the end of the list are written quietly.
bool writeChangedSettings(const TCcAddinRegistry& installed, TCcAddinRegistry& settings);
