#include "apply/apply_command.h"

#include "apply/answer_check.h"
#include "apply/answer_export.h"
#include "apply/apply_report.h"
#include "foundation/clock.h"
#include "foundation/write_audit.h"
#include "parvane_version.h"
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "platform/scratch_till.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>

namespace {

constexpr std::string_view kUsage =
    R"(Usage: parvane-apply --answers FILE [--plan] [--json] [--tms none|standard|full|logs]
                     [--log-dir DIR]
       parvane-apply --export FILE
       parvane-apply --help | --version

Applies an answer file to this till the way the wizard's Finish button would: the installed
settings are read, the settings the file names are laid over them, and the same configuration
run is made. The program folder (this program's folder) holds the profile files it reads and
the log TessalyConfig.log it writes.

  --answers FILE  INI file: [ccaddin] with the add-in's registry value names and their
                  registry text ("1"/"0", digits, text); optional [run] with tms=.
  --plan          change nothing and start nothing; show what the run would write and start.
  --json          print one JSON document instead of text.
  --tms KIND      after a successful fully integrated run: none (default), standard, full
                  (force a full download) or logs (upload the device's log files).
  --log-dir DIR   also keep the report as a file in DIR (a folder of this machine).
  --export FILE   write the till's installed settings as an answer file (without the password).

Exit codes: 0 success, 1 the configuration run failed, 2 bad arguments or answers,
3 the till could not be read.
)";

struct Options {
    std::string answers;
    std::string exportFile;
    std::string logDir;
    std::optional<TmsChoice> tms;
    bool plan = false;
    bool json = false;
    bool help = false;
    bool version = false;
};

std::optional<std::string> parseOptions(const std::vector<std::string>& arguments,
                                        Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const auto value = [&](std::string& into) -> std::optional<std::string> {
            if (i + 1 >= arguments.size()) {
                return argument + " needs a value";
            }
            into = arguments[++i];
            return std::nullopt;
        };
        std::optional<std::string> problem;
        std::string tms;
        if (argument == "--answers") {
            problem = value(options.answers);
        } else if (argument == "--export") {
            problem = value(options.exportFile);
        } else if (argument == "--log-dir") {
            problem = value(options.logDir);
        } else if (argument == "--tms") {
            problem = value(tms);
            if (!problem && !(options.tms = tmsChoiceFromText(tms))) {
                problem = "--tms " + tms + ": expected none, standard, full or logs";
            }
        } else if (argument == "--plan") {
            options.plan = true;
        } else if (argument == "--json") {
            options.json = true;
        } else if (argument == "--help" || argument == "-h") {
            options.help = true;
        } else if (argument == "--version") {
            options.version = true;
        } else {
            problem = "unknown argument " + argument;
        }
        if (problem) {
            return problem;
        }
    }
    if (options.help || options.version) {
        return std::nullopt;
    }
    if (options.answers.empty() == options.exportFile.empty()) {
        return "give either --answers FILE or --export FILE";
    }
    if (!options.exportFile.empty() && (options.plan || options.tms || !options.logDir.empty())) {
        return "--export takes no other option";
    }
    return std::nullopt;
}

// The till is readable when its registry store opens and the program folder exists.
std::string tillFault(const std::string& programFolder) {
    try {
        if (programFolder.empty()) {
            return "the program folder could not be found";
        }
        platform::RegKey hive = 0;
        if (platform::regOpenKey("", hive) != platform::kErrorSuccess) {
            return "there is no registry store on this till";
        }
        platform::regCloseKey(hive);
        if (!std::filesystem::is_directory(platform::hostPath(programFolder))) {
            return "the program folder " + programFolder + " does not exist";
        }
        return "";
    } catch (const std::exception& e) {
        return e.what();
    }
}

constexpr std::uintmax_t kLargestAnswerFile = 1024 * 1024;

// The answer file's bytes, or nothing with `problem` saying why. Only a regular file of at most
// a mebibyte is read: a folder, a device or a pipe could block or never end.
std::optional<std::string> readAnswerFile(const std::string& path, std::string& problem) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error || !fs::exists(status)) {
        problem = "the answer file cannot be read";
    } else if (!fs::is_regular_file(status)) {
        problem = "the answer file is not a regular file";
    } else if (fs::file_size(path, error) > kLargestAnswerFile || error) {
        problem = "the answer file is larger than 1 MiB, which no answer file needs";
    } else {
        std::ifstream in(path, std::ios::binary);
        std::string bytes(static_cast<std::size_t>(fs::file_size(path, error)), '\0');
        if (in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
            return bytes;
        }
        problem = "the answer file cannot be read";
    }
    return std::nullopt;
}

void keepReport(const std::string& logDir, const std::string& text, std::ostream& err) {
    const DateTime now = localNow();
    const std::string name = "parvane-apply_" + formatYmd(now) + "_" + formatHms(now) + ".log";
    std::error_code ignored;
    std::filesystem::create_directories(logDir, ignored);
    std::ofstream file(std::filesystem::path(logDir) / name, std::ios::binary);
    file << text;
    if (!file) {
        err << "parvane-apply: the report could not be kept in " << logDir << "\n";
    }
}

// Held for the whole command, plan included: a plan copies the till, which must not be half
// way through another run's writes.
struct RunLock {
    std::string problem; // empty while the lock is held
    RunLock() {
        try {
            if (!platform::takeRunLock()) {
                problem = std::string(kAnotherRun);
            }
        } catch (const std::exception& e) {
            problem = e.what();
        }
    }
    ~RunLock() {
        if (problem.empty()) {
            platform::releaseRunLock();
        }
    }
    RunLock(const RunLock&) = delete;
    RunLock& operator=(const RunLock&) = delete;
};

class Command {
public:
    Command(const Options& options, const std::string& programFolder, std::ostream& out,
            std::ostream& err)
        : options_(options), folder_(programFolder), out_(out), err_(err) {
        report_.plan = options.plan;
        report_.answersFile = options.answers;
    }

    int run() {
        if (!(report_.fault = tillFault(folder_)).empty()) {
            return finish(ApplyExit::TillUnreadable);
        }
        const RunLock lock;
        if (!lock.problem.empty()) {
            report_.fault = lock.problem;
            return finish(ApplyExit::TillUnreadable);
        }
        std::string problem;
        const std::optional<std::string> bytes = readAnswerFile(options_.answers, problem);
        if (!bytes) {
            report_.problems.push_back({0, problem});
            return finish(ApplyExit::BadAnswers);
        }
        const Answers answers = parseAnswers(*bytes, report_.problems);
        report_.tms = options_.tms.value_or(answers.tms.value_or(TmsChoice::None));
        RunRequest request;
        request.installed.ReadRegistry();
        request.settings = request.installed;
        for (AnswerProblem& problem : applyAnswers(answers, folder_, request.settings)) {
            report_.problems.push_back(std::move(problem));
        }
        putInFileOrder(report_.problems);
        if (!report_.problems.empty()) {
            return finish(ApplyExit::BadAnswers);
        }
        request.programFolder = folder_;
        request.tms = report_.tms;
        if (const std::string fault = platform::registryWriteFault(std::string(kCcAddinKeyPath));
            !fault.empty()) {
            // The plan works on a copy, which can always be written; the till's registry cannot.
            RunOutcome refused;
            refused.plan = options_.plan;
            refused.result = 1;
            refused.errorMessage = "the registry cannot be written: " + fault;
            report_.outcome = refused;
            return finish(ApplyExit::RunFailed);
        }
        try {
            if (!options_.plan && !platform::ScratchTill::available()) {
                runWithoutPlan(answers, request);
            } else if (!planThenRun(answers, request)) {
                return finish(ApplyExit::BadAnswers);
            }
        } catch (const std::exception& e) {
            report_.fault = e.what();
            return finish(ApplyExit::TillUnreadable);
        }
        if (!report_.notHeld.empty()) {
            report_.outcome->result = 1;
            report_.outcome->errorMessage = std::to_string(report_.notHeld.size()) +
                                            " of the run's writes did not hold when read back";
        }
        return finish(report_.outcome->result == 0 ? ApplyExit::Success : ApplyExit::RunFailed);
    }

private:
    void showProgress(RunRequest& request) {
        if (!options_.json) {
            request.onStatus = [this](const std::string& status) {
                out_ << "... " << status << "\n" << std::flush;
            };
        }
    }

    // Only the run itself knows what it would leave unapplied and where it would fail, so a plan
    // goes first and the till is changed only when the plan holds no surprise. False when the
    // plan shows answers the run would not apply (they are the report's problems).
    bool planThenRun(const Answers& answers, RunRequest request) {
        request.plan = true;
        report_.outcome = runConfiguration(request);
        if (report_.outcome->result == 0) {
            report_.problems =
                unappliedAnswers(answers, request.installed, report_.outcome->changes);
            if (!report_.problems.empty()) {
                report_.outcome.reset();
                return false;
            }
        }
        if (options_.plan) {
            return true;
        }
        if (report_.outcome->result != 0) {
            // What the plan wrote was only its copy's: the report shows none of it.
            report_.outcome->changes = {};
            report_.outcome->errorMessage =
                "the till was not changed: a plan of the run fails with " +
                report_.outcome->errorMessage;
            return true;
        }
        request.plan = false;
        showProgress(request);
        runAudited(request);
        return true;
    }

    // The real run, with every value it asked to write read back afterwards.
    void runAudited(const RunRequest& request) {
        const WriteAudit audit;
        report_.outcome = runConfiguration(request);
        if (report_.outcome->result == 0) {
            report_.notHeld = audit.notHeld();
        }
    }

    // Where no plan can be made (Windows, whose registry cannot be copied aside) the run goes
    // ahead; what it did not apply or did not hold is named after it.
    void runWithoutPlan(const Answers& answers, RunRequest request) {
        request.plan = false;
        showProgress(request);
        runAudited(request);
        if (report_.outcome->result != 0) {
            return;
        }
        for (const AnswerProblem& answer :
             unappliedAnswers(answers, request.installed, report_.outcome->changes)) {
            report_.notHeld.push_back(report_.answersFile + ":" + std::to_string(answer.line) +
                                      ": " + answer.message);
        }
    }

    int finish(ApplyExit exit) {
        report_.exit = exit;
        const std::string text = reportText(report_);
        out_ << (options_.json ? reportJson(report_) : text);
        if (exit == ApplyExit::RunFailed) {
            err_ << cp1252::toUtf8(report_.outcome->errorMessage) << "\n" << kRunFailedLine << "\n";
        } else if (exit != ApplyExit::Success && options_.json) {
            err_ << text;
        }
        if (!options_.logDir.empty()) {
            keepReport(options_.logDir, text, err_);
        }
        return static_cast<int>(exit);
    }

    const Options& options_;
    std::string folder_;
    std::ostream& out_;
    std::ostream& err_;
    ApplyReport report_;
};

int exportCommand(const Options& options, const std::string& programFolder, std::ostream& out,
                  std::ostream& err) {
    if (const std::string fault = tillFault(programFolder); !fault.empty()) {
        err << "parvane-apply: the till could not be read: " << fault << "\n";
        return static_cast<int>(ApplyExit::TillUnreadable);
    }
    TCcAddinRegistry installed;
    installed.ReadRegistry();
    std::ofstream file(options.exportFile, std::ios::binary | std::ios::trunc);
    file << exportAnswers(installed);
    file.close();
    if (!file) {
        err << "parvane-apply: cannot write " << options.exportFile << "\n";
        return static_cast<int>(ApplyExit::BadAnswers);
    }
    out << "Wrote the installed settings to " << options.exportFile << "\n";
    return static_cast<int>(ApplyExit::Success);
}

} // namespace

int applyCommand(const std::vector<std::string>& arguments, const std::string& programFolder,
                 std::ostream& out, std::ostream& err) {
    Options options;
    if (const std::optional<std::string> problem = parseOptions(arguments, options)) {
        err << "parvane-apply: " << *problem << "\n\n" << kUsage;
        return static_cast<int>(ApplyExit::BadAnswers);
    }
    if (options.help) {
        out << kUsage;
        return 0;
    }
    if (options.version) {
        out << "parvane-apply " << kVersionMajor << "." << kVersionMinor << "." << kVersionPatch
            << "\n";
        return 0;
    }
    if (!options.exportFile.empty()) {
        return exportCommand(options, programFolder, out, err);
    }
    return Command(options, programFolder, out, err).run();
}
