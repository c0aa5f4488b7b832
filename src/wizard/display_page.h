// Page 5, "Size, Positioning and Logo": the add-in window's size, where it opens, and whether it
// stays on top and shows the Ondrel logo.
#pragma once

#include "wizard/control_set.h"

class TCcAddinRegistry;

namespace wizard {

class DisplayPage {
public:
    explicit DisplayPage(DisplayPageControls& controls);
    void FillLists();
    void Load(const TCcAddinRegistry& settings);
    void Save(TCcAddinRegistry& settings) const;

private:
    void Refresh();

    DisplayPageControls& c_;
};

} // namespace wizard
