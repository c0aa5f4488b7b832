#include "ui/progress_page.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

ProgressPage::ProgressPage()
    : WizardPage(6, {}), Label18(new QLabel("Installing and configuring software")),
      Label19(new QLabel("Please wait ...")), ProgressBar1(new QProgressBar),
      capstatus(new QLabel) {
    Label18->setObjectName("Label18");
    Label19->setObjectName("Label19");
    ProgressBar1->setObjectName("ProgressBar1");
    capstatus->setObjectName("capstatus");
    QFont font = Label18->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    Label18->setFont(font);
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);

    body()->addWidget(Label18);
    body()->addSpacing(24);
    body()->addWidget(Label19);
    body()->addWidget(ProgressBar1);
    body()->addWidget(capstatus);
    body()->addStretch();
}
