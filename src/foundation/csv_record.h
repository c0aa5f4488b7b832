// One comma-separated record to and from an array of field texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class CSVRecord {
public:
    // Builds `record` from fields[0] to fields[fieldCount - 1]. Each used element is rewritten in
    // the caller's array to the form it takes in the record (quoted, or trimmed). 0 on success,
    // 1 when the array holds fewer than `fieldCount` elements.
    std::int16_t BuildPacket(std::vector<std::string>& fields, std::int16_t fieldCount,
                             std::string& record);

    // Splits `record` into fields[0] to fields[fieldCount - 1]; the array is resized to the count
    // as each field is stored, so on success fields.size() == fieldCount. 0 on success, 1 on
    // failure (the fields read so far stay).
    std::int16_t BreakOutFields(std::vector<std::string>& fields, std::int16_t& fieldCount,
                                const std::string& record);

    bool bEncloseFields = false; // BuildPacket quotes every field when set

    const std::string& strErrorMessage() const { return strErrorMessage_; }

private:
    static void skipBlanks(const std::string& record, std::size_t& position);
    static bool readQuotedField(const std::string& record, std::size_t& position,
                                std::string& field);
    static void readPlainField(const std::string& record, std::size_t& position,
                               std::string& field);

    std::string strErrorMessage_;
};
