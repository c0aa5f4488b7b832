// An INI file as the profile-string functions see it: the file's exact bytes plus an index of its
// section headers. A key is found by going straight to its section's header and reading that
// section's lines; an edit splices new text into the bytes and indexes the headers again, so every
// byte an edit does not touch (comments, spacing, odd bytes, a missing final line break) is
// written back as it was read. Only the headers are indexed up front, so that a file of hundreds
// of megabytes costs little more than its bytes in memory; a large section gets an index of its
// keys when it is first searched (a loader reads thousands of numbered keys from one section).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform::posix {

enum class IniLineKind { Blank, Comment, Section, Key };

// One line, parsed when it is looked at. Its names point into the document's bytes and last only
// until the next edit.
struct IniLine {
    std::size_t start = 0; // first byte of the line
    std::size_t end = 0;   // one past the line's text, before its line break
    std::size_t next = 0;  // first byte of the following line (end when no line break follows)
    IniLineKind kind = IniLineKind::Blank;
    std::string_view name;  // section or key name, trimmed
    std::string_view value; // the text after the first "=", trimmed, quotes kept
    bool hasValue = false;  // a key line with an "="
};

// The lines of one section: its header and the lines up to the next header.
struct IniSection {
    std::size_t header = 0; // first byte of the header line
    std::size_t body = 0;   // first byte of the line after the header
    std::size_t end = 0;    // first byte of the next header line, or the end of the file
};

class IniDocument {
public:
    explicit IniDocument(std::string bytes = {});

    const std::string& bytes() const { return bytes_; }

    // The file's own line break (the first one in it), CRLF for a file without any.
    std::string lineBreak() const;

    // The first section whose name matches, blanks trimmed, case folded as Windows-1252.
    std::optional<IniSection> findSection(std::string_view name) const;

    // The first line of the section naming the key, with or without an "=".
    std::optional<IniLine> findKey(const IniSection& section, std::string_view key) const;

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
    struct Header {
        std::size_t start = 0;
        std::size_t next = 0;
        std::size_t nameFrom = 0;
        std::size_t nameSize = 0;
    };

    void index();
    IniLine lineAt(std::size_t start) const;
    IniSection sectionOf(std::size_t header) const;
    void splice(std::size_t from, std::size_t to, const std::string& text);
    void appendSection(std::string_view section, const std::string& keyLine);
    void addKey(const IniSection& section, const std::string& keyLine);
    std::size_t firstLineStart() const;

    // Folded key name -> start of its first line, for one section.
    using KeyIndex = std::unordered_map<std::string, std::size_t>;
    const KeyIndex& keyIndex(const IniSection& section) const;

    std::string bytes_;
    std::vector<Header> headers_;
    std::unordered_map<std::string, std::size_t> firstHeader_; // folded name -> headers_ index
    // Made when a large section is first searched; every edit drops them.
    mutable std::unordered_map<std::size_t, KeyIndex> keyIndexes_; // by the section's body
};

// Blanks Windows trims around names and values.
bool isIniBlank(char c);
std::string_view trimIniBlanks(std::string_view text);

} // namespace platform::posix
