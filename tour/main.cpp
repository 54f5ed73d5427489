// velmora_tour FOLDER [--dark]: plays a new user's first ten minutes with real clicks and
// keys on a temporary volume, and saves a picture of each step and the files written in FOLDER.
#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdio>

#include "Itinerary.h"
#include "catalogue/exchange/StarterFoods.h"
#include "controls/Colors.h"
#include "frame/Application.h"

using namespace Qt::StringLiterals;

namespace {
QPalette DarkPalette() {
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::AlternateBase, QColor(40, 40, 40));
    palette.setColor(QPalette::Highlight, QColor(38, 79, 120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QtMessageHandler shownBefore = nullptr;

// Hides what the offscreen platform reports about every window.
void ShowMessageOfQt(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith("This plugin does not support "_L1)) {
        shownBefore(type, context, text);
    }
}
}  // namespace

int main(int argc, char* argv[]) {
    shownBefore = qInstallMessageHandler(&ShowMessageOfQt);
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: velmora_tour FOLDER [--dark]\n");
        return 2;
    }
    QDir().mkpath(arguments[1]);
    const QString folder = QDir(arguments[1]).absolutePath();
    for (const QString& file :
         {u"recipe.txt"_s, u"porridge.velmora"_s, u"report.csv"_s, u"backup.db"_s}) {
        QFile::remove(QDir(folder).filePath(file));
    }
    // Only pictures of an earlier tour, no other files.
    for (const QString& old : QDir(folder).entryList({u"[0-9][0-9]-*.png"_s}, QDir::Files)) {
        QFile::remove(QDir(folder).filePath(old));
    }
    if (arguments.contains(u"--dark"_s)) {
        QApplication::setPalette(ReadablePalette(DarkPalette()));
    }
    // Does not use the user's own settings and data.
    const QTemporaryDir temporary;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temporary.path());

    CVelmoraApp velmora(temporary.filePath(u"VelmoraDb.db"_s));
    CPlayer player(FirstTenMinutes(StarterFoodsPath(), folder), folder);
    player.Play();
    // Start runs the first dialogs, so the player starts before it.
    if (!velmora.Start()) {
        FailTour(u"Velmora did not start"_s);
    }
    const int status = QApplication::exec();
    if (!player.IsDone()) {
        FailTour(u"it ended early"_s);
    }
    return status;
}
