// bench_startup empty | bench_startup velmora VOLUME PROFILE: shows a main window and ends when it
// has been painted, so that both can be timed as whole processes.
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>
#include <cstring>

#include "frame/Application.h"

namespace {
/// Ends the program after the first paint of a window.
class CFirstPaint : public QObject {
  public:
    explicit CFirstPaint(QWidget* window) : m_window(window) { window->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == m_window && event->type() == QEvent::Paint) {
            // _exit, since shutting down is not part of the start.
            QTimer::singleShot(0, qApp, [] { _exit(0); });
        }
        return false;
    }

  private:
    QWidget* m_window;
};
}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    if (argc == 2 && std::strcmp(argv[1], "empty") == 0) {
        QMainWindow window;
        window.resize(1000, 700);
        const CFirstPaint firstPaint(&window);
        window.show();
        return QApplication::exec();
    }
    if (argc != 4 || std::strcmp(argv[1], "velmora") != 0) {
        return 2;
    }
    CRegistrySettings registry = CRegistrySettings::Read();
    registry.userProfileName = QString::fromLocal8Bit(argv[3]);
    registry.Write();
    CVelmoraApp velmora(QString::fromLocal8Bit(argv[2]));
    if (!velmora.Start()) {
        return 1;
    }
    const CFirstPaint firstPaint(velmora.Frame());
    return QApplication::exec();
}
