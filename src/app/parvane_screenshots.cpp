// Renders every page of the wizard, the printer serial dialog and the TMS dialog to PNG files,
// without a display: parvane-screenshots DIR [PROGRAM-FOLDER].
//
// Given the payment client's folder of a demo till with a VeriFone SC5000, the progress page and
// the TMS dialog are taken from a real run: a new chip and PIN port makes the run reconfigure the
// device manager, and the page is captured during its ten-second pause. Use a throwaway till.
#include "ui/qt/frm_tessaly_config.h"
#include "ui/qt/qt_dialogs.h"
#include "wizard/frm_pt_serial_config.h"
#include "wizard/frm_tms.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

namespace {
bool save(QWidget& widget, const QString& file) {
    widget.show();
    QApplication::processEvents();
    const bool saved = widget.grab().save(file, "PNG");
    std::printf("%s %s\n", saved ? "wrote" : "FAILED", qPrintable(file));
    return saved;
}

// Captures the TMS dialog when it comes up and cancels it, so no call is started; a message
// box is reported and closed.
void answerModals(const QDir& dir, bool& tmsSaved) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [dir, &tmsSaved] {
        QWidget* window = QApplication::activeModalWidget();
        if (window == nullptr) {
            return;
        }
        if (window->objectName() == "frmTms") {
            tmsSaved = save(*window, dir.filePath("tms-call.png"));
        } else if (auto* box = qobject_cast<QMessageBox*>(window)) {
            std::printf("message: %s\n", qPrintable(box->text()));
        }
        window->close();
    });
    poll->start(50);
}

// False when the folder holds no SC5000 till to run on.
bool captureRealRun(frmTessalyConfig& form, const QDir& dir, bool& tmsSaved) {
    auto* device = form.findChild<QComboBox*>("cboDevice");
    auto* port = form.findChild<QComboBox*>("cboPort");
    auto* finish = form.findChild<QPushButton*>("cmdfInish");
    if (device->currentText() != "VeriFone SC5000") {
        return false;
    }
    // As the user chooses: the list's own signal for a choice carries the change to the wizard.
    const int other = port->currentIndex() == 2 ? 3 : 2;
    port->setCurrentIndex(other);
    emit port->activated(other);
    if (!finish->isEnabled()) {
        return false;
    }
    bool pageSaved = false;
    QTimer::singleShot(3500, &form, [&] { pageSaved = save(form, dir.filePath("page-6.png")); });
    answerModals(dir, tmsSaved);
    finish->click();
    return pageSaved;
}
} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: parvane-screenshots DIR [PROGRAM-FOLDER]\n");
        return 2;
    }
    const QDir dir(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(dir.path());
    bool ok = true;

    frmTessalyConfig form(argc > 2 ? argv[2] : "");
    for (int page = 0; page <= 5; ++page) {
        form.form().ShowPage(page);
        ok = save(form, dir.filePath(QString("page-%1.png").arg(page))) && ok;
    }
    wizard::frmPTSerialConfig serialDialog;
    frmPTSerialConfig serial(serialDialog, nullptr);
    serialDialog.Form_Load();
    ok = save(serial, dir.filePath("printer-settings.png")) && ok;

    bool tmsSaved = false;
    if (!captureRealRun(form, dir, tmsSaved)) {
        std::printf("no SC5000 demo till: the progress page is shown as it stands mid-run\n");
        form.form().ShowPage(6);
        form.findChild<QProgressBar*>("ProgressBar1")->setValue(25);
        form.findChild<QLabel*>("capstatus")->setText("Configuring Quenmar database");
        ok = save(form, dir.filePath("page-6.png")) && ok;
    }
    if (!tmsSaved) {
        wizard::frmTms tmsDialog;
        frmTms tms(tmsDialog, nullptr);
        tmsDialog.Form_Load();
        ok = save(tms, dir.filePath("tms-call.png")) && ok;
    }
    return ok ? 0 : 1;
}
