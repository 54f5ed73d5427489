// The window program.

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>

#include "frame/Application.h"
#include "platform/Process.h"
#include "platform/VolumePlace.h"

using namespace Qt::StringLiterals;

namespace {
int Refuse(const QString& path) {
    std::fprintf(stderr, "velmora: %s is not valid UTF-8\n", qPrintable(path));
    return 2;
}
}  // namespace

int main(int argc, char* argv[]) {
    PrepareProcess();
    if (const std::optional<QString> word = FirstUndecodableWord(argc, argv)) {
        return Refuse(*word);
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"velmora"_s);
    QApplication::setDesktopFileName(u"velmora"_s);
    QApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));

    QCommandLineParser arguments;
    arguments.setApplicationDescription(u"Velmora, a personal diet diary."_s);
    const QCommandLineOption volume(u"volume"_s, u"Keep all data in FILE."_s, u"FILE"_s);
    arguments.addOption(volume);
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.process(application);

    const QString path = arguments.isSet(volume)
                             ? arguments.value(volume)
                             : DefaultVolumePath(QApplication::applicationFilePath());
    if (HasLostBytes(path)) {
        return Refuse(path);
    }
    CVelmoraApp velmora(path);
    return velmora.Start() ? QApplication::exec() : 1;
}
