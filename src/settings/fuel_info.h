// The fuel-card schemes a till may be set up for, each with the prefix of the terminal
// application files a TMS call asks for, loaded from "fuelinfo.ini".
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class TFuelInfo {
public:
    // Loads the table from "fuelinfo.ini" in `folder` ("\" added when missing), forgetting any
    // earlier load. True when it FAILED; the entries read before the failure stay.
    bool ReadConfiguration(const std::string& folder);

    // The name of the entry, or empty text for an index outside 0 to lFuelInfoCount() - 1.
    std::string GetFuelName(std::int32_t index) const;

    // The prefix of the first entry with exactly this name (case-sensitive), or empty text.
    std::string GetZontalkAppPrefix(const std::string& fuelName) const;

    std::string strErrorMessage; // the last failure; not cleared by a later success

    std::int32_t lFuelInfoCount() const { return lFuelInfoCount_; }

private:
    std::vector<std::pair<std::string, std::string>> entries_; // (name, prefix), in file order
    std::int32_t lFuelInfoCount_ = 0;
};
