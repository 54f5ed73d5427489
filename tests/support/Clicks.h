// What a user does with the widgets of a window.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "controls/Grid.h"

using namespace Qt::StringLiterals;

template <typename Widget>
Widget* Find(const QWidget& window, const char* name) {
    return window.findChild<Widget*>(QLatin1StringView(name));
}

/// The line under a list; empty when it is hidden.
inline QString NoteOf(const QWidget& window) {
    const auto* note = Find<QLabel>(window, "listNote");
    return note->isVisible() ? note->text() : QString();
}

inline void Show(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

inline void Press(const QWidget& window, const char* button) {
    QTest::mouseClick(Find<QPushButton>(window, button), Qt::LeftButton);
}

/// In the place of what stands in the field.
inline void Replace(QLineEdit* edit, const QString& text) {
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

/// Opens a cell and replaces its text, which is still to be ended.
inline bool TypeInto(CGrid* grid, int row, int column, const QString& text) {
    auto* edit = grid->OpenCell(row, column) ? QApplication::focusWidget() : nullptr;
    if (edit == nullptr) {
        return false;
    }
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    return true;
}

/// Lets `act` work on the modal dialog that is about to open, and sees that it closes.
template <typename Dialog>
void OnDialog(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            qFatal("The expected dialog is not open.");
        }
        const QPointer<QDialog> open = dialog;
        act(*dialog);
        // A check that failed has left it open.
        if (open && open->isVisible()) {
            open->reject();
        }
    });
}
