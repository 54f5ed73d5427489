// The in-memory form of a record: the property list that is passed to the store unchanged.
#pragma once

#include <QString>
#include <cmath>

#include "store/records/NutrientTable.h"
#include "store/records/RecordLayout.h"

/// The values of a layout, always exactly as many and of its types. Texts are cut to their capacity
/// when set.
class CItemRecord {
  public:
    explicit CItemRecord(const CRecordLayout& layout);

    /// Sets every number to 0 and every text and blob to empty.
    void Clear();

    [[nodiscard]] const CRecordLayout& GetLayout() const { return *m_layout; }
    [[nodiscard]] const PropertyList& GetProperties() const { return m_properties; }
    /// Swaps in a list read from the store, so that the memory of the former values serves the next
    /// read. False, and nothing is changed, when count or types differ.
    bool SetProperties(PropertyList&& properties);

    bool operator==(const CItemRecord& other) const { return m_properties == other.m_properties; }

  protected:
    template <typename T>
    [[nodiscard]] const T& Get(int number) const {
        return std::get<T>(m_properties[number]);
    }
    /// A double that is not finite is stored as 0.
    template <typename T>
    void Set(int number, T value) {
        if constexpr (std::is_same_v<T, double>) {
            value = std::isfinite(value) ? value : 0.0;
        }
        std::get<T>(m_properties[number]) = std::move(value);
    }
    void SetText(int number, const QString& text);

  private:
    const CRecordLayout* m_layout;
    PropertyList m_properties;
};

/// The block of 54 nutrient values that foods, menus, recipes and diet entries share.
class CNutrientItem : public CItemRecord {
  public:
    /// An index outside 0 to 53 shows "GetNutrientValue --> WRONG INDEX" and gives 0.
    [[nodiscard]] double GetNutrientValue(int index) const;
    /// An index outside 0 to 53 shows "SetNutrientValue --> WRONG INDEX" and changes nothing.
    /// Values that are not finite are stored as 0.
    void SetNutrientValue(int index, double value);
    [[nodiscard]] NutrientValues GetNutrientValues() const;
    void SetNutrientValues(const NutrientValues& values);

  protected:
    CNutrientItem(const CRecordLayout& layout, int firstNutrient);

  private:
    int m_firstNutrient;
};
