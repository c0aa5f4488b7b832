#include "settings/numbered_records.h"

#include "foundation/csv_record.h"
#include "foundation/strict_number.h"

#include <cstdint>

namespace {

const char* const kSection = "GENERAL";

// The fields of one record. The codec's status is not looked at: a record that stops splitting
// part-way (an unclosed quote in a late field) keeps the fields read before it, and the count
// alone decides whether the line is long enough.
RecordFields splitRecord(const std::string& record) {
    CSVRecord codec;
    RecordFields fields;
    std::int16_t count = 0;
    codec.BreakOutFields(fields, count, record);
    fields.resize(static_cast<std::size_t>(count));
    return fields;
}

} // namespace

void readNumberedRecords(const TTLIniFile& ini, std::size_t minimumFields,
                         const std::function<void(const RecordFields&)>& accept) {
    const std::int32_t count = strictToLong(ini.GetINIString(kSection, "Count", ""));
    // Keys are read by number, so a gap in the numbering reads as an empty record and is skipped.
    for (std::int64_t key = 1; key <= count; ++key) {
        const RecordFields fields =
            splitRecord(ini.GetINIString(kSection, std::to_string(key), ""));
        if (fields.size() >= minimumFields) {
            accept(fields);
        }
    }
}
