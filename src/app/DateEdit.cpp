#include "app/DateEdit.h"

#include "app/DateText.h"
#include "platform/FileTime.h"

QDateEdit* CreateDateEdit(QDate date, const QString& objectName) {
    auto* edit = new QDateEdit(date);
    edit->setObjectName(objectName);
    edit->setMinimumDate(DateOf(0));  // moments count from there
    edit->setDisplayFormat(ShownDateFormat());
    edit->setCalendarPopup(true);
    edit->setKeyboardTracking(false);
    return edit;
}
