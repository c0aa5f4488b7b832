#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

const std::string kKey = "SOFTWARE\\Tessaly\\ccaddin\\";

void plant(const std::string& name, const std::string& value) {
    TRegistry().CreateKeyAndSaveValue(kKey, name, value);
}

std::string stored(const std::string& name) {
    std::string value;
    return TRegistry().GetRegistryValue(kKey, name, value) == 0 ? value : "<missing>";
}

TCcAddinRegistry readStore() {
    TCcAddinRegistry store;
    store.ReadRegistry();
    return store;
}

std::map<std::string, std::string> allStored() {
    std::map<std::string, std::string> values;
    for (const SettingDescriptor& setting : settingsTable()) {
        values[std::string(setting.valueName)] = stored(std::string(setting.valueName));
    }
    return values;
}

// A value away from the absent-value default and from every other setting's value.
void makeDistinct(std::string& value, const std::string&, int n) {
    value = "c:\\value " + std::to_string(n) + "\\";
}
void makeDistinct(std::int32_t& value, std::int32_t, int n) {
    value = n % 2 == 0 ? 1000 + n : -1000 - n;
}
void makeDistinct(bool& value, bool absent, int) {
    value = !absent;
}
void makeDistinct(double& value, double, int) {
    value = 1.5;
}

TCcAddinRegistry distinctRecord() {
    const TCcAddinRegistry defaults = readStore();
    TCcAddinRegistry record;
    for (const SettingDescriptor& s : settingsTable()) {
        std::visit([&](auto m) { makeDistinct(record.*m, defaults.*m, s.fieldNumber); }, s.member);
    }
    record.lDccType = 2; // the three-way settings hold only 0, 1 and 2
    record.lCashbackEntryType = 1;
    return record;
}

} // namespace

TEST(CcAddinRegistry, TableUsesEachNameAndPropertyOnce) {
    std::set<std::string_view> names;
    for (const SettingDescriptor& setting : settingsTable()) {
        EXPECT_TRUE(names.insert(setting.valueName).second) << setting.valueName;
        for (const SettingDescriptor& other : settingsTable()) {
            EXPECT_TRUE(&other == &setting || !(other.member == setting.member))
                << setting.valueName;
        }
    }
}

TEST(CcAddinRegistry, AbsentKeyGivesEveryDefault) {
    TempTill till;
    TCcAddinRegistry expected; // empty texts, zero numbers, false flags
    expected.strTrackStartId = "3B";
    expected.strTrackEndId = "3F";
    expected.strPrintNormalControl = "1B2100";
    expected.strPrintBoldControl = "1B2148";
    expected.lWindowsFontSize = 10;
    expected.lRmsReceiptPrinterNo = 1;
    for (bool TCcAddinRegistry::*flag :
         {&TCcAddinRegistry::bWindowsFontBold, &TCcAddinRegistry::bCutPaperAfterMerchantCopy,
          &TCcAddinRegistry::bCutPaperAfterCustomerCopy, &TCcAddinRegistry::bPrintMerchantHeader,
          &TCcAddinRegistry::bPrintCustomerHeader, &TCcAddinRegistry::bAutoDeclinePinBypass}) {
        expected.*flag = true;
    }
    const TCcAddinRegistry read = readStore();
    for (const SettingDescriptor& setting : settingsTable()) {
        EXPECT_TRUE(sameValue(read, expected, setting)) << setting.valueName;
    }
}

TEST(CcAddinRegistry, EachFlagRuleReadsItsOwnWay) {
    TempTill till;
    struct Case {
        const char* text;
        bool onlyOne, notEmptyNotZero, emptyOrOne;
    };
    for (const Case& c : {Case{"1", true, true, true}, Case{"0", false, false, false},
                          Case{"", false, false, true}, Case{"yes", false, true, false}}) {
        for (const char* name : {"SaveReceipts", "AlwaysOnTop", "PrintCustomerHeader",
                                 "WindowsFontBold", "CutPaperAfterCustomerCopy"}) {
            plant(name, c.text);
        }
        const TCcAddinRegistry store = readStore();
        EXPECT_EQ(store.bSaveReceipts, c.onlyOne) << c.text;
        EXPECT_EQ(store.bAlwaysOnTop, c.notEmptyNotZero) << c.text;
        EXPECT_EQ(store.bPrintCustomerHeader, c.emptyOrOne) << c.text;
        EXPECT_EQ(store.bWindowsFontBold, c.emptyOrOne) << c.text;
        EXPECT_EQ(store.bCutPaperAfterCustomerCopy, c.emptyOrOne) << c.text;
    }
    // The merchant-copy cut knows "1", "0" and empty; other text keeps what the record held.
    TCcAddinRegistry store;
    for (const auto& [text, before, after] :
         {std::tuple{"1", false, true}, std::tuple{"", false, true}, std::tuple{"0", true, false},
          std::tuple{"2", true, true}, std::tuple{"2", false, false}}) {
        plant("CutPaperAfterMerchantCopy", text);
        store.bCutPaperAfterMerchantCopy = before;
        store.ReadRegistry();
        EXPECT_EQ(store.bCutPaperAfterMerchantCopy, after) << text << " after " << before;
    }
}

TEST(CcAddinRegistry, TextAndNumberRulesOnReading) {
    TempTill till;
    const char* const namesAndTexts[] = {
        "ConfigFileLocation",   "c:\\cfg", "ReceiptFileLocation", "c:\\rcpt",
        "WindowsFontSize",      "large",   "RmsReceiptPrinterNo", "",
        "BaseCurrencyExponent", "2.5",     "DccEnabled",          "7",
        "DecimalInCashback",    "1",       "PrinterStopbit",      "1.5",
        "TrackStartID",         "",        "TrackEndID",          "25"};
    for (std::size_t i = 0; i < std::size(namesAndTexts); i += 2) {
        plant(namesAndTexts[i], namesAndTexts[i + 1]);
    }
    TCcAddinRegistry store = readStore();
    EXPECT_EQ(store.strConfigFileLocation, "c:\\cfg\\");
    EXPECT_EQ(store.strReceiptFileLocation, "c:\\rcpt"); // only the config folder is completed
    EXPECT_EQ(store.lWindowsFontSize, 0);                // letters are not an absent value
    EXPECT_EQ(store.lRmsReceiptPrinterNo, 1);
    EXPECT_EQ(store.lBaseCurrencyExponent, 2);
    EXPECT_EQ(store.lDccType, 2);
    EXPECT_EQ(store.lCashbackEntryType, 1);
    EXPECT_EQ(store.dPrinterStopbit, 1.5);
    EXPECT_EQ(store.strTrackStartId, "3B");
    EXPECT_EQ(store.strTrackEndId, "25");
    store.WriteRegistry(33);
    EXPECT_EQ(stored("DccEnabled"), "2");
    plant("DccEnabled", "0");
    EXPECT_EQ(readStore().lDccType, 0);
    plant("ConfigFileLocation", "c:\\cfg\\");
    EXPECT_EQ(readStore().strConfigFileLocation, "c:\\cfg\\");
    plant("ConfigFileLocation", "");
    EXPECT_EQ(readStore().strConfigFileLocation, "");
}

TEST(CcAddinRegistry, EverySettingSurvivesARoundTrip) {
    TempTill till;
    const TCcAddinRegistry written = distinctRecord();
    plant("AutoPrintCustomerCOpy", "untouched");
    for (std::int32_t n = 0; n < 89; ++n) {
        TCcAddinRegistry(written).WriteRegistry(n);
    }
    const TCcAddinRegistry read = readStore();
    for (const SettingDescriptor& setting : settingsTable()) {
        EXPECT_TRUE(sameValue(written, read, setting)) << setting.valueName;
    }
    // Field numbers that do not follow the record's order, and the encodings.
    EXPECT_EQ(stored("CorvixClientId") + stored("OPOSPrinterDeviceName"),
              "c:\\value 12\\c:\\value 31\\");
    EXPECT_EQ(stored("PrinterType") + " " + stored("AddinHeight") + " " + stored("AddinWidth"),
              "-1021 -1071 1072");
    EXPECT_EQ(stored("PrinterStopbit") + " " + stored("Mode") + " " + stored("WindowsFontBold"),
              "1.5 1 0");
    EXPECT_EQ(stored("AutoPrintCustomerCOpy"), "untouched");
}

TEST(CcAddinRegistry, WriteStoresExactlyOneValue) {
    TempTill till;
    plant("AutoPrintCustomerCOpy", "untouched"); // the store writes only under a key that exists
    for (std::int32_t n = 0; n < 89; ++n) {
        readStore().WriteRegistry(n);
    }
    const auto before = allStored();
    TCcAddinRegistry changed = distinctRecord();
    for (std::int32_t outside : {89, -1, std::numeric_limits<std::int32_t>::min()}) {
        changed.WriteRegistry(outside);
    }
    EXPECT_EQ(allStored(), before);
    changed.WriteRegistry(14);
    auto expected = before;
    expected["CorvixPassword"] = "c:\\value 14\\";
    EXPECT_EQ(allStored(), expected);

    // No default on writing; the real keeps only the digits it needs and reads back the same.
    TCcAddinRegistry store;
    store.dPrinterStopbit = 2;
    store.WriteRegistry(49);
    store.WriteRegistry(52);
    EXPECT_EQ(stored("PrinterStopbit") + "|" + stored("TrackStartID"), "2|");
    store.dPrinterStopbit = 0.1;
    store.WriteRegistry(49);
    EXPECT_EQ(readStore().dPrinterStopbit, 0.1);
}

TEST(CcAddinRegistry, TimeStampsAreFourteenDigitsAndLeaveTheRecord) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    TCcAddinRegistry store;
    store.SaveZReportDate(); // no key yet: nothing is created, nothing thrown
    EXPECT_EQ(stored("LastZReportDate"), "<missing>");
    plant("LastZReportDate", "");
    store.SaveZReportDate();
    clock.advance(std::chrono::hours{10});
    store.SaveLastTmsCallDate();
    EXPECT_EQ(stored("LastZReportDate"), "20250303140509");
    EXPECT_EQ(stored("LastTmsCallDate"), "20250304000509");
    EXPECT_EQ(store.strLastZReportDate + store.strLastTmsCallDate, "");
}
