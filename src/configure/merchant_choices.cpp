#include "configure/merchant_choices.h"

#include "settings/connection_info.h"
#include "settings/fuel_info.h"

namespace merchant_choices {

std::int32_t eposTillType(std::size_t entry) {
    constexpr std::array<std::int32_t, kEposTypes.size()> kTillTypes = {1, 2, 0};
    return entry < kTillTypes.size() ? kTillTypes[entry] : 0;
}

std::vector<std::string> comPorts() {
    constexpr int kHighestPort = 255;
    std::vector<std::string> ports{""};
    for (int port = 1; port <= kHighestPort; ++port) {
        ports.push_back("COM" + std::to_string(port));
    }
    return ports;
}

std::vector<std::string> profileNames(const std::string& folder, bool testMode) {
    TConnectionInfo profiles;
    bool failed = false;
    profiles.ReadConfiguration(folder, failed);
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < profiles.lConnectionCount(); ++i) {
        if (profiles.IsTestMode(i) == testMode) {
            std::string name;
            profiles.GetName(i, name);
            names.push_back(name);
        }
    }
    return names;
}

std::vector<std::string> fuelNames(const std::string& folder) {
    TFuelInfo fuels;
    fuels.ReadConfiguration(folder);
    std::vector<std::string> names{""};
    for (std::int32_t i = 0; i < fuels.lFuelInfoCount(); ++i) {
        names.push_back(fuels.GetFuelName(i));
    }
    return names;
}

std::vector<std::string> finishProblems(const FinishInputs& inputs) {
    std::vector<std::string> problems;
    const bool semi = inputs.configMode == kConfigModes[1];
    const bool fullyWithAcquirer = inputs.configMode == kConfigModes[0] && !inputs.acquirer.empty();
    if (!semi && !fullyWithAcquirer) {
        problems.push_back(inputs.configMode == kConfigModes[0]
                               ? "a fully integrated till needs an acquirer"
                               : "the configuration mode is neither fully nor semi integrated");
    }
    if (inputs.tessalyId.empty()) {
        problems.push_back("no connection profile is chosen");
    }
    if (inputs.port.empty()) {
        problems.push_back("no chip and PIN port is chosen");
    }
    if (inputs.device.empty()) {
        problems.push_back("no chip and PIN device is chosen");
    }
    if (inputs.currency.empty()) {
        problems.push_back("no currency is chosen");
    }
    return problems;
}

bool finishAllowed(const FinishInputs& inputs) {
    return finishProblems(inputs).empty();
}

} // namespace merchant_choices
