#include "settings/fuel_info.h"

#include "foundation/ini_file.h"
#include "foundation/tessaly_config.h"
#include "settings/numbered_records.h"

#include <exception>

namespace {

constexpr std::size_t kEntryFields = 2; // name and prefix; further fields are ignored

} // namespace

bool TFuelInfo::ReadConfiguration(const std::string& folder) {
    try {
        lFuelInfoCount_ = 0;
        entries_.clear();
        TTLIniFile ini;
        ini.strIniFileDir = TessalyConfig::AddBackslash(folder);
        ini.strIniFileName = "fuelinfo.ini";
        readNumberedRecords(ini, kEntryFields, [this](const RecordFields& fields) {
            entries_.emplace_back(fields[0], fields[1]);
            ++lFuelInfoCount_;
        });
        return false;
    } catch (const std::exception& e) {
        strErrorMessage = std::string("TFuelInfo.ReadConfiguration() Failed - ") + e.what();
    } catch (...) {
        strErrorMessage = "TFuelInfo.ReadConfiguration() Failed - unknown fault";
    }
    return true;
}

std::string TFuelInfo::GetFuelName(std::int32_t index) const {
    if (index < 0 || index >= lFuelInfoCount_) {
        return {};
    }
    return entries_[static_cast<std::size_t>(index)].first;
}

std::string TFuelInfo::GetZontalkAppPrefix(const std::string& fuelName) const {
    for (const auto& [name, prefix] : entries_) {
        if (name == fuelName) {
            return prefix;
        }
    }
    return {};
}
