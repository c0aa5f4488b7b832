#include "ui/welcome_page.h"

#include "ui/welcome_picture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

WelcomePage::WelcomePage() : WizardPage(0, {}), Label1(new QLabel), Picture1(new QLabel) {
    Label1->setObjectName("Label1");
    Picture1->setObjectName("Picture1");
    Picture1->setPixmap(welcomePicture());
    QFont font = Label1->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.5);
    Label1->setFont(font);
    Label1->setWordWrap(true);

    auto* text = new QVBoxLayout;
    text->addWidget(Label1);
    auto* guide = new QLabel("This wizard sets up the card-payment add-in of this till: the "
                             "merchant, the chip and PIN device, card handling, receipt printing "
                             "and the add-in's window.\n\nPress Next to go through the pages, "
                             "and Finish to apply the settings.");
    guide->setWordWrap(true);
    text->addSpacing(16);
    text->addWidget(guide);
    text->addStretch();

    auto* row = new QHBoxLayout;
    row->addWidget(Picture1, 0, Qt::AlignTop);
    row->addSpacing(16);
    row->addLayout(text, 1);
    body()->addLayout(row);
}
