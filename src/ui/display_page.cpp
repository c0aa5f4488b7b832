#include "ui/display_page.h"

#include "foundation/tessaly_string.h"
#include "settings/ccaddin_registry.h"
#include "ui/ui_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {
constexpr std::int32_t kSpecifiedSize = 2;   // "Specify width and height twip values"
constexpr std::int32_t kEnteredPosition = 5; // "Enter left and top twip values"
constexpr std::int32_t kEnteredValue = 1;    // "Enter width" / "Enter height"

// A stored size of 0 means the screen's own size; any other number was entered.
void loadSize(QComboBox* choice, QLineEdit* value, std::int32_t stored) {
    chooseIndex(choice, stored == 0 ? 0 : kEnteredValue);
    value->setText(stored == 0 ? QString() : QString::number(stored));
}

std::int32_t savedSize(const QComboBox* choice, const QLineEdit* value) {
    return chosenIndex(choice) == kEnteredValue ? TessalyString::StrToLong(tillText(value->text()))
                                                : 0;
}
} // namespace

DisplayPage::DisplayPage()
    : WizardPage(5, "Size, Positioning and Logo"),
      cboDisplaySize(makeCombo("cboDisplaySize",
                               {"Standard", "Compact", "Specify width and height twip values"})),
      cboWidth(makeCombo("cboWidth", {"Screen width", "Enter width"})),
      txtWidth(makeNumber("txtWidth")),
      cboHeight(makeCombo("cboHeight", {"Screen height", "Enter height"})),
      txtHeight(makeNumber("txtHeight")),
      cboPosition(
          makeCombo("cboPosition", {"Centered on screen", "Top left of screen",
                                    "Top right of screen", "Bottom left of screen",
                                    "Bottom right of screen", "Enter left and top twip values"})),
      txtLeft(makeNumber("txtLeft")), txtTop(makeNumber("txtTop")),
      chkAlwaysOnTop(makeCheck("chkAlwaysOnTop", "&Always on top of the till's screens")),
      chkDisplayOndrelLogo(makeCheck("chkDisplayOndrelLogo", "Display the Ondrel &logo")) {
    // Wide enough for the longest entries, so no choice is shown cut off.
    for (QComboBox* choice : {cboDisplaySize, cboPosition}) {
        choice->setMinimumContentsLength(34);
    }
    auto* grid = new QGridLayout;
    addRow(grid, 0, "&Display size", cboDisplaySize);
    addRow(grid, 1, "&Width", cboWidth);
    addRow(grid, 1, "twip&s", txtWidth, 2);
    addRow(grid, 2, "&Height", cboHeight);
    addRow(grid, 2, "tw&ips", txtHeight, 2);
    addRow(grid, 3, "Start-up &position", cboPosition);
    addRow(grid, 4, "L&eft (twips)", txtLeft);
    addRow(grid, 5, "&Top (twips)", txtTop);
    grid->addWidget(chkAlwaysOnTop, 6, 1, 1, 3);
    grid->addWidget(chkDisplayOndrelLogo, 7, 1, 1, 3);
    grid->setColumnStretch(4, 1);
    body()->addLayout(grid);
    body()->addStretch();

    for (QComboBox* choice : {cboDisplaySize, cboWidth, cboHeight, cboPosition}) {
        connect(choice, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    }
    refresh();
}

// Sizes are entered only for a specified display size, and positions only when the start-up
// position says so.
void DisplayPage::refresh() {
    const bool specified = chosenIndex(cboDisplaySize) == kSpecifiedSize;
    EnableControl(specified, cboWidth);
    EnableControl(specified, cboHeight);
    EnableControl(specified && chosenIndex(cboWidth) == kEnteredValue, txtWidth);
    EnableControl(specified && chosenIndex(cboHeight) == kEnteredValue, txtHeight);
    const bool entered = chosenIndex(cboPosition) == kEnteredPosition;
    EnableControl(entered, txtLeft);
    EnableControl(entered, txtTop);
}

void DisplayPage::load(const TCcAddinRegistry& settings) {
    chooseIndex(cboDisplaySize, settings.lDisplayMode);
    loadSize(cboWidth, txtWidth, settings.lAddinWidth);
    loadSize(cboHeight, txtHeight, settings.lAddinHeight);
    chooseIndex(cboPosition, settings.lStartupPosition);
    txtLeft->setText(QString::number(settings.lLeftTwips));
    txtTop->setText(QString::number(settings.lTopTwips));
    chkAlwaysOnTop->setChecked(settings.bAlwaysOnTop);
    chkDisplayOndrelLogo->setChecked(settings.bDisplayOndrelLogo);
    refresh();
}

void DisplayPage::save(TCcAddinRegistry& settings) const {
    settings.lDisplayMode = chosenIndex(cboDisplaySize);
    settings.lAddinWidth = savedSize(cboWidth, txtWidth);
    settings.lAddinHeight = savedSize(cboHeight, txtHeight);
    settings.lStartupPosition = chosenIndex(cboPosition);
    settings.lLeftTwips = TessalyString::StrToLong(tillText(txtLeft->text()));
    settings.lTopTwips = TessalyString::StrToLong(tillText(txtTop->text()));
    settings.bAlwaysOnTop = chkAlwaysOnTop->isChecked();
    settings.bDisplayOndrelLogo = chkDisplayOndrelLogo->isChecked();
}
