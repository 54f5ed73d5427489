#include "diary/DiaryView.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "app/FrameCommands.h"
#include "controls/ColorDialog.h"
#include "controls/ListPane.h"
#include "controls/PaintedIcons.h"
#include "controls/ReportList.h"
#include "controls/UndoActions.h"
#include "diary/ListSizes.h"
#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kSpacing = 2;
}  // namespace

CDiaryView::CDiaryView(CVelmoraDoc& doc, int& splitterPerMille, QWidget* parent)
    : CMainView(parent),
      m_doc(doc),
      m_splitterPerMille(splitterPerMille),
      m_splitter(new QSplitter(Qt::Vertical, this)),
      m_listPane(new CListPane(m_splitter)) {
    if (!m_doc.dayShown.isValid()) {
        m_doc.dayShown = QDate::currentDate();
    }
    m_dayBar = CreateDayBar();  // before the list, for the order of Tab
    m_splitter->setObjectName(u"split"_s);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this](int position) {
        m_splitterPerMille = PerMilleOf(position, m_splitter->height());
    });
}

void CDiaryView::CreateUndo() {
    const auto scope = [this] { return m_doc.Database().Profiles().GetId(); };
    const auto nameOf = [this, scope](EUndo direction) {
        return NextName(m_doc.Database(), direction, scope());
    };
    m_undo = new CUndoActions({.undoName = [nameOf] { return nameOf(EUndo::Undo); },
                               .redoName = [nameOf] { return nameOf(EUndo::Redo); },
                               .undo = [this] { Revert(EUndo::Undo); },
                               .redo = [this] { Revert(EUndo::Redo); },
                               .clear =
                                   [this, scope] {
                                       // A refusal has shown its message.
                                       (void)ClearHistory(m_doc.Database(), scope());
                                   }},
                              this);
}

void CDiaryView::Revert(EUndo direction) {
    const int place = m_list->CurrentPlace();
    if (RevertNext(m_doc.Database(), direction, m_doc.Database().Profiles().GetId())) {
        StoreLayout();
        DataChanged();
        m_list->SelectPlace(place);
    }
}

void CDiaryView::RefreshMenus() {
    m_undo->Refresh();
}

std::vector<QAction*> CDiaryView::ToolButtons() {
    return {m_commands[kAdd], m_commands[kDelete]};
}

QAction* CDiaryView::CreateFrameAction(const QString& text, int command) {
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, [this, command] { emit FrameCommand(command); });
    return action;
}

void CDiaryView::SetCommands(CReportList* list, const std::vector<CListCommand>& commands,
                             QAction* own, const std::vector<CListCommand>& more) {
    m_list = list;
    m_listPane->SetList(list);
    for (const CListCommand& command : commands) {
        m_commands.push_back(CreateListAction(command));
    }
    for (const CListCommand& command : more) {
        m_more.push_back(CreateListAction(command));
    }
    m_commands[kAdd]->setIcon(PaintedIcon(EIcon::Add));
    m_commands[kDelete]->setIcon(PaintedIcon(EIcon::Delete));
    connect(list, &QAbstractItemView::activated, m_commands[kEdit], &QAction::trigger);
    CreateUndo();
    connect(list, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        m_undo->Refresh();
        ShowMenu(EditCommands(), m_list->viewport(), position);
    });
    SetMenus(own);
}

QAction* CDiaryView::CreateListAction(const CListCommand& command) {
    auto* action = new QAction(QLatin1StringView(command.text), this);
    action->setShortcuts(command.keys);
    action->setShortcutContext(command.reach == kInList ? Qt::WidgetShortcut : Qt::WindowShortcut);
    action->setToolTip(QLatin1StringView(command.toolTip));
    connect(action, &QAction::triggered, this, [this, run = command.run] {
        if (m_date->TakeTyped()) {  // a shortcut or button does not end the editing of the day
            run();
        }
    });
    m_list->addAction(action);
    return action;
}

std::vector<QAction*> CDiaryView::EditCommands() {
    std::vector<QAction*> commands = m_commands;
    const std::vector<QAction*> tail = m_undo->MenuTail();
    commands.insert(commands.end(), tail.begin(), tail.end());
    commands.insert(commands.end(), m_more.begin(), m_more.end());
    return commands;
}

void CDiaryView::SetMenus(QAction* own) {
    m_menus = {
        {u"File"_s,
         {CreateFrameAction(u"Open profile..."_s, kCommandOpenProfile),
          CreateFrameAction(u"Report..."_s, kCommandReport),
          CreateFrameAction(u"&Exit"_s, kCommandExit)}},
        {u"Edit"_s, EditCommands()},
        {u"Tools"_s,
         {CreateFrameAction(u"Preferences..."_s, kCommandPreferences),
          CreateFrameAction(u"User..."_s, kCommandUser),
          CreateFrameAction(u"Targets..."_s, kCommandTargets), own,
          CreateFrameAction(u"Purge..."_s, kCommandPurge),
          CreateFrameAction(u"About Velmora..."_s, kCommandAbout), nullptr,
          CreateFrameAction(u"Back up..."_s, kCommandBackUp),
          CreateFrameAction(u"Backup folder..."_s, kCommandBackupFolder),
          CreateFrameAction(u"Restore..."_s, kCommandRestore),
          CreateFrameAction(u"Check data..."_s, kCommandCheckData)}},
    };
}

void CDiaryView::LayOutTab(const std::vector<QWidget*>& between) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    layout->addWidget(m_dayBar);
    for (QWidget* widget : between) {
        layout->addWidget(widget);
    }
    layout->addWidget(m_splitter, 1);
    m_list->setFocus();
}

void CDiaryView::ShowNote(const QString& text) {
    m_listPane->SetNote(text);
}

int CDiaryView::ListHeight(int perMille, int viewHeight) const {
    return EntryListHeight(perMille, viewHeight);
}

void CDiaryView::ShowSplit() {
    const int height = m_splitter->height();
    const int list = ListHeight(m_splitterPerMille, height);
    m_splitter->setSizes({list, std::max(0, height - list)});
}

void CDiaryView::resizeEvent(QResizeEvent* event) {
    CMainView::resizeEvent(event);
    ShowSplit();
}

void CDiaryView::changeEvent(QEvent* event) {
    CMainView::changeEvent(event);
    // The palette also changes before the view is complete.
    if (event->type() == QEvent::PaletteChange && !m_commands.empty()) {
        ShowColors();
    }
}

QWidget* CDiaryView::CreateDayBar() {
    auto* bar = new QWidget(this);
    m_date = CreateDateEdit(m_doc.dayShown, u"day"_s, bar);
    m_date->setAccessibleName(u"Day shown"_s);
    connect(m_date, &CDateField::dateChanged, this, &CDiaryView::SetDay);

    const auto createButton = [&](const QString& name, const QKeySequence& key, auto go) {
        auto* button = new QToolButton(bar);
        button->setObjectName(name);
        button->setAccessibleName(name);
        button->setText(name);
        button->setShortcut(key);
        button->setToolTip(name + u" ("_s + key.toString(QKeySequence::NativeText) + u')');
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
        connect(button, &QToolButton::clicked, this, [this, go] {
            if (m_date->TakeTyped()) {
                go();
            }
        });
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

    for (const auto& [key, button] :
         {std::pair{Qt::Key_PageUp, previous}, std::pair{Qt::Key_PageDown, next}}) {
        auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
        connect(shortcut, &QShortcut::activated, button, &QToolButton::click);
    }

    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 2, 0, 0);
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

void CDiaryView::ShowMenu(const std::vector<QAction*>& actions, QWidget* widget,
                          const QPoint& position) {
    QMenu menu(widget);
    AddToMenu(menu, actions);
    menu.exec(widget->mapToGlobal(position));
}

std::optional<quint32> CDiaryView::AskColor(const QString& prompt, const QColor& current) {
    CColorDialog dialog(prompt, RgbOf(current), this);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.GetRgb()) : std::nullopt;
}
