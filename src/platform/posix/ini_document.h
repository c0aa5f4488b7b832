// An INI file as the profile-string functions see it: the file's exact bytes plus an index of its
// lines. Reading goes through the index; an edit splices new text into the bytes and indexes them
// again, so every byte an edit does not touch (comments, spacing, odd bytes, a missing final line
// break) is written back as it was read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::posix {

enum class IniLineKind { Blank, Comment, Section, Key };

struct IniLine {
    std::size_t start = 0; // first byte of the line
    std::size_t end = 0;   // one past the line's text, before its line break
    std::size_t next = 0;  // first byte of the following line (end when no line break follows)
    IniLineKind kind = IniLineKind::Blank;
    std::string name;      // section or key name, trimmed
    std::string value;     // the text after the first "=", trimmed, quotes kept
    bool hasValue = false; // a key line with an "="
};

// The lines of one section: its header and the lines up to the next header.
struct IniSection {
    std::size_t header = 0; // index of the header line
    std::size_t end = 0;    // one past the section's last line
};

class IniDocument {
public:
    explicit IniDocument(std::string bytes = {});

    const std::string& bytes() const { return bytes_; }
    const std::vector<IniLine>& lines() const { return lines_; }

    // The file's own line break (the first one in it), CRLF for a file without any.
    std::string lineBreak() const;

    // The first section whose name matches, blanks trimmed, case folded as Windows-1252.
    std::optional<IniSection> findSection(std::string_view name) const;

    // The index of the first line of the section naming the key, with or without an "=".
    std::optional<std::size_t> findKey(const IniSection& section, std::string_view key) const;

    // The value as a reader gets it: without one pair of enclosing quotes. Nothing when the
    // section or key is missing, or the key line has no "=".
    std::optional<std::string> value(std::string_view section, std::string_view key) const;

    // The value as the file holds it, enclosing quotes included (what a write replaces).
    std::optional<std::string> storedValue(std::string_view section, std::string_view key) const;

    // Every section header's name, in file order (an empty name left out: in a list of
    // NUL-ended names it would read as the list's end).
    std::vector<std::string> sectionNames() const;

    // The names of the section's keys that have an "=", in file order.
    std::vector<std::string> keyNames(std::string_view section) const;

    // Edits. Each returns whether the bytes changed.
    bool setValue(std::string_view section, std::string_view key, std::string_view value);
    bool deleteKey(std::string_view section, std::string_view key);
    bool deleteSection(std::string_view section);

private:
    void index();
    void splice(std::size_t from, std::size_t to, const std::string& text);
    void appendSection(std::string_view section, const std::string& keyLine);
    void addKey(const IniSection& section, const std::string& keyLine);
    std::size_t firstLineStart() const;

    std::string bytes_;
    std::vector<IniLine> lines_;
};

// Blanks Windows trims around names and values.
bool isIniBlank(char c);
std::string_view trimIniBlanks(std::string_view text);

} // namespace platform::posix
