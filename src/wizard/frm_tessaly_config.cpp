#include "wizard/frm_tessaly_config.h"

#include "configure/configure_tessaly.h"
#include "configure/merchant_choices.h"
#include "foundation/error_trap.h"
#include "foundation/logging.h"
#include "foundation/write_audit.h"
#include "parvane_version.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "tms/tms_call.h"
#include "wizard/control_rules.h"
#include "wizard/frm_tms.h"
#include "wizard/host.h"

#include <type_traits>

namespace wizard {
namespace {

const std::string kCaption(kWizardCaption);

// The version as the title has always shown it: one point, between major and minor, with the
// revision written straight after the minor number (1.2.7 reads v1.27).
std::string versionTitle() {
    return "Corvix Parvane Configuration Utility v" + std::to_string(kVersionMajor) + "." +
           std::to_string(kVersionMinor) + std::to_string(kVersionPatch);
}

std::string withBackslash(std::string folder) {
    if (!folder.empty() && folder.back() != '\\') {
        folder += '\\';
    }
    return folder;
}

// Runs `after` once the control's own handler (if any) has run.
void thenRun(std::function<void()>& event, const std::function<void()>& after) {
    event = [own = std::move(event), after] {
        if (own) {
            own();
        }
        after();
    };
}

// Every input control of a settings page ends its handlers with the Finish rule.
template <typename Page> void endWithFinishRule(Page& page, const std::function<void()>& rule) {
    forEachControl(page, [&](const ControlInfo& info, auto*& control) {
        using Kind = std::remove_pointer_t<std::remove_reference_t<decltype(control)>>;
        // Switching encryption does not re-check Finish: it cannot make the settings incomplete.
        if (info.name == "chkE2EE") {
            return;
        }
        if constexpr (std::is_same_v<Kind, ComboBox>) {
            thenRun(control->Click, rule);
            thenRun(control->Change, rule);
        } else if constexpr (std::is_same_v<Kind, TextBox>) {
            thenRun(control->Change, rule);
        } else if constexpr (std::is_same_v<Kind, CheckBox> || std::is_same_v<Kind, Button>) {
            thenRun(control->Click, rule);
        }
    });
}

// The texts the run carries into the TMS script's string literals, onto the device manager's
// command line and the device's display take no double quote and no control character: the box
// drops them as they are typed or pasted, as parvane-apply refuses them in an answer file.
void keepPlainText(TextBox& box) {
    std::string text = box.Text();
    std::erase_if(text, [](char c) {
        return c == '"' || static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
    });
    if (text != box.Text()) {
        box.SetText(text);
    }
}

} // namespace

frmTessalyConfig::frmTessalyConfig(WizardControls& controls, Host& host, std::string programFolder)
    : c_(controls), host_(host), programFolder_(withBackslash(std::move(programFolder))),
      installed_(std::make_unique<TCcAddinRegistry>()),
      merchant_(controls.merchant, programFolder_), general_(controls.general),
      receipt_(controls.receipt, host), chipPin_(controls.chipPin), display_(controls.display) {
    Wire();
}

frmTessalyConfig::~frmTessalyConfig() = default;

void frmTessalyConfig::Wire() {
    const auto finishRule = [this] { UpdateFinishButton(); };
    MerchantPageControls& m = c_.merchant;
    m.cboConfigMode->Click = [this] { cboConfigMode_Change(); };
    m.cboSemiIntegratedMode->Click = [this] { cboSemiIntegratedMode_Click(); };
    // Refilling the profiles selects the first one, whose own handler checks Finish. With no
    // profile to select nothing would, and Finish could stay open with no profile chosen.
    m.cboInstallType->Click = [this] {
        merchant_.RefillProfiles();
        if (c_.merchant.cboTessalyId->ListCount() == 0) {
            UpdateFinishButton();
        }
    };
    m.cboEposType->Click = [this] { cboEposType_Click(); };
    for (ComboBox* box :
         {m.cboAcquirer, m.cboCurrency, m.cboFuel, m.cboTessalyId, m.cboDevice, m.cboReceiptInfo}) {
        box->Click = finishRule;
    }
    for (TextBox* box : {m.txtCxMerchant, m.txtCxClient}) {
        box->Change = [box, finishRule] {
            keepPlainText(*box);
            finishRule();
        };
    }
    for (TextBox* box : {c_.chipPin.txtIdlePrompt1, c_.chipPin.txtIdlePrompt2}) {
        box->Change = [box] { keepPlainText(*box); };
    }
    endWithFinishRule(c_.general, finishRule);
    endWithFinishRule(c_.receipt, finishRule);
    endWithFinishRule(c_.chipPin, finishRule);
    endWithFinishRule(c_.display, finishRule);

    c_.cmdBack->Click = [this] { ShowPage(currentPage_ - 1); };
    c_.cmdNext->Click = [this] { ShowPage(currentPage_ + 1); };
    c_.cmdfInish->Click = [this] { cmdfInish_Click(); };
    c_.cmdClose->Click = [this] {
        if (QueryUnload()) {
            host_.UnloadMainForm();
        }
    };
    c_.tmrStatus->Tick = [this] { tmrStatus_Timer(); };
}

void frmTessalyConfig::Form_Load() {
    quietly([this] {
        c_.Label1->SetCaption(versionTitle());
        ShowPage(0);
        FillLists();
        LoadSettings();
        UpdateFinishButton();
        // Finish waits for the user's first change, however complete the stored settings are.
        c_.cmdfInish->SetEnabled(false);
    });
}

// Closing ends the program without asking and saves nothing; while a run is in progress the
// window cannot be closed, as Close itself is disabled then.
bool frmTessalyConfig::QueryUnload() const {
    return !running_;
}

void frmTessalyConfig::ShowPage(std::int32_t page) {
    quietly([&] {
        if (page >= 0 && page <= 6) {
            for (int i = 0; i < 7; ++i) {
                c_.fraInstall[static_cast<std::size_t>(i)]->SetVisible(i == page);
            }
            // Pages 2 and 4 leave Back as it was: they can only be reached from a page with Back.
            struct Buttons {
                bool next;
                int back; // 0 disabled, 1 enabled, -1 unchanged
            };
            constexpr Buttons kButtons[] = {{true, 0},  {true, 1},  {true, -1}, {true, 1},
                                            {true, -1}, {false, 1}, {false, 0}};
            c_.cmdNext->SetEnabled(kButtons[page].next);
            if (kButtons[page].back >= 0) {
                c_.cmdBack->SetEnabled(kButtons[page].back == 1);
            }
        }
        currentPage_ = page;
    });
}

void frmTessalyConfig::FillLists() {
    quietly([this] {
        merchant_.FillLists();
        general_.FillLists();
        receipt_.FillLists();
        chipPin_.FillLists();
        display_.FillLists();
    });
}

void frmTessalyConfig::LoadSettings() {
    quietly([this] {
        installed_ = std::make_unique<TCcAddinRegistry>();
        installed_->ReadRegistry();
        merchant_.Load(*installed_);
        general_.Load(*installed_);
        receipt_.Load(*installed_);
        chipPin_.Load(*installed_);
        display_.Load(*installed_);
    });
}

void frmTessalyConfig::SaveSettings() {
    new_ = std::make_unique<TCcAddinRegistry>();
    merchant_.Save(*new_);
    general_.Save(*new_);
    receipt_.Save(*new_);
    chipPin_.Save(*new_);
    display_.Save(*new_);
}

// The rule itself is shared with the unattended front end's answer check.
void frmTessalyConfig::UpdateFinishButton() {
    quietly([this] {
        merchant_choices::FinishInputs inputs;
        inputs.configMode = c_.merchant.cboConfigMode->Text();
        inputs.acquirer = c_.merchant.cboAcquirer->Text();
        inputs.currency = c_.merchant.cboCurrency->Text();
        inputs.device = c_.merchant.cboDevice->Text();
        inputs.port = c_.chipPin.cboPort->Text();
        inputs.tessalyId = c_.merchant.cboTessalyId->Text();
        c_.cmdfInish->SetEnabled(merchant_choices::finishAllowed(inputs));
    });
}

void frmTessalyConfig::ApplyFullyIntegrated() {
    EnableControl(false, *c_.merchant.cboSemiIntegratedMode);
    EnableControl(false, *c_.merchant.cboReceiptInfo);
    general_.ApplyMode(true);
}

void frmTessalyConfig::ApplySemiIntegrated() {
    EnableControl(true, *c_.merchant.cboSemiIntegratedMode);
    EnableControl(true, *c_.merchant.cboReceiptInfo);
    general_.ApplyMode(false);
}

void frmTessalyConfig::cboConfigMode_Change() {
    quietly([this] {
        if (merchant_.SemiIntegrated()) {
            ApplySemiIntegrated();
        } else {
            ApplyFullyIntegrated();
        }
        cboSemiIntegratedMode_Click();
        UpdateFinishButton();
    });
}

void frmTessalyConfig::cboSemiIntegratedMode_Click() {
    quietly([this] {
        if (merchant_.SemiIntegrated()) {
            if (merchant_.ReceiptOnTerminal()) {
                EnableControl(false, *c_.merchant.cboReceiptInfo);
            } else {
                EnableControl(true, *c_.merchant.cboReceiptInfo);
                ApplySemiIntegrated();
            }
        }
        UpdateFinishButton();
    });
}

// Only the enabled flag changes here, not the grey background: this handler has never gone
// through EnableControl, and an RMS V3 till loses the printer number although it is an RMS till.
void frmTessalyConfig::cboEposType_Click() {
    quietly([this] {
        c_.receipt.cboRmsPrinterNo->SetEnabled(merchant_.RmsV2Till());
        UpdateFinishButton();
    });
}

void frmTessalyConfig::cmdfInish_Click() {
    if (running_) {
        return;
    }
    if (!TakeRunLock()) {
        return;
    }
    quietly([this] {
        ShowPage(6);
        c_.cmdClose->SetEnabled(false);
        c_.capstatus->SetCaption("");
        c_.cmdfInish->SetEnabled(false);
        c_.ProgressBar1->SetValue(0);
        SaveSettings();
        host_.SetMousePointer(MousePointer::Hourglass);
        RunConfiguration();
    });
    running_ = false;
    c_.cmdfInish->SetEnabled(false);
    quietly([this] { installed_->ReadRegistry(); });
    c_.cmdClose->SetEnabled(true);
    ShowPage(0);
    host_.SetMousePointer(MousePointer::Default);
    platform::releaseRunLock();
}

// Another wizard or parvane-apply configuring this till keeps this one on its page.
bool frmTessalyConfig::TakeRunLock() {
    std::string problem = "Another configuration run is in progress on this till. Try again "
                          "when it has finished.";
    try {
        if (platform::takeRunLock()) {
            return true;
        }
    } catch (const std::exception& e) {
        problem = e.what();
    }
    host_.MsgBox(problem, MessageIcon::Exclamation, kCaption);
    return false;
}

void frmTessalyConfig::RunConfiguration() {
    run_ = std::make_unique<TcOnfigureTessaly>();
    c_.tmrStatus->SetInterval(100);
    c_.tmrStatus->SetEnabled(true);
    running_ = true;
    const WriteAudit audit;
    const std::int32_t result = run_->Configure(*installed_, *new_, ProgramFolderPath());
    running_ = false;
    if (result != 0) {
        host_.MsgBox(run_->strErrorMessage + "\r\nConfiguration and installation failed.",
                     MessageIcon::Exclamation, kCaption);
        return;
    }
    const std::vector<std::string> notHeld = audit.notHeld();
    ShowPage(0);
    host_.SetMousePointer(MousePointer::Default);
    if (new_->lOperatingMode != 0) {
        host_.MsgBox("Configuration and installation successful.", MessageIcon::Information,
                     kCaption);
    } else {
        OfferTmsCall();
    }
    WarnOfWritesNotHeld(notHeld);
}

// The run's own message has been shown; what it asked to write but the till does not hold is
// logged and listed after it.
void frmTessalyConfig::WarnOfWritesNotHeld(const std::vector<std::string>& notHeld) {
    if (notHeld.empty()) {
        return;
    }
    Logging log;
    log.strLogPath = ProgramFolderPath();
    log.strLogFile = "TessalyConfig.log";
    log.bLoggingEnabled = true;
    std::string text = "Read back after the run, these settings did not hold:";
    for (const std::string& write : notHeld) {
        log.Logit("Read back after the run, this did not hold: " + write);
        text += "\r\n" + write;
    }
    host_.MsgBox(text, MessageIcon::Exclamation, kCaption);
}

void frmTessalyConfig::OfferTmsCall() {
    TTmsCall tms;
    tms.UpdateTmsScript(new_->strCorvixMerchantId, new_->strCorvixClientId, ProgramFolderPath(),
                        new_->strbaseCurrency, new_->strAcquirer, new_->strFuelType,
                        !new_->bExternalSwipe, new_->strComPort, new_->strChipDeviceName);
    TmsTypeSelected = -1;
    frmTms dialog;
    host_.ShowModal(dialog);
    if (TmsTypeSelected >= 0) {
        tms.DoTmsCall(new_->strConfigFileLocation, std::to_string(TmsTypeSelected));
    }
}

// The timer keeps reading the finished run's counters, which no longer change.
void frmTessalyConfig::tmrStatus_Timer() {
    quietly([this] {
        if (run_) {
            SetProgress(*c_.ProgressBar1, 0, 100, run_->lJobsDone, run_->lTotalJobsToDo);
            c_.capstatus->SetCaption(run_->strStatus);
        }
    });
}

// No jobs counted yet, or more done than announced: the bar stays where it is.
void frmTessalyConfig::SetProgress(ProgressBar& bar, int min, int max, std::int32_t done,
                                   std::int32_t total) {
    bar.SetMin(min);
    bar.SetMax(max);
    if (total < 1) {
        return;
    }
    const double value = static_cast<double>(done) / static_cast<double>(total) * max;
    if (value <= max) {
        bar.SetValue(static_cast<int>(value));
    }
}

// The program folder as the run and the script expect it: without the final separator.
std::string frmTessalyConfig::ProgramFolderPath() const {
    std::string folder = programFolder_;
    if (!folder.empty() && folder.back() == '\\') {
        folder.pop_back();
    }
    return folder;
}

} // namespace wizard
