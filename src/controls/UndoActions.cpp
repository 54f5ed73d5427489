#include "controls/UndoActions.h"

#include "platform/CutText.h"

#include <QAction>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {
/// Names of steps hold names of foods, which may be long.
constexpr int kLongestName = 32;

QString MenuText(const QString& command, QString name) {
    if (name.size() > kLongestName) {
        name = CutText(name, kLongestName).toString() + u'\u2026';
    }
    return (command + u' ' + name.replace(u'&', u"&&"_s)).trimmed();
}
}  // namespace

CUndoActions::CUndoActions(CUndoHost host, QWidget* view)
    : QObject(view),
      m_host(std::move(host)),
      m_undo(CreateAction(u"Undo"_s, view, m_host.undo)),
      m_redo(CreateAction(u"Redo"_s, view, m_host.redo)),
      m_clear(CreateAction(u"Clear history..."_s, view, m_host.clear)) {
    m_undo->setShortcut(Qt::CTRL | Qt::Key_Z);
    m_redo->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
}

QAction* CUndoActions::CreateAction(const QString& name, QWidget* view,
                                    const std::function<void()>& run) {
    auto* action = new QAction(name, view);
    action->setObjectName(QString(name).remove(u"..."_s));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, run);
    view->addAction(action);
    return action;
}

std::vector<QAction*> CUndoActions::MenuTail() {
    return {nullptr, m_undo, m_redo, m_clear};
}

void CUndoActions::Refresh() {
    m_undo->setText(MenuText(u"Undo"_s, m_host.undoName()));
    m_redo->setText(MenuText(u"Redo"_s, m_host.redoName()));
}
