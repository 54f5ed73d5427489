#include "app/DateEdit.h"

#include <QLocale>

#include "platform/FileTime.h"

using namespace Qt::StringLiterals;

QDateEdit* CreateDateEdit(QDate date, const QString& objectName) {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(u"yyyy"_s)) {
        format.replace(u"yy"_s, u"yyyy"_s);
    }
    auto* edit = new QDateEdit(date);
    edit->setObjectName(objectName);
    edit->setMinimumDate(DateOf(0));  // moments count from there
    edit->setDisplayFormat(format);
    edit->setCalendarPopup(true);
    edit->setKeyboardTracking(false);
    return edit;
}
