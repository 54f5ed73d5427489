// What is typed where a number belongs.
#pragma once

#include <QLineEdit>

bool HasLetter(QStringView text);

/// A field that takes digits, signs and separators, whatever number they make, and no letters.
QLineEdit* CreateNumberField(const QString& objectName, QWidget* parent = nullptr);
