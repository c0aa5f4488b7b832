// Page 1, "Merchant Configuration": who the merchant is and how the add-in is wired to the till.
// The form wires the page's handlers, since several of them reach other pages.
#pragma once

#include "wizard/control_set.h"

#include <string>

class TCcAddinRegistry;

namespace wizard {

class MerchantPage {
public:
    // `programFolder` ends in "\": the profile and fuel files are read there.
    MerchantPage(MerchantPageControls& controls, std::string programFolder);

    // The fixed lists and the fuel-card names of the fuel table.
    void FillLists();

    // The connection profiles of the chosen installation type: live profiles for LIVE, test
    // profiles for TEST; the first one is selected.
    void RefillProfiles();

    // In the order that lets each list's handler see the lists it depends on.
    void Load(const TCcAddinRegistry& settings);
    void Save(TCcAddinRegistry& settings) const;

    bool SemiIntegrated() const;
    bool ReceiptOnTerminal() const;
    // The RMS V2 entry of the EPOS types, the one till type that prints through RMS.
    bool RmsV2Till() const;

private:
    MerchantPageControls& c_;
    std::string programFolder_;
};

} // namespace wizard
