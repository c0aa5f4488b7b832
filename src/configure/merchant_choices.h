// The merchant page's fixed lists and the rule that decides when Finish may be pressed. The wizard
// fills its lists from here and the unattended front end checks answer files against the same
// entries, so both accept exactly the same merchant set-ups. No toolkit code: texts only.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace merchant_choices {

// Each list in the order the wizard shows it; an empty entry is the "nothing chosen" line.
inline constexpr std::array<std::string_view, 2> kConfigModes = {"Fully Integrated",
                                                                 "Semi Integrated"};
inline constexpr std::array<std::string_view, 2> kSemiIntegratedModes = {
    "Transaction confirmation/receipt printing on terminal",
    "Transaction confirmation/receipt printing on till"};
inline constexpr std::array<std::string_view, 3> kReceiptInfoModes = {
    "No receipt information lookup", "Receipt information lookup after every transaction",
    "Receipt information lookup after dcc transaction"};
inline constexpr std::array<std::string_view, 7> kAcquirers = {
    "", "AIB", "Elavon", "Barclays", "Streamline", "Lloyds", "HSBC"};
inline constexpr std::array<std::string_view, 3> kCurrencies = {"", "EUR", "GBP"};
inline constexpr std::array<std::string_view, 2> kInstallTypes = {"LIVE", "TEST"};
inline constexpr std::array<std::string_view, 4> kDevices = {"", "VeriFone SC5000",
                                                             "VeriFone VX810", "VeriFone VX820"};
// Index order of the list; the till type stored for each entry is eposTillType().
inline constexpr std::array<std::string_view, 3> kEposTypes = {
    "Till is a Microsoft Retail Management till (RMS V2)",
    "Till is a Microsoft Retail Management till (RMS V3)",
    "Till is not a Microsoft Retail Management till"};

// The till type each entry of kEposTypes stands for: RMS V2 is 1, RMS V3 is 2, "not" is 0.
std::int32_t eposTillType(std::size_t entry);

// The highest operating mode (semi-integrated, printing on the till, lookup after DCC).
inline constexpr std::int32_t kHighestOperatingMode = 4;

// The chip and PIN port list: the empty entry, then "COM1" to "COM255".
std::vector<std::string> comPorts();

// The connection profiles offered for a live or a test installation, in the file's order: only
// test profiles for a test installation, only live ones otherwise. Read from "connectioninfo.ini"
// in `folder` (ending in "\"); an unreadable file offers none.
std::vector<std::string> profileNames(const std::string& folder, bool testMode);

// The fuel list: the empty entry, then every fuel-card name of "fuelinfo.ini" in `folder`.
std::vector<std::string> fuelNames(const std::string& folder);

// The texts of the controls the Finish rule looks at.
struct FinishInputs {
    std::string configMode;
    std::string acquirer;
    std::string currency;
    std::string device;
    std::string port;
    std::string tessalyId;
};

// Finish is allowed when the mode is semi-integrated, or fully integrated with an acquirer, and
// the profile, port, device and currency are all chosen.
bool finishAllowed(const FinishInputs& inputs);

// The reasons finishAllowed() refuses, one text per unmet condition (empty when it allows).
std::vector<std::string> finishProblems(const FinishInputs& inputs);

} // namespace merchant_choices
