// Menus and recipes as lines of an exchange file: one line each, followed by one per component.
#pragma once

#include <QSet>
#include <utility>

#include "catalogue/exchange/CsvLayout.h"
#include "catalogue/exchange/ExistingItems.h"
#include "catalogue/exchange/ImportedCategories.h"
#include "catalogue/items/CatalogueKinds.h"

/// Menus are written in 61 columns and recipes in 62, and read with one column more, between the
/// nutrients and the serving: files are read by field position, and this difference is kept. The
/// value of the extra column is passed to the nutrients' accessor, which reports a wrong index.
///
/// The components of a menu or recipe that is replaced are replaced by those that follow it in the
/// file. The components of a skipped one are skipped too, and so are those after a refused line
/// whose menu or recipe is already stored.
class CComposedCsv : public CCsvLayout {
  public:
    CComposedCsv(CDatabase& database, ECatalogueKind kind, const QString& folder);

    CCsvVerdict ReadLine(QStringView line) override;
    EStored Store(EDuplicatePolicy policy) override;
    void WriteHeader(CCsvLineWriter& line) override;
    bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) override;

  private:
    /// The menu or recipe that component lines belong to.
    struct COwner {
        QString category;
        QString name;
        qint32 itemId = 0;
        bool isSkipped = false;  ///< its components are skipped, too
    };

    /// Category and name of a menu or recipe.
    using CNames = std::pair<QString, QString>;

    /// Hides the progress window while the accessor reports a wrong index.
    void SetValue(int index, double value);
    CCsvVerdict ReadRecord(CCsvFields& fields);
    // These read the fields of a record in order; they return a verdict when the line ends there.
    std::optional<CCsvVerdict> ReadItemType(const std::optional<QStringView>& field);
    /// Category and name of the menu or recipe, which must exist for a component.
    std::optional<CCsvVerdict> ReadOwnerNames(CCsvFields& fields);
    std::optional<CCsvVerdict> ReadFoodName(const std::optional<QStringView>& field);
    /// The fields after the names.
    CCsvVerdict ReadValues(CCsvFields& fields);
    /// Remembers the menu or recipe of a refused line; ignores the line of a component.
    void RememberRefused(QStringView line);
    /// Sets m_owner; false when there is no menu or recipe of that category and name.
    bool FindOwner(const QString& category, const QString& name);
    EStored StoreOwner(EDuplicatePolicy policy);
    [[nodiscard]] qint32 ItemIdAt(int position);
    void WriteRecord(CCsvLineWriter& line, const CComposedItem& record, const QString& category,
                     const CComposedItem& owner);
    [[nodiscard]] bool IsRecipes() const { return m_kind == ECatalogueKind::Recipes; }

    CDatabase& m_database;
    ECatalogueKind m_kind;
    const CKindExchange& m_texts;
    CImportedCategories m_categories;
    CExistingItems m_existing;
    CComposedItem m_item;
    QString m_categoryName;
    qint32 m_categoryId = -1;
    bool m_isComponent = false;
    COwner m_owner;
    QSet<qint32> m_taken;    ///< menus or recipes that this run has added or replaced
    QSet<CNames> m_refused;  ///< menus or recipes whose last line was refused
};
