#include "ui/frm_tessaly_config.h"

#include "configure/configure_tessaly.h"
#include "configure/merchant_choices.h"
#include "foundation/event_pump.h"
#include "platform/platform.h"
#include "settings/ccaddin_registry.h"
#include "tms/tms_call.h"
#include "ui/chip_pin_page.h"
#include "ui/display_page.h"
#include "ui/frm_tms.h"
#include "ui/general_page.h"
#include "ui/merchant_page.h"
#include "ui/progress_page.h"
#include "ui/receipt_page.h"
#include "ui/ui_text.h"
#include "ui/welcome_page.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr const char* kCaption = "Corvix Parvane Configuration Utility ";

// The version as the title has always shown it: one point, between major and minor, with the
// revision written straight after the minor number (1.2.7 reads v1.27).
QString versionTitle() {
    return QString("Corvix Parvane Configuration Utility v%1.%2%3")
        .arg(PARVANE_VERSION_MAJOR)
        .arg(PARVANE_VERSION_MINOR)
        .arg(PARVANE_VERSION_PATCH);
}

void setHourglass(bool busy) {
    while (QApplication::overrideCursor() != nullptr) {
        QApplication::restoreOverrideCursor();
    }
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
}
} // namespace

frmTessalyConfig::frmTessalyConfig(std::string programFolder, QWidget* parent)
    : QWidget(parent),
      programFolder_(programFolder.empty() ? platform::programFolder() : std::move(programFolder)),
      installed_(std::make_unique<TCcAddinRegistry>()), welcome_(new WelcomePage),
      merchant_(new MerchantPage), general_(new GeneralPage), receipt_(new ReceiptPage),
      chipPin_(new ChipPinPage), display_(new DisplayPage), progress_(new ProgressPage),
      cmdBack(new QPushButton("<< &Back")), cmdNext(new QPushButton("&Next >>")),
      cmdfInish(new QPushButton("&Finish")), cmdClose(new QPushButton("&Close")),
      tmrStatus(new QTimer(this)) {
    if (!programFolder_.empty() && programFolder_.back() != '\\') {
        programFolder_ += '\\';
    }
    pages_ = {welcome_, merchant_, general_, receipt_, chipPin_, display_, progress_};
    // The run hands control back between its jobs; this is where the progress page gets it.
    installEventPump([] { QCoreApplication::processEvents(); });
    buildWindow();
    wireHandlers();
    try {
        welcome_->Label1->setText(versionTitle());
        ShowPage(0);
        FillLists();
        LoadSettings();
        UpdateFinishButton();
        // Finish waits for the user's first change, however complete the stored settings are.
        cmdfInish->setEnabled(false);
    } catch (...) {
    }
}

frmTessalyConfig::~frmTessalyConfig() {
    installEventPump({});
}

void frmTessalyConfig::buildWindow() {
    setObjectName("frmTessalyConfig");
    setWindowTitle(kCaption);
    cmdBack->setObjectName("cmdBack");
    cmdNext->setObjectName("cmdNext");
    cmdfInish->setObjectName("cmdfInish");
    cmdClose->setObjectName("cmdClose");
    tmrStatus->setObjectName("tmrStatus");

    auto* layout = new QVBoxLayout(this);
    for (WizardPage* page : pages_) {
        layout->addWidget(page, 1);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {cmdBack, cmdNext, cmdfInish, cmdClose}) {
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    resize(780, 540);
}

void frmTessalyConfig::wireHandlers() {
    MerchantPage* m = merchant_;
    auto finishRule = [this] { UpdateFinishButton(); };
    connect(m->cboConfigMode, &QComboBox::currentIndexChanged, this,
            [this] { cboConfigMode_Change(); });
    connect(m->cboSemiIntegratedMode, &QComboBox::currentIndexChanged, this,
            [this] { cboSemiIntegratedMode_Click(); });
    // Refilling the profiles selects the first one, whose own handler checks Finish.
    connect(m->cboInstallType, &QComboBox::currentIndexChanged, this,
            [this] { merchant_->refillProfiles(programFolder_); });
    connect(m->cboEposType, &QComboBox::currentIndexChanged, this, [this] { cboEposType_Click(); });
    for (QComboBox* box : {m->cboAcquirer, m->cboCurrency, m->cboFuel, m->cboTessalyId,
                           m->cboDevice, m->cboReceiptInfo}) {
        connect(box, &QComboBox::currentIndexChanged, this, finishRule);
    }
    for (QLineEdit* text : {m->txtCxMerchant, m->txtCxClient}) {
        connect(text, &QLineEdit::textChanged, this, finishRule);
    }
    for (WizardPage* page :
         std::initializer_list<WizardPage*>{general_, receipt_, chipPin_, display_}) {
        page->edited = finishRule;
    }

    connect(cmdBack, &QPushButton::clicked, this, [this] { ShowPage(currentPage_ - 1); });
    connect(cmdNext, &QPushButton::clicked, this, [this] { ShowPage(currentPage_ + 1); });
    connect(cmdfInish, &QPushButton::clicked, this, [this] { cmdfInish_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, [this] { close(); });
    connect(tmrStatus, &QTimer::timeout, this, [this] { tmrStatus_Timer(); });
}

QWidget* frmTessalyConfig::fraInstall(int index) const {
    return index >= 0 && index < static_cast<int>(pages_.size()) ? pages_[index] : nullptr;
}

void frmTessalyConfig::ShowPage(std::int32_t page) {
    try {
        if (page >= 0 && page <= 6) {
            for (int i = 0; i < 7; ++i) {
                pages_[i]->setVisible(i == page);
            }
            // Pages 2 and 4 leave Back as it was: it can only be reached from a page with Back.
            struct Buttons {
                bool next;
                int back; // 0 disabled, 1 enabled, -1 unchanged
            };
            constexpr Buttons kButtons[] = {{true, 0},  {true, 1},  {true, -1}, {true, 1},
                                            {true, -1}, {false, 1}, {false, 0}};
            cmdNext->setEnabled(kButtons[page].next);
            if (kButtons[page].back >= 0) {
                cmdBack->setEnabled(kButtons[page].back == 1);
            }
        }
        currentPage_ = page;
    } catch (...) {
    }
}

void frmTessalyConfig::FillLists() {
    try {
        merchant_->fillLists(programFolder_);
        chipPin_->fillLists();
    } catch (...) {
    }
}

void frmTessalyConfig::LoadSettings() {
    try {
        installed_ = std::make_unique<TCcAddinRegistry>();
        installed_->ReadRegistry();
        merchant_->load(*installed_);
        general_->load(*installed_);
        receipt_->load(*installed_);
        chipPin_->load(*installed_);
        display_->load(*installed_);
    } catch (...) {
    }
}

void frmTessalyConfig::SaveSettings() {
    new_ = std::make_unique<TCcAddinRegistry>();
    merchant_->save(*new_);
    general_->save(*new_);
    receipt_->save(*new_);
    chipPin_->save(*new_);
    display_->save(*new_);
}

// The rule itself is shared with the unattended front end's answer check.
void frmTessalyConfig::UpdateFinishButton() {
    try {
        merchant_choices::FinishInputs inputs;
        inputs.configMode = comboText(merchant_->cboConfigMode);
        inputs.acquirer = comboText(merchant_->cboAcquirer);
        inputs.currency = comboText(merchant_->cboCurrency);
        inputs.device = comboText(merchant_->cboDevice);
        inputs.port = comboText(chipPin_->cboPort);
        inputs.tessalyId = comboText(merchant_->cboTessalyId);
        cmdfInish->setEnabled(merchant_choices::finishAllowed(inputs));
    } catch (...) {
    }
}

void frmTessalyConfig::ApplyFullyIntegrated() {
    EnableControl(false, merchant_->cboSemiIntegratedMode);
    EnableControl(false, merchant_->cboReceiptInfo);
    general_->applyMode(true);
}

void frmTessalyConfig::ApplySemiIntegrated() {
    EnableControl(true, merchant_->cboSemiIntegratedMode);
    EnableControl(true, merchant_->cboReceiptInfo);
    general_->applyMode(false);
}

void frmTessalyConfig::cboConfigMode_Change() {
    try {
        if (merchant_->semiIntegrated()) {
            ApplySemiIntegrated();
        } else {
            ApplyFullyIntegrated();
        }
        cboSemiIntegratedMode_Click();
        UpdateFinishButton();
    } catch (...) {
    }
}

void frmTessalyConfig::cboSemiIntegratedMode_Click() {
    try {
        if (merchant_->semiIntegrated()) {
            if (merchant_->receiptOnTerminal()) {
                EnableControl(false, merchant_->cboReceiptInfo);
            } else {
                EnableControl(true, merchant_->cboReceiptInfo);
                ApplySemiIntegrated();
            }
        }
        UpdateFinishButton();
    } catch (...) {
    }
}

// Only the enabled flag changes here, not the grey background: this handler has never gone
// through EnableControl, and an RMS V3 till loses the printer number although it is an RMS till.
void frmTessalyConfig::cboEposType_Click() {
    try {
        receipt_->cboRmsPrinterNo->setEnabled(merchant_->cboEposType->currentIndex() == 0);
        UpdateFinishButton();
    } catch (...) {
    }
}

void frmTessalyConfig::cmdfInish_Click() {
    if (running_) {
        return;
    }
    try {
        ShowPage(6);
        cmdClose->setEnabled(false);
        progress_->capstatus->clear();
        cmdfInish->setEnabled(false);
        progress_->ProgressBar1->setValue(0);
        SaveSettings();
        setHourglass(true);
        runConfiguration();
    } catch (...) {
    }
    running_ = false;
    cmdfInish->setEnabled(false);
    try {
        installed_->ReadRegistry();
    } catch (...) {
    }
    cmdClose->setEnabled(true);
    ShowPage(0);
    setHourglass(false);
}

void frmTessalyConfig::runConfiguration() {
    run_ = std::make_unique<TcOnfigureTessaly>();
    tmrStatus->setInterval(100);
    tmrStatus->start();
    running_ = true;
    const std::int32_t result = run_->Configure(*installed_, *new_, programFolderPath());
    running_ = false;
    if (result != 0) {
        QMessageBox::warning(this, kCaption,
                             qtText(run_->strErrorMessage) +
                                 "\r\nConfiguration and installation failed.");
        return;
    }
    ShowPage(0);
    setHourglass(false);
    if (new_->lOperatingMode != 0) {
        QMessageBox::information(this, kCaption, "Configuration and installation successful.");
    } else {
        offerTmsCall();
    }
}

void frmTessalyConfig::offerTmsCall() {
    TTmsCall tms;
    tms.UpdateTmsScript(new_->strCorvixMerchantId, new_->strCorvixClientId, programFolderPath(),
                        new_->strbaseCurrency, new_->strAcquirer, new_->strFuelType,
                        !new_->bExternalSwipe, new_->strComPort, new_->strChipDeviceName);
    TmsTypeSelected = -1;
    frmTms dialog(this);
    dialog.exec();
    if (TmsTypeSelected >= 0) {
        tms.DoTmsCall(new_->strConfigFileLocation, std::to_string(TmsTypeSelected));
    }
}

// The timer keeps reading the finished run's counters, which no longer change.
void frmTessalyConfig::tmrStatus_Timer() {
    try {
        if (run_) {
            SetProgress(progress_->ProgressBar1, 0, 100, run_->lJobsDone, run_->lTotalJobsToDo);
            progress_->capstatus->setText(qtText(run_->strStatus));
        }
    } catch (...) {
    }
}

// No jobs counted yet, or more done than announced: the bar stays where it is.
void frmTessalyConfig::SetProgress(QProgressBar* bar, int min, int max, std::int32_t done,
                                   std::int32_t total) {
    bar->setMinimum(min);
    bar->setMaximum(max);
    if (total < 1) {
        return;
    }
    const double value = static_cast<double>(done) / static_cast<double>(total) * max;
    if (value <= max) {
        bar->setValue(static_cast<int>(value));
    }
}

// The program folder as the run and the script expect it: without the final separator.
std::string frmTessalyConfig::programFolderPath() const {
    std::string folder = programFolder_;
    if (!folder.empty() && folder.back() == '\\') {
        folder.pop_back();
    }
    return folder;
}

// Closing ends the program without asking and saves nothing; while a run is in progress the
// window cannot be closed, as Close itself is disabled then.
void frmTessalyConfig::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        return;
    }
    tmrStatus->stop();
    event->accept();
}
