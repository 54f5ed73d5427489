#include "controls/InputPanel.h"

#include <QGuiApplication>
#include <QInputMethod>

void RaiseInputPanel() {
    QGuiApplication::inputMethod()->show();
}

void LowerInputPanel() {
    QGuiApplication::inputMethod()->hide();
}
