#include "foundation/tessaly_config.h"

#include <gtest/gtest.h>

TEST(TessalyConfig, AddBackslashCompletesFoldersButLeavesEmptyTextAlone) {
    EXPECT_EQ(TessalyConfig::AddBackslash("c:\\tessaly"), "c:\\tessaly\\");
    EXPECT_EQ(TessalyConfig::AddBackslash("c:\\tessaly\\"), "c:\\tessaly\\");
    EXPECT_EQ(TessalyConfig::AddBackslash(""), "");
}
