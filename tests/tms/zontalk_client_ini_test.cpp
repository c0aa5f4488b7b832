#include "support/temp_till.h"
#include "tms/zontalk_client_ini.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

TEST(ZontalkClientIni, FolderKeysOfTheThreeProfilesAreWrittenAndTheRestKept) {
    TempTill till;
    const fs::path data = fs::path(__FILE__).parent_path() / "data";
    const fs::path file =
        till.plant("Tessaly/Lumora/zontalkclient.ini", readBytes(data / "zontalkclient.ini"));
    WriteZontalkClientFolders("c:\\tessaly\\lumora");
    EXPECT_EQ(readBytes(file), readBytes(data / "zontalkclient_written.ini"));
}
