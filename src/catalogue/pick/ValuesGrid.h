// The nutrient values of a dialog that makes a diary entry.
#pragma once

#include <optional>

#include "controls/Grid.h"

/// Shows the rows of a form, which is given the typed texts and outlives the grid. The values are
/// filled in by the caller whenever they may have changed.
template <typename Form>
CGrid* CreateValuesGrid(Form& form) {
    constexpr int kLeastRows = 4;
    constexpr int kValueCharacters = 11;
    auto* values =
        new CGrid(EGridKind::Values, {QStringLiteral("Nutrient (unit)"), QStringLiteral("Value")},
                  QStringLiteral("Nutrients"));
    values->setObjectName(QStringLiteral("values"));
    values->setMinimumHeight(values->fontMetrics().height() * 2 * kLeastRows);
    values->setColumnWidth(1, values->fontMetrics().averageCharWidth() * kValueCharacters);
    values->SetRowCount(form.RowCount());
    for (int row = 0; row < form.RowCount(); ++row) {
        values->SetCellText(row, 0, form.RowTitle(row));
    }
    QObject::connect(values, &CGrid::LabelEditEnded, values,
                     [&form, values](int row, int column, const std::optional<QString>& text) {
                         if (text) {
                             form.SetRowText(row, *text);
                         }
                         values->SetCellText(row, column, form.RowText(row));
                     });
    return values;
}
