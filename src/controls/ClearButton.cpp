#include "controls/ClearButton.h"

#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

void AddClearButton(QLineEdit& field) {
    field.setClearButtonEnabled(true);
    if (auto* button = field.findChild<QToolButton*>()) {
        button->setAccessibleName(u"Clear"_s);
    }
}
