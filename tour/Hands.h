// A user's hands: real clicks and keys on widgets found by name.
#pragma once

#include <QWidget>

#include "Player.h"

/// The widget of that object name inside `window`; fails the tour when there is none.
template <typename Widget = QWidget>
Widget* Find(QWidget* window, const QString& name) {
    auto* widget = window->findChild<Widget*>(name);  // an empty name finds the first
    if (widget == nullptr) {
        FailTour(QStringLiteral("no control ") + name);
    }
    return widget;
}

void Click(QWidget* widget);
/// Clicks a button of a dialog or message box, given by its text without "&".
void ClickButton(QWidget* window, const QString& text);
/// Replaces the text of a field and stays in it.
void TypeOn(QWidget* field, const QString& text);
/// Replaces the text of a field and leaves it.
void Type(QWidget* field, const QString& text);
void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Chooses a row of a drop-down list by its beginning.
void Choose(QWidget* comboBox, const QString& text);
/// Clicks a tab, given by its text.
void ClickTab(QWidget* tabBar, const QString& text);
/// Opens a menu of the frame and clicks one of its commands.
void ClickMenu(QWidget* frame, const QString& menu, const QString& command);
/// Clicks the row whose column 0 begins with `text`; the view scrolls to it first.
void ClickRow(QWidget* view, const QString& text);
void DoubleClickRow(QWidget* view, const QString& text);
/// Text of the message box in front.
QString MessageText(QWidget* window);
