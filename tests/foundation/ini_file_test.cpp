#include "foundation/ini_file.h"
#include "support/temp_till.h"

#include <filesystem>
#include <gtest/gtest.h>

using Items = std::vector<std::string>;

namespace {

TTLIniFile iniFile(const std::string& folder, const std::string& name) {
    TTLIniFile ini;
    ini.strIniFileDir = folder;
    ini.strIniFileName = name;
    return ini;
}

} // namespace

TEST(IniFile, AFolderWithoutBackslashIsCompletedOnlyByTheFirstWrite) {
    TempTill till;
    till.plant("tessaly/cxclient.ini", "[Main]\r\nHost=inside\r\n");
    till.plant("tessalycxclient.ini", "[Main]\r\nHost=glued\r\n");
    TTLIniFile ini = iniFile("c:\\tessaly", "cxclient.ini");

    EXPECT_EQ(ini.GetINIString("Main", "Host", "none"), "glued");
    EXPECT_NE(ini.SetINIString("Main", "Port", "9000"), 0);
    EXPECT_EQ(ini.strIniFileDir, "c:\\tessaly\\");
    EXPECT_EQ(ini.GetINIString("Main", "Host", "none"), "inside");
    EXPECT_EQ(readBytes(till.driveC() / "tessaly" / "cxclient.ini"),
              "[Main]\r\nHost=inside\r\nPort=9000\r\n");
}

TEST(IniFile, ReadsDefaultWhatIsMissingAndNumberedKeysFillABox) {
    TempTill till;
    const std::string longValue(3000, 'v');
    till.plant("data/a.ini", "[S]\nkey=  spaced  \nlong=" + longValue + "\n3=Third\n1=First\n2=\n");
    TTLIniFile ini = iniFile("c:\\data\\", "a.ini");
    EXPECT_EQ(ini.GetINIString("s", "KEY", "d"), "spaced");
    EXPECT_EQ(ini.GetINIString("S", "nokey", "d"), "d");
    EXPECT_EQ(iniFile("c:\\data\\", "none.ini").GetINIString("S", "key", "d"), "d");
    EXPECT_EQ(ini.GetINIString("S", "long", ""), longValue.substr(0, 2047));

    EXPECT_EQ(iniFile("c:\\new\\", "b.ini").SetINIString("S", "k", "v"), 0); // no such folder

    // The numbered keys that hold something are appended in key order.
    VectorList box;
    box.AddItem("old");
    EXPECT_EQ(ini.FillBoxWithMultiLineValues(box, "S", 3), 2);
    EXPECT_EQ(box.items, (Items{"old", "First", "Third"}));
}

TEST(IniFile, SingleLineValuesDropEmptyItemsAndEndWithOneEmptyElement) {
    const TTLIniFile ini;
    Items items{"x", "y", "z", "w", "v"};
    EXPECT_EQ(ini.FillSingleLineValues(items, ";a;;b;", ';'), 2);
    EXPECT_EQ(items, (Items{"a", "b", ""}));
    EXPECT_EQ(ini.FillSingleLineValues(items, ";;", ';'), 0);
    EXPECT_EQ(items, (Items{"a", "b", ""}));
    EXPECT_EQ(ini.FillSingleLineValues(items, std::string{'a', '\xA7', 'b'}, 0xA7), 2);

    VectorList box;
    box.AddItem("old");
    EXPECT_EQ(ini.FillBoxWithLineValues(box, ";;", ';'), 0);
    EXPECT_EQ(box.items, Items{"old"});
    EXPECT_EQ(ini.FillBoxWithLineValues(box, "GBP;EUR", ';'), 2);
    EXPECT_EQ(box.items, (Items{"GBP", "EUR"}));
}
