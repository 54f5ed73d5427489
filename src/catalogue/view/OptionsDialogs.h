// "Export options", "Import options" and "Take in options": one choice of three before an exchange.
#pragma once

#include "catalogue/exchange/CsvExchange.h"
#include "controls/Dialog.h"

class QButtonGroup;

/// A label and one radio button per choice.
class COptionsDialog : public CDialog {
    Q_OBJECT
  public:
    COptionsDialog(const QString& title, const QString& label, const QStringList& choices,
                   int selected, QWidget* parent);
    [[nodiscard]] int GetChoice() const;

  private:
    QButtonGroup* m_choices;
};

/// The choice made, starting from `preselected`; nothing when the dialog is cancelled.
std::optional<EExportChoice> AskExportOptions(ECatalogueKind kind, EExportChoice preselected,
                                              QWidget* parent);
std::optional<EDuplicatePolicy> AskImportOptions(ECatalogueKind kind, EDuplicatePolicy preselected,
                                                 QWidget* parent);
/// Before taking in a share file; Skip is preselected.
std::optional<EDuplicatePolicy> AskTakeInOptions(QWidget* parent);
