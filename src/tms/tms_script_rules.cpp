#include "tms/tms_script_rules.h"

#include "platform/cp1252.h"

namespace {

std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

// Blanks only; a tab stays part of the line.
std::string trimBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return "";
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

TmsScriptRules::TmsScriptRules(const TmsScriptValues& v) {
    const auto line = [](std::string text) {
        return [text = std::move(text)](const std::string&) { return text; };
    };
    // "ZONTALCOPYEXE" lacks its K in the script itself; the key must match the script.
    rules_ = {
        {"CONST ZONTALKEXE", line("Const ZONTALKEXE=" + quoted(v.folder + "zontalkclient.exe"))},
        {"CONST ZONTALCOPYEXE",
         line("Const ZONTALCOPYEXE=" + quoted(v.folder + "zontalkcopyfiles.exe"))},
        {"CONST CONFIGFILEDIR", line("Const CONFIGFILEDIR=" + quoted(v.folder))},
        {"CONST COPYFILE_FROMDIR", line("Const COPYFILE_FROMDIR=" + quoted(v.folder + "work\\"))},
        {"CONST COPYFILE_TODIR", line("Const COPYFILE_TODIR=" + quoted(v.folder))},
        {"CONST COPYFILE_LOGFILE",
         line("Const COPYFILE_LOGFILE=" + quoted(v.folder + "zoncopyfile.log"))},
        {"CONST CXMERCHANTID", line("Const CXMERCHANTID=" + quoted(v.merchantId))},
        {"CONST CXCLIENTID", line("Const CXCLIENTID=" + quoted(v.clientId))},
        // The download line has always been written with "CONST" in capitals; the script does
        // not care and the difference is kept.
        {"CONST APPLICATION_DOWNLOADVX810",
         line("CONST APPLICATION_DOWNLOADVX810=" + quoted(v.downloadCode)), true},
        {"CONST APPLICATION_FUELFILES",
         line("Const APPLICATION_FUELFILES=" + quoted(v.fuelFilesCode))},
        // The first three characters of the old value stay in front of the till's offline code.
        {"CONST APPLICATION_OFFLINEFILE",
         [code = v.offlineCode](const std::string& oldValue) {
             return "Const APPLICATION_OFFLINEFILE=" + quoted(oldValue.substr(0, 3) + code);
         },
         true},
        // The port number is not quoted; a name too short to hold one leaves the line alone.
        {"CONST COMPORT",
         line("Const COMPORT=" + (v.comPort.size() >= 4 ? v.comPort.substr(3) : "")), false,
         v.comPort.size() < 4},
    };
}

std::string TmsScriptRules::rewrite(const std::string& line) const {
    const std::string upper = cp1252::toUpper(line);
    for (const Rule& rule : rules_) {
        if (upper.find(rule.key) == std::string::npos) {
            continue;
        }
        if (rule.keepLine) {
            return line;
        }
        return rule.guarded ? applyGuarded(rule, line) : rule.newLine("");
    }
    return line;
}

// The guarded rules rewrite a line only when it spells the key in capitals (a mixed-case
// "Const" is only trimmed) and at least four characters follow the key, as in ="X": an empty
// value ="" is left alone. The trimmed line replaces the old one either way.
std::string TmsScriptRules::applyGuarded(const Rule& rule, const std::string& line) {
    const std::string trimmed = trimBlanks(line);
    const std::size_t at = trimmed.find(rule.key);
    if (at == std::string::npos || trimmed.size() < at + rule.key.size() + 4) {
        return trimmed;
    }
    return rule.newLine(trimmed.substr(at + rule.key.size() + 2));
}
