#include "ui/chip_pin_page.h"

#include "configure/merchant_choices.h"
#include "settings/ccaddin_registry.h"
#include "ui/ui_text.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

ChipPinPage::ChipPinPage()
    : WizardPage(4, "Chip And Pin Device Configuration"), cboPort(makeCombo("cboPort")),
      cboSwipe(makeCombo("cboSwipe",
                         {"Card is swiped on till", "Card is swiped on chip and pin device"})),
      txtIdlePrompt1(makeText("txtIdlePrompt1")), txtIdlePrompt2(makeText("txtIdlePrompt2")),
      txtTrackStartId(makeText("txtTrackStartId")), txtTrackEndId(makeText("txtTrackEndId")) {
    auto* portLabel = new QLabel("Select Serial (COM) Port for Chip And Pin Device");
    portLabel->setBuddy(cboPort);
    body()->addWidget(portLabel);
    cboPort->setMaximumWidth(160);
    body()->addWidget(cboPort);
    body()->addSpacing(12);

    auto* grid = new QGridLayout;
    addRow(grid, 0, "Card s&wipe", cboSwipe);
    addRow(grid, 1, "Idle prompt line &1", txtIdlePrompt1);
    addRow(grid, 2, "Idle prompt line &2", txtIdlePrompt2);
    addRow(grid, 3, "Track data &start marker (hex)", txtTrackStartId);
    addRow(grid, 4, "Track data &end marker (hex)", txtTrackEndId);
    txtTrackStartId->setMaximumWidth(80);
    txtTrackEndId->setMaximumWidth(80);
    grid->setColumnStretch(1, 1);
    body()->addLayout(grid);
    body()->addStretch();
    fillLists();
}

void ChipPinPage::fillLists() {
    cboPort->clear();
    cboPort->addItems(qtList(merchant_choices::comPorts()));
    cboPort->setCurrentIndex(0);
    cboSwipe->setCurrentIndex(0);
}

void ChipPinPage::load(const TCcAddinRegistry& settings) {
    chooseText(cboPort, qtText(settings.strComPort));
    chooseIndex(cboSwipe, settings.bExternalSwipe ? 1 : 0);
    txtIdlePrompt1->setText(qtText(settings.strIdlePrompt1));
    txtIdlePrompt2->setText(qtText(settings.strIdlePrompt2));
    txtTrackStartId->setText(qtText(settings.strTrackStartId));
    txtTrackEndId->setText(qtText(settings.strTrackEndId));
}

void ChipPinPage::save(TCcAddinRegistry& settings) const {
    settings.strComPort = comboText(cboPort);
    settings.bExternalSwipe = chosenIndex(cboSwipe) == 1;
    settings.strIdlePrompt1 = tillText(txtIdlePrompt1->text());
    settings.strIdlePrompt2 = tillText(txtIdlePrompt2->text());
    settings.strTrackStartId = tillText(txtTrackStartId->text());
    settings.strTrackEndId = tillText(txtTrackEndId->text());
}
