// A field that searches while a text is typed, with the list of matches.
#pragma once

#include "controls/OverlayField.h"

/// Return or a click picks; Escape (through the dialog) closes the list.
class CSearchField : public COverlayField {
    Q_OBJECT
  public:
    using Search = std::function<CSearchRows(const QString& text)>;

    /// `over` is CDialog::OverlayParent; `columns` are those of the list.
    CSearchField(std::vector<CReportColumn> columns, Search search, QWidget* over, QWidget* parent);

  signals:
    /// The field is empty and the list closed when this is emitted.
    void Picked(int row);

  protected:
    void Fill() override { SetRows(m_search(text())); }
    void Pick(int row) override;

  private:
    Search m_search;
};
