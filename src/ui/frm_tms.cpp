#include "ui/frm_tms.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

std::int32_t TmsTypeSelected = -1;

namespace {
struct TmsType {
    const char* item;
    const char* description;
};

// The index of each entry is the argument the script receives; "it's" is the text as shipped.
constexpr std::array<TmsType, 3> kTmsTypes{{
    {"Standard TMS call",
     "If ped already has an application on board, a check will be made with Ondrel server to "
     "check if there are any updates for the ped. If ped has no application on board then a full "
     "application download to the ped will be performed."},
    {"Force full download to ped",
     "If there is an application on board the ped and if the application is at a minimum "
     "version then this option will force a full application download to the ped."},
    {"Upload log files from ped",
     "If there is an application on board the ped and if the application is at a minimum "
     "version then this option will force the ped to upload it's log files to Ondrel server."},
}};
} // namespace

frmTms::frmTms(QWidget* parent)
    : QDialog(parent), cboTmsType(new QComboBox), lblDesc(new QLabel),
      cmdTms(new QPushButton("&Run TMS Call")), cmdCancel(new QPushButton("&Cancel")) {
    setObjectName("frmTms");
    setWindowTitle("TMS Call");
    setModal(true);
    cboTmsType->setObjectName("cboTmsType");
    lblDesc->setObjectName("lblDesc");
    cmdTms->setObjectName("cmdTms");
    cmdCancel->setObjectName("cmdCancel");
    cmdTms->setDefault(true);
    lblDesc->setWordWrap(true);
    lblDesc->setMinimumHeight(lblDesc->fontMetrics().lineSpacing() * 4);
    lblDesc->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto* frame = new QGroupBox("Select TMS Type");
    auto* inFrame = new QVBoxLayout(frame);
    inFrame->addWidget(cboTmsType);
    inFrame->addWidget(lblDesc);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdTms);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);
    setMinimumWidth(440);

    for (const TmsType& type : kTmsTypes) {
        cboTmsType->addItem(type.item);
    }
    cboTmsType->setCurrentIndex(0);
    cboTmsType_Change();
    connect(cboTmsType, &QComboBox::currentIndexChanged, this, [this] { cboTmsType_Change(); });
    connect(cmdTms, &QPushButton::clicked, this, [this] {
        TmsTypeSelected = cboTmsType->currentIndex();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
    // Escape and the close box count as Cancel: no call is started that the user did not ask for.
    connect(this, &QDialog::rejected, this, [] { TmsTypeSelected = -1; });
}

void frmTms::cboTmsType_Change() {
    lblDesc->clear();
    const int index = cboTmsType->currentIndex();
    if (index >= 0 && index < static_cast<int>(kTmsTypes.size())) {
        lblDesc->setText(kTmsTypes[static_cast<std::size_t>(index)].description);
    }
}
