// Exercises of the library as lines of an exchange file: 6 columns.
#pragma once

#include "catalogue/exchange/TypedItemsCsv.h"

class CExlibCsv : public CTypedItemsCsv {
  public:
    CExlibCsv(CDatabase& database, const QString& folder)
        : CTypedItemsCsv(database, ECatalogueKind::Exercises, folder) {}

    CCsvVerdict ReadLine(QStringView line) override;
    EStored Store(EDuplicatePolicy policy) override { return StoreTyped(m_exercise, policy); }
    void WriteHeader(CCsvLineWriter& line) override;
    bool WriteItem(CCsvLineWriter& line, PropertyList& properties, int number) override;

  private:
    CExerciseItem m_exercise;
};
