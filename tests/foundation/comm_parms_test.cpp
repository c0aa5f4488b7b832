#include "foundation/comm_parms.h"

#include <gtest/gtest.h>
#include <stdexcept>

using Items = std::vector<std::string>;

namespace {

VectorList boxHolding(const std::string& item) {
    VectorList box;
    box.AddItem(item);
    return box;
}

// A list that breaks after a number of items, as a control torn down mid-fill would.
class BreakingList final : public ListControl {
public:
    explicit BreakingList(std::size_t capacity) : capacity_(capacity) {}
    void Clear() override { items.clear(); }
    void AddItem(const std::string& text) override {
        if (items.size() == capacity_) {
            throw std::runtime_error("list is gone");
        }
        items.push_back(text);
    }
    Items items;

private:
    std::size_t capacity_;
};

} // namespace

TEST(CommParms, ChecksAcceptExactlyTheTableValues) {
    const CommParms parms;
    EXPECT_FALSE(parms.IsValidDataBits(4));
    EXPECT_TRUE(parms.IsValidDataBits(5));
    EXPECT_TRUE(parms.IsValidDataBits(8));
    EXPECT_FALSE(parms.IsValidDataBits(9));
    EXPECT_TRUE(parms.IsValidStopbit(1.5));
    EXPECT_TRUE(parms.IsValidStopbit(2));
    EXPECT_FALSE(parms.IsValidStopbit(1.25));
    EXPECT_FALSE(parms.IsValidStopbit(0));
    EXPECT_TRUE(parms.IsValidBaudRate(110));
    EXPECT_TRUE(parms.IsValidBaudRate(115200));
    EXPECT_FALSE(parms.IsValidBaudRate(14400));
    EXPECT_TRUE(parms.IsValidFlowControlID(0));
    EXPECT_TRUE(parms.IsValidFlowControlID(2));
    EXPECT_FALSE(parms.IsValidFlowControlID(3));
    EXPECT_FALSE(parms.IsValidFlowControlID(-1));
}

TEST(CommParms, OnlyPortsAndFlowControlClearTheBoxFirst) {
    const CommParms parms;
    VectorList ports = boxHolding("old");
    parms.FillBoxWithPorts(ports);
    ASSERT_EQ(ports.items.size(), 258u);
    EXPECT_EQ(ports.items[0], "LPT1");
    EXPECT_EQ(ports.items[1], "LPT2");
    EXPECT_EQ(ports.items[2], "COM1");
    EXPECT_EQ(ports.items[11], "COM10");
    EXPECT_EQ(ports.items[257], "COM256");

    VectorList flow = boxHolding("old");
    parms.FillBoxWithFlowControlTypes(flow);
    EXPECT_EQ(flow.items, (Items{"Xon/Xoff", "Hardware", "None"}));

    VectorList appended = boxHolding("old");
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

TEST(CommParms, AFailingListEndsTheFillQuietlyWithTheItemsAdded) {
    const CommParms parms;
    BreakingList box(3);
    EXPECT_NO_THROW(parms.FillBoxWithPorts(box));
    EXPECT_EQ(box.items, (Items{"LPT1", "LPT2", "COM1"}));
    BreakingList rates(1);
    EXPECT_NO_THROW(parms.FillBoxWithBaudRates(rates));
    EXPECT_EQ(rates.items, Items{"110"});
}

TEST(CommParms, PortTextsAreJudgedByTheNumberFromTheFourthCharacter) {
    const CommParms parms;
    EXPECT_EQ(parms.GetCommPortStr("COM1"), "COM1");
    EXPECT_EQ(parms.GetCommPortStr("COM256"), "COM256");
    EXPECT_EQ(parms.GetCommPortStr("COM257"), "");
    EXPECT_EQ(parms.GetCommPortStr("COM0"), "");
    EXPECT_EQ(parms.GetCommPortStr("LPT1"), "LPT1");
    EXPECT_EQ(parms.GetCommPortStr("LPT2"), "LPT2");
    EXPECT_EQ(parms.GetCommPortStr("LPT3"), "LPT3"); // the prefix plays no part
    EXPECT_EQ(parms.GetCommPortStr("xyz7"), "xyz7");
    EXPECT_EQ(parms.GetCommPortStr("COM1x"), "COM1x");
    EXPECT_EQ(parms.GetCommPortStr("COMx"), "");
    EXPECT_EQ(parms.GetCommPortStr("COM"), "");
    EXPECT_EQ(parms.GetCommPortStr("COM99999999999999999999"), "");

    EXPECT_EQ(parms.GetCommPortID("COM3"), 3);
    EXPECT_EQ(parms.GetCommPortID("LPT2"), 2);
    EXPECT_EQ(parms.GetCommPortID("COM12x"), 12);
    EXPECT_EQ(parms.GetCommPortID("C3"), 1);
    EXPECT_EQ(parms.GetCommPortID(""), 1);
    EXPECT_EQ(parms.GetCommPortID("COM99999"), 0);
}

TEST(CommParms, TextsAndIdentifiersTranslateBothWays) {
    const CommParms parms;
    EXPECT_EQ(parms.GetParityStr("e"), "EVEN");
    EXPECT_EQ(parms.GetParityStr("nothing"), "NONE");
    EXPECT_EQ(parms.GetParityStr("Mark"), "MARK");
    EXPECT_EQ(parms.GetParityStr("s"), "SPACE");
    EXPECT_EQ(parms.GetParityStr("x"), "");
    EXPECT_EQ(parms.GetParityStr(""), "");

    EXPECT_EQ(parms.GetDialTypeStr(1), "PULSE");
    EXPECT_EQ(parms.GetDialTypeStr(7), "");
    EXPECT_EQ(parms.GetDialTypeStr(-1), "");
    EXPECT_EQ(parms.GetDialTypeID("ISDN"), 2);
    EXPECT_EQ(parms.GetDialTypeID("pulse"), 0);
    EXPECT_EQ(parms.GetDialTypeID("tone"), 0);

    EXPECT_EQ(parms.GetFlowControlID("Hardware"), 2);
    EXPECT_EQ(parms.GetFlowControlID("xon/xoff"), 0);
    EXPECT_EQ(parms.GetFlowControlStr(1), "Xon/Xoff");
    EXPECT_EQ(parms.GetFlowControlStr(7), "None");
    EXPECT_EQ(parms.GetFlowControlStr(-3), "None");
}
