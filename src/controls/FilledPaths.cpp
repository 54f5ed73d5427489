#include "controls/FilledPaths.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
QPainterPath PathOf(const QString& commands) {
    QPainterPath path;
    const QStringList words = commands.simplified().split(u' ');
    qsizetype at = 0;
    const auto nextPoint = [&] {
        const QPointF point(words.value(at).toDouble(), words.value(at + 1).toDouble());
        at += 2;
        return point;
    };
    while (at < words.size()) {
        const QString& command = words[at++];
        if (command == "M"_L1) {
            path.moveTo(nextPoint());
        } else if (command == "L"_L1) {
            path.lineTo(nextPoint());
        } else if (command == "C"_L1) {
            const QPointF first = nextPoint();
            const QPointF second = nextPoint();
            path.cubicTo(first, second, nextPoint());
        } else {
            path.closeSubpath();
        }
    }
    return path;
}
}  // namespace

std::vector<CFilledPath> ReadFilledPaths(const QByteArray& svg) {
    std::vector<CFilledPath> paths;
    QXmlStreamReader reader(svg);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "path"_L1) {
            const QXmlStreamAttributes attributes = reader.attributes();
            paths.push_back({PathOf(attributes.value("d"_L1).toString()),
                             QColor(attributes.value("fill"_L1).toString())});
        }
    }
    return paths;
}
