// Page 4, "Chip And Pin Device Configuration": the serial port of the chip and PIN device, where
// cards are swiped, the device's idle prompts and the track markers of a swipe on the till.
#pragma once

#include "ui/wizard_page.h"

class QComboBox;
class QLineEdit;
class TCcAddinRegistry;

class ChipPinPage : public WizardPage {
public:
    ChipPinPage();

    void fillLists();
    void load(const TCcAddinRegistry& settings);
    void save(TCcAddinRegistry& settings) const;

    QComboBox* cboPort;
    QComboBox* cboSwipe;
    QLineEdit* txtIdlePrompt1;
    QLineEdit* txtIdlePrompt2;
    QLineEdit* txtTrackStartId;
    QLineEdit* txtTrackEndId;
};
