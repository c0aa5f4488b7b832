#include "platform/posix/ini_document.h"

#include "platform/cp1252.h"

#include <algorithm>

namespace platform::posix {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Sections up to this size are searched line by line; larger ones through an index of their keys.
constexpr std::size_t kIndexedSectionBytes = 4096;

bool isLineBreak(char c) {
    return c == '\r' || c == '\n';
}

// LF, CRLF and a lone CR each end a line.
std::size_t lineEnd(std::string_view bytes, std::size_t from) {
    while (from < bytes.size() && !isLineBreak(bytes[from])) {
        ++from;
    }
    return from;
}

std::size_t nextLine(std::string_view bytes, std::size_t end) {
    if (end >= bytes.size()) {
        return end;
    }
    return bytes[end] == '\r' && end + 1 < bytes.size() && bytes[end + 1] == '\n' ? end + 2
                                                                                  : end + 1;
}

void parseLine(std::string_view text, IniLine& line) {
    const std::string_view trimmed = trimIniBlanks(text);
    if (trimmed.empty()) {
        return;
    }
    if (trimmed.front() == ';') {
        line.kind = IniLineKind::Comment;
        return;
    }
    // A "[" without a later "]" is no header; such a line reads as a key, as on Windows.
    const std::size_t close = trimmed.rfind(']');
    if (trimmed.front() == '[' && close != std::string_view::npos && close > 0) {
        line.kind = IniLineKind::Section;
        line.name = trimIniBlanks(trimmed.substr(1, close - 1));
        return;
    }
    line.kind = IniLineKind::Key;
    const std::size_t equals = trimmed.find('=');
    if (equals == std::string_view::npos) {
        line.name = trimmed;
        return;
    }
    line.name = trimIniBlanks(trimmed.substr(0, equals));
    line.value = trimIniBlanks(trimmed.substr(equals + 1));
    line.hasValue = true;
}

std::string withoutEnclosingQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.back() == value.front();
    return std::string(quoted ? value.substr(1, value.size() - 2) : value);
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

IniLine IniDocument::lineAt(std::size_t start) const {
    IniLine line;
    line.start = start;
    line.end = lineEnd(bytes_, start);
    line.next = nextLine(bytes_, line.end);
    parseLine(std::string_view(bytes_).substr(start, line.end - start), line);
    return line;
}

// Only lines whose first non-blank byte is "[" can be headers, so the others are passed over
// without being parsed.
void IniDocument::index() {
    headers_.clear();
    firstHeader_.clear();
    keyIndexes_.clear();
    const std::string_view bytes = bytes_;
    for (std::size_t pos = firstLineStart(); pos < bytes.size();) {
        std::size_t first = pos;
        while (first < bytes.size() && isIniBlank(bytes[first])) {
            ++first;
        }
        const std::size_t end = lineEnd(bytes, first);
        if (first < end && bytes[first] == '[') {
            const IniLine line = lineAt(pos);
            if (line.kind == IniLineKind::Section) {
                const auto nameFrom = static_cast<std::size_t>(line.name.data() - bytes.data());
                firstHeader_.try_emplace(cp1252::toUpper(line.name), headers_.size());
                headers_.push_back({pos, line.next, nameFrom, line.name.size()});
            }
        }
        pos = nextLine(bytes, end);
    }
}

IniSection IniDocument::sectionOf(std::size_t header) const {
    const std::size_t end =
        header + 1 < headers_.size() ? headers_[header + 1].start : bytes_.size();
    return {headers_[header].start, headers_[header].next, end};
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
    const auto found = firstHeader_.find(cp1252::toUpper(trimIniBlanks(name)));
    if (found == firstHeader_.end()) {
        return std::nullopt;
    }
    return sectionOf(found->second);
}

const IniDocument::KeyIndex& IniDocument::keyIndex(const IniSection& section) const {
    const auto [found, made] = keyIndexes_.try_emplace(section.body);
    if (made) {
        for (std::size_t pos = section.body; pos < section.end;) {
            const IniLine line = lineAt(pos);
            if (line.kind == IniLineKind::Key) {
                found->second.try_emplace(cp1252::toUpper(line.name), pos);
            }
            pos = line.next;
        }
    }
    return found->second;
}

std::optional<IniLine> IniDocument::findKey(const IniSection& section, std::string_view key) const {
    const std::string_view wanted = trimIniBlanks(key);
    if (section.end - section.body > kIndexedSectionBytes) {
        const KeyIndex& keys = keyIndex(section);
        const auto found = keys.find(cp1252::toUpper(wanted));
        return found == keys.end() ? std::nullopt : std::optional(lineAt(found->second));
    }
    for (std::size_t pos = section.body; pos < section.end;) {
        const IniLine line = lineAt(pos);
        if (line.kind == IniLineKind::Key && cp1252::iequals(line.name, wanted)) {
            return line;
        }
        pos = line.next;
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
    if (!line || !line->hasValue) {
        return std::nullopt;
    }
    return std::string(line->value);
}

std::vector<std::string> IniDocument::sectionNames() const {
    std::vector<std::string> names;
    for (const Header& header : headers_) {
        if (header.nameSize > 0) {
            names.push_back(bytes_.substr(header.nameFrom, header.nameSize));
        }
    }
    return names;
}

std::vector<std::string> IniDocument::keyNames(std::string_view section) const {
    std::vector<std::string> names;
    if (const auto found = findSection(section)) {
        for (std::size_t pos = found->body; pos < found->end;) {
            const IniLine line = lineAt(pos);
            if (line.kind == IniLineKind::Key && line.hasValue) {
                names.emplace_back(line.name);
            }
            pos = line.next;
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
    const auto line = findKey(*found, key);
    if (!line) {
        addKey(*found, keyLine);
        return true;
    }
    if (line->hasValue && line->value == value) {
        return false;
    }
    std::size_t textStart = line->start;
    while (textStart < line->end && isIniBlank(bytes_[textStart])) {
        ++textStart;
    }
    splice(textStart, line->end, std::string(line->name) + "=" + std::string(value));
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
    IniLine after = lineAt(section.header);
    for (std::size_t pos = section.body; pos < section.end;) {
        const IniLine line = lineAt(pos);
        if (line.kind != IniLineKind::Blank) {
            after = line;
        }
        pos = line.next;
    }
    const std::string lineBreak = this->lineBreak();
    const std::string text = (after.next == after.end ? lineBreak : "") + keyLine + lineBreak;
    splice(after.next, after.next, text);
}

bool IniDocument::deleteKey(std::string_view section, std::string_view key) {
    const auto found = findSection(section);
    const auto line = found ? findKey(*found, key) : std::nullopt;
    if (!line) {
        return false;
    }
    splice(line->start, line->next, "");
    return true;
}

// Everything up to the next header goes with the section: its keys, comments and blank lines.
bool IniDocument::deleteSection(std::string_view section) {
    const auto found = findSection(section);
    if (!found) {
        return false;
    }
    splice(found->header, found->end, "");
    return true;
}

} // namespace platform::posix
