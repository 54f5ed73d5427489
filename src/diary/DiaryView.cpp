#include "diary/DiaryView.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include "app/DateEdit.h"
#include "controls/ColorDialog.h"

using namespace Qt::StringLiterals;

CDiaryView::CDiaryView(CVelmoraDoc& doc, QWidget* parent) : CMainView(parent), m_doc(doc) {
    if (!m_doc.dayShown.isValid()) {
        m_doc.dayShown = QDate::currentDate();
    }
}

QAction* CDiaryView::CreateFrameAction(const QString& text, int command) {
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, [this, command] { emit FrameCommand(command); });
    return action;
}

QAction* CDiaryView::CreateListAction(QWidget* list, const CListCommand& command) {
    auto* action = new QAction(QLatin1StringView(command.text), this);
    action->setShortcuts(command.keys);
    action->setShortcutContext(command.reach == kInList ? Qt::WidgetShortcut : Qt::WindowShortcut);
    action->setToolTip(QLatin1StringView(command.toolTip));
    list->addAction(action);
    return action;
}

void CDiaryView::SetDiaryMenus(std::vector<QAction*> edit, QAction* own) {
    m_menus = {
        {u"File"_s,
         {CreateFrameAction(u"Open profile..."_s, kCommandOpenProfile),
          CreateFrameAction(u"Report..."_s, kCommandReport),
          CreateFrameAction(u"&Exit"_s, kCommandExit)}},
        {u"Edit"_s, std::move(edit)},
        {u"Tools"_s,
         {CreateFrameAction(u"Preferences..."_s, kCommandPreferences),
          CreateFrameAction(u"User..."_s, kCommandUser),
          CreateFrameAction(u"Targets..."_s, kCommandTargets), own,
          CreateFrameAction(u"Purge..."_s, kCommandPurge),
          CreateFrameAction(u"About Velmora..."_s, kCommandAbout)}},
    };
}

QWidget* CDiaryView::CreateDayBar() {
    auto* bar = new QWidget(this);
    m_date = CreateDateEdit(m_doc.dayShown, u"day"_s);
    m_date->setAccessibleName(u"Day shown"_s);
    connect(m_date, &QDateEdit::dateChanged, this, &CDiaryView::SetDay);

    const auto createButton = [&](const QString& name, const QKeySequence& key, auto go) {
        auto* button = new QToolButton(bar);
        button->setObjectName(name);
        button->setAccessibleName(name);
        button->setText(name);
        button->setShortcut(key);
        button->setToolTip(name + u" ("_s + key.toString(QKeySequence::NativeText) + u')');
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
        connect(button, &QToolButton::clicked, this, go);
        return button;
    };
    auto* previous = createButton(u"Previous day"_s, Qt::ALT | Qt::Key_Left,
                                  [this] { SetDay(m_doc.dayShown.addDays(-1)); });
    previous->setArrowType(Qt::LeftArrow);
    auto* today =
        createButton(u"Today"_s, Qt::ALT | Qt::Key_Home, [this] { SetDay(QDate::currentDate()); });
    auto* next = createButton(u"Next day"_s, Qt::ALT | Qt::Key_Right,
                              [this] { SetDay(m_doc.dayShown.addDays(1)); });
    next->setArrowType(Qt::RightArrow);

    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(4, 2, 4, 0);
    layout->addWidget(m_date);
    layout->addWidget(previous);
    layout->addWidget(today);
    layout->addWidget(next);
    layout->addStretch(1);
    return bar;
}

void CDiaryView::SetDay(QDate day) {
    const QSignalBlocker quiet(m_date);
    m_date->setDate(day);
    m_doc.dayShown = m_date->date();
    DayChanged();
}

void CDiaryView::ShowListMenu(const std::vector<QAction*>& actions, QWidget* list,
                              const QPoint& position) {
    QMenu menu(list);
    for (QAction* action : actions) {
        if (action == nullptr) {
            menu.addSeparator();
        } else {
            menu.addAction(action);
        }
    }
    menu.exec(list->mapToGlobal(position));
}

std::optional<quint32> CDiaryView::AskColor(const QString& prompt, const QColor& current) {
    CColorDialog dialog(prompt, RgbOf(current), this);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.GetRgb()) : std::nullopt;
}
