#include "apply/answer_check.h"

#include "configure/merchant_choices.h"
#include "platform/cp1252.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <limits>

namespace {

namespace mc = merchant_choices;

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::optional<long long> wholeNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    const std::string_view digits = negative ? text.substr(1) : text;
    if (digits.empty() ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

// Digits with at most one "." between digits: the form the real setting is stored in.
bool isDecimal(std::string_view text) {
    if (text.starts_with('-')) {
        text.remove_prefix(1);
    }
    const std::size_t dot = text.find('.');
    const auto digitsOnly = [](std::string_view part) {
        return !part.empty() &&
               std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    };
    return dot == std::string_view::npos
               ? digitsOnly(text)
               : digitsOnly(text.substr(0, dot)) && digitsOnly(text.substr(dot + 1));
}

struct Range {
    std::string_view valueName;
    std::int32_t lowest;
    std::int32_t highest;
    std::string_view meaning;
};

// Numbers that choose an entry of one of the wizard's lists.
constexpr std::array<Range, 4> kRanges = {{
    {"SemiIntegrated", 0, mc::kHighestOperatingMode, "an operating mode"},
    {"RmsTill", 0, 2, "a till type"},
    {"DccEnabled", 0, 2, "a DCC option"},
    {"DecimalInCashback", 0, 2, "a cashback entry type"},
}};

// The free texts the run carries into the TMS script (a VBScript string literal), the device
// manager's command line or the device's display, where a double quote ends the text early.
constexpr std::array<std::string_view, 4> kQuotedFreeTexts = {"CorvixMerchantId", "CorvixClientId",
                                                              "IdlePrompt1", "IdlePrompt2"};

struct TextLimit {
    std::string_view valueName;
    std::size_t longest;
    std::string_view why;
};

// The longest text each setting takes; every other text setting takes 255 characters, what the
// add-in's registry reads were made for.
constexpr std::array<TextLimit, 8> kTextLimits = {{
    {"IdlePrompt1", 32, "one line of the device's idle display"},
    {"IdlePrompt2", 32, "one line of the device's idle display"},
    {"CorvixMerchantId", 64, "an identifier the TMS service issued"},
    {"CorvixClientId", 64, "an identifier the TMS service issued"},
    {"CorvixPassword", 64, "a password the TMS service issued"},
    {"ConfigFileLocation", 247, "a Windows folder, which holds at most 247 characters"},
    {"ReceiptFileLocation", 247, "a Windows folder, which holds at most 247 characters"},
    {"ReportFileLocation", 247, "a Windows folder, which holds at most 247 characters"},
}};
constexpr TextLimit kOtherText = {"", 255, "registry text the add-in reads"};

// A line break would split an INI line or a script line, a NUL would end the registry text.
std::optional<std::string> textProblem(const AnswerValue& answer) {
    const std::string name(answer.setting->valueName);
    const auto control = std::find_if(answer.text.begin(), answer.text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
    });
    if (control != answer.text.end()) {
        return name + ": a control character (code " +
               std::to_string(static_cast<unsigned char>(*control)) +
               ") cannot be stored; the text would reach the till broken";
    }
    const bool quoted = std::any_of(kQuotedFreeTexts.begin(), kQuotedFreeTexts.end(),
                                    [&](std::string_view n) { return cp1252::iequals(n, name); });
    if (quoted && answer.text.find('"') != std::string::npos) {
        return name + "=" + answer.text +
               ": a double quote would end the text early in the TMS script or on the device";
    }
    TextLimit limit = kOtherText;
    for (const TextLimit& candidate : kTextLimits) {
        if (cp1252::iequals(candidate.valueName, name)) {
            limit = candidate;
        }
    }
    if (answer.text.size() > limit.longest) {
        return name + ": " + std::to_string(answer.text.size()) + " characters, longer than " +
               std::string(limit.why) + " (at most " + std::to_string(limit.longest) + ")";
    }
    return std::nullopt;
}

std::optional<std::string> kindProblem(const AnswerValue& answer) {
    const std::string_view name = answer.setting->valueName;
    switch (answer.setting->member.index()) {
    case 1: { // integer
        const auto number = wholeNumber(answer.text);
        if (!number || *number < std::numeric_limits<std::int32_t>::min() ||
            *number > std::numeric_limits<std::int32_t>::max()) {
            return std::string(name) + "=" + answer.text + ": expected a whole number";
        }
        for (const Range& range : kRanges) {
            if (cp1252::iequals(range.valueName, name) &&
                (*number < range.lowest || *number > range.highest)) {
                return std::string(name) + "=" + answer.text + ": expected " +
                       std::string(range.meaning) + " from " + std::to_string(range.lowest) +
                       " to " + std::to_string(range.highest);
            }
        }
        return std::nullopt;
    }
    case 2: // flag
        if (answer.text != "1" && answer.text != "0") {
            return std::string(name) + "=" + answer.text + ": expected 1 or 0";
        }
        return std::nullopt;
    case 3: // real
        if (!isDecimal(answer.text)) {
            return std::string(name) + "=" + answer.text + ": expected a number such as 1.5";
        }
        return std::nullopt;
    default:
        if (cp1252::iequals(name, "CorvixPassword") && answer.text == "***") {
            return std::string("CorvixPassword=***: that is the masked display of a password, "
                               "not a password");
        }
        return textProblem(answer);
    }
}

// The offered texts; a long list (the ports) as its first two and its last.
std::string listed(const std::vector<std::string>& entries) {
    std::vector<std::string> shown;
    for (const std::string& entry : entries) {
        if (!entry.empty()) {
            shown.push_back(quoted(entry));
        }
    }
    constexpr std::size_t kLongest = 12;
    if (shown.size() > kLongest) {
        shown = {shown[0], shown[1], "...", shown.back()};
    }
    std::string text;
    for (const std::string& entry : shown) {
        text += (text.empty() ? "" : ", ") + entry;
    }
    return text.empty() ? "none" : text;
}

template <std::size_t N>
std::vector<std::string> entriesOf(const std::array<std::string_view, N>& list) {
    return {list.begin(), list.end()};
}

struct ListRule {
    std::string_view valueName;
    std::string_view listName;
    std::function<std::vector<std::string>(const std::string& folder)> entries;
};

// The text settings the wizard only lets the user pick from a list. The profile list depends on
// the live or test choice and is checked apart.
const std::vector<ListRule>& listRules() {
    static const std::vector<ListRule> rules = {
        {"Acquirer", "acquirers", [](const std::string&) { return entriesOf(mc::kAcquirers); }},
        {"BaseCurrency", "currencies",
         [](const std::string&) { return entriesOf(mc::kCurrencies); }},
        {"ChipDeviceName", "chip and PIN devices",
         [](const std::string&) { return entriesOf(mc::kDevices); }},
        {"ComPort", "ports", [](const std::string&) { return mc::comPorts(); }},
        {"FuelType", "fuel types", [](const std::string& folder) { return mc::fuelNames(folder); }},
    };
    return rules;
}

bool contains(const std::vector<std::string>& entries, const std::string& text) {
    return std::find(entries.begin(), entries.end(), text) != entries.end();
}

void checkLists(const Answers& answers, const std::string& folder,
                std::vector<AnswerProblem>& problems) {
    for (const ListRule& rule : listRules()) {
        const AnswerValue* answer = answers.find(rule.valueName);
        if (answer == nullptr) {
            continue;
        }
        const std::vector<std::string> entries = rule.entries(folder);
        if (!contains(entries, answer->text)) {
            problems.push_back({answer->line, std::string(rule.valueName) + "=" + answer->text +
                                                  ": not one of the " + std::string(rule.listName) +
                                                  " offered (" + listed(entries) + ")"});
        }
    }
}

// A profile is offered only for its own kind of installation, so changing Mode alone can leave
// the installed profile behind.
void checkProfile(const Answers& answers, const std::string& folder,
                  const TCcAddinRegistry& settings, std::vector<AnswerProblem>& problems) {
    const AnswerValue* profile = answers.find("TessalyID");
    const AnswerValue* mode = answers.find("Mode");
    const std::vector<std::string> offered = mc::profileNames(folder, settings.bTestMode);
    if (settings.strTessalyID.empty() || contains(offered, settings.strTessalyID)) {
        return; // an empty profile is the Finish rule's complaint
    }
    // The installed profile may have gone from the file: the run would then write empty
    // addresses, and the till could no longer reach its acquirer.
    const std::string kind = settings.bTestMode ? "test" : "live";
    problems.push_back({profile != nullptr ? profile->line
                        : mode != nullptr  ? mode->line
                                           : 0,
                        "TessalyID=" + settings.strTessalyID + ": not one of the " + kind +
                            " connection profiles in connectioninfo.ini (" + listed(offered) + ")" +
                            (profile == nullptr ? ", though it is the installed one" : "")});
}

void checkFinishRule(const TCcAddinRegistry& settings, std::vector<AnswerProblem>& problems) {
    const mc::FinishInputs inputs{
        std::string(mc::kConfigModes[settings.lOperatingMode == 0 ? 0 : 1]),
        settings.strAcquirer,
        settings.strbaseCurrency,
        settings.strChipDeviceName,
        settings.strComPort,
        settings.strTessalyID};
    for (const std::string& reason : mc::finishProblems(inputs)) {
        problems.push_back({0, "the wizard would not allow Finish: " + reason});
    }
}

const RegistryWrite* lastWrite(const TillChanges& changes, std::string_view valueName) {
    const std::string_view key = kCcAddinKeyPath.substr(0, kCcAddinKeyPath.size() - 1);
    for (const RegistryWrite& write : changes.registry) {
        const std::string_view path = write.keyPath;
        if (cp1252::iequals(path.ends_with('\\') ? path.substr(0, path.size() - 1) : path, key) &&
            cp1252::iequals(write.valueName, valueName)) {
            return &write;
        }
    }
    return nullptr;
}

} // namespace

std::vector<AnswerProblem> unappliedAnswers(const Answers& answers,
                                            const TCcAddinRegistry& installed,
                                            const TillChanges& changes) {
    std::vector<AnswerProblem> unapplied;
    for (const AnswerValue& answer : answers.values) {
        TCcAddinRegistry wanted = installed;
        applyStoredText(wanted, *answer.setting, answer.text);
        const std::string text = storedText(wanted, *answer.setting);
        const RegistryWrite* write = lastWrite(changes, answer.setting->valueName);
        const bool applied =
            write != nullptr ? write->after == text : sameValue(wanted, installed, *answer.setting);
        if (!applied) {
            unapplied.push_back(
                {answer.line, std::string(answer.setting->valueName) +
                                  (write != nullptr ? " was written with the run's own value"
                                                    : " is not written by the configuration run") +
                                  ": the answer was not applied"});
        }
    }
    return unapplied;
}

std::vector<AnswerProblem> applyAnswers(const Answers& answers, const std::string& programFolder,
                                        TCcAddinRegistry& settings) {
    std::vector<AnswerProblem> problems;
    for (const AnswerValue& answer : answers.values) {
        if (auto problem = kindProblem(answer)) {
            problems.push_back({answer.line, std::move(*problem)});
        } else {
            applyStoredText(settings, *answer.setting, answer.text);
        }
    }
    checkLists(answers, programFolder, problems);
    if (problems.empty()) {
        checkProfile(answers, programFolder, settings, problems);
        checkFinishRule(settings, problems);
    }
    putInFileOrder(problems);
    return problems;
}
