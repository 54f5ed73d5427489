// The words that stand in an empty list.
#pragma once

#include <QString>

class QAbstractScrollArea;
class QLabel;

/// A label "emptyHint" over the rows, as large as they are; the mouse reaches what is below. The
/// list owns it.
QLabel* CreateEmptyHint(QAbstractScrollArea* list, const QString& text = QString());
