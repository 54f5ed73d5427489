// The date and time fields of the dialogs.
#pragma once

#include <QTimeEdit>

#include "controls/DateField.h"

/// A date field in the locale's short format with the year in full. It emits dateChanged when
/// editing is finished, not at every key. Tab visits fields in the order in which they got their
/// parent, so pass `parent` where the neighbouring fields have one.
CDateField* CreateDateEdit(QDate date, const QString& objectName, QWidget* parent = nullptr);

/// A field "time" in the locale's format, seconds included.
QTimeEdit* CreateTimeField(QWidget* parent);
