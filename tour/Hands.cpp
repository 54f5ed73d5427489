#include "Hands.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
void BringIntoSight(QWidget* widget) {
    for (QWidget* parent = widget->parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(parent)) {
            area->ensureWidgetVisible(widget);
        }
    }
}

QModelIndex FindRow(const QAbstractItemView* view, const QString& text) {
    const QAbstractItemModel* model = view->model();
    const QModelIndexList found =
        model->match(model->index(0, 0), Qt::DisplayRole, text, 1,
                     Qt::MatchStartsWith | Qt::MatchCaseSensitive | Qt::MatchRecursive);
    Expect(!found.isEmpty(), u"a row "_s + text);
    return found.front();
}

QPoint ShowRow(QAbstractItemView* view, const QModelIndex& index) {
    view->scrollTo(index);
    QApplication::processEvents();
    const QRect rect = view->visualRect(index) & view->viewport()->rect();
    Expect(!rect.isEmpty(), u"the row to be visible"_s);
    return rect.center();
}

/// Activates the window, as a window manager would when a dialog closes. Fields end their editing
/// only in an active window.
void TakeFocus(QWidget* widget) {
    widget->activateWindow();
    widget->setFocus();
    Expect(QTest::qWaitForWindowActive(widget->window()), u"an active window"_s);
}
}  // namespace

void Click(QWidget* widget) {
    Expect(widget->isEnabled(), widget->objectName() + u" to be enabled"_s);
    BringIntoSight(widget);
    Expect(widget->isVisible(), widget->objectName() + u" to be visible"_s);
    QTest::mouseClick(widget, Qt::LeftButton);
}

void ClickButton(QWidget* window, const QString& text) {
    for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
        if (button->text().remove(u'&').trimmed() == text && button->isVisible()) {
            Click(button);
            return;
        }
    }
    FailTour(u"no button "_s + text);
}

void TypeOn(QWidget* field, const QString& text) {
    BringIntoSight(field);
    TakeFocus(field);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

void Type(QWidget* field, const QString& text) {
    if (auto* box = qobject_cast<QComboBox*>(field)) {
        field = box->lineEdit();
    }
    TypeOn(field, text);
    QTest::keyClick(field, Qt::Key_Tab);
}

void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    TakeFocus(widget);
    QTest::keyClick(widget, key, modifiers);
}

// Uses the keyboard, since a drop-down list ignores clicks just after it has opened.
void Choose(QWidget* comboBox, const QString& text) {
    auto* box = qobject_cast<QComboBox*>(comboBox);
    Expect(box != nullptr, comboBox->objectName() + u" to be a drop-down list"_s);
    BringIntoSight(box);
    box->setFocus();
    const int row = box->findText(text, Qt::MatchStartsWith);
    if (box->isEditable()) {
        QTest::keyClick(box, Qt::Key_Down);  // opens the list
        QWidget* list = QApplication::activePopupWidget();
        Expect(list != nullptr, comboBox->objectName() + u" to open its list"_s);
        QTest::keyClick(list->focusWidget(), Qt::Key_Home);
        for (int step = 0; step < row; ++step) {
            QTest::keyClick(list->focusWidget(), Qt::Key_Down);
        }
        QTest::keyClick(list->focusWidget(), Qt::Key_Return);
    } else {
        QTest::keyClick(box, Qt::Key_Home);
        for (int step = 0; step < row; ++step) {
            QTest::keyClick(box, Qt::Key_Down);
        }
    }
    Expect(box->currentText().startsWith(text), text + u" to be chosen"_s);
}

void ClickTab(QWidget* tabBar, const QString& text) {
    auto* tabs = qobject_cast<QTabBar*>(tabBar);
    Expect(tabs != nullptr, tabBar->objectName() + u" to be tabs"_s);
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->tabText(i) == text) {
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(i).center());
            Expect(tabs->currentIndex() == i, text + u" to be selected"_s);
            return;
        }
    }
    FailTour(u"no tab "_s + text);
}

void ClickMenu(QWidget* frame, const QString& menu, const QString& command) {
    auto* bar = frame->findChild<QMenuBar*>();
    Expect(bar != nullptr, u"a menu bar"_s);
    for (QAction* title : bar->actions()) {
        if (title->text().remove(u'&') != menu) {
            continue;
        }
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
        QMenu* opened = title->menu();
        Expect(opened->isVisible(), u"the menu "_s + menu + u" to open"_s);
        for (QAction* action : opened->actions()) {
            if (action->text().remove(u'&') == command) {
                Expect(action->isEnabled(), command + u" to be enabled"_s);
                QTest::mouseClick(opened, Qt::LeftButton, {},
                                  opened->actionGeometry(action).center());
                return;
            }
        }
    }
    FailTour(u"no command %1 in the menu %2"_s.arg(command, menu));
}

void ClickRow(QWidget* view, const QString& text) {
    auto* rows = qobject_cast<QAbstractItemView*>(view);
    Expect(rows != nullptr, view->objectName() + u" to be a list"_s);
    const QPoint place = ShowRow(rows, FindRow(rows, text));
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, place);
}

void DoubleClickRow(QWidget* view, const QString& text) {
    auto* rows = qobject_cast<QAbstractItemView*>(view);
    Expect(rows != nullptr, view->objectName() + u" to be a list"_s);
    const QPoint place = ShowRow(rows, FindRow(rows, text));
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {}, place);
}

QString MessageText(QWidget* window) {
    auto* box = qobject_cast<QMessageBox*>(window);
    Expect(box != nullptr, u"a message box"_s);
    return box->text();
}
