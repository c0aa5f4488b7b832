// The answer file of an unattended run: an INI text in UTF-8 with a section [ccaddin] naming
// settings by their registry value names and giving their registry text, and an optional [run]
// section with "tms=". Reading keeps every value with its line so that each later complaint can
// say where the value came from.
#pragma once

#include "settings/settings_table.h"

#include <optional>
#include <string>
#include <vector>

// One complaint about the answers; line 0 means the complaint is about the file as a whole.
struct AnswerProblem {
    int line = 0;
    std::string message;
};

// Problems of a line in the file's order, those of the whole file (line 0) last.
void putInFileOrder(std::vector<AnswerProblem>& problems);

struct AnswerValue {
    const SettingDescriptor* setting = nullptr;
    std::string text; // Windows-1252, as it will be stored
    int line = 0;
};

// The kinds of TMS call after a fully integrated run; None starts no call.
enum class TmsChoice { None, Standard, Full, Logs };

struct Answers {
    std::vector<AnswerValue> values; // in the file's order, each setting at most once
    std::optional<TmsChoice> tms;
    int tmsLine = 0;

    const AnswerValue* find(std::string_view valueName) const;
};

// Parses the file's bytes; every problem found is added to `problems`, with its line.
Answers parseAnswers(const std::string& bytes, std::vector<AnswerProblem>& problems);

// "none", "standard", "full", "logs" (any case); empty for any other text.
std::optional<TmsChoice> tmsChoiceFromText(std::string_view text);
std::string tmsChoiceText(TmsChoice choice);
