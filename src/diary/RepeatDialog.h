// "Repeat": on which weekdays, and until when, entries are eaten again.
#pragma once

#include <array>

#include "app/VelmoraDoc.h"
#include "controls/Dialog.h"

class CDateField;
class QCheckBox;
class QLabel;

/// The document outlives the dialog.
class CRepeatDialog : public CDialog {
    Q_OBJECT
  public:
    /// For `entries` entries of the day `first`.
    CRepeatDialog(CVelmoraDoc& doc, QDate first, int entries, QWidget* parent);
    /// The days chosen.
    [[nodiscard]] std::vector<QDate> GetDays() const;

  protected:
    bool Confirm() override;

  private:
    void ShowCount();

    CVelmoraDoc& m_doc;
    QDate m_first;
    int m_entries;
    std::array<QCheckBox*, 7> m_weekdays{};  ///< Monday first
    CDateField* m_last = nullptr;
    QLabel* m_count = nullptr;
};
