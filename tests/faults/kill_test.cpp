// Processes killed with SIGKILL at random moments of INI writes, registry writes and whole
// configuration runs: afterwards every file is the old one or the new one and the registry opens
// and holds the old or the new value of each setting.
#include "configure/configure_tessaly.h"
#include "fault_till.h"
#include "foundation/ini_file.h"
#include "foundation/registry.h"
#include "settings/ccaddin_registry.h"
#include "support/child_process.h"
#include "support/fake_clock.h"
#include "support/temp_till.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <iostream>
#include <set>
#include <string>
#include <thread>

namespace fs = std::filesystem;
using Steady = std::chrono::steady_clock;

namespace {

constexpr int kKillPoints = 120;

// A file of `lines` key lines in sections of fifty, as large payment-client files are.
std::string bigIni(int lines) {
    std::string text = "; generated\r\n";
    for (int i = 0; i < lines; ++i) {
        if (i % 50 == 0) {
            text += "[Section" + std::to_string(i / 50) + "]\r\n";
        }
        text += "Key" + std::to_string(i) + "=value " + std::to_string(i) + "\r\n";
    }
    return text;
}

// Temporary files a killed write left beside the file; removed, and counted.
int sweepLeftovers(const fs::path& folder, const std::string& keep) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename() != keep) {
            fs::remove(entry.path());
            ++count;
        }
    }
    return count;
}

template <typename Work> Steady::duration timeOf(Work work) {
    const auto start = Steady::now();
    work();
    return Steady::now() - start;
}

// The settings a user changes on the demo till in the killed runs: not an SC5000, so no pause.
void chooseChanges(TCcAddinRegistry& chosen) {
    chosen.strChipDeviceName = "VeriFone VX820";
    chosen.strComPort = "COM4";
    chosen.bTestMode = !chosen.bTestMode;
    chosen.strCorvixMerchantId = "55555";
    chosen.strIdlePrompt1 = "KILLED?";
    chosen.bCashback = !chosen.bCashback;
}

std::int32_t configureDemo(TcOnfigureTessaly& run) {
    TCcAddinRegistry installed;
    installed.ReadRegistry();
    TCcAddinRegistry chosen = installed;
    chooseChanges(chosen);
    return run.Configure(installed, chosen, kProgramFolder);
}

// What a run may have changed, seen as a reader sees it.
struct RunState {
    IniValues client;
    IniValues zontalk;
    std::map<std::string, std::string> settings;
    std::string keyFile;

    static RunState of(const TempTill& till) {
        return {iniValues(clientFile(till, "cxclientconfig.ini")),
                iniValues(clientFile(till, "zontalkclient.ini")), addinSettings(),
                readBytes(clientFile(till, "cxkeyfile.txt"))};
    }
};

// Each key or setting holds its value before the run or after it; nothing else.
template <typename Map>
void expectOldOrNew(const Map& seen, const Map& before, const Map& after, const std::string& what,
                    int trial) {
    std::set<typename Map::key_type> keys;
    for (const auto* map : {&seen, &before, &after}) {
        for (const auto& [key, value] : *map) {
            keys.insert(key);
        }
    }
    const auto valueIn = [](const Map& map, const typename Map::key_type& key) {
        const auto it = map.find(key);
        return it == map.end() ? std::string("<absent>") : it->second;
    };
    for (const auto& key : keys) {
        const std::string value = valueIn(seen, key);
        EXPECT_TRUE(value == valueIn(before, key) || value == valueIn(after, key))
            << what << " after kill " << trial << ": " << value;
    }
}

} // namespace

TEST(KilledWrites, AnIniFileKilledMidWriteIsTheOldFileOrTheNewAndStaysWritable) {
    TempTill till;
    const fs::path file = till.plant("kill/big.ini", bigIni(5000));
    const std::string original = readBytes(file);
    TTLIniFile ini;
    ini.strIniFileDir = "c:\\kill\\";
    ini.strIniFileName = "big.ini";

    std::set<std::string> states{original};
    Steady::duration oneWrite{};
    for (const char* value : {"A", "B"}) {
        oneWrite = timeOf([&] { ASSERT_NE(ini.SetINIString("Section50", "Key2500", value), 0); });
        states.insert(readBytes(file));
    }
    ASSERT_EQ(states.size(), 3u);

    std::mt19937 random(20261122);
    int midWrite = 0;
    for (int trial = 0; trial < kKillPoints; ++trial) {
        till.plant("kill/big.ini", original);
        ChildProcess writer([&] {
            ChildProcess::ready();
            for (int i = 0;; ++i) {
                ini.SetINIString("Section50", "Key2500", i % 2 == 0 ? "A" : "B");
            }
            return 0;
        });
        ASSERT_TRUE(writer.waitReady());
        std::this_thread::sleep_for(randomDelay(
            random, std::chrono::duration_cast<std::chrono::microseconds>(oneWrite * 3)));
        ASSERT_TRUE(writer.kill());
        ASSERT_EQ(states.count(readBytes(file)), 1u) << "kill " << trial << " broke the file";
        midWrite += sweepLeftovers(file.parent_path(), "big.ini");
    }
    std::cout << "[ kills    ] " << kKillPoints << " INI kills, " << midWrite
              << " inside a write (a temporary file left)\n";
    EXPECT_GT(midWrite, 0) << "no kill landed inside a write: the timing proves nothing";

    // A file whose writer died is written as any other.
    ASSERT_NE(ini.SetINIString("Section50", "Key2500", "after"), 0);
    EXPECT_EQ(ini.GetINIString("Section50", "Key2500", ""), "after");
}

TEST(KilledWrites, ARegistryKilledMidWriteOpensAndHoldsTheOldOrNewValueOfEachSetting) {
    TempTill till;
    const std::string key = "SOFTWARE\\Tessaly\\ccaddin\\";
    const std::vector<std::string> names{"Acquirer", "ComPort", "CorvixMerchantId", "Mode"};
    TRegistry setup;
    for (const std::string& name : names) {
        setup.CreateKeyAndSaveValue(key, name, "old");
    }
    ASSERT_EQ(setup.strErrorMessage(), "");
    const Steady::duration oneRound = timeOf([&] {
        for (const std::string& name : names) {
            TRegistry().SaveRegistryValue(key, name, "A-" + name);
        }
    });

    std::mt19937 random(1122);
    for (int trial = 0; trial < kKillPoints; ++trial) {
        ChildProcess writer([&] {
            ChildProcess::ready();
            for (int i = 0;; ++i) {
                for (const std::string& name : names) {
                    TRegistry().SaveRegistryValue(key, name, (i % 2 ? "A-" : "B-") + name);
                }
            }
            return 0;
        });
        ASSERT_TRUE(writer.waitReady());
        std::this_thread::sleep_for(randomDelay(
            random, std::chrono::duration_cast<std::chrono::microseconds>(oneRound * 2)));
        ASSERT_TRUE(writer.kill());
        for (const std::string& name : names) {
            TRegistry registry;
            std::string value;
            ASSERT_EQ(registry.GetRegistryValue(key, name, value), 0)
                << "kill " << trial << ": " << registry.strErrorMessage();
            EXPECT_TRUE(value == "old" || value == "A-" + name || value == "B-" + name)
                << "kill " << trial << ": " << name << "=" << value;
        }
    }
}

TEST(KilledWrites, AConfigurationRunKilledAnywhereLeavesEachKeyAndSettingOldOrNew) {
    FakeClock clock(2026, 3, 14, 9, 30, 0);
    TempTill till;
    plantDemoTill(till);
    const RunState before = RunState::of(till);
    TcOnfigureTessaly reference;
    std::int32_t result = -1;
    const Steady::duration wholeRun = timeOf([&] { result = configureDemo(reference); });
    ASSERT_EQ(result, 0) << reference.strErrorMessage;
    const RunState after = RunState::of(till);
    ASSERT_NE(before.client, after.client);
    ASSERT_NE(before.keyFile, after.keyFile);

    // The kill window follows how long a run takes in a child right now, not how long the first
    // run took: a machine under load (or one warmed up) shifts it, and a kill after the run ended
    // proves nothing. So it shrinks when a kill comes too late and grows when one lands inside.
    const auto longest = std::chrono::duration_cast<std::chrono::microseconds>(wholeRun * 3);
    auto window = std::chrono::duration_cast<std::chrono::microseconds>(wholeRun);
    std::mt19937 random(314);
    int unfinished = 0;
    int trial = 0;
    for (; unfinished < kKillPoints && trial < kKillPoints * 4; ++trial) {
        plantDemoTill(till);
        ChildProcess run([&] {
            TcOnfigureTessaly configure;
            ChildProcess::ready();
            return configureDemo(configure);
        });
        ASSERT_TRUE(run.waitReady());
        std::this_thread::sleep_for(randomDelay(random, window));
        if (run.kill()) {
            ++unfinished;
            window = std::min(longest, window * 21 / 20);
        } else {
            window = std::max(std::chrono::microseconds(100), window * 4 / 5);
        }

        const RunState seen = RunState::of(till);
        expectOldOrNew(seen.client, before.client, after.client, "cxclientconfig.ini", trial);
        expectOldOrNew(seen.zontalk, before.zontalk, after.zontalk, "zontalkclient.ini", trial);
        expectOldOrNew(seen.settings, before.settings, after.settings, "registry", trial);
        EXPECT_TRUE(seen.keyFile == before.keyFile || seen.keyFile == after.keyFile)
            << "cxkeyfile.txt after kill " << trial << " is neither key file";
        if (HasFailure()) {
            break;
        }
    }
    std::cout << "[ kills    ] " << trial << " run kills, " << unfinished
              << " before the run ended (a whole run takes "
              << std::chrono::duration_cast<std::chrono::milliseconds>(wholeRun).count()
              << " ms here)\n";
    EXPECT_GE(unfinished, kKillPoints) << "too few kills landed inside a run";
}
