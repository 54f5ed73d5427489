// "User preferences": units, decimal places and the nutrients to display.
#pragma once

#include "app/Preferences.h"
#include "controls/Dialog.h"

class QComboBox;
class QSpinBox;
class QStandardItemModel;

class CPreferencesDialog : public CDialog {
    Q_OBJECT
  public:
    /// `nutrientNames`: the 54 names shown.
    CPreferencesDialog(const CPreferences& preferences, const QStringList& nutrientNames,
                       QWidget* parent);
    /// The preferences as confirmed.
    [[nodiscard]] const CPreferences& GetPreferences() const { return m_preferences; }

  protected:
    bool Confirm() override;

  private:
    void AddUnits();
    void AddNutrients(const QStringList& names);

    CPreferences m_preferences;
    QComboBox* m_weightUnit;
    QComboBox* m_heightUnit;
    QComboBox* m_energyUnit;
    QSpinBox* m_decimals;
    QStandardItemModel* m_nutrients;
};
