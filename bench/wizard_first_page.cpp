// Starts the wizard as its program does, shows the first page and ends as soon as the page has
// been painted once: the whole of a start-up, for the benchmark to time from outside.
#include "platform/platform.h"
#include "ui/qt/frm_tessaly_config.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

namespace {

// Ends the program after the window's first paint.
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, qApp, &QApplication::quit);
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    frmTessalyConfig form(argc > 1 ? argv[1] : platform::programFolder());
    FirstPaint firstPaint;
    form.installEventFilter(&firstPaint);
    form.show();
    return app.exec();
}
