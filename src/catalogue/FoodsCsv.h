// Foods as lines of an exchange file: 78 columns.
#pragma once

#include "catalogue/CsvLayout.h"
#include "catalogue/ExistingItems.h"
#include "catalogue/ImportedCategories.h"

class CFoodsCsv : public CCsvLayout {
  public:
    CFoodsCsv(CDatabase& database, const QString& folder);

    [[nodiscard]] const char* Marker() const override { return "<Foods>"; }
    [[nodiscard]] const CCsvManners& Manners() const override;
    CCsvVerdict ReadLine(QStringView line) override;
    EStored Store(EExisting existing) override;
    void WriteHeader(CCsvLineWriter& line) override;
    bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) override;

  private:
    /// Reads the values into the item; returns the number of fields there were.
    int ReadNumbers(CCsvFields& fields);
    int ReadServings(CCsvFields& fields);
    [[nodiscard]] QString CategoryNameOf(qint32 categoryId);

    CDatabase& m_database;
    CImportedCategories m_categories;
    CExistingItems m_existing;
    CFoodItem m_food;
    QString m_categoryName;
};
