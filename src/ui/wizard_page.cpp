#include "ui/wizard_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <limits>

WizardPage::WizardPage(int index, const QString& heading) : body_(new QVBoxLayout(this)) {
    setObjectName("fraInstall");
    setProperty("index", index);
    setFrameShape(QFrame::StyledPanel);
    if (!heading.isEmpty()) {
        auto* title = new QLabel(heading);
        title->setObjectName(QString("lblHeading%1").arg(index));
        QFont font = title->font();
        font.setBold(true);
        font.setPointSizeF(font.pointSizeF() * 1.3);
        title->setFont(font);
        body_->addWidget(title);
    }
}

QCheckBox* WizardPage::makeCheck(const char* name, const QString& caption, bool reports) {
    auto* box = new QCheckBox(caption);
    box->setObjectName(name);
    if (reports)
        connect(box, &QCheckBox::toggled, this, [this] { notify(); });
    return box;
}

QComboBox* WizardPage::makeCombo(const char* name, const QStringList& entries, bool reports) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->addItems(entries);
    box->setCurrentIndex(entries.isEmpty() ? -1 : 0);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    if (reports)
        connect(box, &QComboBox::currentIndexChanged, this, [this] { notify(); });
    return box;
}

QLineEdit* WizardPage::makeText(const char* name, bool reports) {
    auto* text = new QLineEdit;
    text->setObjectName(name);
    if (reports)
        connect(text, &QLineEdit::textChanged, this, [this] { notify(); });
    return text;
}

QLineEdit* WizardPage::makeNumber(const char* name) {
    QLineEdit* text = makeText(name);
    text->setValidator(
        new QIntValidator(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), text));
    text->setMaximumWidth(120);
    return text;
}

QLabel* WizardPage::addRow(QGridLayout* grid, int row, const QString& label, QWidget* control,
                           int column) {
    auto* caption = new QLabel(label);
    caption->setBuddy(control);
    grid->addWidget(caption, row, column);
    grid->addWidget(control, row, column + 1);
    return caption;
}

void WizardPage::notify() const {
    if (edited) {
        edited();
    }
}
