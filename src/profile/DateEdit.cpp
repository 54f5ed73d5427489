#include "profile/DateEdit.h"

#include <QLocale>

#include "app/DateText.h"
#include "platform/FileTime.h"

using namespace Qt::StringLiterals;

CDateField* CreateDateEdit(QDate date, const QString& objectName, QWidget* parent) {
    auto* edit = new CDateField(date, ShownDateFormat(), parent);
    edit->setObjectName(objectName);
    edit->setMinimumDate(DateOf(0));  // the earliest moment a diary can store
    return edit;
}

QTimeEdit* CreateTimeField(QWidget* parent) {
    auto* field = new QTimeEdit(parent);
    field->setObjectName(u"time"_s);
    field->setAccessibleName(u"Time"_s);
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    const qsizetype minutes = format.indexOf("mm"_L1);
    if (!format.contains("ss"_L1) && minutes > 0) {
        // After the minutes, with the separator that precedes them.
        format.insert(minutes + 2, format.sliced(minutes - 1, 1) + "ss"_L1);
    }
    field->setDisplayFormat(format);
    return field;
}
