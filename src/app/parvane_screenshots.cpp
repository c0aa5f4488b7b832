// Renders every page of the wizard, the printer serial dialog and the TMS dialog to PNG files,
// without a display: parvane-screenshots DIR [PROGRAM-FOLDER].
#include "ui/frm_pt_serial_config.h"
#include "ui/frm_tessaly_config.h"
#include "ui/frm_tms.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <cstdio>

namespace {
bool save(QWidget& widget, const QString& file) {
    widget.show();
    QApplication::processEvents();
    const bool saved = widget.grab().save(file, "PNG");
    std::printf("%s %s\n", saved ? "wrote" : "FAILED", qPrintable(file));
    return saved;
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
        form.ShowPage(page);
        ok = save(form, dir.filePath(QString("page-%1.png").arg(page))) && ok;
    }
    // The progress page as it stands during the device-manager pause of a run.
    form.ShowPage(6);
    frmTessalyConfig::SetProgress(form.findChild<QProgressBar*>("ProgressBar1"), 0, 100, 2, 8);
    form.findChild<QLabel*>("capstatus")->setText("Configuring Quenmar database");
    ok = save(form, dir.filePath("page-6.png")) && ok;

    frmPTSerialConfig serial;
    ok = save(serial, dir.filePath("printer-settings.png")) && ok;
    frmTms tms;
    ok = save(tms, dir.filePath("tms-call.png")) && ok;
    return ok ? 0 : 1;
}
