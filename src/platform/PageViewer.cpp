#include "platform/PageViewer.h"

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int kAnswerMs = 2000;

/// The opener tries the commands that the variable lists one after the other.
bool HasNamedBrowser() {
    const QStringList commands = qEnvironmentVariable("BROWSER").split(u':');
    return std::ranges::any_of(commands, [](const QString& command) {
        const QString program = command.section(u' ', 0, 0, QString::SectionSkipEmpty);
        return !QStandardPaths::findExecutable(program).isEmpty();
    });
}
}  // namespace

bool HasPageViewer() {
    if (QStandardPaths::findExecutable(u"xdg-open"_s).isEmpty() || HasNamedBrowser()) {
        return true;  // opening the page tells
    }
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/html"_s});
    const bool hasAnswered = query.waitForFinished(kAnswerMs) &&
                             query.exitStatus() == QProcess::NormalExit && query.exitCode() == 0;
    return !hasAnswered || !query.readAllStandardOutput().trimmed().isEmpty();
}
