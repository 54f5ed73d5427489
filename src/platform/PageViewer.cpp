#include "platform/PageViewer.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {
constexpr int kAnswerMs = 2000;
}

bool HasPageViewer() {
    if (QStandardPaths::findExecutable(u"xdg-open"_s).isEmpty() ||
        !qEnvironmentVariableIsEmpty("BROWSER")) {
        return true;  // opening the page tells
    }
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/html"_s});
    const bool hasAnswered = query.waitForFinished(kAnswerMs) &&
                             query.exitStatus() == QProcess::NormalExit && query.exitCode() == 0;
    return !hasAnswered || !query.readAllStandardOutput().trimmed().isEmpty();
}
