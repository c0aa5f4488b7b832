// The wizard: a fixed row of pages with Back, Next, Finish and Close. Finish builds the new
// settings from the pages, runs the configuration with a live progress page, reports the outcome
// and, after a fully integrated run, offers the terminal-management call. Written once, over the
// abstract controls a face binds; every rule of the window lives here.
#pragma once

#include "wizard/chip_pin_page.h"
#include "wizard/control_set.h"
#include "wizard/display_page.h"
#include "wizard/general_page.h"
#include "wizard/merchant_page.h"
#include "wizard/receipt_page.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class TCcAddinRegistry;
class TcOnfigureTessaly;

namespace wizard {

class Host;

class frmTessalyConfig {
public:
    // Every slot of `controls` bound. `programFolder` is where the data files are and the run
    // writes its log (a trailing "\" is added when missing).
    frmTessalyConfig(WizardControls& controls, Host& host, std::string programFolder);
    ~frmTessalyConfig();
    frmTessalyConfig(const frmTessalyConfig&) = delete;
    frmTessalyConfig& operator=(const frmTessalyConfig&) = delete;

    // Start-up: the versioned title, page 0, the lists, the installed settings; Finish off.
    void Form_Load();
    // Asked before the window closes by any means: false while a run is in progress.
    bool QueryUnload() const;

    // Shows page 0 to 6 and sets Back and Next for it; any other number changes no control.
    void ShowPage(std::int32_t page);
    void UpdateFinishButton();
    // Builds the new settings from the controls, as Finish does before the run.
    void SaveSettings();
    static void SetProgress(ProgressBar& bar, int min, int max, std::int32_t done,
                            std::int32_t total);

    std::int32_t CurrentPage() const { return currentPage_; }
    const TCcAddinRegistry& InstalledSettings() const { return *installed_; }
    // The settings built by the last Finish (null before the first).
    const TCcAddinRegistry* NewSettings() const { return new_.get(); }

private:
    void Wire();
    void FillLists();
    void LoadSettings();
    void ApplyFullyIntegrated();
    void ApplySemiIntegrated();
    void cboConfigMode_Change();
    void cboSemiIntegratedMode_Click();
    void cboEposType_Click();
    void cmdfInish_Click();
    bool TakeRunLock();
    void WarnOfWritesNotHeld(const std::vector<std::string>& notHeld);
    void RunConfiguration();
    void OfferTmsCall();
    void tmrStatus_Timer();
    std::string ProgramFolderPath() const;

    WizardControls& c_;
    Host& host_;
    std::string programFolder_;
    std::int32_t currentPage_ = 0;
    bool running_ = false;
    std::unique_ptr<TCcAddinRegistry> installed_;
    std::unique_ptr<TCcAddinRegistry> new_;
    std::unique_ptr<TcOnfigureTessaly> run_;
    MerchantPage merchant_;
    GeneralPage general_;
    ReceiptPage receipt_;
    ChipPinPage chipPin_;
    DisplayPage display_;
};

} // namespace wizard
