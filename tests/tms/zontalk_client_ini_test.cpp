#include "support/temp_till.h"
#include "tms/zontalk_client_ini.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

namespace fs = std::filesystem;

TEST(ZontalkClientIni, FolderKeysOfTheThreeProfilesAreWrittenAndTheRestKept) {
    TempTill till;
    const fs::path data = fs::path(__FILE__).parent_path() / "data";
    const fs::path file =
        till.plant("Tessaly/Lumora/zontalkclient.ini", readBytes(data / "zontalkclient.ini"));
    WriteZontalkClientFolders("c:\\tessaly\\lumora");
    EXPECT_EQ(readBytes(file), readBytes(data / "zontalkclient_written.ini"));

    fs::permissions(file, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    try {
        WriteZontalkClientFolders("c:\\tessaly\\lumora\\");
        FAIL() << "a read-only file was written";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "cannot write key WorkingFolder of section PROFILE_1 in "
                               "c:\\tessaly\\lumora\\zontalkclient.ini");
    }
}
