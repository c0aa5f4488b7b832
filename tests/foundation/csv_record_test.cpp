#include "foundation/csv_record.h"
#include "foundation/event_pump.h"

#include <gtest/gtest.h>

namespace {

using Fields = std::vector<std::string>;

struct Split {
    std::int16_t status = -1;
    std::int16_t count = -1;
    Fields fields;
};

Split split(const std::string& record) {
    CSVRecord csv;
    Split result;
    result.status = csv.BreakOutFields(result.fields, result.count, record);
    return result;
}

} // namespace

TEST(CsvRecord, PlainFieldsAreTrimmedAndCommasDelimitEmptyFields) {
    const Split plain = split("  alpha , beta,gamma  ");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.count, 3);
    EXPECT_EQ(plain.fields, (Fields{"alpha", "beta", "gamma"}));

    EXPECT_EQ(split("a,,b").fields, (Fields{"a", "", "b"}));
    EXPECT_EQ(split("a,").fields, (Fields{"a", ""}));
    const Split loneComma = split(",");
    EXPECT_EQ(loneComma.status, 0);
    EXPECT_EQ(loneComma.count, 2);
    EXPECT_EQ(loneComma.fields, (Fields{"", ""}));
    EXPECT_EQ(split("a,   ").fields, (Fields{"a", ""}));
}

TEST(CsvRecord, QuotedFieldsKeepCommasBlanksAndDoubledQuotes) {
    const Split quoted = split(R"("a, ""b"" " , next)");
    EXPECT_EQ(quoted.status, 0);
    EXPECT_EQ(quoted.fields, (Fields{R"(a, "b" )", "next"}));

    EXPECT_EQ(split(R"(x,"")").fields, (Fields{"x", ""}));
    EXPECT_EQ(split(R"("q",)").fields, (Fields{"q", ""}));
    EXPECT_EQ(split(R"(  "last"  )").fields, (Fields{"last"}));
}

TEST(CsvRecord, BrokenRecordsFailKeepingWhatWasRead) {
    CSVRecord csv;
    Fields fields{"stale"};
    std::int16_t count = 9;
    EXPECT_EQ(csv.BreakOutFields(fields, count, ""), 1);
    EXPECT_EQ(csv.strErrorMessage(), "Cannot extract fields from a blank record");
    EXPECT_EQ(fields, Fields{"stale"});

    // A reader failure leaves the earlier message and the fields read before it.
    EXPECT_EQ(csv.BreakOutFields(fields, count, R"(one,"two"x,three)"), 1);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(fields, Fields{"one"});
    EXPECT_EQ(csv.strErrorMessage(), "Cannot extract fields from a blank record");

    EXPECT_EQ(split(R"(a,"never closed)").status, 1);
    EXPECT_EQ(split(R"("ab"")").status, 1);

    // A later success does not clear the message.
    EXPECT_EQ(csv.BreakOutFields(fields, count, "ok"), 0);
    EXPECT_EQ(csv.strErrorMessage(), "Cannot extract fields from a blank record");
}

TEST(CsvRecord, TheQuotedReaderLetsEventsRunOncePerCharacter) {
    int pumped = 0;
    installEventPump([&pumped] { ++pumped; });
    split(R"("abc",plain)");
    installEventPump({});
    EXPECT_EQ(pumped, 4); // a, b, c and the closing quote
}

TEST(CsvRecord, BuildPacketQuotesWhereNeededAndRewritesTheCallersFields) {
    CSVRecord csv;
    Fields fields{" plain ", "with,comma", R"("starts quoted)", R"(in"side)", "unused"};
    std::string record = "old";
    EXPECT_EQ(csv.BuildPacket(fields, 4, record), 0);
    EXPECT_EQ(record, R"(plain,"with,comma","""starts quoted",in"side)");
    EXPECT_EQ(fields,
              (Fields{"plain", R"("with,comma")", R"("""starts quoted")", R"(in"side)", "unused"}));

    csv.bEncloseFields = true;
    Fields enclosed{"a", R"(b")"};
    EXPECT_EQ(csv.BuildPacket(enclosed, 2, record), 0);
    EXPECT_EQ(record, R"("a","b""")");

    EXPECT_EQ(csv.BuildPacket(enclosed, 3, record), 1);
    EXPECT_EQ(csv.strErrorMessage(), "Invalid number of fields : 3");
}

TEST(CsvRecord, BuiltRecordsReadBackToTheSameFields) {
    CSVRecord csv;
    const Fields original{"Barclaycard", "a, b", R"("quoted")", "", " 42 "};
    for (const bool enclose : {false, true}) {
        csv.bEncloseFields = enclose;
        Fields fields = original;
        std::string record;
        ASSERT_EQ(csv.BuildPacket(fields, 5, record), 0);
        Fields back;
        std::int16_t count = 0;
        ASSERT_EQ(csv.BreakOutFields(back, count, record), 0) << record;
        // Only quoting keeps the blanks around a field.
        const std::string last = enclose ? " 42 " : "42";
        EXPECT_EQ(back, (Fields{"Barclaycard", "a, b", R"("quoted")", "", last})) << record;
    }
}
