// Page 4, "Chip And Pin Device Configuration": the device's port, where cards are swiped, its
// idle prompts and the track markers of a swipe on the till.
#pragma once

#include "wizard/control_set.h"

class TCcAddinRegistry;

namespace wizard {

class ChipPinPage {
public:
    explicit ChipPinPage(ChipPinPageControls& controls);
    void FillLists();
    void Load(const TCcAddinRegistry& settings);
    void Save(TCcAddinRegistry& settings) const;

private:
    ChipPinPageControls& c_;
};

} // namespace wizard
