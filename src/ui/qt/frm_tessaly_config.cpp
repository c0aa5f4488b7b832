#include "ui/qt/frm_tessaly_config.h"

#include "foundation/event_pump.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <initializer_list>

namespace {

// Places one page's widgets: "label: control" rows in grids, check boxes in columns.
class PageLayout {
public:
    PageLayout(const QtControlSet& widgets, QWidget* page, const QString& heading)
        : widgets_(widgets), body_(new QVBoxLayout(page)) {
        if (!heading.isEmpty()) {
            auto* title = new QLabel(heading);
            QFont font = title->font();
            font.setBold(true);
            font.setPointSizeF(font.pointSizeF() * 1.3);
            title->setFont(font);
            body_->addWidget(title);
        }
    }
    QWidget* operator[](const char* name) const { return widgets_.widget(name); }
    QVBoxLayout* body() const { return body_; }

    // The control and its label as one row of `grid`, from `column` on.
    void row(QGridLayout* grid, int row, const char* name, int column = 0, int span = 1) const {
        if (QWidget* label = widgets_.label(name)) {
            grid->addWidget(label, row, column);
        }
        grid->addWidget(widgets_.widget(name), row, column + 1, 1, span);
    }
    void checks(QGridLayout* grid, std::initializer_list<const char*> names, int columns) const {
        int i = 0;
        for (const char* name : names) {
            grid->addWidget(widgets_.widget(name), i / columns, i % columns);
            ++i;
        }
    }
    void width(const char* name, int pixels) const {
        widgets_.widget(name)->setMaximumWidth(pixels);
    }

private:
    const QtControlSet& widgets_;
    QVBoxLayout* body_;
};

QFont scaled(QFont font, double factor) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

void layOutWelcome(const PageLayout& page) {
    auto* title = static_cast<QLabel*>(page["Label1"]);
    title->setFont(scaled(title->font(), 1.5));
    title->setWordWrap(true);
    static_cast<QLabel*>(page["lblGuide"])->setWordWrap(true);
    auto* text = new QVBoxLayout;
    text->addWidget(title);
    text->addSpacing(16);
    text->addWidget(page["lblGuide"]);
    text->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(page["Picture1"], 0, Qt::AlignTop);
    row->addSpacing(16);
    row->addLayout(text, 1);
    page.body()->addLayout(row);
}

void layOutMerchant(const PageLayout& page) {
    auto* grid = new QGridLayout;
    page.row(grid, 0, "cboAcquirer");
    page.row(grid, 0, "cboCurrency", 2);
    page.row(grid, 1, "cboInstallType");
    page.row(grid, 1, "cboTessalyId", 2);
    page.row(grid, 2, "cboFuel");
    page.row(grid, 2, "cboDevice", 2);
    page.row(grid, 3, "txtCxMerchant");
    page.row(grid, 3, "txtCxClient", 2);
    // The long entries of the last four lists need the page's whole width.
    page.row(grid, 4, "cboConfigMode", 0, 3);
    page.row(grid, 5, "cboSemiIntegratedMode", 0, 3);
    page.row(grid, 6, "cboReceiptInfo", 0, 3);
    page.row(grid, 7, "cboEposType", 0, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    page.body()->addLayout(grid);
}

void layOutGeneral(const PageLayout& page) {
    auto* grid = new QGridLayout;
    page.row(grid, 0, "cboSplitTender");
    grid->addWidget(page["chkDecimalInSplitTender"], 1, 1);
    grid->addWidget(page["chkCashback"], 2, 1);
    page.row(grid, 3, "cboCashBackEntry");
    grid->addWidget(page["chkDcc"], 4, 1);
    page.row(grid, 5, "cboDccOption");
    grid->setColumnStretch(1, 1);
    page.body()->addLayout(grid);
    auto* options = new QGridLayout;
    int row = 0;
    for (const char* name :
         {"chkCustomerNotPresent", "chkObscureCardNumber", "chkAutoAcceptOnPinVerification",
          "chkAutoAcceptTappedNoVerification"}) {
        options->addWidget(page[name], row++, 0);
    }
    row = 0;
    for (const char* name :
         {"chkOfflineMode", "chkE2EE", "chkDailyTmsCall", "chkAutoRunReport", "chkCloseBatch"}) {
        options->addWidget(page[name], row++, 1);
    }
    page.body()->addLayout(options);
}

void layOutReceipt(const PageLayout& page) {
    auto* grid = new QGridLayout;
    page.row(grid, 0, "cboPrinterType");
    page.row(grid, 0, "cboRmsPrinterNo", 2);
    page.row(grid, 1, "txtOposPrinterDeviceName");
    page.row(grid, 1, "txtLineFeedsBeforePaperCut", 2);
    page.row(grid, 2, "txtWindowsPrinterName");
    page.row(grid, 2, "txtPrintNormalControl", 2);
    page.row(grid, 3, "txtWindowsPrinterFontName");
    page.row(grid, 3, "txtPrintBoldControl", 2);
    page.row(grid, 4, "txtWindowsFontSize");
    grid->addWidget(page["chkWindowsFontBold"], 4, 2, 1, 2);
    grid->addWidget(page["cmdComPort"], 5, 0);
    grid->addWidget(page["lblPrinterSerial"], 5, 1, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    page.width("txtWindowsFontSize", 60);
    page.width("txtLineFeedsBeforePaperCut", 60);
    page.body()->addLayout(grid);
    auto* options = new QGridLayout;
    page.checks(options,
                {"chkPrintMerchantReceipt", "chkPrintCustomerReceipt",
                 "chkCutPaperAfterMerchantCopy", "chkCutPaperAfterCustomerCopy",
                 "chkPrintMerchantHeader", "chkPrintCustomerHeader",
                 "chkCustomerReceiptFirstIfPinVerified", "chkRefundSigOnMerchCopy",
                 "chkRePrintReceipt", "chkPromptTappedCustomerReceipt", "chkAppendLineFeed",
                 "chkMakeMerchantReceiptsAvailableToClient"},
                2);
    page.body()->addLayout(options);
}

void layOutChipPin(const PageLayout& page, const QtControlSet& widgets) {
    page.body()->addWidget(widgets.label("cboPort"));
    page.width("cboPort", 160);
    page.body()->addWidget(page["cboPort"]);
    page.body()->addSpacing(12);
    auto* grid = new QGridLayout;
    page.row(grid, 0, "cboSwipe");
    page.row(grid, 1, "txtIdlePrompt1");
    page.row(grid, 2, "txtIdlePrompt2");
    page.row(grid, 3, "txtTrackStartId");
    page.row(grid, 4, "txtTrackEndId");
    page.width("txtTrackStartId", 80);
    page.width("txtTrackEndId", 80);
    grid->setColumnStretch(1, 1);
    page.body()->addLayout(grid);
}

void layOutDisplay(const PageLayout& page) {
    // Wide enough for the longest entries, so no choice is shown cut off.
    for (const char* name : {"cboDisplaySize", "cboPosition"}) {
        static_cast<QComboBox*>(page[name])->setMinimumContentsLength(34);
    }
    auto* grid = new QGridLayout;
    page.row(grid, 0, "cboDisplaySize");
    page.row(grid, 1, "cboWidth");
    page.row(grid, 1, "txtWidth", 2);
    page.row(grid, 2, "cboHeight");
    page.row(grid, 2, "txtHeight", 2);
    page.row(grid, 3, "cboPosition");
    page.row(grid, 4, "txtLeft");
    page.row(grid, 5, "txtTop");
    grid->addWidget(page["chkAlwaysOnTop"], 6, 1, 1, 3);
    grid->addWidget(page["chkDisplayOndrelLogo"], 7, 1, 1, 3);
    grid->setColumnStretch(4, 1);
    for (const char* name : {"txtWidth", "txtHeight", "txtLeft", "txtTop"}) {
        page.width(name, 120);
    }
    page.body()->addLayout(grid);
}

void layOutProgress(const PageLayout& page) {
    auto* heading = static_cast<QLabel*>(page["Label18"]);
    heading->setFont(scaled(heading->font(), 1.3));
    page.body()->addWidget(heading);
    page.body()->addSpacing(24);
    page.body()->addWidget(page["Label19"]);
    page.body()->addWidget(page["ProgressBar1"]);
    page.body()->addWidget(page["capstatus"]);
}

} // namespace

frmTessalyConfig::frmTessalyConfig(const std::string& programFolder)
    : widgets_(controls_), host_(*this) {
    setObjectName("frmTessalyConfig");
    setWindowTitle(qtText(std::string(wizard::kWizardCaption)));
    // The run hands control back between its jobs; this is where the progress page gets it.
    installEventPump([] { QCoreApplication::processEvents(); });
    layOut();
    form_ = std::make_unique<wizard::frmTessalyConfig>(controls_, host_, programFolder);
    form_->Form_Load();
}

frmTessalyConfig::~frmTessalyConfig() {
    installEventPump({});
}

void frmTessalyConfig::layOut() {
    auto* layout = new QVBoxLayout(this);
    for (int index = 0; index < 7; ++index) {
        const std::string name = "fraInstall(" + std::to_string(index) + ")";
        auto* frame = static_cast<QFrame*>(widgets_.widget(name));
        frame->setFrameShape(QFrame::StyledPanel);
        const PageLayout page(widgets_, frame, widgets_.caption(name));
        switch (index) {
        case 0:
            layOutWelcome(page);
            break;
        case 1:
            layOutMerchant(page);
            break;
        case 2:
            layOutGeneral(page);
            break;
        case 3:
            layOutReceipt(page);
            break;
        case 4:
            layOutChipPin(page, widgets_);
            break;
        case 5:
            layOutDisplay(page);
            break;
        default:
            layOutProgress(page);
            break;
        }
        page.body()->addStretch();
        layout->addWidget(frame, 1);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const char* name : {"cmdBack", "cmdNext", "cmdfInish", "cmdClose"}) {
        buttons->addWidget(widgets_.widget(name));
    }
    layout->addLayout(buttons);
    resize(780, 540);
}

// The window closes only when the wizard allows it (never during a run).
void frmTessalyConfig::closeEvent(QCloseEvent* event) {
    if (!form_->QueryUnload()) {
        event->ignore();
        return;
    }
    event->accept();
}
