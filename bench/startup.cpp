// bench_startup empty | furnished | velmora VOLUME PROFILE: shows a main window and ends when it
// has been painted, so that they can be timed as whole processes. The furnished window has what the
// diet tab has, in standard widgets: menus, a tool bar, a row with the day, tabs and two lists.
#include <unistd.h>

#include <QApplication>
#include <QBoxLayout>
#include <QDateEdit>
#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
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

QTreeView* MakeList(int rows, int columns) {
    auto* list = new QTreeView;
    auto* model = new QStandardItemModel(rows, columns, list);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            model->setItem(row, column,
                           new QStandardItem(QStringLiteral("Apple %1").arg(row * columns)));
        }
    }
    list->setModel(model);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    return list;
}

void Furnish(QMainWindow& window) {
    for (const int commands : {3, 5, 8, 1}) {
        QMenu* menu = window.menuBar()->addMenu(QStringLiteral("Menu"));
        for (int i = 0; i < commands; ++i) {
            menu->addAction(QStringLiteral("Command %1").arg(i));
        }
    }
    QToolBar* bar = window.addToolBar(QStringLiteral("Commands"));
    for (int button = 0; button < 9; ++button) {
        bar->addAction(QStringLiteral("Button"));
    }
    auto* view = new QWidget(&window);
    auto* day = new QHBoxLayout;
    day->addWidget(new QDateEdit(QDate::currentDate()));
    for (int button = 0; button < 3; ++button) {
        day->addWidget(new QPushButton(QStringLiteral("Day")));
    }
    auto* meals = new QTabBar;
    for (int meal = 0; meal < 7; ++meal) {
        meals->addTab(QStringLiteral("M"));
    }
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(MakeList(15, 8));
    splitter->addWidget(MakeList(6, 5));
    auto* layout = new QVBoxLayout(view);
    layout->addLayout(day);
    layout->addWidget(splitter, 1);
    layout->addWidget(meals);
    window.setCentralWidget(view);
}
}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    if (argc == 2) {
        QMainWindow window;
        if (std::strcmp(argv[1], "furnished") == 0) {
            Furnish(window);
        }
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
