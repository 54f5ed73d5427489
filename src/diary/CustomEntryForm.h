// The rules of the "Custom entry" dialog: something eaten that is in no catalogue.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"

/// Texts go in and out as the user sees them. The document outlives it.
class CCustomEntryForm {
  public:
    CCustomEntryForm(CVelmoraDoc& doc, QTime time);

    [[nodiscard]] QString NameText() const { return m_name; }
    void SetNameText(const QString& text) { m_name = text; }
    [[nodiscard]] QTime GetTime() const { return m_time; }
    void SetTime(QTime time) { m_time = time; }

    /// The energy, then the other displayed nutrients.
    [[nodiscard]] int RowCount() const { return static_cast<int>(m_nutrients.size()); }
    /// Name with its unit.
    [[nodiscard]] QString RowTitle(int row) const;
    [[nodiscard]] QString RowText(int row) const;
    /// A number that is too large changes nothing.
    void SetRowText(int row, const QString& text);

    /// Builds the result, one serving; false after a message when there is no name.
    bool Confirm();
    /// Valid after Confirm.
    [[nodiscard]] const CChosenFood& GetResult() const { return m_result; }

  private:
    CVelmoraDoc& m_doc;
    QString m_name;
    QTime m_time;
    std::vector<int> m_nutrients;
    NutrientValues m_values{};  ///< in the stored units
    CChosenFood m_result;
};
