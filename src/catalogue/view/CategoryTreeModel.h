// The tree of a catalogue view: categories with their distinct item names.
#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <vector>

#include "store/Database.h"

/// The names of a category are read when it is first expanded. Top-level rows are categories in the
/// order of their creation. The internal identifier of a category's index is 0, that of a name's
/// index is the row of its category plus 1.
class CCategoryTreeModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    /// `renamesItems`: names can be edited, like categories.
    CCategoryTreeModel(CDatabase& database, ECatalogueKind kind, bool renamesItems,
                       QObject* parent);

    /// Reads the categories again. Without `withNames` they have no children.
    void Reload(bool withNames);

    /// Categories that could not be read.
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_leftOut; }

    /// Identifier of the category of an index or of its parent; -1 for an invalid index.
    [[nodiscard]] qint32 CategoryOf(const QModelIndex& index) const;
    /// Item name of an index; empty for a category.
    [[nodiscard]] QString NameOf(const QModelIndex& index) const;
    /// Index of the name; of the category when the name is empty or unknown; otherwise invalid.
    QModelIndex IndexOf(qint32 categoryId, const QString& name = QString());
    [[nodiscard]] static bool IsCategory(const QModelIndex& index) {
        return index.isValid() && index.internalId() == 0;
    }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// Changes nothing but emits LabelTyped: the view decides about a typed label.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals:
    /// `name` is the item name edited, empty for the category itself.
    void LabelTyped(qint32 categoryId, const QString& name, const QString& text);

  private:
    struct CNode {
        qint32 id;
        QString name;
        QIcon icon;
        bool isRead = false;
        QStringList names = {};
    };

    CDatabase& m_database;
    ECatalogueKind m_kind;
    bool m_renamesItems;
    bool m_withNames = true;
    std::vector<CNode> m_nodes;
    CLeftOut m_leftOut;
};
