// The configuration wizard: the program is its one window and ends when the window closes.
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "ui/qt/frm_tessaly_config.h"

#include <QApplication>
#include <QMessageBox>
#include <exception>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::string folder;
    try {
        folder = platform::programFolder();
    } catch (const std::exception& e) {
        // Without a till there is nothing to configure; say why instead of guessing a folder.
        QMessageBox::critical(nullptr, "Corvix Parvane Configuration Utility",
                              QString::fromStdString(cp1252::toUtf8(e.what())));
        return 1;
    }
    frmTessalyConfig form(folder);
    form.show();
    return app.exec();
}
