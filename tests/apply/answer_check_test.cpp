#include "apply/answer_check.h"
#include "apply_demo_till.h"

#include <gtest/gtest.h>

namespace {

struct Checked {
    std::vector<AnswerProblem> problems;
    TCcAddinRegistry settings;
};

// The demo till's installed settings with the [ccaddin] lines laid over them.
Checked check(const std::string& ccaddinLines) {
    std::vector<AnswerProblem> parsed;
    const Answers answers = parseAnswers("[ccaddin]\n" + ccaddinLines, parsed);
    EXPECT_TRUE(parsed.empty());
    Checked checked;
    checked.settings.ReadRegistry();
    checked.problems = applyAnswers(answers, kProgramFolder, checked.settings);
    return checked;
}

} // namespace

TEST(AnswerCheck, AcceptedValuesReachTheSettingsByTheirRegistryRules) {
    ApplyDemoTill demo;
    const Checked checked = check("Acquirer=AIB\nBaseCurrency=EUR\nTessalyID=AIB Live\n"
                                  "ComPort=COM255\nAlwaysOnTop=0\nWindowsFontSize=-3\n"
                                  "PrinterStopbit=1.5\nFuelType=Allstar, Fleet\n"
                                  "SemiIntegrated=0\nDccEnabled=2\nWindowsPrinterName=\n");
    EXPECT_TRUE(checked.problems.empty()) << testing::PrintToString(checked.problems);
    EXPECT_EQ(checked.settings.strComPort, "COM255");
    EXPECT_FALSE(checked.settings.bAlwaysOnTop);
    EXPECT_EQ(checked.settings.lWindowsFontSize, -3);
    EXPECT_DOUBLE_EQ(checked.settings.dPrinterStopbit, 1.5);
    EXPECT_EQ(checked.settings.lDccType, 2);
    EXPECT_EQ(checked.settings.strFuelType, "Allstar, Fleet");
    // What the file does not name stays as installed.
    EXPECT_EQ(checked.settings.strChipDeviceName, "VeriFone SC5000");
    EXPECT_FALSE(checked.settings.bTestMode);
}

TEST(AnswerCheck, RefusesValuesTheWizardWouldNotOffer) {
    ApplyDemoTill demo;
    const Checked checked = check("AlwaysOnTop=yes\n"               // 2: flags are 1 or 0
                                  "WindowsFontSize=12pt\n"          // 3
                                  "LeftTwips=99999999999\n"         // 4: beyond 32 bits
                                  "PrinterStopbit=1,5\n"            // 5
                                  "SemiIntegrated=5\n"              // 6
                                  "RmsTill=3\n"                     // 7
                                  "Acquirer=Amex\n"                 // 8
                                  "BaseCurrency=eur\n"              // 9: lists are exact
                                  "ChipDeviceName=VeriFone VX690\n" // 10
                                  "ComPort=COM256\n"                // 11
                                  "FuelType=Shell\n"                // 12
                                  "CorvixPassword=***\n");          // 13
    EXPECT_EQ(problemLines(checked.problems),
              (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}))
        << testing::PrintToString(checked.problems);
    EXPECT_NE(testing::PrintToString(checked.problems).find("\"EUR\", \"GBP\""), std::string::npos);
}

TEST(AnswerCheck, ProfileKindAndTheFinishRuleHoldForTheResultingSettings) {
    ApplyDemoTill demo;
    // A test profile on a live till, and a live till switched to test keeping its live profile.
    EXPECT_EQ(check("TessalyID=AIB Test\n").problems.size(), 1u);
    const Checked switched = check("Mode=1\n");
    ASSERT_EQ(switched.problems.size(), 1u);
    EXPECT_EQ(switched.problems[0].line, 2);
    EXPECT_NE(switched.problems[0].message.find("test connection profiles"), std::string::npos);
    EXPECT_TRUE(check("Mode=1\nTessalyID=Barclays Test\n").problems.empty());
    EXPECT_EQ(check("TessalyID=barclays live\n").problems.size(), 1u) << "names are exact";

    // Only a semi-integrated till may go without an acquirer; the rule speaks for the whole file.
    const Checked fully = check("Acquirer=\n");
    ASSERT_EQ(fully.problems.size(), 1u);
    EXPECT_EQ(fully.problems[0].line, 0);
    EXPECT_NE(fully.problems[0].message.find("acquirer"), std::string::npos);
    EXPECT_TRUE(check("Acquirer=\nSemiIntegrated=2\n").problems.empty());
    // Port, device, currency and profile are needed in every mode; each is named.
    const Checked empty =
        check("SemiIntegrated=1\nComPort=\nChipDeviceName=\nBaseCurrency=\nTessalyID=\n");
    EXPECT_EQ(empty.problems.size(), 4u) << testing::PrintToString(empty.problems);
}
