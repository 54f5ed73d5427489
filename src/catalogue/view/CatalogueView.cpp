#include "catalogue/view/CatalogueView.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include "app/UndoRules.h"
#include "controls/PaintedIcons.h"
#include "controls/ReportList.h"
#include "controls/UndoActions.h"

using namespace Qt::StringLiterals;

CCatalogueView::CCatalogueView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent)
    : CMainView(parent),
      m_doc(doc),
      m_kind(KindOf(kind)),
      m_rules(doc.Database(), kind),
      m_pages(new QStackedWidget),
      m_browser(new CCatalogueBrowser(doc, m_rules, kind)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    MakeActions();
    ConnectBrowser();
    m_pages->addWidget(m_browser);
    m_emptyPage = MakeEmptyPage();
    m_pages->addWidget(m_emptyPage);
    m_browser->Tree()->setFocus();
}

CCatalogueView::~CCatalogueView() = default;

struct CCatalogueView::CCommand {
    const char* text;  ///< null when the kind has no such command
    QKeySequence shortcut;
    void (CCatalogueView::*run)();
    /// Of the tool button; null for a command without one.
    const char* tip = nullptr;
    EIcon icon = EIcon::Add;
};

void CCatalogueView::MakeActions() {
    using View = CCatalogueView;
    const CKindCommands& texts = m_kind.commands;
    const CKindTips& tips = m_kind.tips;
    const std::array<CCommand, kCommandCount> commands = {{
        {texts.importItems, {}, &View::Import},
        {texts.exportItems, {}, &View::Export},
        {texts.close, QKeySequence::Close, &View::CloseView},
        {"New category", Qt::CTRL | Qt::SHIFT | Qt::Key_N, &View::NewCategory, tips.newCategory,
         EIcon::NewFolder},
        {"Rename category", Qt::Key_F2, &View::RenameCategory},
        {"Delete category...", QKeySequence::Delete, &View::DeleteCategory},
        {texts.renameItems, {}, &View::RenameItems},
        {texts.newItem, QKeySequence::New, &View::NewItem, tips.newItem, EIcon::Add},
        {texts.editItem, Qt::Key_Return, &View::EditSelected},
        {texts.deleteItems, QKeySequence::Delete, &View::DeleteSelected},
        {texts.moveItems, Qt::CTRL | Qt::Key_M, &View::MoveSelected},
        {texts.duplicateItem, Qt::CTRL | Qt::Key_D, &View::DuplicateSelected},
        {texts.find, QKeySequence::Find, &View::Find, tips.find, EIcon::Find},
        {texts.findNext, Qt::Key_F3, &View::FindAgain, tips.findNext, EIcon::FindNext},
        {"Share...", {}, &View::Share},
        {"Take in...", {}, &View::TakeIn},
    }};
    for (size_t i = 0; i < commands.size(); ++i) {
        m_actions[i] = commands[i].text == nullptr ? nullptr : MakeAction(commands[i]);
    }
    LeaveKeysToPanes();
    MakeWindowActions();
    MakeUndo();
}

void CCatalogueView::MakeUndo() {
    const auto nameOf = [this](EUndo direction) {
        return NextName(Database(), direction, kCatalogueScope);
    };
    const auto revert = [this](EUndo direction) {
        RunThenReload([&] { (void)RevertNext(Database(), direction, kCatalogueScope); });
    };
    // A refusal has shown its message.
    m_undo =
        new CUndoActions({.undoName = [nameOf] { return nameOf(EUndo::Undo); },
                          .redoName = [nameOf] { return nameOf(EUndo::Redo); },
                          .undo = [revert] { revert(EUndo::Undo); },
                          .redo = [revert] { revert(EUndo::Redo); },
                          .clear = [this] { (void)ClearHistory(Database(), kCatalogueScope); }},
                         this);
}

void CCatalogueView::RefreshMenus() {
    m_undo->Refresh();
}

QAction* CCatalogueView::MakeAction(const CCommand& command) {
    auto* action = new QAction(Text(command.text), this);
    action->setObjectName(Text(command.text).remove(u"..."_s));
    action->setShortcut(command.shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    if (command.tip != nullptr) {
        action->setToolTip(Text(command.tip));
        action->setIcon(PaintedIcon(command.icon));
    }
    connect(action, &QAction::triggered, this, command.run);
    addAction(action);
    return action;
}

void CCatalogueView::LeaveKeysToPanes() {
    QWidget* tree = m_browser->Tree();
    QWidget* list = m_browser->List();
    for (const auto& [command, widget] : {std::pair(kRenameCategory, tree),
                                          {kRenameItems, tree},
                                          {kDeleteCategory, tree},
                                          {kEditItem, list},
                                          {kDeleteItems, list}}) {
        if (QAction* action = m_actions[command]) {
            removeAction(action);
            action->setShortcutContext(Qt::WidgetShortcut);
            widget->addAction(action);
        }
    }
}

void CCatalogueView::MakeWindowActions() {
    for (const CCatalogueKind& kind : CatalogueKinds()) {
        if (kind.code == m_kind.code) {
            continue;
        }
        auto* action = new QAction(Text(kind.view.menuText), this);
        action->setObjectName(action->text());
        connect(action, &QAction::triggered, this,
                [this, command = kind.view.switchTo] { emit FrameCommand(command); });
        m_windows.push_back(action);
    }
}

void CCatalogueView::CloseView() {
    emit FrameCommand(m_kind.view.closeTo);
}

void CCatalogueView::PlaceRenameKey() {
    const bool isName = !m_browser->ItemName().isEmpty();
    m_actions[kRenameCategory]->setShortcut(isName ? QKeySequence() : QKeySequence(Qt::Key_F2));
    if (QAction* renameItems = m_actions[kRenameItems]) {
        renameItems->setShortcut(isName ? QKeySequence(Qt::Key_F2) : QKeySequence());
    }
}

void CCatalogueView::ConnectBrowser() {
    connect(m_browser, &CCatalogueBrowser::TreeRead, this, [this] {
        const bool hasCategories = m_browser->HasCategories();
        m_pages->setCurrentIndex(hasCategories ? 0 : 1);
        // An invisible focus proxy would still take the focus.
        setFocusProxy(hasCategories ? m_browser->Tree() : m_emptyPage);
    });
    connect(m_browser, &CCatalogueBrowser::TreeSelectionChanged, this,
            &CCatalogueView::PlaceRenameKey);
    connect(m_browser, &CCatalogueBrowser::LabelTyped, this, &CCatalogueView::EndLabelEdit);
    QTreeView* tree = m_browser->Tree();
    connect(tree, &QWidget::customContextMenuRequested, this, [this, tree](const QPoint& at) {
        ShowMenu(tree->viewport(), at,
                 {kNewCategory, kRenameCategory, kDeleteCategory, kCommandCount, kRenameItems,
                  kNewItem, kCommandCount, kImport, kExport, kCommandCount, kShare, kTakeIn});
    });
    CReportList* list = m_browser->List();
    connect(list, &QAbstractItemView::activated, this, &CCatalogueView::EditSelected);
    connect(list, &QWidget::customContextMenuRequested, this, [this, list](const QPoint& at) {
        ShowMenu(list->viewport(), at,
                 {kNewItem, kEditItem, kDeleteItems, kMoveItems, kDuplicateItem, kCommandCount,
                  kFind, kFindNext, kCommandCount, kShare, kTakeIn});
    });
}

QWidget* CCatalogueView::MakeEmptyPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* label = new QLabel(Text(m_kind.view.empty));
    label->setObjectName(u"empty"_s);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    layout->addStretch();
    layout->addWidget(label);
    layout->addSpacing(12);
    layout->addStretch();
    for (const ECommand command : {kImport, kNewCategory}) {
        QAction* action = m_actions[command];
        auto* button = new QPushButton(action->text());
        button->setObjectName(action->objectName());
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        layout->insertWidget(layout->count() - 1, button, 0, Qt::AlignHCenter);
    }
    page->setFocusProxy(page->findChild<QPushButton*>());
    return page;
}

QPushButton* CCatalogueView::AddEmptyPageButton(const QString& text) {
    constexpr int kBelowTheText = 3;
    auto* button = new QPushButton(text);
    static_cast<QVBoxLayout*>(m_emptyPage->layout())
        ->insertWidget(kBelowTheText, button, 0, Qt::AlignHCenter);
    return button;
}

std::vector<CCommandMenu> CCatalogueView::CommandBar() {
    std::vector<QAction*> edit;
    for (const ECommand command :
         {kNewCategory, kRenameCategory, kDeleteCategory, kCommandCount, kRenameItems, kNewItem,
          kEditItem, kDeleteItems, kMoveItems, kDuplicateItem, kCommandCount, kFind, kFindNext}) {
        if (command == kCommandCount) {
            edit.push_back(nullptr);  // a separator
        } else if (m_actions[command] != nullptr) {
            edit.push_back(m_actions[command]);
        }
    }
    const std::vector<QAction*> tail = m_undo->MenuTail();
    edit.insert(edit.end(), tail.begin(), tail.end());
    std::vector<QAction*> file = {m_actions[kImport], m_actions[kExport], nullptr,
                                  m_actions[kClose], nullptr};
    const std::vector<QAction*> own = FileTail();
    file.insert(file.end(), own.begin(), own.end());
    file.insert(file.end(), {m_actions[kShare], m_actions[kTakeIn]});
    std::vector<QAction*> tools = Tools();
    tools.insert(tools.end(), m_windows.begin(), m_windows.end());
    return {
        {u"File"_s, std::move(file)}, {u"Edit"_s, std::move(edit)}, {u"Tools"_s, std::move(tools)}};
}

std::vector<QAction*> CCatalogueView::ToolButtons() {
    std::vector<QAction*> buttons = {m_actions[kNewCategory], m_actions[kNewItem]};
    if (m_actions[kFind] != nullptr) {
        buttons.insert(buttons.end(), {m_actions[kFind], m_actions[kFindNext]});
    }
    return buttons;
}

void CCatalogueView::DataChanged() {
    m_browser->Reload();
}

void CCatalogueView::ShowMenu(QWidget* widget, const QPoint& at,
                              const std::vector<ECommand>& commands) {
    QMenu menu(this);
    for (const ECommand command : commands) {
        if (command == kCommandCount) {
            menu.addSeparator();
        } else if (command == kDeleteCategory) {
            QAction* action = menu.addAction(Text(m_kind.commands.deleteCategoryPopUp));
            connect(action, &QAction::triggered, m_actions[command], &QAction::trigger);
        } else if (m_actions[command] != nullptr) {
            menu.addAction(m_actions[command]);
        }
    }
    m_undo->Refresh();
    AddToMenu(menu, m_undo->MenuTail());
    menu.exec(widget->mapToGlobal(at));
}

void CCatalogueView::ShowStored(int position) {
    m_browser->Reload();
    m_browser->SelectItem(position);
}
