// What was eaten or done, as lists show it.
#pragma once

#include <QString>

/// "Apple,raw"; the name alone when the type is empty.
QString NameAndType(const QString& name, const QString& type);
/// "1.00x1 serving"; `amount` as the caller writes numbers.
QString ServingText(const QString& amount, const QString& serving);
