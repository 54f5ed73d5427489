// Foods as lines of an exchange file: 78 columns.
#pragma once

#include "catalogue/CsvLayout.h"
#include "catalogue/ExistingFoods.h"
#include "catalogue/ImportedCategories.h"

class CCsvFields;

class CFoodsCsv : public CCsvLayout {
  public:
    CFoodsCsv(CDatabase& database, const QString& folder);

    [[nodiscard]] const char* Marker() const override { return "<Foods>"; }
    /// Foods name the line after the offending one; kept.
    [[nodiscard]] int LineNumberShift() const override { return 1; }
    CCsvVerdict ReadLine(QStringView line) override;
    EStored Store(EExisting existing) override;
    void WriteHeader(CTextFile& file) override;
    bool WriteItem(CTextFile& file, PropertyList& properties, int number) override;

  private:
    /// Reads the values into the item; returns the number of fields there were.
    int ReadNumbers(CCsvFields& fields);
    int ReadServings(CCsvFields& fields);
    void WriteText(CTextFile& file, QStringView text);
    [[nodiscard]] QString CategoryNameOf(qint32 categoryId);

    CDatabase& m_database;
    CImportedCategories m_categories;
    CExistingFoods m_existing;
    CFoodItem m_food;
    QString m_categoryName;
    QByteArray m_line;
    qint32 m_writtenCategoryId = -1;
    QString m_writtenCategoryName;
};
