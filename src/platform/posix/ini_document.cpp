#include "platform/posix/ini_document.h"

#include "platform/cp1252.h"

#include <algorithm>

namespace platform::posix {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool isLineBreak(char c) {
    return c == '\r' || c == '\n';
}

IniLine parseLine(std::string_view text) {
    IniLine line;
    const std::string_view trimmed = trimIniBlanks(text);
    if (trimmed.empty()) {
        return line;
    }
    if (trimmed.front() == ';') {
        line.kind = IniLineKind::Comment;
        return line;
    }
    // A "[" without a later "]" is no header; such a line reads as a key, as on Windows.
    const std::size_t close = trimmed.rfind(']');
    if (trimmed.front() == '[' && close != std::string_view::npos && close > 0) {
        line.kind = IniLineKind::Section;
        line.name = trimIniBlanks(trimmed.substr(1, close - 1));
        return line;
    }
    line.kind = IniLineKind::Key;
    const std::size_t equals = trimmed.find('=');
    if (equals == std::string_view::npos) {
        line.name = trimmed;
        return line;
    }
    line.name = trimIniBlanks(trimmed.substr(0, equals));
    line.value = trimIniBlanks(trimmed.substr(equals + 1));
    line.hasValue = true;
    return line;
}

std::string withoutEnclosingQuotes(const std::string& value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

bool isIniBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

std::string_view trimIniBlanks(std::string_view text) {
    while (!text.empty() && isIniBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isIniBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

IniDocument::IniDocument(std::string bytes) : bytes_(std::move(bytes)) {
    index();
}

std::size_t IniDocument::firstLineStart() const {
    return bytes_.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
}

// LF, CRLF and a lone CR each end a line.
void IniDocument::index() {
    lines_.clear();
    // Sized once (a lone-CR file still grows it): growing it line by line moved every line
    // already indexed, a large part of the cost of reading a long file.
    lines_.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n')) + 1);
    std::size_t pos = firstLineStart();
    while (pos < bytes_.size()) {
        std::size_t end = pos;
        while (end < bytes_.size() && !isLineBreak(bytes_[end])) {
            ++end;
        }
        std::size_t next = end;
        if (next < bytes_.size()) {
            next += (bytes_[next] == '\r' && next + 1 < bytes_.size() && bytes_[next + 1] == '\n')
                        ? 2
                        : 1;
        }
        IniLine line = parseLine(std::string_view(bytes_).substr(pos, end - pos));
        line.start = pos;
        line.end = end;
        line.next = next;
        lines_.push_back(std::move(line));
        pos = next;
    }
}

std::string IniDocument::lineBreak() const {
    const std::size_t at = bytes_.find_first_of("\r\n");
    if (at == std::string::npos ||
        (bytes_[at] == '\r' && at + 1 < bytes_.size() && bytes_[at + 1] == '\n')) {
        return "\r\n";
    }
    return std::string(1, bytes_[at]);
}

std::optional<IniSection> IniDocument::findSection(std::string_view name) const {
    const std::string_view wanted = trimIniBlanks(name);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].kind != IniLineKind::Section || !cp1252::iequals(lines_[i].name, wanted)) {
            continue;
        }
        std::size_t end = i + 1;
        while (end < lines_.size() && lines_[end].kind != IniLineKind::Section) {
            ++end;
        }
        return IniSection{i, end};
    }
    return std::nullopt;
}

std::optional<std::size_t> IniDocument::findKey(const IniSection& section,
                                                std::string_view key) const {
    const std::string_view wanted = trimIniBlanks(key);
    for (std::size_t i = section.header + 1; i < section.end; ++i) {
        if (lines_[i].kind == IniLineKind::Key && cp1252::iequals(lines_[i].name, wanted)) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::string> IniDocument::value(std::string_view section,
                                              std::string_view key) const {
    const std::optional<std::string> stored = storedValue(section, key);
    return stored ? std::optional<std::string>(withoutEnclosingQuotes(*stored)) : std::nullopt;
}

std::optional<std::string> IniDocument::storedValue(std::string_view section,
                                                    std::string_view key) const {
    const auto found = findSection(section);
    const auto line = found ? findKey(*found, key) : std::nullopt;
    if (!line || !lines_[*line].hasValue) {
        return std::nullopt;
    }
    return lines_[*line].value;
}

std::vector<std::string> IniDocument::sectionNames() const {
    std::vector<std::string> names;
    for (const IniLine& line : lines_) {
        if (line.kind == IniLineKind::Section && !line.name.empty()) {
            names.push_back(line.name);
        }
    }
    return names;
}

std::vector<std::string> IniDocument::keyNames(std::string_view section) const {
    std::vector<std::string> names;
    if (const auto found = findSection(section)) {
        for (std::size_t i = found->header + 1; i < found->end; ++i) {
            if (lines_[i].kind == IniLineKind::Key && lines_[i].hasValue) {
                names.push_back(lines_[i].name);
            }
        }
    }
    return names;
}

void IniDocument::splice(std::size_t from, std::size_t to, const std::string& text) {
    bytes_.replace(from, to - from, text);
    index();
}

// A value already there as given leaves the line alone, so its spacing around "=" survives.
// Otherwise the line is written anew as its indentation, the key as the file spells it, "=" and
// the value.
bool IniDocument::setValue(std::string_view section, std::string_view key, std::string_view value) {
    const std::string keyLine = std::string(trimIniBlanks(key)) + "=" + std::string(value);
    const auto found = findSection(section);
    if (!found) {
        appendSection(section, keyLine);
        return true;
    }
    const auto at = findKey(*found, key);
    if (!at) {
        addKey(*found, keyLine);
        return true;
    }
    const IniLine& line = lines_[*at];
    if (line.hasValue && line.value == value) {
        return false;
    }
    std::size_t textStart = line.start;
    while (textStart < line.end && isIniBlank(bytes_[textStart])) {
        ++textStart;
    }
    splice(textStart, line.end, line.name + "=" + std::string(value));
    return true;
}

void IniDocument::appendSection(std::string_view section, const std::string& keyLine) {
    const std::string lineBreak = this->lineBreak();
    std::string text;
    if (bytes_.size() > firstLineStart() && !isLineBreak(bytes_.back())) {
        text += lineBreak;
    }
    text += "[" + std::string(trimIniBlanks(section)) + "]" + lineBreak + keyLine + lineBreak;
    splice(bytes_.size(), bytes_.size(), text);
}

// The new key follows the section's last non-blank line, so blank lines that part this section
// from the next stay between them.
void IniDocument::addKey(const IniSection& section, const std::string& keyLine) {
    std::size_t last = section.header;
    for (std::size_t i = section.header + 1; i < section.end; ++i) {
        if (lines_[i].kind != IniLineKind::Blank) {
            last = i;
        }
    }
    const IniLine& after = lines_[last];
    const std::string lineBreak = this->lineBreak();
    const std::string text = (after.next == after.end ? lineBreak : "") + keyLine + lineBreak;
    splice(after.next, after.next, text);
}

bool IniDocument::deleteKey(std::string_view section, std::string_view key) {
    const auto found = findSection(section);
    const auto at = found ? findKey(*found, key) : std::nullopt;
    if (!at) {
        return false;
    }
    splice(lines_[*at].start, lines_[*at].next, "");
    return true;
}

// Everything up to the next header goes with the section: its keys, comments and blank lines.
bool IniDocument::deleteSection(std::string_view section) {
    const auto found = findSection(section);
    if (!found) {
        return false;
    }
    splice(lines_[found->header].start, lines_[found->end - 1].next, "");
    return true;
}

} // namespace platform::posix
