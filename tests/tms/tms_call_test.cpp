#include "support/temp_till.h"
#include "support/wine.h"
#include "tms/tms_call.h"
#include "tms/zontalk_client_ini.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <tuple>

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
    Till t;
    t.fuelType = "Keyfuels";
    // A missing or empty script is left as it is.
    t.update();
    EXPECT_FALSE(fs::exists(till.driveC() / kScript));
    const fs::path script = till.plant(kScript, "");
    t.update();
    EXPECT_EQ(readBytes(script), "");

    till.plant("Tessaly/Lumora/fuelinfo.ini", fixture("fuelinfo.ini"));
    till.plant(kScript, fixture("tmscall.vbs"));
    t.update();
    EXPECT_EQ(readBytes(script), fixture("tmscall_rewritten.vbs"));

    // The ZonTalk client's profiles get the same folder in their folder keys, and keep the rest.
    const fs::path profiles =
        till.plant("Tessaly/Lumora/zontalkclient.ini", fixture("zontalkclient.ini"));
    WriteZontalkClientFolders(t.folder);
    expectProfileFile(till, profiles, fixture("zontalkclient_written.ini"));
}

TEST(TmsScript, ApplicationCodesFollowDeviceAcquirerCurrencySwipeAndFuel) {
    TempTill till;
    till.plant("Tessaly/Lumora/fuelinfo.ini", fixture("fuelinfo.ini"));
    // Device, acquirer, currency, swipe on the till, fuel card: the download, fuel-files and
    // offline codes. Names compare exactly; an unknown fuel card still names the currency's files.
    const std::tuple<const char*, const char*, const char*, bool, const char*, const char*>
        cases[] = {
            {"VX810", "Barclays", "GBP", false, "", R"("GENPUBP" "" "ABCUUGE" )"},
            {"VX810", "Barclays", "GBP", true, "Allstar", R"("GENPUBT" "ASUFE" "ABCUUGE" )"},
            {"VX820", "Barclays", "GBP", true, "Allstar", R"("C41UBT" "ASUFE" "ABCUUGE" )"},
            {"VX810", "American Express", "GBP", false, "", R"("GENPUP" "" "ABCUUGE" )"},
            {"VX810", "AIB", "EUR", false, "Keyfuels", R"("GENPIAP" "KFIFE" "ABCUIGE" )"},
            {"VX810", "hsbc", "eur", false, "Diesel Club", R"("GENPUP" "UFE" "ABCUUGE" )"},
            {"SC5000", "hsbc", "eur", false, "Diesel Club", R"("" "UFE" "ABCUUGE" )"},
        };
    for (const auto& [device, acquirer, currency, swipe, fuel, codes] : cases) {
        Till t;
        t.device = std::string("VeriFone ") + device;
        std::tie(t.acquirer, t.currency, t.swipeOnTill, t.fuelType) =
            std::tuple(acquirer, currency, swipe, fuel);
        EXPECT_EQ(t.codes(till), codes) << device << " " << acquirer << " " << currency;
    }
}

// The stand-in script host is a shell script: the Linux till's way of opening a script.
#ifndef _WIN32
TEST(TmsCall, StartsTheScriptWithTheCallTypeAndDoesNotWait) {
    TempTill till;
    const fs::path script = till.plant(kScript, "' script\r\n");
    const std::string record = (till.root() / "args.txt").string(), go = record + ".go";
    // The stand-in host holds on until the test lets it go (ten seconds at most), so a caller
    // that waited for it would take that long.
    const fs::path host = till.plant(
        "host/cscript", "#!/bin/sh\nfor i in $(seq 100); do [ -e '" + go + "' ] && break; " +
                            "sleep 0.1; done\nprintf '[%s]' \"$@\" > '" + record + ".part'\nmv '" +
                            record + ".part' '" + record + "'\n");
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
#endif
