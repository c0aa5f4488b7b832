// Page 6: shown only while Finish runs the configuration, with its progress and status.
#pragma once

#include "ui/wizard_page.h"

class QLabel;
class QProgressBar;

class ProgressPage : public WizardPage {
public:
    ProgressPage();

    QLabel* Label18;
    QLabel* Label19;
    QProgressBar* ProgressBar1;
    QLabel* capstatus;
};
