#include "apply_demo_till.h"
#include "foundation/registry.h"
#include "platform/platform.h"
#include "support/child_process.h"
#include "support/till_readers.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>
#include <tuple>
#include <unistd.h>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

// A new merchant for the demo till (a sterling Barclays till on COM1): the device's port changes
// too, so the run also reconfigures the device manager.
const std::string kNewMerchant = "[ccaddin]\n"
                                 "Acquirer=AIB\n"
                                 "BaseCurrency=EUR\n"
                                 "TessalyID=AIB Live\n"
                                 "ComPort=COM3\n";

json parsed(const CommandResult& result) {
    return json::parse(result.out);
}

// What a report says was (or would be) done, without the run's mode and progress.
json effects(const json& report) {
    return {report["registry"], report["ini"], report["files"], report["commands"]};
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// The fields fleet tools read from every document, whatever the run's outcome.
void expectShape(const json& doc) {
    EXPECT_TRUE(doc["mode"].is_string() && doc["result"].is_string());
    EXPECT_TRUE(doc["exitCode"].is_number_integer() && doc["changed"].is_boolean());
    for (const char* list : {"problems", "progress", "registry", "ini", "files", "commands"}) {
        EXPECT_TRUE(doc[list].is_array()) << list;
    }
}

} // namespace

TEST(ApplyCommand, PlanShowsWhatTheRunDoesAndARerunOrAReplayedExportChangesNothing) {
    ApplyDemoTill demo;
    const std::string answers = demo.answers(kNewMerchant);
    const std::string before = demo.state();

    const CommandResult plan = demo.apply({"--answers", answers, "--plan", "--json"});
    ASSERT_EQ(plan.exitCode, 0) << plan.out << plan.err;
    EXPECT_TRUE(demo.state() == before) << "a plan changed the till";
    EXPECT_FALSE(fs::exists(demo.till.root() / "standin-calls.log")) << "a plan started a tool";

    const CommandResult run = demo.apply({"--answers", answers, "--json"});
    ASSERT_EQ(run.exitCode, 0) << run.out << run.err;
    const json done = parsed(run);
    EXPECT_EQ(addinValue("Acquirer"), "AIB");
    EXPECT_EQ(parsed(plan)["mode"], "plan");
    EXPECT_EQ(done["mode"], "run");
    EXPECT_EQ(effects(parsed(plan)), effects(done));
    EXPECT_TRUE(done["changed"].get<bool>());
    EXPECT_EQ(done["commands"].size(), 3u); // stop, database row, start
    expectShape(done);
    EXPECT_EQ(done["registry"][0]["key"], "HKEY_LOCAL_MACHINE\\SOFTWARE\\Tessaly\\ccaddin\\");
    for (const char* field : {"name", "old", "new", "changed"}) {
        EXPECT_TRUE(done["registry"][0].contains(field)) << field;
    }
    for (const char* field : {"file", "section", "key", "old", "new", "changed"}) {
        EXPECT_TRUE(done["ini"][0].contains(field)) << field;
    }

    // The same answers again: the always-written values are written once more, none changes,
    // and no tool runs.
    const json rerun = parsed(demo.apply({"--answers", answers, "--json"}));
    EXPECT_FALSE(rerun["changed"].get<bool>()) << rerun.dump(1);
    EXPECT_GE(rerun["registry"].size(), 10u);
    for (const char* list : {"registry", "ini", "files"}) {
        for (const json& write : rerun[list]) {
            EXPECT_FALSE(write["changed"].get<bool>()) << write.dump();
        }
    }
    EXPECT_TRUE(rerun["commands"].empty());
    EXPECT_EQ(effects(parsed(demo.apply({"--answers", answers, "--plan", "--json"}))),
              effects(rerun));

    // Every installed setting exported, then replayed as answers.
    const fs::path exported = demo.till.root() / "till.ini";
    ASSERT_EQ(demo.apply({"--export", exported.string()}).exitCode, 0);
    const std::string text = readBytes(exported);
    EXPECT_TRUE(has(text, "\r\nAcquirer=AIB\r\n") && has(text, "\r\nWindowsFontSize=")) << text;
    const CommandResult replay = demo.apply({"--answers", exported.string(), "--json"});
    ASSERT_EQ(replay.exitCode, 0) << replay.out;
    EXPECT_FALSE(parsed(replay)["changed"].get<bool>());
}

TEST(ApplyCommand, ExitCodesAndTheirMessages) {
    ApplyDemoTill demo;
    const std::string good = demo.answers(kNewMerchant);
    EXPECT_EQ(demo.apply({"--help"}).exitCode, 0);
    for (const std::vector<std::string>& bad :
         std::vector<std::vector<std::string>>{{},
                                               {"--answers"},
                                               {"--answers", good, "--tms", "weekly"},
                                               {"--answers", good, "--colour"},
                                               {"--export", "x.ini", "--plan"}}) {
        const CommandResult result = demo.apply(bad);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(bad);
        EXPECT_TRUE(has(result.err, "Usage:"));
    }
    EXPECT_EQ(demo.apply({"--answers", (demo.till.root() / "none.ini").string()}).exitCode, 2);

    // Refused answers change nothing, and each problem is named with its line; the Finish rule
    // speaks of the whole file, without one.
    const std::string before = demo.state();
    for (const auto& [text, lines, told] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {"Colour=blue\nMode=maybe\n", "[2,3]", ":3: Mode=maybe"},
             {"Acquirer=\n", "[null]", "would not allow Finish"}}) {
        const CommandResult refused =
            demo.apply({"--answers", demo.answers("[ccaddin]\n" + text), "--json"});
        EXPECT_EQ(refused.exitCode, 2) << text;
        EXPECT_TRUE(demo.state() == before) << text;
        const json doc = parsed(refused);
        expectShape(doc);
        EXPECT_EQ(doc["result"], "refused");
        json named = json::array();
        for (const json& problem : doc["problems"]) {
            named.push_back(problem["line"]);
        }
        EXPECT_EQ(named.dump(), lines) << refused.err;
        EXPECT_TRUE(has(refused.err, told)) << refused.err;
    }

    // A run that fails: the payment client's file cannot be written.
    const fs::path client = demo.programFolder() / "cxclientconfig.ini";
    fs::permissions(client, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const CommandResult failed = demo.apply({"--answers", good, "--json"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(parsed(failed)["result"], "failed");
    EXPECT_TRUE(has(failed.err, "\nConfiguration and installation failed.\n"));
    EXPECT_EQ(failed.err.find(parsed(failed)["error"].get<std::string>()), 0u);

    // A till that cannot be read.
    fs::remove(demo.till.root() / "registry.db");
    EXPECT_EQ(demo.apply({"--answers", good}).exitCode, 3);
    EXPECT_EQ(demo.apply({"--export", (demo.till.root() / "x.ini").string()}).exitCode, 3);
}

TEST(ApplyCommand, ReportsMarkEachWriteAndNeverShowThePassword) {
    ApplyDemoTill demo;
    // The run keeps an installed password, so an answer giving another is refused before
    // anything changes; an empty password gets its default; neither is ever shown.
    const std::string typed = demo.answers(kNewMerchant + "CorvixPassword=Tulip-Secret\n");
    const CommandResult refused = demo.apply({"--answers", typed, "--json"});
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(parsed(refused)["problems"][0]["line"], 6) << refused.out;
    EXPECT_EQ(addinValue("Acquirer") + " " + addinValue("CorvixPassword"), "Barclays k3stRel");
    TRegistry().SaveRegistryValue("SOFTWARE\\Tessaly\\ccaddin\\", "CorvixPassword", "");
    const std::string answers = demo.answers(kNewMerchant);
    const fs::path logDir = demo.till.root() / "reports";
    const std::vector<CommandResult> outputs{
        refused, demo.apply({"--answers", answers, "--plan"}),
        demo.apply({"--answers", answers, "--json", "--log-dir", logDir.string()}),
        demo.apply({"--answers", answers}),
        demo.apply({"--export", (demo.till.root() / "export.ini").string()})};
    EXPECT_EQ(addinValue("CorvixPassword"), "tulip");
    std::string shown = readBytes(demo.till.root() / "export.ini");
    for (const CommandResult& output : outputs) {
        shown += output.out + output.err;
    }
    for (const auto& kept : fs::directory_iterator(logDir)) {
        shown += readBytes(kept.path());
    }
    EXPECT_FALSE(has(shown, "Tulip-Secret"));
    EXPECT_FALSE(has(shown, "tulip"));
    EXPECT_FALSE(has(shown, "k3stRel")); // the demo till's installed password
    EXPECT_TRUE(has(shown, "CorvixPassword: \"***\" -> \"***\"  changed"));

    // The text report follows the run's progress and marks each write; a plan lists only the
    // registry values that would change.
    EXPECT_TRUE(has(outputs[3].out, "... Updating registry settings\n"));
    EXPECT_TRUE(has(outputs[3].out, "ccaddin\\ConfigFileName: \"cxclientconfig.ini\" -> "
                                    "\"cxclientconfig.ini\"  unchanged"));
    EXPECT_FALSE(has(outputs[1].out, "ccaddin\\ConfigFileName"));
}

TEST(ApplyCommand, TmsCallFollowsOnlyAFullyIntegratedRun) {
    ApplyDemoTill demo;
    const std::string script = "open C:\\Program Files\\Tessaly\\tmscall.vbs";
    const std::string answers = demo.answers(kNewMerchant + "[run]\ntms=logs\n");

    const json plan = parsed(demo.apply({"--answers", answers, "--plan", "--json"}));
    EXPECT_EQ(plan["commands"].back(), script + " 2");
    const json full = parsed(demo.apply({"--answers", answers, "--json", "--tms", "full"}));
    EXPECT_EQ(full["commands"].back(), script + " 1");
    const json none = parsed(demo.apply({"--answers", answers, "--json", "--tms", "none"}));
    EXPECT_TRUE(none["commands"].empty());

    const json semi = parsed(demo.apply(
        {"--answers", demo.answers("[ccaddin]\nSemiIntegrated=2\n"), "--json", "--tms", "full"}));
    EXPECT_EQ(semi["result"], "success");
    for (const json& command : semi["commands"]) {
        EXPECT_EQ(command.get<std::string>().find("open "), std::string::npos);
    }
}

// Answers that would break the till are refused with their line (0: the whole file), and the
// till stays exactly as it was.
TEST(ApplyCommand, AnswersThatWouldBreakTheTillAreRefusedBeforeAnythingChanges) {
    ApplyDemoTill demo;
    const std::string before = demo.state();
    const std::string nul("IdlePrompt1=AB\0CD\n", 18);
    const std::vector<std::tuple<std::string, int, std::string>> cases = {
        {"[ccaddin]\nCorvixMerchantId=1\":CreateObject(\"WScript.Shell\").Run \"calc\":x=\"\n", 2,
         "a double quote would end the text early"},
        {"[ccaddin]\n" + nul, 2, "a control character (code 0)"},
        {"[ccaddin]\nIdlePrompt2=AB\rCD\n", 2, "a control character (code 13)"},
        {"[ccaddin]\nIdlePrompt1=" + std::string(33, 'W') + "\n", 2, "at most 32"},
        {"[ccaddin]\nWindowsPrinterName=" + std::string(256, 'P') + "\n", 2, "at most 255"},
        {"", 0, "there is no [ccaddin] section"},
        {"[run]\ntms=full\n", 0, "there is no [ccaddin] section"},
        {"[ccaddin]\n; nothing\n", 0, "[ccaddin] names no setting"},
        {"[ccaddin]\nDccFormTitle=Rate\n", 2, "is not written by the configuration run"},
        {"[ccaddin]\nConfigFileLocation=C:\\Elsewhere\\\n", 2, "written with the run's own value"},
    };
    for (const auto& [text, line, told] : cases) {
        const CommandResult refused = demo.apply({"--answers", demo.answers(text), "--json"});
        EXPECT_EQ(refused.exitCode, 2) << text;
        const json doc = parsed(refused);
        ASSERT_FALSE(doc["problems"].empty()) << text;
        EXPECT_EQ(doc["problems"][0]["line"], line ? json(line) : json(nullptr)) << text;
        EXPECT_TRUE(has(doc["problems"][0]["message"].get<std::string>(), told)) << refused.out;
    }
    // Not a regular file, or one no answer file needs to be.
    const std::string big = demo.answers("[ccaddin]\n;" + std::string(1024 * 1024, 'x') + "\n");
    for (const std::string& file : {(demo.till.root()).string(), std::string("/dev/zero"), big}) {
        const CommandResult refused = demo.apply({"--answers", file});
        EXPECT_EQ(refused.exitCode, 2) << file;
        EXPECT_TRUE(has(refused.out, "the answer file is")) << refused.out;
    }
    EXPECT_TRUE(demo.state() == before) << "a refused answer file changed the till";

    // The installed profile gone from connectioninfo.ini: the run would blank the addresses.
    const fs::path profiles = demo.programFolder() / "connectioninfo.ini";
    std::string withoutInstalled = readBytes(profiles);
    withoutInstalled.replace(withoutInstalled.find("Barclays Live"), 13, "Barclays Gone");
    std::ofstream(profiles, std::ios::binary | std::ios::trunc) << withoutInstalled;
    const CommandResult gone =
        demo.apply({"--answers", demo.answers("[ccaddin]\nCashbackEnabled=1\n")});
    EXPECT_EQ(gone.exitCode, 2);
    EXPECT_TRUE(has(gone.out, "TessalyID=Barclays Live: not one of the live connection profiles"))
        << gone.out;
    EXPECT_EQ(addinValue("CashbackEnabled"), "0");
    // A file name in another code page still gives a JSON report.
    const fs::path odd = demo.till.root() / "caf\xE9.ini";
    fs::copy_file(demo.answers("[ccaddin]\nAcquirer=\n"), odd);
    const json named = parsed(demo.apply({"--answers", odd.string(), "--json"}));
    EXPECT_TRUE(has(named["answers"].get<std::string>(), "caf\xC3\xA9.ini"));
}

// One run at a time per till; the lock goes with the process that held it, however it ended.
TEST(ApplyCommand, ASecondRunIsRefusedWhileAnotherHoldsTheTill) {
    ApplyDemoTill demo;
    const std::string answers = demo.answers(kNewMerchant);
    const std::string before = demo.state();
    ChildProcess other = anotherRunHoldingTheTill();
    ASSERT_TRUE(other.waitReady());
    for (const bool plan : {false, true}) {
        const CommandResult refused =
            demo.apply(plan ? std::vector<std::string>{"--answers", answers, "--plan"}
                            : std::vector<std::string>{"--answers", answers});
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_TRUE(has(refused.out + refused.err, "another configuration run is in progress"))
            << refused.out << refused.err;
    }
    EXPECT_TRUE(demo.state() == before);
    other.kill();
    EXPECT_EQ(demo.apply({"--answers", answers}).exitCode, 0);
}

// A registry another program keeps locked for writing (readers may still read it) is seen before
// anything changes, by a plan too.
TEST(ApplyCommand, ARunThatWouldFailIsSeenBeforeAnythingChanges) {
    ApplyDemoTill demo;
    const std::string answers = demo.answers(kNewMerchant);
    const std::string before = demo.state();
    const fs::path registry = demo.till.root() / "registry.db";
    ChildProcess holder = anotherProgramLockingTheRegistry(registry, "BEGIN IMMEDIATE");
    ASSERT_TRUE(holder.waitReady());
    for (const char* mode : {"--plan", "--json"}) {
        const CommandResult refused = demo.apply({"--answers", answers, mode});
        EXPECT_EQ(refused.exitCode, 1) << mode;
        EXPECT_TRUE(has(refused.out + refused.err, "the registry cannot be written"))
            << refused.out;
        EXPECT_FALSE(has(refused.out, "Registry values written")) << refused.out;
    }
    holder.kill();
    EXPECT_TRUE(demo.state() == before);

    // Writes the run passes over when refused (the ZonTalk profiles) are read back and named.
    const fs::path zontalk = demo.programFolder() / "zontalkclient.ini";
    fs::permissions(zontalk, fs::perms::owner_write, fs::perm_options::remove);
    const CommandResult passedOver = demo.apply({"--answers", answers, "--json"});
    fs::permissions(zontalk, fs::perms::owner_write, fs::perm_options::add);
    EXPECT_EQ(passedOver.exitCode, 1);
    const json report = parsed(passedOver);
    ASSERT_FALSE(report["notHeld"].empty()) << passedOver.out;
    EXPECT_TRUE(has(report["notHeld"][0].get<std::string>(), "zontalkclient.ini ["))
        << passedOver.out;
    EXPECT_TRUE(has(report["error"].get<std::string>(), "did not hold when read back"));

    // A target the run could not write: the plan that goes first fails, and so nothing changes.
    const fs::path client = demo.programFolder() / "cxclientconfig.ini";
    fs::remove(client);
    fs::create_directory(client);
    const std::string withFolder = demo.state();
    const CommandResult failed = demo.apply({"--answers", answers});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(has(failed.err, "the till was not changed: a plan of the run fails")) << failed.err;
    EXPECT_TRUE(demo.state() == withFolder);
}
