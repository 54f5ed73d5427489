#include "app/DateText.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QString ShownDateFormat() {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(u"yyyy"_s)) {
        format.replace(u"yy"_s, u"yyyy"_s);
    }
    return format;
}

QString ShownDate(QDate date) {
    return QLocale().toString(date, ShownDateFormat());
}
