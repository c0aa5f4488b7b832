#include "ui/qt/frm_tessaly_config.h"
#include "ui/qt/qt_dialogs.h"
#include "wizard/frm_pt_serial_config.h"
#include "wizard/frm_tms.h"

#include <QApplication>
#include <QMessageBox>

void QtHost::MsgBox(const std::string& text, wizard::MessageIcon icon, const std::string& title) {
    QMessageBox box(&window_);
    box.setWindowTitle(qtText(title));
    box.setText(qtText(text));
    box.setIcon(icon == wizard::MessageIcon::Information   ? QMessageBox::Information
                : icon == wizard::MessageIcon::Exclamation ? QMessageBox::Warning
                                                           : QMessageBox::Critical);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

void QtHost::SetMousePointer(wizard::MousePointer pointer) {
    while (QApplication::overrideCursor() != nullptr) {
        QApplication::restoreOverrideCursor();
    }
    if (pointer == wizard::MousePointer::Hourglass) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
}

void QtHost::ShowModal(wizard::frmPTSerialConfig& dialog) {
    frmPTSerialConfig window(dialog, &window_);
    dialog.Form_Load();
    window.exec();
}

void QtHost::ShowModal(wizard::frmTms& dialog) {
    frmTms window(dialog, &window_);
    dialog.Form_Load();
    window.exec();
}

void QtHost::UnloadMainForm() {
    window_.close();
}
