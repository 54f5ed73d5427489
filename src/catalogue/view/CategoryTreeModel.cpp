#include "catalogue/view/CategoryTreeModel.h"

#include "catalogue/view/CategoryIcon.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

CCategoryTreeModel::CCategoryTreeModel(CDatabase& database, ECatalogueKind kind, bool renamesItems,
                                       QObject* parent)
    : QAbstractItemModel(parent),
      m_database(database),
      m_kind(kind),
      m_renamesItems(renamesItems) {}

void CCategoryTreeModel::Reload(bool withNames) {
    beginResetModel();
    m_withNames = withNames;
    // Pictures come with a category and never change, so each is decoded once.
    const std::vector<CNode> known = std::exchange(m_nodes, {});
    CCategory category;
    const CCategoryEntries categories = m_database.Categories().ReadEntries(m_kind);
    m_leftOut = categories.leftOut;
    for (const CCategoryEntry& entry : categories.entries) {
        const auto old = std::ranges::find(known, entry.id, &CNode::id);
        if (old != known.end() && old->name == entry.name) {
            m_nodes.push_back({entry.id, entry.name, old->icon});
            continue;
        }
        const bool isRead = m_database.Categories().ReadQuietly(entry.position, category);
        m_nodes.push_back(
            {entry.id, entry.name, isRead ? CategoryIcon(category.GetSmallPicture()) : QIcon()});
    }
    endResetModel();
}

qint32 CCategoryTreeModel::CategoryOf(const QModelIndex& index) const {
    if (!index.isValid()) {
        return -1;
    }
    const auto row = IsCategory(index) ? static_cast<size_t>(index.row()) : index.internalId() - 1;
    return m_nodes[row].id;
}

QString CCategoryTreeModel::NameOf(const QModelIndex& index) const {
    return index.isValid() && !IsCategory(index) ? index.data().toString() : QString();
}

QModelIndex CCategoryTreeModel::IndexOf(qint32 categoryId, const QString& name) {
    for (size_t row = 0; row < m_nodes.size(); ++row) {
        if (m_nodes[row].id != categoryId) {
            continue;
        }
        const QModelIndex category = index(static_cast<int>(row), 0, {});
        if (!name.isEmpty()) {
            fetchMore(category);
        }
        const auto nameRow = static_cast<int>(m_nodes[row].names.indexOf(name));
        return name.isEmpty() || nameRow < 0 ? category : index(nameRow, 0, category);
    }
    return {};
}

QModelIndex CCategoryTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || row >= rowCount(parent) || column != 0) {
        return {};
    }
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : 0);
}

QModelIndex CCategoryTreeModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || IsCategory(index)) {
        return {};
    }
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, quintptr(0));
}

int CCategoryTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) {
        return static_cast<int>(m_nodes.size());
    }
    return IsCategory(parent)
               ? static_cast<int>(m_nodes[static_cast<size_t>(parent.row())].names.size())
               : 0;
}

int CCategoryTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant CCategoryTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    if (!IsCategory(index)) {
        const CNode& node = m_nodes[index.internalId() - 1];
        return role == Qt::DisplayRole || role == Qt::EditRole ? node.names[index.row()]
                                                               : QVariant();
    }
    const CNode& node = m_nodes[static_cast<size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return node.name;
        case Qt::DecorationRole:
            return node.icon.isNull() ? QVariant() : QVariant(node.icon);
        default:
            return {};
    }
}

QVariant CCategoryTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isTitle = section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isTitle ? u"Category"_s : QVariant();
}

Qt::ItemFlags CCategoryTreeModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const bool isRenamed = index.isValid() && (IsCategory(index) || m_renamesItems);
    return isRenamed ? flags | Qt::ItemIsEditable : flags;
}

bool CCategoryTreeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0 || canFetchMore(parent);
}

bool CCategoryTreeModel::canFetchMore(const QModelIndex& parent) const {
    return m_withNames && IsCategory(parent) && !m_nodes[static_cast<size_t>(parent.row())].isRead;
}

void CCategoryTreeModel::fetchMore(const QModelIndex& parent) {
    if (!canFetchMore(parent)) {
        return;
    }
    CNode& node = m_nodes[static_cast<size_t>(parent.row())];
    node.isRead = true;
    QStringList names;
    const CUniqueNames found = m_database.Catalogue().FillArrayWithUniqueNames(m_kind, node.id);
    for (const CUniqueName& entry : found.names) {
        names.append(entry.name);
    }
    if (!names.isEmpty()) {
        beginInsertRows(parent, 0, static_cast<int>(names.size()) - 1);
        node.names = names;
        endInsertRows();
    }
}

bool CCategoryTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role == Qt::EditRole) {
        emit LabelTyped(CategoryOf(index), NameOf(index), value.toString());
    }
    return false;
}
