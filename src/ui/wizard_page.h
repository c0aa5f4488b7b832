// One page of the wizard: a frame of the fraInstall row with its heading, and the small makers
// that give every control its system name and report each edit to the wizard.
#pragma once

#include <QFrame>
#include <functional>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

class WizardPage : public QFrame {
public:
    // `heading` empty: a page without a title (the welcome page).
    WizardPage(int index, const QString& heading);

    // Run after every edit of an input control that the Finish rule must see.
    std::function<void()> edited;

protected:
    QVBoxLayout* body() const { return body_; }

    // `reports` false: the wizard wires the control's handler itself.
    QCheckBox* makeCheck(const char* name, const QString& caption, bool reports = true);
    QComboBox* makeCombo(const char* name, const QStringList& entries = {}, bool reports = true);
    QLineEdit* makeText(const char* name, bool reports = true);
    QLineEdit* makeNumber(const char* name);

    // Adds "label: control" as a row of `grid`, the label attached to the control.
    static QLabel* addRow(QGridLayout* grid, int row, const QString& label, QWidget* control,
                          int column = 0);

    void notify() const;

private:
    QVBoxLayout* body_;
};
