// The wizard: a fixed row of pages with Back, Next, Finish and Close. Finish builds the new
// settings from the pages, runs the configuration with a live progress page, reports the outcome
// and, after a fully integrated run, offers the terminal-management call.
#pragma once

#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>
#include <string>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;
class TCcAddinRegistry;
class TcOnfigureTessaly;
class WizardPage;
class WelcomePage;
class MerchantPage;
class GeneralPage;
class ReceiptPage;
class ChipPinPage;
class DisplayPage;
class ProgressPage;

class frmTessalyConfig : public QWidget {
public:
    // `programFolder` ends in "\": where the data files are and the run writes its log; by
    // default the folder of the executable.
    explicit frmTessalyConfig(std::string programFolder = {}, QWidget* parent = nullptr);
    ~frmTessalyConfig() override;

    // Shows page 0 to 6 and sets Back and Next for it; any other number changes no control.
    void ShowPage(std::int32_t page);
    void UpdateFinishButton();
    // Builds the new settings from the controls, as Finish does before the run.
    void SaveSettings();
    static void SetProgress(QProgressBar* bar, int min, int max, std::int32_t done,
                            std::int32_t total);

    std::int32_t currentPage() const { return currentPage_; }
    QWidget* fraInstall(int index) const;
    const TCcAddinRegistry& installedSettings() const { return *installed_; }
    // The settings built by the last Finish (null before the first).
    const TCcAddinRegistry* newSettings() const { return new_.get(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildWindow();
    void wireHandlers();
    void FillLists();
    void LoadSettings();
    void ApplyFullyIntegrated();
    void ApplySemiIntegrated();
    void cboConfigMode_Change();
    void cboSemiIntegratedMode_Click();
    void cboEposType_Click();
    void cmdfInish_Click();
    void runConfiguration();
    void offerTmsCall();
    void tmrStatus_Timer();
    std::string programFolderPath() const;

    std::string programFolder_;
    std::int32_t currentPage_ = 0;
    bool running_ = false;
    std::unique_ptr<TCcAddinRegistry> installed_;
    std::unique_ptr<TCcAddinRegistry> new_;
    std::unique_ptr<TcOnfigureTessaly> run_;

    WelcomePage* welcome_;
    MerchantPage* merchant_;
    GeneralPage* general_;
    ReceiptPage* receipt_;
    ChipPinPage* chipPin_;
    DisplayPage* display_;
    ProgressPage* progress_;
    std::array<WizardPage*, 7> pages_{};

    QPushButton* cmdBack;
    QPushButton* cmdNext;
    QPushButton* cmdfInish;
    QPushButton* cmdClose;
    QTimer* tmrStatus;
};
