// Page 0: the welcome artwork and the versioned title.
#pragma once

#include "ui/wizard_page.h"

class QLabel;

class WelcomePage : public WizardPage {
public:
    WelcomePage();

    QLabel* Label1;
    QLabel* Picture1;
};
