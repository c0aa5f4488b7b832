#include "apply/answer_file.h"

#include "platform/cp1252.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One pair of enclosing double quotes is taken off, as profile strings are read, so that a
// value with outer blanks can be written down.
std::string_view unquoted(std::string_view value) {
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

// The line in Windows-1252, or empty when it is not UTF-8 or holds a character the till's code
// page has no place for (which would otherwise be stored as "?").
std::optional<std::string> tillText(std::string_view utf8) {
    std::string text = cp1252::fromUtf8(utf8);
    if (cp1252::toUtf8(text) != utf8) {
        return std::nullopt;
    }
    return text;
}

std::vector<std::string_view> splitLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string_view::npos) {
            end = bytes.size();
        }
        std::string_view line = bytes.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines.push_back(line);
        start = end + 1;
    }
    return lines;
}

const SettingDescriptor* settingNamed(std::string_view name) {
    for (const SettingDescriptor& setting : settingsTable()) {
        if (cp1252::iequals(setting.valueName, name)) {
            return &setting;
        }
    }
    return nullptr;
}

enum class Section { None, CcAddin, Run, Unknown };

class AnswerParser {
public:
    explicit AnswerParser(std::vector<AnswerProblem>& problems) : problems_(problems) {}

    Answers parse(std::string_view bytes) {
        if (bytes.starts_with("\xEF\xBB\xBF")) {
            bytes.remove_prefix(3);
        }
        int number = 0;
        for (std::string_view raw : splitLines(bytes)) {
            ++number;
            const std::optional<std::string> line = tillText(raw);
            if (!line) {
                complain(number, "the line is not UTF-8 text the till's code page can hold");
                continue;
            }
            parseLine(number, *line);
        }
        if (!sawCcAddin_) {
            complain(0, "there is no [ccaddin] section: the file says nothing to apply");
        } else if (answers_.values.empty()) {
            complain(0, "[ccaddin] names no setting: the file says nothing to apply");
        }
        return std::move(answers_);
    }

private:
    void complain(int line, std::string message) {
        problems_.push_back({line, std::move(message)});
    }

    void parseLine(int number, const std::string& text) {
        const std::string_view line = trimmed(text);
        if (line.empty() || line.front() == ';' || line.front() == '#') {
            return;
        }
        if (line.front() == '[') {
            openSection(number, line);
            return;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            complain(number, "expected name=value, a [section] or a comment");
            return;
        }
        const std::string_view key = trimmed(line.substr(0, equals));
        const std::string value(unquoted(trimmed(line.substr(equals + 1))));
        switch (section_) {
        case Section::CcAddin:
            addSetting(number, key, value);
            break;
        case Section::Run:
            addRunKey(number, key, value);
            break;
        case Section::None:
            complain(number, "\"" + std::string(key) + "\" stands before any [section]");
            break;
        case Section::Unknown:
            break; // the section header has been complained about already
        }
    }

    void openSection(int number, std::string_view line) {
        if (line.back() != ']') {
            complain(number, "a section header must end in \"]\"");
            section_ = Section::Unknown;
            return;
        }
        const std::string_view name = trimmed(line.substr(1, line.size() - 2));
        if (cp1252::iequals(name, "ccaddin")) {
            section_ = Section::CcAddin;
            sawCcAddin_ = true;
        } else if (cp1252::iequals(name, "run")) {
            section_ = Section::Run;
        } else {
            complain(number, "unknown section [" + std::string(name) +
                                 "]: only [ccaddin] and [run] are read");
            section_ = Section::Unknown;
        }
    }

    void addSetting(int number, std::string_view key, const std::string& value) {
        const SettingDescriptor* setting = settingNamed(key);
        if (setting == nullptr) {
            complain(number, "unknown setting \"" + std::string(key) +
                                 "\": [ccaddin] takes the add-in's registry value names");
            return;
        }
        if (const AnswerValue* earlier = answers_.find(setting->valueName)) {
            complain(number, std::string(setting->valueName) + " is given twice (first on line " +
                                 std::to_string(earlier->line) + ")");
            return;
        }
        answers_.values.push_back({setting, value, number});
    }

    void addRunKey(int number, std::string_view key, const std::string& value) {
        if (!cp1252::iequals(key, "tms")) {
            complain(number, "unknown key \"" + std::string(key) + "\" in [run]: only tms is read");
            return;
        }
        if (answers_.tmsLine != 0) {
            complain(number,
                     "tms is given twice (first on line " + std::to_string(answers_.tmsLine) + ")");
            return;
        }
        answers_.tms = tmsChoiceFromText(value);
        answers_.tmsLine = number;
        if (!answers_.tms) {
            complain(number, "tms=" + value + ": expected none, standard, full or logs");
        }
    }

    std::vector<AnswerProblem>& problems_;
    Answers answers_;
    Section section_ = Section::None;
    bool sawCcAddin_ = false;
};

constexpr std::array<std::string_view, 4> kTmsTexts = {"none", "standard", "full", "logs"};

} // namespace

const AnswerValue* Answers::find(std::string_view valueName) const {
    for (const AnswerValue& value : values) {
        if (cp1252::iequals(value.setting->valueName, valueName)) {
            return &value;
        }
    }
    return nullptr;
}

Answers parseAnswers(const std::string& bytes, std::vector<AnswerProblem>& problems) {
    return AnswerParser(problems).parse(bytes);
}

std::optional<TmsChoice> tmsChoiceFromText(std::string_view text) {
    for (std::size_t i = 0; i < kTmsTexts.size(); ++i) {
        if (cp1252::iequals(text, kTmsTexts[i])) {
            return static_cast<TmsChoice>(i);
        }
    }
    return std::nullopt;
}

std::string tmsChoiceText(TmsChoice choice) {
    return std::string(kTmsTexts[static_cast<std::size_t>(choice)]);
}

void putInFileOrder(std::vector<AnswerProblem>& problems) {
    const auto order = [](const AnswerProblem& p) {
        return p.line == 0 ? std::numeric_limits<int>::max() : p.line;
    };
    std::stable_sort(
        problems.begin(), problems.end(),
        [&](const AnswerProblem& a, const AnswerProblem& b) { return order(a) < order(b); });
}
