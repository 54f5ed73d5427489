// The window program.

#include <QApplication>
#include <QCommandLineParser>

#include "frame/Application.h"
#include "platform/VolumePlace.h"

using namespace Qt::StringLiterals;

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"velmora"_s);
    QApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));

    QCommandLineParser arguments;
    arguments.setApplicationDescription(u"Velmora, a personal diet diary."_s);
    const QCommandLineOption volume(u"volume"_s, u"Keep all data in FILE."_s, u"FILE"_s);
    arguments.addOption(volume);
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.process(application);

    CVelmoraApp velmora(arguments.isSet(volume)
                            ? arguments.value(volume)
                            : DefaultVolumePath(QApplication::applicationFilePath()));
    return velmora.Start() ? QApplication::exec() : 1;
}
