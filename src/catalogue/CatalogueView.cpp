#include "catalogue/CatalogueView.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

#include "catalogue/CatalogueKinds.h"
#include "catalogue/CategoryTreeModel.h"
#include "controls/InputPanel.h"
#include "controls/ReportList.h"
#include "diary/PaintedIcons.h"

using namespace Qt::StringLiterals;

namespace {
/// Narrower views put the list below the tree.
constexpr int kNarrowWidth = 480;
constexpr int kWhole = 1000;
/// The name's share of what both texts have of the list.
constexpr int kNameShare = 450;
/// Splitter handle and frame, for which fixed columns leave room.
constexpr int kListFrame = 10;

/// The windows of the catalogue, each reached from the others.
struct CCatalogueWindow {
    EFrameCommand command;
    const char* text;
    ECatalogueKind kind;
};
constexpr CCatalogueWindow kCatalogueWindows[] = {
    {kSwitchToFoods, "Foods...", ECatalogueKind::Foods},
    {kSwitchToMenus, "Menus...", ECatalogueKind::Menus},
    {kSwitchToRecipes, "Recipes...", ECatalogueKind::Recipes},
    {kSwitchToExlib, "Exercises...", ECatalogueKind::Exercises},
};
}  // namespace

CCatalogueView::CCatalogueView(CVelmoraDoc& doc, const CCatalogueTexts& texts, QWidget* parent)
    : CMainView(parent),
      m_doc(doc),
      m_texts(texts),
      m_rules(doc.Database(), texts.kind),
      m_pages(new QStackedWidget),
      m_splitter(new QSplitter),
      m_tree(new QTreeView),
      m_model(
          new CCategoryTreeModel(doc.Database(), texts.kind, texts.renameItems != nullptr, this)),
      m_list(new CReportList(Text(KindOf(texts.kind).plural))),
      m_namesInTree(CatalogueLayoutOf(texts.kind).namesType) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    MakeActions();
    MakeTree();
    MakeList();
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_tree);
    m_splitter->addWidget(m_list);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] {
        const QList<int> sizes = m_splitter->sizes();
        State().splitterPerMille = sizes[0] * kWhole / std::max(1, sizes[0] + sizes[1]);
    });
    m_pages->addWidget(m_splitter);
    m_emptyPage = MakeEmptyPage();
    m_pages->addWidget(m_emptyPage);
    setFocusProxy(m_tree);
    m_tree->setFocus();
}

CCatalogueView::~CCatalogueView() = default;

void CCatalogueView::MakeActions() {
    struct CCommand {
        const char* text;  ///< null where the kind has no such command
        QKeySequence shortcut;
        void (CCatalogueView::*run)();
        const char* tip = nullptr;
        const char* iconName = nullptr;
        QStyle::StandardPixmap icon = QStyle::SP_CustomBase;
    };
    using View = CCatalogueView;
    const std::array<CCommand, kCommandCount> commands = {{
        {m_texts.importItems, {}, &View::Import},
        {m_texts.exportItems, {}, &View::Export},
        {m_texts.close, QKeySequence::Close, &View::CloseView},
        {"New category", Qt::CTRL | Qt::SHIFT | Qt::Key_N, &View::NewCategory,
         m_texts.newCategoryTip, "folder-new", QStyle::SP_FileDialogNewFolder},
        {"Rename category", Qt::Key_F2, &View::RenameCategory},
        {"Delete category...", QKeySequence::Delete, &View::DeleteCategory},
        {m_texts.renameItems, {}, &View::RenameItems},
        {m_texts.newItem, QKeySequence::New, &View::NewItem, m_texts.newItemTip},
        {m_texts.editItem, Qt::Key_Return, &View::EditSelected},
        {m_texts.deleteItems, QKeySequence::Delete, &View::DeleteSelected},
        {m_texts.moveItems, Qt::CTRL | Qt::Key_M, &View::MoveSelected},
        {m_texts.duplicateItem, Qt::CTRL | Qt::Key_D, &View::DuplicateSelected},
        {m_texts.find, QKeySequence::Find, &View::Find, m_texts.findTip, "edit-find",
         QStyle::SP_FileDialogContentsView},
        {m_texts.findNext, Qt::Key_F3, &View::FindAgain, m_texts.findNextTip, "go-down-search",
         QStyle::SP_ArrowDown},
    }};
    for (size_t i = 0; i < commands.size(); ++i) {
        const CCommand& command = commands[i];
        if (command.text == nullptr) {
            continue;
        }
        auto* action = new QAction(Text(command.text), this);
        action->setObjectName(Text(command.text).remove(u"..."_s));
        action->setShortcut(command.shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        if (command.tip != nullptr) {
            action->setToolTip(Text(command.tip));
        }
        if (command.iconName != nullptr) {
            action->setIcon(QIcon::fromTheme(Text(command.iconName),
                                             style()->standardIcon(command.icon, nullptr, this)));
        }
        connect(action, &QAction::triggered, this, command.run);
        addAction(action);
        m_actions[i] = action;
    }
    m_actions[kNewItem]->setIcon(AddIcon(palette().color(QPalette::ButtonText)));
    // These keys mean something else while a label is edited and outside their own widget.
    for (const auto& [command, widget] : {std::pair<ECommand, QWidget*>{kRenameCategory, m_tree},
                                          {kRenameItems, m_tree},
                                          {kDeleteCategory, m_tree},
                                          {kEditItem, m_list},
                                          {kDeleteItems, m_list}}) {
        if (QAction* action = m_actions[command]) {
            removeAction(action);
            action->setShortcutContext(Qt::WidgetShortcut);
            widget->addAction(action);
        }
    }
    for (const auto& [command, text, kind] : kCatalogueWindows) {
        if (kind == m_texts.kind) {
            continue;
        }
        auto* action = new QAction(Text(text), this);
        action->setObjectName(action->text());
        connect(action, &QAction::triggered, this,
                [this, command = command] { emit FrameCommand(command); });
        m_windows.push_back(action);
    }
}

void CCatalogueView::CloseView() {
    const bool isExercises = m_texts.kind == ECatalogueKind::Exercises;
    emit FrameCommand(isExercises ? kSwitchToExercises : kSwitchToDiet);
}

void CCatalogueView::PlaceRenameKey() {
    const bool isName = !m_model->NameOf(m_tree->currentIndex()).isEmpty();
    m_actions[kRenameCategory]->setShortcut(isName ? QKeySequence() : QKeySequence(Qt::Key_F2));
    if (QAction* renameItems = m_actions[kRenameItems]) {
        renameItems->setShortcut(isName ? QKeySequence(Qt::Key_F2) : QKeySequence());
    }
}

void CCatalogueView::MakeTree() {
    m_tree->setObjectName(u"categories"_s);
    m_tree->setAccessibleName(u"Categories"_s);
    m_tree->setModel(m_model);
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setExpandsOnDoubleClick(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CCatalogueView::FillList);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CCatalogueView::PlaceRenameKey);
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        ShowMenu(m_tree->viewport(), at,
                 {kNewCategory, kRenameCategory, kDeleteCategory, kCommandCount, kRenameItems,
                  kNewItem, kCommandCount, kImport, kExport});
    });
    // The editor is still at work when its text arrives, and the answer replaces the tree.
    connect(m_model, &CCategoryTreeModel::LabelTyped, this, &CCatalogueView::EndLabelEdit,
            Qt::QueuedConnection);
    connect(m_tree->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &LowerInputPanel);
}

void CCatalogueView::MakeList() {
    m_list->setObjectName(u"items"_s);
    m_list->SetColumns(CatalogueLayoutOf(m_texts.kind).namesType ? QStringList{u"Name"_s, u"Type"_s}
                                                                 : QStringList{u"Name"_s});
    m_list->header()->setSectionResizeMode(0, QHeaderView::Interactive);
    m_list->header()->setStretchLastSection(true);
    connect(m_list, &QAbstractItemView::activated, this, &CCatalogueView::EditSelected);
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        ShowMenu(m_list->viewport(), at,
                 {kNewItem, kEditItem, kDeleteItems, kMoveItems, kDuplicateItem, kCommandCount,
                  kFind, kFindNext});
    });
}

void CCatalogueView::AddColumn(const QString& title, const QString& widest,
                               std::function<QString(const CCategoryListEntry&)> text) {
    constexpr int kCellMargins = 12;
    m_list->SetColumns({u"Name"_s, u"Type"_s, title});
    m_addedText = std::move(text);
    m_addedWidth = m_list->fontMetrics().horizontalAdvance(widest) + kCellMargins;
}

QWidget* CCatalogueView::MakeEmptyPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* label = new QLabel(Text(m_texts.empty));
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
    std::vector<QAction*> tools = Tools();
    tools.insert(tools.end(), m_windows.begin(), m_windows.end());
    return {{u"File"_s, {m_actions[kImport], m_actions[kExport], nullptr, m_actions[kClose]}},
            {u"Edit"_s, std::move(edit)},
            {u"Tools"_s, std::move(tools)}};
}

std::vector<QAction*> CCatalogueView::ToolButtons() {
    std::vector<QAction*> buttons = {m_actions[kNewCategory], m_actions[kNewItem]};
    if (m_actions[kFind] != nullptr) {
        buttons.insert(buttons.end(), {m_actions[kFind], m_actions[kFindNext]});
    }
    return buttons;
}

void CCatalogueView::DataChanged() {
    Reload();
}

void CCatalogueView::SetSplitterPerMille(int perMille) {
    State().splitterPerMille = perMille;
    const int length =
        m_splitter->orientation() == Qt::Horizontal ? m_splitter->width() : m_splitter->height();
    m_splitter->setSizes({length * perMille / kWhole, length * (kWhole - perMille) / kWhole});
}

void CCatalogueView::resizeEvent(QResizeEvent* event) {
    CMainView::resizeEvent(event);
    const Qt::Orientation wanted = width() < kNarrowWidth ? Qt::Vertical : Qt::Horizontal;
    m_splitter->setOrientation(wanted);
    m_splitter->resize(size());
    SetSplitterPerMille(State().splitterPerMille);
    const int listWidth =
        wanted == Qt::Vertical ? width() : width() * (kWhole - State().splitterPerMille) / kWhole;
    const int textsWidth = listWidth - m_addedWidth - (m_addedText ? kListFrame : 0);
    const int nameWidth = textsWidth * kNameShare / kWhole;
    // The last column takes what is left.
    m_list->SetColumnWidths({nameWidth, m_addedText ? textsWidth - nameWidth : 0, 0});
}

void CCatalogueView::ShowMenu(QWidget* widget, const QPoint& at,
                              const std::vector<ECommand>& commands) {
    QMenu menu(this);
    for (const ECommand command : commands) {
        if (command == kCommandCount) {
            menu.addSeparator();
        } else if (command == kDeleteCategory) {
            QAction* action = menu.addAction(Text(m_texts.deleteCategoryPopUp));
            connect(action, &QAction::triggered, m_actions[command], &QAction::trigger);
        } else if (m_actions[command] != nullptr) {
            menu.addAction(m_actions[command]);
        }
    }
    menu.exec(widget->mapToGlobal(at));
}

void CCatalogueView::Reload() {
    const QModelIndex current = m_tree->currentIndex();
    const qint32 categoryId = m_model->CategoryOf(current);
    const QString name = m_model->NameOf(current);
    const std::vector<int> rows = m_list->SelectedRows();
    FillTree();
    SelectInTree(categoryId, name);
    if (!rows.empty()) {
        m_list->SelectRow(rows.front());
    }
}

/// Opens what was open, and stays where it was scrolled to.
void CCatalogueView::FillTree() {
    std::vector<qint32> open;
    for (int row = 0; row < m_model->rowCount({}); ++row) {
        const QModelIndex category = m_model->index(row, 0, {});
        if (m_tree->isExpanded(category)) {
            open.push_back(m_model->CategoryOf(category));
        }
    }
    const int scrolled = m_tree->verticalScrollBar()->value();
    {
        const QSignalBlocker quiet(m_tree->selectionModel());
        m_model->Reload(m_namesInTree);
    }
    for (const qint32 categoryId : open) {
        m_tree->expand(m_model->IndexOf(categoryId));
    }
    m_tree->doItemsLayout();
    m_tree->verticalScrollBar()->setValue(scrolled);
    m_pages->setCurrentIndex(m_model->rowCount({}) > 0 ? 0 : 1);
}

/// The first category stands in for one that is not there.
void CCatalogueView::SelectInTree(qint32 categoryId, const QString& name) {
    QModelIndex index = m_model->IndexOf(categoryId, name);
    if (!index.isValid()) {
        index = m_model->index(0, 0, {});
    }
    if (index == m_tree->currentIndex()) {
        FillList();
    } else {
        m_tree->setCurrentIndex(index);
    }
}

void CCatalogueView::FillList() {
    const QModelIndex current = m_tree->currentIndex();
    const QString name = m_model->NameOf(current);
    const qint32 categoryId = m_model->CategoryOf(current);
    m_entries = name.isEmpty() ? Database().FillCategoryList(m_texts.kind, categoryId)
                               : m_rules.ItemsOfName(categoryId, name);
    ShowEntries();
}

void CCatalogueView::ShowEntries() {
    m_addedCells.clear();
    if (m_addedText) {
        std::ranges::transform(m_entries, std::back_inserter(m_addedCells), m_addedText);
    }
    m_list->SetRows({static_cast<int>(m_entries.size()),
                     [this](int row, int column) {
                         const CCategoryListEntry& entry = m_entries[static_cast<size_t>(row)];
                         if (column > 1) {
                             return m_addedCells[row];
                         }
                         return column == 0 ? entry.name : entry.type;
                     },
                     {}});
}

void CCatalogueView::SelectItem(int position) {
    CCategoryListEntry entry{};
    if (!ReadEntry(position, entry)) {
        return;
    }
    const QModelIndex current = m_tree->currentIndex();
    const bool isShown =
        m_model->CategoryOf(current) == entry.categoryId &&
        (m_model->NameOf(current).isEmpty() || m_model->NameOf(current) == entry.name);
    if (!isShown) {
        SelectInTree(entry.categoryId, QString());
    }
    const auto place = [this, position] {
        return std::ranges::find(m_entries, position, &CCategoryListEntry::position);
    };
    if (place() == m_entries.end()) {
        SelectInTree(entry.categoryId, entry.name);
    }
    if (place() == m_entries.end()) {
        // A full list leaves it out, and no name stands for it in the tree.
        m_entries = {entry};
        ShowEntries();
    }
    m_list->SelectRow(static_cast<int>(place() - m_entries.begin()));
}

void CCatalogueView::ShowStored(int position) {
    Reload();
    SelectItem(position);
}

bool CCatalogueView::ReadEntry(int position, CCategoryListEntry& entry) {
    CCatalogueItem item(m_texts.kind);
    if (position < 0 || !Items().ReadQuietly(position, item)) {
        return false;
    }
    entry = {position, item.GetCategoryId(), item.GetName(), item.GetType()};
    return true;
}
