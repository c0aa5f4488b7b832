#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"
#include "support/till_readers.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <tuple>

namespace {

const std::string kKey = "SOFTWARE\\Tessaly\\ccaddin\\";

void plant(const std::string& name, const std::string& value) {
    TRegistry().CreateKeyAndSaveValue(kKey, name, value);
}

TCcAddinRegistry readStore() {
    TCcAddinRegistry store;
    store.ReadRegistry();
    return store;
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

TEST(CcAddinRegistry, AbsentKeyGivesEveryDefault) {
    TempTill till;
    TCcAddinRegistry expected; // empty texts, zero numbers, false flags
    for (const auto& [text, value] : {std::pair{&TCcAddinRegistry::strTrackStartId, "3B"},
                                      {&TCcAddinRegistry::strTrackEndId, "3F"},
                                      {&TCcAddinRegistry::strPrintNormalControl, "1B2100"},
                                      {&TCcAddinRegistry::strPrintBoldControl, "1B2148"}}) {
        expected.*text = value;
    }
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
    // The merchant-copy cut ('K') keeps what the record held for text it does not know.
    struct Case {
        const char* text; // nullptr: no such value
        bool onlyOne, notEmptyNotZero, emptyOrOne;
        char merchantCut;
    };
    for (const Case& c : {Case{"1", true, true, true, 'T'}, Case{"0", false, false, false, 'F'},
                          Case{"", false, false, true, 'T'}, Case{nullptr, false, false, true, 'T'},
                          Case{"yes", false, true, false, 'K'}}) {
        TempTill till;
        plant("Acquirer", "AIB");
        for (const char* name : {"SaveReceipts", "AlwaysOnTop", "PrintCustomerHeader",
                                 "WindowsFontBold", "CutPaperAfterMerchantCopy"}) {
            if (c.text != nullptr) {
                plant(name, c.text);
            }
        }
        for (const bool before : {false, true}) {
            TCcAddinRegistry s;
            s.bCutPaperAfterMerchantCopy = before;
            s.ReadRegistry();
            EXPECT_EQ(std::tuple(s.bSaveReceipts, s.bAlwaysOnTop, s.bPrintCustomerHeader,
                                 s.bWindowsFontBold, s.bCutPaperAfterMerchantCopy),
                      std::tuple(c.onlyOne, c.notEmptyNotZero, c.emptyOrOne, c.emptyOrOne,
                                 c.merchantCut == 'K' ? before : c.merchantCut == 'T'))
                << (c.text ? c.text : "missing") << " over " << before;
        }
    }
}

TEST(CcAddinRegistry, TextAndNumberRulesOnReading) {
    TempTill till;
    for (const auto& [name, text] : {std::pair{"ConfigFileLocation", "c:\\cfg"},
                                     {"WindowsFontSize", "large"},
                                     {"DccEnabled", "7"},
                                     {"DecimalInCashback", "1"},
                                     {"PrinterStopbit", "1.5"}}) {
        plant(name, text);
    }
    const TCcAddinRegistry store = readStore();
    EXPECT_EQ(store.strConfigFileLocation, "c:\\cfg\\");
    EXPECT_EQ(store.lWindowsFontSize, 0); // letters are not an absent value
    EXPECT_EQ(std::tuple(store.lDccType, store.lCashbackEntryType), std::tuple(2, 1));
    EXPECT_EQ(store.dPrinterStopbit, 1.5);
    plant("DccEnabled", "0");
    EXPECT_EQ(readStore().lDccType, 0);
}

TEST(CcAddinRegistry, EachFieldNumberWritesOneValueAndEverySettingSurvivesARoundTrip) {
    TempTill till;
    plant("AutoPrintCustomerCOpy", "untouched"); // the store writes only under a key that exists
    auto expected = addinSettings();
    const TCcAddinRegistry written = distinctRecord();
    for (std::int32_t n : {89, -1, std::numeric_limits<std::int32_t>::min(), 14}) {
        TCcAddinRegistry(written).WriteRegistry(n);
    }
    expected["CorvixPassword"] = "c:\\value 14\\";
    EXPECT_EQ(addinSettings(), expected);

    for (std::int32_t n = 0; n < 89; ++n) {
        TCcAddinRegistry(written).WriteRegistry(n);
    }
    const TCcAddinRegistry read = readStore();
    for (const SettingDescriptor& setting : settingsTable()) {
        EXPECT_TRUE(sameValue(written, read, setting)) << setting.valueName;
        // Two names on one property would leave another property unread and unwritten.
        const auto sameProperty = [&](const auto& other) { return other.member == setting.member; };
        EXPECT_EQ(std::ranges::count_if(settingsTable(), sameProperty), 1) << setting.valueName;
    }
    // Field numbers that do not follow the record's order, and the encodings.
    EXPECT_EQ(addinValue("CorvixClientId") + addinValue("OPOSPrinterDeviceName"),
              "c:\\value 12\\c:\\value 31\\");
    EXPECT_EQ(addinValue("PrinterType") + " " + addinValue("AddinHeight") + " " +
                  addinValue("PrinterStopbit") + " " + addinValue("Mode") + " " +
                  addinValue("WindowsFontBold"),
              "-1021 -1071 1.5 1 0");
    EXPECT_EQ(addinValue("AutoPrintCustomerCOpy"), "untouched");
}

TEST(CcAddinRegistry, TimeStampsAreFourteenDigitsAndLeaveTheRecord) {
    TempTill till;
    FakeClock clock(2025, 3, 3, 14, 5, 9);
    TCcAddinRegistry store;
    store.SaveZReportDate(); // no key yet: nothing is created, nothing thrown
    EXPECT_EQ(addinValue("LastZReportDate"), "<missing>");
    plant("LastZReportDate", "");
    store.SaveZReportDate();
    clock.advance(std::chrono::hours{10});
    store.SaveLastTmsCallDate();
    EXPECT_EQ(addinValue("LastZReportDate") + " " + addinValue("LastTmsCallDate"),
              "20250303140509 20250304000509");
    EXPECT_EQ(store.strLastZReportDate + store.strLastTmsCallDate, "");
}
