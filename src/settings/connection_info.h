// The payment client's connection profiles, loaded from "connectioninfo.ini": a name, a test
// flag, three server addresses and three ports each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ConnectionProfile {
    bool bTestMode = false;
    std::string strName;
    std::string strAddress1;
    std::string strAddress2;
    std::string strAddress3;
    std::int32_t lPort1 = 0;
    std::int32_t lPort2 = 0;
    std::int32_t lPort3 = 0;
};

class TConnectionInfo {
public:
    // Loads the profiles of "connectioninfo.ini" in `folder` (used as given: the folder is
    // expected to end in "\"). `failed` always comes back false: a failed read shows only as
    // fewer or no profiles, and its text is kept privately.
    void ReadConfiguration(const std::string& folder, bool& failed);

    // Fills the outputs from the first profile of exactly that name (case-sensitive). When none
    // has it, `failed` is true and the outputs are left as they were.
    void GetDetailsByName(const std::string& name, std::string& address1, std::string& address2,
                          std::string& address3, std::int32_t& port1, std::int32_t& port2,
                          std::int32_t& port3, bool& failed) const;

    // The profile's name, or empty text for an index outside 0 to lConnectionCount() - 1.
    void GetName(std::int32_t index, std::string& name) const;

    // The profile's test flag, or false for an index outside 0 to lConnectionCount() - 1.
    bool IsTestMode(std::int32_t index) const;

    std::int32_t lConnectionCount() const { return lConnectionCount_; }

private:
    bool holds(std::int32_t index) const;

    std::vector<ConnectionProfile> profiles_;
    std::int32_t lConnectionCount_ = 0;
    // Deliberately not exposed: callers of the read never learn why it loaded less.
    std::string strErrorMessage_;
};
