// Page 5, "Size, Positioning and Logo": how large the add-in's window is, where it opens, and
// whether it stays on top and shows the Ondrel logo.
#pragma once

#include "ui/wizard_page.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class TCcAddinRegistry;

class DisplayPage : public WizardPage {
public:
    DisplayPage();

    void load(const TCcAddinRegistry& settings);
    void save(TCcAddinRegistry& settings) const;

    QComboBox* cboDisplaySize;
    QComboBox* cboWidth;
    QLineEdit* txtWidth;
    QComboBox* cboHeight;
    QLineEdit* txtHeight;
    QComboBox* cboPosition;
    QLineEdit* txtLeft;
    QLineEdit* txtTop;
    QCheckBox* chkAlwaysOnTop;
    QCheckBox* chkDisplayOndrelLogo;

private:
    void refresh();
};
