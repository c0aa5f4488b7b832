#include "foundation/csv_record.h"

#include "foundation/event_pump.h"

#include <limits>
#include <stdexcept>

namespace {

constexpr std::int16_t kSuccess = 0;
constexpr std::int16_t kFailure = 1;

// Blanks are spaces only, as in the records the till's INI lists hold.
std::string trimSpaces(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

std::string quoted(const std::string& field) {
    std::string result = "\"";
    for (const char c : field) {
        result += c;
        if (c == '"') {
            result += '"';
        }
    }
    return result + '"';
}

std::int16_t nextCount(std::int16_t count) {
    if (count == std::numeric_limits<std::int16_t>::max()) {
        throw std::overflow_error("too many fields in one record");
    }
    return static_cast<std::int16_t>(count + 1);
}

// The array grows to the count as its upper bound, keeping what it held below that.
void storeField(std::vector<std::string>& fields, std::int16_t index, const std::string& field) {
    fields.resize(static_cast<std::size_t>(index) + 1);
    fields[static_cast<std::size_t>(index)] = field;
}

} // namespace

std::int16_t CSVRecord::BuildPacket(std::vector<std::string>& fields, std::int16_t fieldCount,
                                    std::string& record) {
    try {
        if (fieldCount > 0 && static_cast<std::size_t>(fieldCount) > fields.size()) {
            strErrorMessage_ = "Invalid number of fields : " + std::to_string(fieldCount);
            return kFailure;
        }
        record.clear();
        for (std::int16_t i = 0; i < fieldCount; ++i) {
            std::string& field = fields[static_cast<std::size_t>(i)];
            const bool needsQuotes = bEncloseFields || field.find(',') != std::string::npos ||
                                     (!field.empty() && field.front() == '"');
            // The caller's element takes the form written, on purpose: callers rely on seeing
            // exactly what went into the record.
            field = needsQuotes ? quoted(field) : trimSpaces(field);
            record += field;
            if (i + 1 < fieldCount) {
                record += ',';
            }
        }
        return kSuccess;
    } catch (const std::exception&) {
        return kFailure;
    }
}

std::int16_t CSVRecord::BreakOutFields(std::vector<std::string>& fields, std::int16_t& fieldCount,
                                       const std::string& record) {
    try {
        if (record.empty()) {
            strErrorMessage_ = "Cannot extract fields from a blank record";
            return kFailure;
        }
        std::size_t position = 0;
        fieldCount = 0;
        for (;;) {
            skipBlanks(record, position);
            std::string field;
            if (record[position] == '"') {
                if (!readQuotedField(record, position, field)) {
                    return kFailure;
                }
            } else {
                readPlainField(record, position, field);
            }
            storeField(fields, fieldCount, field);
            fieldCount = nextCount(fieldCount);
            if (position >= record.size()) {
                // A trailing comma announces one last, empty field.
                if (record.back() == ',') {
                    storeField(fields, fieldCount, std::string());
                    fieldCount = nextCount(fieldCount);
                }
                return kSuccess;
            }
        }
    } catch (const std::exception&) {
        return kFailure;
    }
}

// Stops on the last character when only blanks remain, so a blank tail still reads as one
// (empty) plain field.
void CSVRecord::skipBlanks(const std::string& record, std::size_t& position) {
    while (position + 1 < record.size() && record[position] == ' ') {
        ++position;
    }
}

bool CSVRecord::readQuotedField(const std::string& record, std::size_t& position,
                                std::string& field) {
    std::string collected(1, '"');
    ++position;
    bool closed = false;
    while (!closed && position < record.size()) {
        pumpEvents(); // long lists must not freeze the window while they are read
        const char c = record[position];
        if (c == '"' && position + 1 < record.size() && record[position + 1] == '"') {
            collected += '"';
            position += 2;
            continue;
        }
        collected += c;
        ++position;
        closed = c == '"';
    }
    if (!closed) {
        return false;
    }
    while (position < record.size() && record[position] == ' ') {
        ++position;
    }
    if (position < record.size()) {
        if (record[position] != ',') {
            return false;
        }
        ++position;
    }
    field = collected.substr(1, collected.size() - 2);
    return true;
}

void CSVRecord::readPlainField(const std::string& record, std::size_t& position,
                               std::string& field) {
    const std::size_t comma = record.find(',', position);
    const std::size_t end = comma == std::string::npos ? record.size() : comma;
    field = trimSpaces(record.substr(position, end - position));
    position = comma == std::string::npos ? record.size() : comma + 1;
}
