#include "platform/platform.h"
#include "support/temp_till.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

TEST(Paths, NamesMatchWhateverTheirCaseDrivesMapBothWaysAndCNeedsATillRoot) {
    TempTill till;
    fs::create_directories(till.driveC() / "Tessaly" / "ccaddin");
    till.plant("Tessaly/ccaddin/CxClientConfig.ini", "x");
    const std::string c = till.driveC().string();

    EXPECT_EQ(platform::hostPath("c:\\tessaly\\CCADDIN\\cxclientconfig.INI"),
              c + "/Tessaly/ccaddin/CxClientConfig.ini");
    EXPECT_EQ(platform::hostPath("C:/TESSALY\\ccaddin/New Folder\\NewFile.Txt"),
              c + "/Tessaly/ccaddin/New Folder/NewFile.Txt");
    EXPECT_EQ(platform::hostPath("c:\\tessaly\\"), c + "/Tessaly/");
    EXPECT_EQ(platform::hostPath("c:\\tessaly\\.\\x\\..\\ccaddin"), c + "/Tessaly/ccaddin");
    EXPECT_EQ(platform::hostPath("c:\\tessaly\\ccaddin\\cxclientconfig.ini. "),
              c + "/Tessaly/ccaddin/CxClientConfig.ini");
    EXPECT_EQ(platform::hostPath("\\tessaly"), c + "/Tessaly");

    // With two names differing only in case, the exact one wins.
    fs::create_directories(till.driveC() / "tessaly");
    EXPECT_EQ(platform::hostPath("c:\\tessaly"), c + "/tessaly");
    EXPECT_EQ(platform::hostPath("c:\\TESSALY"), c + "/Tessaly");

    fs::create_directories(till.root() / "drive_d" / "data");
    const std::string root = till.root().string();

    EXPECT_EQ(platform::hostPath("Z:\\usr\\bin"), "/usr/bin");
    EXPECT_EQ(platform::hostPath("d:\\DATA\\f.txt"), root + "/drive_d/data/f.txt");
    EXPECT_EQ(platform::hostPath("C:\\"), root + "/drive_c/");
    EXPECT_THROW(platform::hostPath("\\\\server\\share\\x"), std::runtime_error);

    EXPECT_EQ(platform::windowsPath(root + "/drive_c/Tessaly/x.ini"), "C:\\Tessaly\\x.ini");
    EXPECT_EQ(platform::windowsPath(root + "/drive_c"), "C:\\");
    EXPECT_EQ(platform::windowsPath("/usr/bin/env"), "Z:\\usr\\bin\\env");

    // The test program lives outside the till, so its folder reads as a Z: path.
    const std::string program = platform::programFolder();
    EXPECT_EQ(program.substr(0, 3), "Z:\\");
    EXPECT_EQ(program.back(), '\\');
    EXPECT_TRUE(fs::is_directory(platform::hostPath(program)));

    // Without a till root the till's drives give a described error; the host's drive still maps.
    unsetenv("PARVANE_ROOT");
    try {
        platform::hostPath("c:\\tessaly");
        ADD_FAILURE() << "a C: path was mapped without a till";
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string(e.what()).find("PARVANE_ROOT"), std::string::npos) << e.what();
    }
    EXPECT_EQ(platform::hostPath("z:\\tmp"), "/tmp");
}
