#include "settings/fuel_info.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>

namespace {

bool readFuel(TempTill& till, TFuelInfo& fuel, const std::string& general) {
    till.plant("tessaly/config/fuelinfo.ini", "[GENERAL]\r\n" + general);
    return fuel.ReadConfiguration("c:\\tessaly\\config"); // the backslash is added
}

} // namespace

TEST(FuelInfo, LoadsEntriesInKeyOrderAndFailsWithoutAReadableCount) {
    TempTill till;
    TFuelInfo fuel;
    EXPECT_FALSE(readFuel(till, fuel,
                          "Count=5\r\n1=Allstar,ALS\r\n3=\"Key, Fuels\",KFU,ignored\r\n"
                          "4=NoPrefix\r\n5=Allstar,SECOND\r\n6=Later,LAT\r\n"));
    ASSERT_EQ(fuel.lFuelInfoCount(), 3);
    EXPECT_EQ(fuel.GetFuelName(1) + "|" + fuel.GetFuelName(2) + "|" + fuel.GetFuelName(3) + "|" +
                  fuel.GetFuelName(-1),
              "Key, Fuels|Allstar||");
    EXPECT_EQ(fuel.GetZontalkAppPrefix("Allstar") + fuel.GetZontalkAppPrefix("Key, Fuels"),
              "ALSKFU");
    EXPECT_EQ(fuel.GetZontalkAppPrefix("allstar") + fuel.GetZontalkAppPrefix("NoPrefix"), "");
    // A count of 0 is an empty table, not a failure, and forgets the earlier load.
    EXPECT_FALSE(readFuel(till, fuel, "Count=0\r\n1=Allstar,ALS\r\n"));
    EXPECT_EQ(fuel.lFuelInfoCount(), 0);
    EXPECT_EQ(fuel.GetZontalkAppPrefix("Allstar") + fuel.strErrorMessage, "");

    // A missing file or count, or one that is not a whole number, fails with the reader's prefix.
    EXPECT_TRUE(fuel.ReadConfiguration("c:\\no such folder\\"));
    EXPECT_TRUE(fuel.strErrorMessage.starts_with("TFuelInfo.ReadConfiguration() Failed - "));
    for (const std::string count : {"", "Count=\r\n", "Count=several\r\n", "Count=1e10\r\n"}) {
        fuel.strErrorMessage.clear();
        EXPECT_TRUE(readFuel(till, fuel, count + "1=Allstar,ALS\r\n")) << count;
        EXPECT_NE(fuel.strErrorMessage, "") << count;
        EXPECT_EQ(fuel.lFuelInfoCount(), 0) << count;
    }
}
