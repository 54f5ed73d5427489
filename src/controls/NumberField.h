// A field for a number.
#pragma once

#include <QLineEdit>

/// Takes digits, signs and separators, whatever number they make, and no letters.
QLineEdit* CreateNumberField(const QString& objectName, QWidget* parent = nullptr);
