#include "apply/apply_run.h"

#include "apply/folder_snapshot.h"
#include "configure/configure_tessaly.h"
#include "foundation/clock.h"
#include "foundation/event_pump.h"
#include "platform/scratch_till.h"
#include "tms/tms_call.h"

#include <memory>

namespace {

// A plan stops no service, so the run's pause before the device database changes has nothing to
// wait for: the plan's clock moves on by the pause instead of sleeping through it.
class PlanClock : public Clock {
public:
    PlanClock() : previous_(&currentClock()) { installClock(this); }
    ~PlanClock() override { installClock(previous_); }
    PlanClock(const PlanClock&) = delete;
    PlanClock& operator=(const PlanClock&) = delete;

    std::chrono::system_clock::time_point now() const override {
        return previous_->now() + skipped_;
    }
    void sleepFor(std::chrono::milliseconds duration) override { skipped_ += duration; }

private:
    Clock* previous_;
    std::chrono::milliseconds skipped_{0};
};

// The status texts, as the wizard's timer shows them while the run lets events run.
class StatusWatch {
public:
    StatusWatch(const TcOnfigureTessaly& run, RunOutcome& outcome,
                const std::function<void(const std::string&)>& onStatus)
        : run_(run), outcome_(outcome), onStatus_(onStatus) {
        installEventPump([this] { look(); });
    }
    ~StatusWatch() { installEventPump({}); }
    StatusWatch(const StatusWatch&) = delete;
    StatusWatch& operator=(const StatusWatch&) = delete;

    void look() {
        if (run_.strStatus.empty() || run_.strStatus == shown_) {
            return;
        }
        shown_ = run_.strStatus;
        outcome_.progress.push_back(shown_);
        if (onStatus_) {
            onStatus_(shown_);
        }
    }

private:
    const TcOnfigureTessaly& run_;
    RunOutcome& outcome_;
    const std::function<void(const std::string&)>& onStatus_;
    std::string shown_;
};

std::string withoutTrailingBackslash(std::string folder) {
    if (!folder.empty() && folder.back() == '\\') {
        folder.pop_back();
    }
    return folder;
}

// After a fully integrated run the wizard always rewrites the TMS script; the call itself is
// what its dialog (here the --tms choice) decides.
void tmsStep(const TCcAddinRegistry& settings, const std::string& programFolder, TmsChoice tms,
             RunOutcome& outcome) {
    TTmsCall call;
    call.UpdateTmsScript(settings.strCorvixMerchantId, settings.strCorvixClientId, programFolder,
                         settings.strbaseCurrency, settings.strAcquirer, settings.strFuelType,
                         !settings.bExternalSwipe, settings.strComPort, settings.strChipDeviceName);
    outcome.tmsScriptUpdated = true;
    if (tms != TmsChoice::None) {
        const int type = static_cast<int>(tms) - static_cast<int>(TmsChoice::Standard);
        call.DoTmsCall(settings.strConfigFileLocation, std::to_string(type));
    }
}

void runOnTill(const RunRequest& request, RunOutcome& outcome) {
    FolderSnapshot snapshot(request.programFolder);
    {
        ChangeRecorder recorder(outcome.changes, request.plan);
        TCcAddinRegistry installed = request.installed;
        TCcAddinRegistry settings = request.settings;
        TcOnfigureTessaly run;
        StatusWatch watch(run, outcome, request.onStatus);
        outcome.result =
            run.Configure(installed, settings, withoutTrailingBackslash(request.programFolder));
        watch.look();
        outcome.errorMessage = run.strErrorMessage;
        if (outcome.result == 0 && settings.lOperatingMode == 0) {
            tmsStep(settings, request.programFolder, request.tms, outcome);
        }
    }
    std::vector<std::string> reportedByKey{request.programFolder + std::string(kRunLogName)};
    for (const IniWrite& write : outcome.changes.ini) {
        reportedByKey.push_back(write.file);
    }
    outcome.changes.files = snapshot.writtenSince(reportedByKey);
}

} // namespace

RunOutcome runConfiguration(const RunRequest& request) {
    RunOutcome outcome;
    outcome.plan = request.plan;
    if (request.plan) {
        platform::ScratchTill scratch({request.programFolder});
        PlanClock clock;
        runOnTill(request, outcome);
    } else {
        runOnTill(request, outcome);
    }
    return outcome;
}
