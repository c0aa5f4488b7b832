#include "platform/command_line.h"

#include <utility>

namespace platform {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Backslashes count only before a double quote: 2n of them give n and leave the quote to group,
// 2n+1 give n and a literal quote.
std::size_t takeBackslashes(const std::string& text, std::size_t i, std::string& word) {
    std::size_t run = 0;
    while (i + run < text.size() && text[i + run] == '\\') {
        ++run;
    }
    const bool beforeQuote = i + run < text.size() && text[i + run] == '"';
    if (!beforeQuote) {
        word.append(run, '\\');
        return i + run;
    }
    word.append(run / 2, '\\');
    if (run % 2 == 1) {
        word += '"';
        return i + run + 1;
    }
    return i + run;
}

// One argument after the program name, starting at a non-blank; returns the index after it.
std::size_t takeArgument(const std::string& text, std::size_t i, std::string& word) {
    bool quoted = false;
    while (i < text.size() && (quoted || !isBlank(text[i]))) {
        if (text[i] == '\\') {
            i = takeBackslashes(text, i, word);
        } else if (text[i] == '"') {
            // Since 2008 a doubled quote inside quotes is one literal quote, still quoted.
            if (quoted && i + 1 < text.size() && text[i + 1] == '"') {
                word += '"';
                i += 2;
            } else {
                quoted = !quoted;
                ++i;
            }
        } else {
            word += text[i++];
        }
    }
    return i;
}

std::size_t skipBlanks(const std::string& text, std::size_t i) {
    while (i < text.size() && isBlank(text[i])) {
        ++i;
    }
    return i;
}

void appendArguments(const std::string& text, std::size_t i, std::vector<std::string>& words) {
    for (i = skipBlanks(text, i); i < text.size(); i = skipBlanks(text, i)) {
        std::string word;
        i = takeArgument(text, i, word);
        words.push_back(std::move(word));
    }
}

} // namespace

std::vector<std::string> splitCommandLine(const std::string& commandLine) {
    std::vector<std::string> words;
    if (commandLine.empty()) {
        return words;
    }
    std::string program;
    bool quoted = false;
    std::size_t i = 0;
    for (; i < commandLine.size() && (quoted || !isBlank(commandLine[i])); ++i) {
        if (commandLine[i] == '"') {
            quoted = !quoted;
        } else {
            program += commandLine[i];
        }
    }
    words.push_back(std::move(program));
    appendArguments(commandLine, i, words);
    return words;
}

std::vector<std::string> splitArguments(const std::string& arguments) {
    std::vector<std::string> words;
    appendArguments(arguments, 0, words);
    return words;
}

} // namespace platform
