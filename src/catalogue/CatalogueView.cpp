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

using namespace Qt::StringLiterals;

namespace {
/// Narrower views put the list below the tree.
constexpr int kNarrowWidth = 480;
constexpr int kWhole = 1000;
/// The name's share of the list; the type takes the rest.
constexpr int kNameShare = 450;
}  // namespace

CCatalogueView::CCatalogueView(CVelmoraDoc& doc, const CCatalogueTexts& texts, QWidget* parent)
    : CMainView(parent),
      m_doc(doc),
      m_texts(texts),
      m_pages(new QStackedWidget),
      m_splitter(new QSplitter),
      m_tree(new QTreeView),
      m_model(new CCategoryTreeModel(doc.Database(), texts.kind, this)),
      m_list(new CReportList(Text(KindOf(texts.kind).plural))) {
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
        m_splitterPerMille = sizes[0] * kWhole / std::max(1, sizes[0] + sizes[1]);
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
        ECommand command;
        const char* text;
        QKeySequence shortcut;
        const char* tip;
        QStyle::StandardPixmap icon;
        const char* iconName;
        void (CCatalogueView::*run)();
    };
    constexpr auto kNoIcon = QStyle::SP_CustomBase;
    const std::array<CCommand, kCommandCount> commands = {{
        {kImport, m_texts.importItems, {}, nullptr, kNoIcon, nullptr, &CCatalogueView::Import},
        {kExport, m_texts.exportItems, {}, nullptr, kNoIcon, nullptr, &CCatalogueView::Export},
        {kClose, m_texts.close, {}, nullptr, kNoIcon, nullptr, nullptr},
        {kNewCategory,
         "New category",
         {},
         m_texts.newCategoryTip,
         QStyle::SP_FileDialogNewFolder,
         "folder-new",
         &CCatalogueView::NewCategory},
        {kRenameCategory, "Rename category", Qt::Key_F2, nullptr, kNoIcon, nullptr,
         &CCatalogueView::RenameCategory},
        {kNewItem, m_texts.newItem, QKeySequence::New, m_texts.newItemTip, QStyle::SP_FileIcon,
         "document-new", &CCatalogueView::NewItem},
        {kEditItem, m_texts.editItem, {}, nullptr, kNoIcon, nullptr, &CCatalogueView::EditSelected},
        {kDeleteItems, m_texts.deleteItems, QKeySequence::Delete, nullptr, kNoIcon, nullptr,
         &CCatalogueView::DeleteSelected},
        {kFind, m_texts.find, QKeySequence::Find, m_texts.findTip,
         QStyle::SP_FileDialogContentsView, "edit-find", &CCatalogueView::Find},
        {kFindNext, m_texts.findNext, Qt::Key_F3, m_texts.findNextTip, QStyle::SP_ArrowDown,
         "go-down-search", &CCatalogueView::FindNext},
        {kPreferences,
         "Preferences...",
         {},
         nullptr,
         kNoIcon,
         nullptr,
         &CCatalogueView::OpenPreferences},
    }};
    for (const CCommand& command : commands) {
        auto* action = new QAction(Text(command.text), this);
        action->setObjectName(Text(command.text).remove(u"..."_s));
        action->setShortcut(command.shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        if (command.tip != nullptr) {
            action->setToolTip(Text(command.tip));
            action->setIcon(QIcon::fromTheme(Text(command.iconName),
                                             style()->standardIcon(command.icon, nullptr, this)));
        }
        if (command.run != nullptr) {
            connect(action, &QAction::triggered, this, command.run);
        }
        addAction(action);
        m_actions[command.command] = action;
    }
    connect(m_actions[kClose], &QAction::triggered, this,
            [this] { emit FrameCommand(kSwitchToDiet); });
    // These keys mean something else while a label is edited and outside their own widget.
    for (const auto& [command, widget] :
         {std::pair<ECommand, QWidget*>{kRenameCategory, m_tree}, {kDeleteItems, m_list}}) {
        removeAction(m_actions[command]);
        m_actions[command]->setShortcutContext(Qt::WidgetShortcut);
        widget->addAction(m_actions[command]);
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
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        ShowMenu(m_tree->viewport(), at,
                 {kNewCategory, kRenameCategory, kCommandCount, kNewItem, kCommandCount, kImport,
                  kExport});
    });
    // The editor is still at work when its text arrives, and the answer replaces the tree.
    connect(m_model, &CCategoryTreeModel::LabelTyped, this, &CCatalogueView::EndLabelEdit,
            Qt::QueuedConnection);
    connect(m_tree->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &LowerInputPanel);
}

void CCatalogueView::MakeList() {
    m_list->setObjectName(u"items"_s);
    m_list->SetColumns({u"Name"_s, u"Type"_s});
    m_list->header()->setSectionResizeMode(0, QHeaderView::Interactive);
    m_list->header()->setStretchLastSection(true);
    connect(m_list, &QAbstractItemView::activated, this, &CCatalogueView::EditSelected);
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        ShowMenu(m_list->viewport(), at,
                 {kNewItem, kEditItem, kDeleteItems, kCommandCount, kFind, kFindNext});
    });
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
    return {{u"File"_s, {m_actions[kImport], m_actions[kExport], nullptr, m_actions[kClose]}},
            {u"Edit"_s,
             {m_actions[kNewCategory], m_actions[kRenameCategory], nullptr, m_actions[kNewItem],
              m_actions[kEditItem], m_actions[kDeleteItems], nullptr, m_actions[kFind],
              m_actions[kFindNext]}},
            {u"Tools"_s, {m_actions[kPreferences]}}};
}

std::vector<QAction*> CCatalogueView::ToolButtons() {
    return {m_actions[kNewCategory], m_actions[kNewItem], m_actions[kFind], m_actions[kFindNext]};
}

void CCatalogueView::DataChanged() {
    Reload();
}

void CCatalogueView::SetSplitterPerMille(int perMille) {
    m_splitterPerMille = perMille;
    const int length =
        m_splitter->orientation() == Qt::Horizontal ? m_splitter->width() : m_splitter->height();
    m_splitter->setSizes({length * perMille / kWhole, length * (kWhole - perMille) / kWhole});
}

void CCatalogueView::resizeEvent(QResizeEvent* event) {
    CMainView::resizeEvent(event);
    const Qt::Orientation wanted = width() < kNarrowWidth ? Qt::Vertical : Qt::Horizontal;
    m_splitter->setOrientation(wanted);
    m_splitter->resize(size());
    SetSplitterPerMille(m_splitterPerMille);
    const int listWidth =
        wanted == Qt::Vertical ? width() : width() * (kWhole - m_splitterPerMille) / kWhole;
    m_list->SetColumnWidths({listWidth * kNameShare / kWhole, 0});
}

void CCatalogueView::ShowMenu(QWidget* widget, const QPoint& at,
                              const std::vector<ECommand>& commands) {
    QMenu menu(this);
    for (const ECommand command : commands) {
        if (command == kCommandCount) {
            menu.addSeparator();
        } else {
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

/// All items of a name, also those that a full list of their category leaves out.
std::vector<CCategoryListEntry> CCatalogueView::ItemsOfName(qint32 categoryId,
                                                            const QString& name) {
    const auto nameProperty = static_cast<size_t>(KindOf(m_texts.kind).nameProperty);
    const size_t count = Items().GetLayout().properties.size();
    std::vector<CCategoryListEntry> entries;
    Items().ForEachFrom(
        Items().FirstPositionOf(categoryId),
        [&](int position, PropertyList& properties) {
            if (properties.size() != count) {
                return true;
            }
            if (properties[0] == PropertyValue(categoryId) &&
                properties[nameProperty] == PropertyValue(name)) {
                entries.push_back(
                    {position, categoryId, name, std::get<QString>(properties[nameProperty + 1])});
            }
            return properties[0] == PropertyValue(categoryId);
        },
        static_cast<int>(nameProperty) + 2);
    std::ranges::stable_sort(entries, [](const auto& left, const auto& right) {
        return left.type.compare(right.type, Qt::CaseInsensitive) < 0;
    });
    return entries;
}

void CCatalogueView::FillList() {
    const QModelIndex current = m_tree->currentIndex();
    const QString name = m_model->NameOf(current);
    const qint32 categoryId = m_model->CategoryOf(current);
    m_entries = name.isEmpty() ? Database().FillCategoryList(m_texts.kind, categoryId)
                               : ItemsOfName(categoryId, name);
    m_list->SetRows({static_cast<int>(m_entries.size()),
                     [this](int row, int column) {
                         const CCategoryListEntry& entry = m_entries[static_cast<size_t>(row)];
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
    if (place() != m_entries.end()) {
        m_list->SelectRow(static_cast<int>(place() - m_entries.begin()));
    }
}

void CCatalogueView::ShowStored(int position) {
    Reload();
    SelectItem(position);
}

bool CCatalogueView::ReadEntry(int position, CCategoryListEntry& entry) {
    if (position < 0) {
        return false;
    }
    const auto nameProperty = static_cast<size_t>(KindOf(m_texts.kind).nameProperty);
    const size_t count = Items().GetLayout().properties.size();
    bool isRead = false;
    Items().ForEachFrom(position, [&](int found, PropertyList& properties) {
        if (found == position && properties.size() == count) {
            entry = {position, std::get<qint32>(properties[0]),
                     std::get<QString>(properties[nameProperty]),
                     std::get<QString>(properties[nameProperty + 1])};
            isRead = true;
        }
        return false;
    });
    return isRead;
}
