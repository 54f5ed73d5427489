#include "profile/PreferencesDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "controls/RowDelegate.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kNameColumn = 0;
constexpr int kDisplayColumn = 1;
constexpr int kListRows = 6;  // visible at least

void Toggle(QAbstractItemModel* model, int row) {
    const QModelIndex display = model->index(row, kDisplayColumn);
    const bool shown = display.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    model->setData(display, shown ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

/// The check list: Space and a click on the name toggle a row, just as a click on its box does.
class CNutrientChecks : public QTreeView {
  public:
    explicit CNutrientChecks(QStandardItemModel* nutrients) {
        setModel(nutrients);
        setObjectName(u"nutrients"_s);
        setAccessibleName(u"Nutrients"_s);
        setRootIsDecorated(false);
        setUniformRowHeights(true);
        setItemDelegate(new CRowDelegate(this));
        setAllColumnsShowFocus(true);
        setEditTriggers(NoEditTriggers);
        header()->setStretchLastSection(false);
        header()->setSectionsMovable(false);
        header()->setSectionResizeMode(kNameColumn, QHeaderView::Stretch);
        header()->setSectionResizeMode(kDisplayColumn, QHeaderView::ResizeToContents);
        setMinimumHeight(header()->sizeHint().height() +
                         kListRows * fontMetrics().height() * 3 / 2);
        setCurrentIndex(nutrients->index(0, kNameColumn));
        connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
            if (index.column() == kNameColumn) {
                Toggle(model(), index.row());
            }
        });
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Space && currentIndex().isValid()) {
            Toggle(model(), currentIndex().row());
            return;
        }
        QTreeView::keyPressEvent(event);
    }
};

template <typename Unit>
QComboBox* CreateUnitBox(Unit last, Unit current, const QString& objectName) {
    auto* box = new QComboBox;
    box->setObjectName(objectName);
    for (int unit = 0; unit <= static_cast<int>(last); ++unit) {
        box->addItem(UnitName(static_cast<Unit>(unit), EUnitForm::Plural));
    }
    box->setCurrentIndex(static_cast<int>(current));
    return box;
}
}  // namespace

CPreferencesDialog::CPreferencesDialog(const CPreferences& preferences,
                                       const QStringList& nutrientNames, QWidget* parent)
    : CDialog(u"User preferences"_s, parent), m_preferences(preferences) {
    AddUnits();
    AddNutrients(nutrientNames);
    SetPreferredSize(380, 520);
}

bool CPreferencesDialog::Confirm() {
    m_preferences.weightUnit = static_cast<EWeightUnit>(m_weightUnit->currentIndex());
    m_preferences.heightUnit = static_cast<EHeightUnit>(m_heightUnit->currentIndex());
    m_preferences.energyUnit = static_cast<EEnergyUnit>(m_energyUnit->currentIndex());
    m_preferences.decimals = m_decimals->value();
    for (int row = 0; row < m_nutrients->rowCount(); ++row) {
        const QStandardItem* display = m_nutrients->item(row, kDisplayColumn);
        m_preferences.displayed.set(row, display->checkState() == Qt::Checked);
    }
    return true;
}

void CPreferencesDialog::AddUnits() {
    m_weightUnit =
        CreateUnitBox(EWeightUnit::StonesAndPounds, m_preferences.weightUnit, u"weightUnit"_s);
    m_heightUnit = CreateUnitBox(EHeightUnit::Feet, m_preferences.heightUnit, u"heightUnit"_s);
    m_energyUnit = CreateUnitBox(EEnergyUnit::KJ, m_preferences.energyUnit, u"energyUnit"_s);
    m_decimals = new QSpinBox;
    m_decimals->setObjectName(u"decimals"_s);
    m_decimals->setRange(0, kMaximumDecimals);
    m_decimals->setValue(m_preferences.decimals);

    QFormLayout* form = AddForm();
    form->addRow(u"&Weight unit:"_s, m_weightUnit);
    form->addRow(u"&Height unit:"_s, m_heightUnit);
    form->addRow(u"&Energy unit:"_s, m_energyUnit);
    form->addRow(u"&Decimal places:"_s, m_decimals);
}

void CPreferencesDialog::AddNutrients(const QStringList& names) {
    m_nutrients = new QStandardItemModel(kNutrientCount, 2, this);
    m_nutrients->setHorizontalHeaderLabels({u"Nutrient (unit)"_s, u"Display"_s});
    for (int row = 0; row < kNutrientCount; ++row) {
        auto* name = new QStandardItem(names.value(row));
        auto* display = new QStandardItem;
        display->setCheckable(true);
        display->setCheckState(m_preferences.displayed.test(row) ? Qt::Checked : Qt::Unchecked);
        display->setAccessibleText(names.value(row));
        m_nutrients->setItem(row, kNameColumn, name);
        m_nutrients->setItem(row, kDisplayColumn, display);
    }
    auto* group = new QGroupBox(u"Nutrients"_s);
    auto* column = new QVBoxLayout(group);
    column->addWidget(new CNutrientChecks(m_nutrients));
    Content()->addWidget(group, 1);
}
