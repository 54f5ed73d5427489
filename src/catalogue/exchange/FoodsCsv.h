// Foods as lines of an exchange file: 78 columns.
#pragma once

#include "catalogue/exchange/TypedItemsCsv.h"

class CFoodsCsv : public CTypedItemsCsv {
  public:
    CFoodsCsv(CDatabase& database, const QString& folder);

    CCsvVerdict ReadLine(QStringView line) override;
    EStored Store(EDuplicatePolicy policy) override { return StoreTyped(m_food, policy); }
    void WriteHeader(CCsvLineWriter& line) override;
    bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) override;

  private:
    /// Reads the values into the item; returns the number of fields there were.
    int ReadNumbers(CCsvFields& fields);
    int ReadServings(CCsvFields& fields);

    CFoodItem m_food;
};
