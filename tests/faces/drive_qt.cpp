// Drives the Qt wizard through its widgets as a user would, with the choices of a choices file,
// on the till PARVANE_ROOT names, and prints what the run left there:
//   wizard_drive_qt CHOICES PROGRAM-FOLDER
#include "faces/end_to_end.h"
#include "ui/qt/frm_tessaly_config.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <iostream>

namespace {

// Answers every message box with OK, reporting what it said.
void answerMessages() {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            std::cerr << "message: " << box->text().toStdString() << "\n";
            box->button(QMessageBox::Ok)->click();
        }
    });
    poll->start(20);
}

bool act(QWidget& window, const Choice& choice) {
    const QString name = QString::fromStdString(choice.control);
    const QString value = QString::fromStdString(choice.value);
    if (choice.action == "choose") {
        auto* box = window.findChild<QComboBox*>(name);
        const int index = box != nullptr ? box->findText(value) : -1;
        if (index < 0) {
            return false;
        }
        box->setCurrentIndex(index);
        emit box->activated(index);
    } else if (choice.action == "tick") {
        auto* box = window.findChild<QCheckBox*>(name);
        if (box == nullptr) {
            return false;
        }
        if (box->isChecked() != (value == "1")) {
            box->click();
        }
    } else if (choice.action == "type") {
        auto* text = window.findChild<QLineEdit*>(name);
        if (text == nullptr) {
            return false;
        }
        text->setText(value);
        emit text->textEdited(value);
    } else if (choice.action == "press") {
        auto* button = window.findChild<QPushButton*>(name);
        if (button == nullptr || !button->isEnabled()) {
            return false;
        }
        button->click();
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc != 3) {
        std::cerr << "usage: wizard_drive_qt CHOICES PROGRAM-FOLDER\n";
        return 2;
    }
    frmTessalyConfig window(argv[2]);
    answerMessages();
    for (const Choice& choice : readChoices(argv[1])) {
        if (!act(window, choice)) {
            std::cerr << "cannot " << choice.action << " " << choice.control << "\n";
            return 1;
        }
    }
    writeTillState(argv[2], std::cout);
    return 0;
}
