// Picks the category to move the selected items to.
#pragma once

#include <vector>

#include "controls/Dialog.h"
#include "store/CatalogueLists.h"

class CReportList;

class CCategoryPickDialog : public CDialog {
    Q_OBJECT
  public:
    CCategoryPickDialog(const QString& title, std::vector<CCategoryEntry> categories,
                        QWidget* parent);
    /// The picked one; valid after OK.
    [[nodiscard]] const CCategoryEntry& GetCategory() const;

  protected:
    bool Confirm() override;

  private:
    std::vector<CCategoryEntry> m_categories;
    CReportList* m_list;
};
