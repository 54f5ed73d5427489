// One exercise of the library: 5 properties.
#pragma once

#include "store/records/ItemRecord.h"

/// Rated either in kcal per minute or in MET; the other rate is then 0.
class CExerciseItem : public CItemRecord {
  public:
    CExerciseItem();
    [[nodiscard]] qint32 GetCategoryId() const;
    void SetCategoryId(qint32 id);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);
    [[nodiscard]] double GetEnergyRateKcalPerMinute() const;
    void SetEnergyRateKcalPerMinute(double rate);
    [[nodiscard]] double GetMet() const;
    void SetMet(double met);
};
