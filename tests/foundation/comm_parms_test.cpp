#include "foundation/comm_parms.h"

#include <gtest/gtest.h>

using Items = std::vector<std::string>;

TEST(CommParms, OnlyPortsAndFlowControlClearTheBoxFirst) {
    const CommParms parms;
    VectorList ports;
    ports.AddItem("old");
    parms.FillBoxWithPorts(ports);
    ASSERT_EQ(ports.items.size(), 258u);
    EXPECT_EQ(Items(ports.items.begin(), ports.items.begin() + 3), (Items{"LPT1", "LPT2", "COM1"}));
    EXPECT_EQ(ports.items.back(), "COM256");

    VectorList flow;
    flow.AddItem("old");
    parms.FillBoxWithFlowControlTypes(flow);
    EXPECT_EQ(flow.items, (Items{"Xon/Xoff", "Hardware", "None"}));

    VectorList appended;
    appended.AddItem("old");
    parms.FillBoxWithParity(appended);
    parms.FillBoxWithDatabits(appended);
    parms.FillBoxWithBaudRates(appended);
    parms.FillBoxWithStopBits(appended);
    parms.FillBoxWithDialTypes(appended);
    EXPECT_EQ(appended.items,
              (Items{"old",   "EVEN",   "ODD", "NONE", "SPACE", "MARK", "5",     "6",     "7",
                     "8",     "110",    "300", "1200", "2400",  "4800", "9600",  "19200", "38400",
                     "57600", "115200", "1",   "1.5",  "2",     "TONE", "PULSE", "ISDN"}));
}

TEST(CommParms, PortTextsAreJudgedByTheNumberFromTheFourthCharacter) {
    const CommParms parms;
    // The prefix plays no part: any three characters followed by 1 to 256 pass.
    for (const char* usable : {"COM1", "COM256", "LPT1", "LPT2", "LPT3", "xyz7", "COM1x"}) {
        EXPECT_EQ(parms.GetCommPortStr(usable), usable);
    }
    for (const char* unusable : {"COM257", "COM0", "COMx", "COM", "COM99999999999999999999"}) {
        EXPECT_EQ(parms.GetCommPortStr(unusable), "") << unusable;
    }
    EXPECT_EQ(parms.GetCommPortID("LPT2"), 2);
    EXPECT_EQ(parms.GetCommPortID("COM12x"), 12);
    EXPECT_EQ(parms.GetCommPortID("C3"), 1);
    EXPECT_EQ(parms.GetCommPortID("COM99999"), 0);
}

TEST(CommParms, ChecksAndTranslationsFollowTheTables) {
    const CommParms parms;
    EXPECT_TRUE(parms.IsValidStopbit(1.5) && parms.IsValidDataBits(8));
    EXPECT_FALSE(parms.IsValidStopbit(1.25) || parms.IsValidBaudRate(14400));
    EXPECT_EQ(parms.GetParityStr("e"), "EVEN");
    EXPECT_EQ(parms.GetParityStr("nothing"), "NONE");
    EXPECT_EQ(parms.GetParityStr("x"), "");
    EXPECT_EQ(parms.GetParityStr(""), "");
    EXPECT_EQ(parms.GetDialTypeStr(1), "PULSE");
    EXPECT_EQ(parms.GetDialTypeStr(7), "");
    EXPECT_EQ(parms.GetDialTypeID("ISDN"), 2);
    EXPECT_EQ(parms.GetDialTypeID("pulse"), 0); // unknown and wrong-case texts become tone
    EXPECT_EQ(parms.GetFlowControlID("Hardware"), 2);
    EXPECT_EQ(parms.GetFlowControlID("xon/xoff"), 0);
    EXPECT_EQ(parms.GetFlowControlStr(1), "Xon/Xoff");
    EXPECT_EQ(parms.GetFlowControlStr(7), "None"); // never empty, unlike the dial types
}
