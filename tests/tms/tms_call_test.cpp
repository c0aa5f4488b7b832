#include "support/temp_till.h"
#include "tms/tms_call.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

std::string fixture(const char* name) {
    return readBytes(fs::path(__FILE__).parent_path() / "data" / name);
}

const char* const kScript = "Tessaly/Lumora/tmscall.vbs";

// A Barclays till in pounds on a VX810, cards swiped on the device.
struct Till {
    std::string folder = "c:\\tessaly\\lumora", currency = "GBP", acquirer = "Barclays";
    std::string fuelType, comPort = "COM3", device = "VeriFone VX810";
    bool swipeOnTill = false;

    void update() const {
        TTmsCall().UpdateTmsScript("8880012345", "07", folder, currency, acquirer, fuelType,
                                   swipeOnTill, comPort, device);
    }
    // The download, fuel-files and offline values a fresh script gets.
    std::string codes(TempTill& till) const {
        const std::string script = "CONST APPLICATION_DOWNLOADVX810=\"OLD\"\r\n"
                                   "Const APPLICATION_FUELFILES=\"OLD\"\r\n"
                                   "CONST APPLICATION_OFFLINEFILE=\"ABCDEF\"\r\n";
        const fs::path file = till.plant(kScript, script);
        update();
        std::istringstream lines(readBytes(file));
        std::string values;
        for (std::string line; std::getline(lines, line);) {
            values += line.substr(line.find('=') + 1, line.size() - line.find('=') - 2) + ' ';
        }
        return values;
    }
};

} // namespace

TEST(TmsScript, ConstantLinesCarryTheTillsValuesAndEveryOtherLineIsKept) {
    TempTill till;
    till.plant("Tessaly/Lumora/fuelinfo.ini", fixture("fuelinfo.ini"));
    const fs::path script = till.plant(kScript, fixture("tmscall.vbs"));
    Till t;
    t.fuelType = "Keyfuels";
    t.update();
    EXPECT_EQ(readBytes(script), fixture("tmscall_rewritten.vbs"));
}

TEST(TmsScript, ApplicationCodesFollowDeviceAcquirerCurrencySwipeAndFuel) {
    TempTill till;
    till.plant("Tessaly/Lumora/fuelinfo.ini", fixture("fuelinfo.ini"));
    Till t;
    EXPECT_EQ(t.codes(till), R"("GENPUBP" "" "ABCUUGE" )");
    t.swipeOnTill = true;
    t.fuelType = "Allstar";
    EXPECT_EQ(t.codes(till), R"("GENPUBT" "ASUFE" "ABCUUGE" )");
    t.device = "VeriFone VX820";
    EXPECT_EQ(t.codes(till), R"("C41UBT" "ASUFE" "ABCUUGE" )");
    t = Till{};
    t.acquirer = "American Express";
    EXPECT_EQ(t.codes(till), R"("GENPUP" "" "ABCUUGE" )");

    t.currency = "EUR";
    t.fuelType = "Keyfuels";
    for (const auto& [acquirer, letter] : {std::pair{"AIB", "A"},
                                           {"Elavon", "E"},
                                           {"Streamline", "S"},
                                           {"Lloyds", "L"},
                                           {"HSBC", "H"}}) {
        t.acquirer = acquirer;
        EXPECT_EQ(t.codes(till), "\"GENPI" + std::string(letter) + R"(P" "KFIFE" "ABCUIGE" )");
    }
    // Names compare exactly; an unknown fuel card still names the currency's files.
    t.currency = "eur";
    t.acquirer = "hsbc";
    t.fuelType = "Diesel Club";
    EXPECT_EQ(t.codes(till), R"("GENPUP" "UFE" "ABCUUGE" )");
    t.device = "VeriFone SC5000";
    EXPECT_EQ(t.codes(till), R"("" "UFE" "ABCUUGE" )");
}

TEST(TmsScript, MissingEmptyOrShortInputIsLeftAsItIs) {
    TempTill till;
    Till t;
    t.update();
    EXPECT_FALSE(fs::exists(till.driveC() / kScript));
    const fs::path script = till.plant(kScript, "");
    t.update();
    EXPECT_EQ(readBytes(script), "");

    // No fuel table gives no prefix; a port name without a number leaves the port line; an
    // emptied download value is left alone; what there is of the three kept characters stays.
    till.plant(kScript,
               "Const COMPORT=4\nConst APPLICATION_FUELFILES=\"\"\n"
               "CONST APPLICATION_DOWNLOADVX810=\"\"\nCONST APPLICATION_OFFLINEFILE=\"X\"");
    t.comPort = "CM1";
    t.fuelType = "Keyfuels";
    t.update();
    EXPECT_EQ(readBytes(script), "Const COMPORT=4\r\nConst APPLICATION_FUELFILES=\"UFE\"\r\n"
                                 "CONST APPLICATION_DOWNLOADVX810=\"\"\r\n"
                                 "Const APPLICATION_OFFLINEFILE=\"X\"UUGE\"\r\n");
}

TEST(TmsCall, StartsTheScriptWithTheCallTypeAndDoesNotWait) {
    TempTill till;
    const fs::path script = till.plant(kScript, "' script\r\n");
    const std::string record = (till.root() / "args.txt").string();
    const std::string go = (till.root() / "go").string();
    // The stand-in host holds on until the test lets it go (ten seconds at most), so a caller
    // that waited for it would take that long.
    const fs::path host = till.plant(
        "host/cscript", "#!/bin/sh\ni=0\nwhile [ ! -e '" + go + "' ] && [ $i -lt 100 ]; do " +
                            "sleep 0.1; i=$((i+1)); done\nprintf '[%s]' \"$@\" > '" + record +
                            ".part'\nmv '" + record + ".part' '" + record + "'\n");
    fs::permissions(host, fs::perms::owner_all);
    setenv("PARVANE_SCRIPT_HOST", host.c_str(), 1);
    const auto start = std::chrono::steady_clock::now();
    TTmsCall().DoTmsCall("c:\\tessaly\\lumora", "2");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_FALSE(fs::exists(record));
    std::ofstream{go}; // let the host go on
    for (int i = 0; i < 300 && !fs::exists(record); ++i) {
        std::this_thread::sleep_for(50ms);
    }
    EXPECT_EQ(readBytes(record), "[" + script.string() + "][2]");

    TTmsCall().DoTmsCall("c:\\nowhere\\", "0"); // reports nothing
    unsetenv("PARVANE_SCRIPT_HOST");
}
