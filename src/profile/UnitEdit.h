// A weight or height as it is typed: one field followed by its unit, or two.
#pragma once

#include <QWidget>

#include "app/UnitTexts.h"

class QLineEdit;

class CUnitEdit : public QWidget {
    Q_OBJECT
  public:
    /// `labels` as returned by WeightLabels and HeightLabels. The fields' object names are
    /// `objectName` with "Major" and "Minor" appended.
    CUnitEdit(const CUnitTexts& labels, const QString& accessibleName, const QString& objectName);

    void SetTexts(const CUnitTexts& texts);
    [[nodiscard]] CUnitTexts GetTexts() const;

  signals:
    /// A field was left, or Return was pressed in it.
    void EditingFinished();

  private:
    QLineEdit* AddField(const QString& unit, const QString& accessibleName,
                        const QString& objectName);

    QLineEdit* m_major;
    QLineEdit* m_minor = nullptr;
};
