#include "settings/connection_info.h"

#include "foundation/ini_file.h"
#include "foundation/tessaly_string.h"
#include "settings/numbered_records.h"

#include <exception>

namespace {

constexpr std::size_t kProfileFields = 8;

// Fields after the eighth are ignored.
ConnectionProfile profileFrom(const RecordFields& fields) {
    ConnectionProfile profile;
    profile.bTestMode = fields[0] == "1";
    profile.strName = fields[1];
    profile.strAddress1 = fields[2];
    profile.strAddress2 = fields[3];
    profile.strAddress3 = fields[4];
    profile.lPort1 = TessalyString::StrToLong(fields[5]);
    profile.lPort2 = TessalyString::StrToLong(fields[6]);
    profile.lPort3 = TessalyString::StrToLong(fields[7]);
    return profile;
}

} // namespace

void TConnectionInfo::ReadConfiguration(const std::string& folder, bool& failed) {
    // Deliberately never reported: a caller sees a failed read only as fewer profiles.
    failed = false;
    try {
        lConnectionCount_ = 0;
        profiles_.clear();
        TTLIniFile ini;
        ini.strIniFileDir = folder;
        ini.strIniFileName = "connectioninfo.ini";
        readNumberedRecords(ini, kProfileFields, [this](const RecordFields& fields) {
            profiles_.push_back(profileFrom(fields));
            ++lConnectionCount_;
        });
    } catch (const std::exception& e) {
        strErrorMessage_ = std::string("TConnectionInfo.ReadConfiguration() Failed - ") + e.what();
    } catch (...) {
        strErrorMessage_ = "TConnectionInfo.ReadConfiguration() Failed - unknown fault";
    }
}

void TConnectionInfo::GetDetailsByName(const std::string& name, std::string& address1,
                                       std::string& address2, std::string& address3,
                                       std::int32_t& port1, std::int32_t& port2,
                                       std::int32_t& port3, bool& failed) const {
    failed = true;
    for (std::int32_t i = 0; i < lConnectionCount_; ++i) {
        const ConnectionProfile& profile = profiles_[static_cast<std::size_t>(i)];
        if (profile.strName == name) {
            address1 = profile.strAddress1;
            address2 = profile.strAddress2;
            address3 = profile.strAddress3;
            port1 = profile.lPort1;
            port2 = profile.lPort2;
            port3 = profile.lPort3;
            failed = false;
            return;
        }
    }
}

void TConnectionInfo::GetName(std::int32_t index, std::string& name) const {
    name = holds(index) ? profiles_[static_cast<std::size_t>(index)].strName : std::string();
}

bool TConnectionInfo::IsTestMode(std::int32_t index) const {
    return holds(index) && profiles_[static_cast<std::size_t>(index)].bTestMode;
}

bool TConnectionInfo::holds(std::int32_t index) const {
    return index >= 0 && index < lConnectionCount_;
}
