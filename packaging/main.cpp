// velmora_packaging TEMPLATES FOLDER SIZES...: writes in FOLDER what is installed beside the
// programs and follows from their sources: the icon in each of the sizes, in pixels, and from
// TEMPLATES the manual page and the completion of velmora-cli.
#include <QDir>
#include <QGuiApplication>
#include <QPixmap>
#include <QSaveFile>
#include <algorithm>
#include <cstdio>

#include "CommandPages.h"
#include "controls/PaintedIcons.h"

using namespace Qt::StringLiterals;

namespace {
/// A mark in a template, and what is written in its place.
using Replacements = std::vector<std::pair<QString, QString>>;

bool Fill(const QString& from, const QString& to, const Replacements& replacements) {
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) {
        return false;
    }
    QString text = QString::fromUtf8(source.readAll());
    for (const auto& [mark, replacement] : replacements) {
        if (!text.contains(mark)) {
            return false;
        }
        text.replace(mark, replacement);
    }
    target.write(text.toUtf8());
    return target.commit();
}

bool WriteIcons(const QString& folder, const QStringList& sizes) {
    return std::ranges::all_of(sizes, [&folder](const QString& size) {
        const QString path = u"%1/velmora-%2.png"_s.arg(folder, size);
        return ProgramIcon().pixmap(QSize(size.toInt(), size.toInt()), 1).save(path, "PNG");
    });
}
}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: velmora_packaging TEMPLATES FOLDER SIZES...\n");
        return 2;
    }
    const QString& templates = arguments[1];
    const QString& folder = arguments[2];
    const QString page = u"/velmora-cli.1"_s;
    const Replacements pageParts = {{u".\\\" options\n"_s, CommonOptionsPage()},
                                    {u".\\\" commands\n"_s, CommandsPage()}};
    const QString completion = u"/velmora-cli.bash"_s;
    const Replacements rows = {{u"@OPTIONS@"_s, CommonOptionsRow()},
                               {u"@COMMANDS@"_s, CommandRows()}};
    const bool done = WriteIcons(folder, arguments.mid(3)) &&
                      Fill(templates + page, folder + page, pageParts) &&
                      Fill(templates + completion, folder + completion, rows);
    if (!done) {
        std::fprintf(stderr, "velmora_packaging: cannot write %s\n", qPrintable(folder));
    }
    return done ? 0 : 1;
}
