// The date and time fields of the dialogs.
#pragma once

#include <QDateEdit>
#include <QTimeEdit>

/// A field with a calendar to drop down, in the locale's short format with the year in full. Tells
/// a new date when its editing is finished, not at every key.
/// Tab visits fields in the order in which they come to a parent, so `parent` is given where the
/// fields beside it have one.
QDateEdit* CreateDateEdit(QDate date, const QString& objectName, QWidget* parent = nullptr);

/// A field "time" in the locale's format, seconds included.
QTimeEdit* CreateTimeField(QWidget* parent);
