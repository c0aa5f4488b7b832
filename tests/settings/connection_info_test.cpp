#include "settings/connection_info.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>

namespace {

TConnectionInfo loaded(TempTill& till, const std::string& general,
                       const std::string& folder = "c:\\tessaly\\config\\") {
    till.plant("tessaly/config/connectioninfo.ini", "[GENERAL]\r\n" + general);
    TConnectionInfo info;
    bool failed = true;
    info.ReadConfiguration(folder, failed);
    EXPECT_FALSE(failed); // the load never reports failure
    return info;
}

// Name and test flag of every index from -1 to one past the count.
std::string listing(const TConnectionInfo& info) {
    std::string text;
    for (std::int32_t i = -1; i <= info.lConnectionCount(); ++i) {
        std::string name = "unset";
        info.GetName(i, name);
        text += name + (info.IsTestMode(i) ? "(test)" : "") + ";";
    }
    return text;
}

} // namespace

TEST(ConnectionInfo, ReadsTheCountedProfilesAndLooksThemUpByName) {
    TempTill till;
    const TConnectionInfo info =
        loaded(till, "Count=6\r\n"
                     "1=1,Live One,10.0.0.1,10.0.0.2,10.0.0.3,9001,9002,9003\r\n"
                     "3=Y,\"Test, quoted\",a,b,c,80,443,x1\r\n"
                     "4=1,Short,a,b,c,1,2,\"unclosed\r\n"
                     "5=01,Live One,d,e,f,4,5,6,extra,fields\r\n"
                     "6=true,Sixth,g,h,i,7,8,9,\"unclosed\r\n"
                     "7=1,Beyond count,j,k,l,1,2,3\r\n");
    EXPECT_EQ(listing(info), ";Live One(test);Test, quoted;Live One;Sixth;;");

    std::string a1, a2, a3;
    std::int32_t p1 = -1, p2 = -1, p3 = -1;
    bool failed = true;
    info.GetDetailsByName("Live One", a1, a2, a3, p1, p2, p3, failed);
    EXPECT_FALSE(failed);
    EXPECT_EQ(a1 + " " + a2 + " " + a3 + " " + std::to_string(p1) + " " + std::to_string(p2) + " " +
                  std::to_string(p3),
              "10.0.0.1 10.0.0.2 10.0.0.3 9001 9002 9003");
    info.GetDetailsByName("Test, quoted", a1, a2, a3, p1, p2, p3, failed);
    EXPECT_EQ(p3, 0); // a port of letters
    info.GetDetailsByName("live one", a1, a2, a3, p1, p2, p3, failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(a1 + std::to_string(p2), "a443"); // outputs left as they were

    // A bad or missing count loads nothing, without reporting it.
    const std::string lines = "1=1,P,a,b,c,1,2,3\r\n2=1,Q,a,b,c,1,2,3\r\n";
    for (const std::string count : {"", "Count=0\r\n", "Count=two\r\n", "Count=99999999999\r\n"}) {
        EXPECT_EQ(loaded(till, count + lines).lConnectionCount(), 0) << count;
    }
    // Blanks around the count are allowed and a fraction rounds to even: 2.5 reads as 2.
    EXPECT_EQ(loaded(till, "Count= 2.5 \r\n" + lines + "3=0,R,a,b,c,1,2,3\r\n").lConnectionCount(),
              2);
    // The folder is used as given: without its backslash the file is not found.
    EXPECT_EQ(loaded(till, "Count=2\r\n" + lines, "c:\\tessaly\\config").lConnectionCount(), 0);
}
