#include "catalogue/view/CatalogueBrowser.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <unordered_set>

#include "app/LeftOutText.h"
#include "catalogue/pick/SearchItems.h"
#include "catalogue/view/CategoryTreeModel.h"
#include "controls/ClearButton.h"
#include "controls/InputPanel.h"
#include "controls/ListPane.h"
#include "controls/ReportList.h"
#include "controls/RowDelegate.h"
#include "controls/RowTree.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kWhole = 1000;
/// The shares of name and type in the list's width, and their least width in characters.
constexpr int kNameShare = 9;
constexpr int kTypeShare = 11;
constexpr int kTextCharacters = 6;
}  // namespace

CCatalogueBrowser::CCatalogueBrowser(CVelmoraDoc& doc, CCatalogueRules& rules, ECatalogueKind kind)
    : m_doc(doc),
      m_rules(rules),
      m_kind(KindOf(kind)),
      m_tree(new CRowTree),
      m_model(new CCategoryTreeModel(doc.Database(), kind, m_kind.commands.renameItems != nullptr,
                                     this)),
      m_list(new CReportList(QString::fromLatin1(m_kind.words.many))),
      m_listPane(new CListPane),
      m_filter(new QLineEdit),
      m_pending(new QTimer(this)),
      m_namesInTree(m_kind.Layout().namesType) {
    MakeTree();
    MakeList();
    setChildrenCollapsible(false);
    addWidget(m_tree);
    MakeFilter();
    connect(this, &QSplitter::splitterMoved, this, [this] {
        const QList<int> both = sizes();
        SplitterPerMille() = both[0] * kWhole / std::max(1, both[0] + both[1]);
    });
}

void CCatalogueBrowser::MakeTree() {
    m_tree->setObjectName(u"categories"_s);
    m_tree->setAccessibleName(u"Categories"_s);
    m_tree->setModel(m_model);
    m_tree->setItemDelegate(new CRowDelegate(m_tree));
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setExpandsOnDoubleClick(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        FillList();
        emit TreeSelectionChanged();
    });
    // Queued, since the editor is still open when it sends its text and the slot resets the tree.
    connect(m_model, &CCategoryTreeModel::LabelTyped, this, &CCatalogueBrowser::LabelTyped,
            Qt::QueuedConnection);
    connect(m_tree->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &LowerInputPanel);
}

void CCatalogueBrowser::MakeList() {
    m_list->setObjectName(u"items"_s);
    SetColumns();
}

void CCatalogueBrowser::MakeFilter() {
    m_filter->setObjectName(u"filter"_s);
    m_filter->setAccessibleName(u"Narrow the list"_s);
    m_filter->setPlaceholderText(u"Narrow the list"_s);
    AddClearButton(*m_filter);
    m_filter->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, &CCatalogueBrowser::Narrow);
    m_pending->setSingleShot(true);
    connect(m_pending, &QTimer::timeout, this, &CCatalogueBrowser::Narrow);
    auto* pane = new QWidget;
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_filter);
    m_listPane->SetList(m_list);
    layout->addWidget(m_listPane, 1);
    addWidget(pane);
}

// Down and Return go on to the list, Escape shows all of it again.
bool CCatalogueBrowser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_list->setFocus(Qt::TabFocusReason);
            return true;
        }
        if (key == Qt::Key_Escape && !m_filter->text().isEmpty()) {
            m_filter->clear();
            return true;
        }
    }
    return QSplitter::eventFilter(watched, event);
}

void CCatalogueBrowser::SetColumns() {
    const int least = m_list->fontMetrics().averageCharWidth() * kTextCharacters;
    std::vector<CReportColumn> columns = {
        {.title = u"Name"_s, .least = least, .share = kNameShare}};
    if (m_kind.Layout().namesType) {
        columns.push_back({.title = u"Type"_s, .least = least, .share = kTypeShare});
    }
    if (m_added) {
        constexpr int kCellMargins = 12;
        const int width = m_list->fontMetrics().horizontalAdvance(m_added->widest) + kCellMargins;
        columns.push_back({.title = m_added->title,
                           .kind = CReportColumn::EKind::Number,
                           .least = width,
                           .share = 0});
    }
    m_list->SetColumns(std::move(columns));
}

void CCatalogueBrowser::AddColumn(CAddedColumn column) {
    m_added = std::move(column);
    SetColumns();
}

int& CCatalogueBrowser::SplitterPerMille() {
    return m_doc.CatalogueState(m_kind.code).splitterPerMille;
}

void CCatalogueBrowser::SetSplitterPerMille(int perMille) {
    SplitterPerMille() = perMille;
    const int length = orientation() == Qt::Horizontal ? width() : height();
    setSizes({length * perMille / kWhole, length * (kWhole - perMille) / kWhole});
}

void CCatalogueBrowser::resizeEvent(QResizeEvent* event) {
    setOrientation(width() < kNarrowWidth ? Qt::Vertical : Qt::Horizontal);
    QSplitter::resizeEvent(event);
    SetSplitterPerMille(SplitterPerMille());
}

bool CCatalogueBrowser::HasCategories() const {
    return m_model->rowCount({}) > 0;
}

qint32 CCatalogueBrowser::CategoryId() const {
    return m_model->CategoryOf(m_tree->currentIndex());
}

QString CCatalogueBrowser::ItemName() const {
    return m_model->NameOf(m_tree->currentIndex());
}

int CCatalogueBrowser::CategoryRow() const {
    const QModelIndex current = m_tree->currentIndex();
    return CCategoryTreeModel::IsCategory(current) ? current.row() : -1;
}

CCatalogueRules::Entries CCatalogueBrowser::Selected() const {
    CCatalogueRules::Entries selected;
    for (const int row : m_list->SelectedRows()) {
        selected.push_back(m_entries[static_cast<size_t>(row)]);
    }
    return selected;
}

void CCatalogueBrowser::Reload() {
    const int place = m_list->FirstSelectedPlace();
    Reload(CategoryId(), ItemName());
    if (place >= 0) {
        m_list->SelectPlace(place);
    }
}

void CCatalogueBrowser::Reload(qint32 categoryId, const QString& name) {
    FillTree();
    SelectInTree(m_model->IndexOf(categoryId, name));
}

void CCatalogueBrowser::ReloadAt(int categoryRow) {
    FillTree();
    SelectInTree(m_model->index(std::min(categoryRow, m_model->rowCount({}) - 1), 0, {}));
}

void CCatalogueBrowser::FillTree() {
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
    emit TreeRead();
}

void CCatalogueBrowser::SelectInTree(const QModelIndex& index) {
    const QModelIndex wanted = index.isValid() ? index : m_model->index(0, 0, {});
    if (wanted != m_tree->currentIndex()) {
        m_tree->setCurrentIndex(wanted);
        return;
    }
    FillList();
    emit TreeSelectionChanged();
}

void CCatalogueBrowser::FillList() {
    const QString name = ItemName();
    m_all = name.isEmpty()
                ? m_doc.Database().Catalogue().FillCategoryList(m_kind.code, CategoryId())
                : m_rules.ItemsOfName(CategoryId(), name);
    Narrow();
}

void CCatalogueBrowser::Narrow() {
    m_pending->stop();
    CCatalogueSearch& search = m_doc.Database().Search();
    const bool isNarrow = CFoldedWords(m_filter->text()).Count() > 0;
    CCategoryList list;
    m_found = EFound::All;
    QString hint;
    if (!isNarrow) {
        list = m_all;
    } else if (search.PrepareSome()) {
        hint = kSearching;
        m_pending->start();
    } else {
        const bool isWhole = m_all.leftOut.beyond == 0;
        const CSearchMatches matches =
            search.Find({.text = m_filter->text(),
                         .kinds = KindBit(m_kind.code),
                         .categoryId = CategoryId(),
                         .limit = isWhole ? kNoCapacity : kCatalogueListCapacity});
        list = Found(matches);
        m_found = list.entries.empty() ? EFound::All : matches.found;  // a note is about rows
        hint = ItemName().isEmpty() ? u"Nothing found in this category."_s
                                    : u"Nothing found under this name."_s;
    }
    m_entries = std::move(list.entries);
    m_leftOut = list.leftOut;
    m_list->SetEmptyHint(hint);
    ShowEntries();
}

CCategoryList CCatalogueBrowser::Found(const CSearchMatches& matches) {
    CItemDatabaseBase& items = m_doc.Database().Items(m_kind.code);
    CCategoryList found;
    if (m_all.leftOut.beyond == 0) {
        found.leftOut = m_all.leftOut;
        std::unordered_set<ObjectId> records;
        for (const CSearchMatch& match : matches.best) {
            records.insert(match.record);
        }
        std::ranges::copy_if(m_all.entries, std::back_inserter(found.entries),
                             [&](const CCategoryListEntry& entry) {
                                 return records.contains(items.RecordAt(entry.position));
                             });
        return found;
    }
    // Too many items to read them all at each key.
    for (const CSearchMatch& match : matches.best) {
        CCategoryListEntry entry{};
        if (ReadEntry(items.PositionOf(match.record), entry)) {
            found.entries.push_back(std::move(entry));
        }
    }
    SortByNameAndType(m_kind.code, found.entries);
    found.leftOut.damaged = m_all.leftOut.damaged;
    found.leftOut.beyond = matches.total - static_cast<int>(std::ssize(found.entries));
    return found;
}

void CCatalogueBrowser::ShowNote() {
    QStringList notes = {FoundText(m_found),
                         LeftOutText(m_leftOut, m_kind.words, static_cast<int>(m_entries.size()),
                                     "Showing %s of %s %s."),
                         DamageText(m_model->LeftOut(), kCategoryWords)};
    notes.removeAll(QString());
    m_listPane->SetNote(notes.join(u' '));
}

void CCatalogueBrowser::ShowEntries() {
    m_addedCells.clear();
    if (m_added) {
        std::ranges::transform(m_entries, std::back_inserter(m_addedCells), m_added->cell);
    }
    m_list->SetRows({.count = static_cast<int>(m_entries.size()),
                     .text =
                         [this](int row, int column) {
                             const CCategoryListEntry& entry = m_entries[static_cast<size_t>(row)];
                             if (column > 1) {
                                 return m_addedCells[static_cast<size_t>(row)].text;
                             }
                             return column == 0 ? entry.name : entry.type;
                         },
                     .sortKey = [this](int row, int column) -> QVariant {
                         const CCategoryListEntry& entry = m_entries[static_cast<size_t>(row)];
                         if (column > 1) {
                             return m_addedCells[static_cast<size_t>(row)].sortKey;
                         }
                         return column == 0 ? entry.name : entry.type;
                     }});
    ShowNote();
}

bool CCatalogueBrowser::IsShown(const CCategoryListEntry& entry) const {
    const QString name = ItemName();
    return CategoryId() == entry.categoryId && (name.isEmpty() || name == entry.name);
}

void CCatalogueBrowser::SelectItem(int position) {
    CCategoryListEntry entry{};
    if (!ReadEntry(position, entry)) {
        return;
    }
    if (!IsShown(entry)) {
        SelectInTree(m_model->IndexOf(entry.categoryId));
    }
    const auto place = [this, position] {
        return std::ranges::find(m_entries, position, &CCategoryListEntry::position);
    };
    if (place() == m_entries.end()) {
        m_filter->clear();
        SelectInTree(m_model->IndexOf(entry.categoryId, entry.name));
    }
    if (place() == m_entries.end()) {
        // A full list leaves it out, and the tree has no name to select it by.
        m_leftOut.beyond += static_cast<int>(m_entries.size()) - 1;
        m_entries = {entry};
        ShowEntries();
    }
    m_list->SelectRow(static_cast<int>(place() - m_entries.begin()));
}

bool CCatalogueBrowser::ReadEntry(int position, CCategoryListEntry& entry) {
    CCatalogueItem item(m_kind.code);
    if (position < 0 || !m_doc.Database().Items(m_kind.code).ReadQuietly(position, item)) {
        return false;
    }
    entry = {position, item.GetCategoryId(), item.GetName(), item.GetType()};
    return true;
}

void CCatalogueBrowser::EditLabel() {
    RaiseInputPanel();
    m_tree->setFocus();
    m_tree->edit(m_tree->currentIndex());
}
