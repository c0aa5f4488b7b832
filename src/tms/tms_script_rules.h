// The constant lines of "tmscall.vbs" and what each becomes for this till. A line is matched in
// upper case against the rules in order, the key standing anywhere in it (a commented-out
// constant is matched too); the first rule whose key occurs decides, and a line no rule matches
// is kept as it is.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct TmsScriptValues {
    std::string folder; // ends in "\"
    std::string merchantId;
    std::string clientId;
    std::string downloadCode;
    std::string fuelFilesCode;
    std::string offlineCode;
    std::string comPort; // "COM3"
};

class TmsScriptRules {
public:
    explicit TmsScriptRules(const TmsScriptValues& values);

    std::string rewrite(const std::string& line) const;

private:
    struct Rule {
        std::string key; // upper case
        // Whole-line rules ignore the old line; the two guarded rules (below) get the old value,
        // from the character after its opening quote.
        std::function<std::string(const std::string& oldValue)> newLine;
        bool guarded = false;
        bool keepLine = false; // the key decides, but the line stays as it is
    };

    static std::string applyGuarded(const Rule& rule, const std::string& line);

    std::vector<Rule> rules_;
};
