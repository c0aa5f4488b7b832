#include "apply/answer_file.h"
#include "apply_demo_till.h"

#include <gtest/gtest.h>

TEST(AnswerFile, ReadsWhatFleetToolsWrite) {
    // A BOM, CR LF and LF line ends, comments of both kinds, blanks around names and values,
    // names in any case, quotes that keep outer blanks, and UTF-8 text for the till's code page.
    const std::string text = "\xEF\xBB\xBF; a till in Cork\r\n"
                             "# second comment\n"
                             "  [CcAddin]  \r\n"
                             "acquirer = AIB\r\n"
                             "IdlePrompt1=\"  Caf\xC3\xA9 \"\r\n"
                             "ComPort=\r\n"
                             "\r\n"
                             "[RUN]\n"
                             "TMS=Full\n";
    std::vector<AnswerProblem> problems;
    const Answers answers = parseAnswers(text, problems);

    EXPECT_TRUE(problems.empty()) << testing::PrintToString(problems);
    ASSERT_EQ(answers.values.size(), 3u);
    EXPECT_EQ(answers.values[0].setting->valueName, "Acquirer");
    EXPECT_EQ(answers.values[0].text, "AIB");
    EXPECT_EQ(answers.values[0].line, 4);
    EXPECT_EQ(answers.values[1].text, "  Caf\xE9 "); // Windows-1252 e acute
    EXPECT_EQ(answers.values[2].text, "");
    ASSERT_NE(answers.find("COMPORT"), nullptr);
    EXPECT_EQ(answers.find("Mode"), nullptr);
    EXPECT_EQ(answers.tms, TmsChoice::Full);
    EXPECT_EQ(answers.tmsLine, 9);
}

TEST(AnswerFile, NamesEveryProblemWithItsLine) {
    const std::string text = "Acquirer=AIB\n"             // 1: before any section
                             "[ccaddin]\n"                // 2
                             "Acquirer=AIB\n"             // 3
                             "acquirer=HSBC\n"            // 4: twice
                             "Colour=blue\n"              // 5: not a setting
                             "just words\n"               // 6: no "="
                             "ComPort=COM\xE2\x82\x31\n"  // 7: broken UTF-8
                             "IdlePrompt1=\xE2\x9C\x93\n" // 8: no Windows-1252 form
                             "[extras]\n"                 // 9: unknown section
                             "Whatever=1\n"               // 10: inside it: not repeated
                             "[run\n"                     // 11: unclosed header
                             "[run]\n"                    // 12
                             "tms=sometimes\n"            // 13
                             "tms=none\n"                 // 14: twice
                             "when=now\n";                // 15
    std::vector<AnswerProblem> problems;
    const Answers answers = parseAnswers(text, problems);

    EXPECT_EQ(problemLines(problems), (std::vector<int>{1, 4, 5, 6, 7, 8, 9, 11, 13, 14, 15}))
        << testing::PrintToString(problems);
    EXPECT_NE(problems[1].message.find("first on line 3"), std::string::npos);
    EXPECT_NE(problems[2].message.find("Colour"), std::string::npos);
    // The first of a repeated setting is the one kept; nothing else was taken.
    ASSERT_EQ(answers.values.size(), 1u);
    EXPECT_EQ(answers.values[0].text, "AIB");
}
