#include "controls/DropField.h"

#include <QKeyEvent>

void CDropField::showPopup() {
    emit Opening();
    QComboBox::showPopup();
}

void CDropField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        showPopup();
        return;
    }
    QComboBox::keyPressEvent(event);
}
