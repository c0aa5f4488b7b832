// Page 2, "Configuration (General)": tenders, cashback, DCC, offline working, end-of-day jobs.
#pragma once

#include "wizard/control_set.h"

class TCcAddinRegistry;

namespace wizard {

class GeneralPage {
public:
    explicit GeneralPage(GeneralPageControls& controls);
    void FillLists();
    void Load(const TCcAddinRegistry& settings);
    void Save(TCcAddinRegistry& settings) const;
    // Greys what the chosen integration does not use.
    void ApplyMode(bool fullyIntegrated);

private:
    void Refresh();

    GeneralPageControls& c_;
    bool fullyIntegrated_ = true;
};

} // namespace wizard
