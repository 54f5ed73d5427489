// A weight or height as it is typed: one field with its unit behind it, or two.
#pragma once

#include <QWidget>

#include "app/UnitTexts.h"

class QLineEdit;

class CUnitEdit : public QWidget {
    Q_OBJECT
  public:
    /// `labels` as WeightLabels and HeightLabels give them; the fields are called `objectName`
    /// with "Major" and "Minor".
    CUnitEdit(const CUnitTexts& labels, const QString& accessibleName, const QString& objectName);

    void SetTexts(const CUnitTexts& texts);
    [[nodiscard]] CUnitTexts GetTexts() const;

  signals:
    /// A field was left, or Return was pressed in it.
    void EditingFinished();

  private:
    QLineEdit* AddField(const QString& unit, const QString& accessibleName);

    QLineEdit* m_major;
    QLineEdit* m_minor = nullptr;
};
