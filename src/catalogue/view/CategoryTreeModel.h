// Categories with the distinct item names under each: the tree of a catalogue view.
#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <vector>

#include "store/Database.h"

/// The names of a category are read when it is first opened. Top-level rows are categories in the
/// order of their creation; their index carries the internal identifier 0, a name's index that of
/// its category's row plus 1.
class CCategoryTreeModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    /// `renamesItems`: names can be edited as categories can.
    CCategoryTreeModel(CDatabase& database, ECatalogueKind kind, bool renamesItems,
                       QObject* parent);

    /// Reads the categories anew. Without `withNames` they have no children.
    void Reload(bool withNames);

    /// Categories that could not be read.
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_leftOut; }

    /// Identifier of the category of an index or of its parent; -1 for an invalid index.
    [[nodiscard]] qint32 CategoryOf(const QModelIndex& index) const;
    /// Item name of an index; empty for a category.
    [[nodiscard]] QString NameOf(const QModelIndex& index) const;
    /// The name's index, or the category's when the name is empty or unknown, or an invalid one.
    QModelIndex IndexOf(qint32 categoryId, const QString& name = QString());
    [[nodiscard]] static bool IsCategory(const QModelIndex& index) {
        return index.isValid() && index.internalId() == 0;
    }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    /// Changes nothing: what becomes of a typed label is the view's to decide.
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
