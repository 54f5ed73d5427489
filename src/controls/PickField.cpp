#include "controls/PickField.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>
#include <algorithm>

CPickField::CPickField(bool isEditable, const QString& accessibleName, QWidget* parent)
    : QComboBox(parent) {
    setEditable(isEditable);
    setInsertPolicy(QComboBox::NoInsert);
    setAccessibleName(accessibleName);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (isEditable) {
        setCompleter(nullptr);
        lineEdit()->setAccessibleName(accessibleName);
    }
}

void CPickField::SetMaxLength(int length) {
    m_maxLength = length;
    lineEdit()->setMaxLength(length);
}

void CPickField::SetText(const QString& text) {
    if (isEditable()) {
        if (text != currentText()) {
            if (m_maxLength > 0) {
                lineEdit()->setMaxLength(std::max(m_maxLength, static_cast<int>(text.size())));
            }
            setEditText(text);
            lineEdit()->setCursorPosition(0);  // show the beginning of a long text
        }
        return;
    }
    clear();
    if (!text.isEmpty()) {
        addItem(text);
    }
}

void CPickField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        emit PickRequested();
        return;
    }
    QComboBox::keyPressEvent(event);
}

// There is no list to go through; the dialog scrolls instead.
void CPickField::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
