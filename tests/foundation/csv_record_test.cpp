#include "foundation/csv_record.h"
#include "foundation/event_pump.h"

#include <gtest/gtest.h>

using Fields = std::vector<std::string>;

namespace {

Fields split(const std::string& record, std::int16_t expectedStatus = 0) {
    CSVRecord csv;
    Fields fields;
    std::int16_t count = -1;
    EXPECT_EQ(csv.BreakOutFields(fields, count, record), expectedStatus) << record;
    EXPECT_EQ(static_cast<std::size_t>(count), fields.size()) << record;
    return fields;
}

} // namespace

TEST(CsvRecord, PlainFieldsAreTrimmedAndCommasDelimitEmptyFields) {
    EXPECT_EQ(split("  alpha , beta,gamma  "), (Fields{"alpha", "beta", "gamma"}));
    EXPECT_EQ(split("a,,b"), (Fields{"a", "", "b"}));
    EXPECT_EQ(split("a,"), (Fields{"a", ""}));
    EXPECT_EQ(split(","), (Fields{"", ""}));
    EXPECT_EQ(split("a,   "), (Fields{"a", ""}));
}

TEST(CsvRecord, QuotedFieldsKeepCommasBlanksAndDoubledQuotes) {
    EXPECT_EQ(split(R"("a, ""b"" " , next)"), (Fields{R"(a, "b" )", "next"}));
    EXPECT_EQ(split(R"(x,"")"), (Fields{"x", ""}));
    EXPECT_EQ(split(R"("q",)"), (Fields{"q", ""}));
    EXPECT_EQ(split(R"(a,"never closed)", 1), Fields{"a"});
    EXPECT_EQ(split(R"("ab"")", 1), Fields{});

    int pumped = 0;
    installEventPump([&pumped] { ++pumped; });
    split(R"("abc",plain)");
    installEventPump({});
    EXPECT_EQ(pumped, 4); // once per character of the quoted field, closing quote included
}

TEST(CsvRecord, FailuresKeepWhatWasReadAndTheMessageOutlivesSuccess) {
    CSVRecord csv;
    Fields fields{"stale"};
    std::int16_t count = 9;
    EXPECT_EQ(csv.BreakOutFields(fields, count, ""), 1);
    EXPECT_EQ(csv.strErrorMessage(), "Cannot extract fields from a blank record");
    EXPECT_EQ(fields, Fields{"stale"});

    // Text after a closing quote fails without a message of its own.
    EXPECT_EQ(csv.BreakOutFields(fields, count, R"(one,"two"x,three)"), 1);
    EXPECT_EQ(fields, Fields{"one"});
    EXPECT_EQ(csv.BreakOutFields(fields, count, "ok"), 0);
    EXPECT_EQ(csv.strErrorMessage(), "Cannot extract fields from a blank record");
}

TEST(CsvRecord, BuildPacketQuotesWhereNeededAndRewritesTheCallersFields) {
    CSVRecord csv;
    Fields fields{" plain ", "with,comma", R"("starts quoted)", R"(in"side)", "unused"};
    std::string record = "old";
    EXPECT_EQ(csv.BuildPacket(fields, 4, record), 0);
    EXPECT_EQ(record, R"(plain,"with,comma","""starts quoted",in"side)");
    EXPECT_EQ(fields,
              (Fields{"plain", R"("with,comma")", R"("""starts quoted")", R"(in"side)", "unused"}));

    EXPECT_EQ(csv.BuildPacket(fields, 6, record), 1);
    EXPECT_EQ(csv.strErrorMessage(), "Invalid number of fields : 6");
}

TEST(CsvRecord, BuiltRecordsReadBackToTheSameFields) {
    for (const bool enclose : {false, true}) {
        CSVRecord csv;
        csv.bEncloseFields = enclose;
        Fields fields{"Barclaycard", "a, b", R"("quoted")", "", " 42 "};
        std::string record;
        ASSERT_EQ(csv.BuildPacket(fields, 5, record), 0);
        // Only quoting keeps the blanks around a field.
        const Fields expected{"Barclaycard", "a, b", R"("quoted")", "", enclose ? " 42 " : "42"};
        EXPECT_EQ(split(record), expected) << record;
    }
}
