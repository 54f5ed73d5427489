#include "catalogue/items/FoodEditDialog.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "catalogue/items/CatalogueViewSettings.h"
#include "catalogue/items/ChosenFood.h"
#include "catalogue/items/TextLimits.h"
#include "controls/Grid.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
/// How the lists share the height of a taller dialog.
constexpr int kServingsStretch = 1;
constexpr int kNutrientsStretch = 2;

constexpr auto kToOneServing =
    "Only one serving enabled in this mode. You have to know nutrient values for this serving. "
    "All current servings will be deleted. Continue?"_L1;
constexpr auto kToWeighed =
    "Up to 10 servings available in this mode. You have to know weight in gm for each serving and "
    "nutrient values per 100gm. Current servings will be deleted. Continue?"_L1;

int RowsOf(EServingMode mode) {
    return mode == EServingMode::Weighed ? kServingCount : 1;
}

QStringList ServingUnitWords() {
    QStringList words;
    for (const char* word : kServingUnitWords) {
        words.append(QString::fromLatin1(word));
    }
    return words;
}
}  // namespace

/// The cells show rounded numbers. A cell whose text is unchanged keeps its stored value, so that
/// OK without any change changes nothing.
struct CFoodEditDialog::CFields {
    QComboBox* category = nullptr;
    QLineEdit* name = nullptr;
    QLineEdit* type = nullptr;
    QButtonGroup* modes = nullptr;
    CGrid* servings = nullptr;
    CGrid* nutrients = nullptr;
    std::vector<int> nutrientOfRow;
    QStringList shownValues;   ///< by nutrient row
    QStringList shownWeights;  ///< by serving row
    QString proposedServing;   ///< name entered by the dialog, not by the user
};

CFoodEditDialog::CFoodEditDialog(CVelmoraDoc& doc, const CFoodItem& food, int position,
                                 QWidget* parent)
    : CDialog(position < 0 ? u"New food"_s : u"Edit food"_s, parent),
      m_doc(doc),
      m_food(food),
      m_position(position),
      m_mode(ServingModeOf(food)),
      m_fields(std::make_unique<CFields>()) {
    AddNames();
    AddServings();
    AddNutrients();
    FillServings();
    m_fields->name->setFocus();
    SetPreferredSize(480, 640);
}

CFoodEditDialog::~CFoodEditDialog() = default;

void CFoodEditDialog::AddNames() {
    QFormLayout* form = AddForm();
    auto* category = new QComboBox;
    category->setObjectName(u"category"_s);
    category->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const CCategoryEntry& entry : m_doc.Database().Categories().List(ECatalogueKind::Foods)) {
        category->addItem(entry.name, entry.id);
    }
    category->setCurrentIndex(category->findData(m_food.GetCategoryId()));
    form->addRow(u"&Category:"_s, category);
    m_fields->category = category;

    const auto addText = [&](const QString& label, const QString& objectName, const QString& text) {
        auto* edit = new QLineEdit(text);
        edit->setObjectName(objectName);
        // As long as an import keeps it, so that a typed text survives an exchange.
        edit->setMaxLength(std::max<int>(kLongestText, static_cast<int>(text.size())));
        edit->setCursorPosition(0);
        form->addRow(label, edit);
        return edit;
    };
    m_fields->name = addText(u"Food &name:"_s, u"name"_s, m_food.GetName());
    m_fields->type = addText(u"Food &type:"_s, u"type"_s, m_food.GetType());
}

void CFoodEditDialog::AddServings() {
    m_fields->modes = new QButtonGroup(this);
    const auto addMode = [this](const QString& text, const QString& objectName, EServingMode mode) {
        auto* button = new QRadioButton(text);
        button->setObjectName(objectName);
        button->setChecked(mode == m_mode);
        m_fields->modes->addButton(button, static_cast<int>(mode));
        Content()->addWidget(button);
    };
    addMode(u"&One serving"_s, u"oneServing"_s, EServingMode::OneServing);
    addMode(u"&Weighed (per 100 gm)"_s, u"weighedServings"_s, EServingMode::Weighed);
    connect(m_fields->modes, &QButtonGroup::idClicked, this,
            [this](int id) { ChangeMode(static_cast<EServingMode>(id)); });

    m_fields->servings =
        new CGrid(EGridKind::Choices, {u"Serving name"_s, u"Weight (gm)"_s}, u"Servings"_s);
    m_fields->servings->setObjectName(u"servings"_s);
    m_fields->servings->SetChoices(ServingUnitWords());
    m_fields->servings->SetMaxLength(0, kLongestServingName);
    Content()->addWidget(m_fields->servings, kServingsStretch);
    connect(m_fields->servings, &CGrid::LabelEditEnded, this,
            [this](int row, int column, const std::optional<QString>& text) {
                if (text) {
                    EndServingEdit(row, column, *text);
                }
            });
}

/// The displayed nutrients come first, then all others, both in the order of the table.
void CFoodEditDialog::AddNutrients() {
    auto* heading = new QLabel(u"Nutrients"_s);
    Content()->addWidget(heading);
    m_fields->nutrients =
        new CGrid(EGridKind::Values, {u"Nutrient (unit)"_s, u"Value"_s}, u"Nutrients"_s);
    CGrid* grid = m_fields->nutrients;
    grid->setObjectName(u"nutrients"_s);
    grid->setColumnWidth(1, grid->fontMetrics().horizontalAdvance(u"000000.000000"_s));
    heading->setBuddy(grid);
    Content()->addWidget(grid, kNutrientsStretch);

    const CPreferences& preferences = m_doc.Preferences();
    std::vector<int>& order = m_fields->nutrientOfRow;
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        order.push_back(nutrient);
    }
    std::stable_partition(order.begin(), order.end(), [&](int nutrient) {
        return preferences.displayed.test(static_cast<size_t>(nutrient));
    });
    grid->SetRowCount(kNutrientCount);
    for (int row = 0; row < kNutrientCount; ++row) {
        const int nutrient = order[static_cast<size_t>(row)];
        const double value = m_food.GetNutrientValue(nutrient);
        const QString text = value == 0 ? QString() : preferences.FormatNutrient(nutrient, value);
        m_fields->shownValues.append(text);
        grid->SetCellText(row, 0, m_doc.NutrientNames()[nutrient]);
        grid->SetCellText(row, 1, text);
    }
    connect(grid, &CGrid::LabelEditEnded, this,
            [this](int row, int, const std::optional<QString>& text) {
                if (text) {
                    EndNutrientEdit(row, *text);
                }
            });
}

void CFoodEditDialog::FillServings() {
    EmptyServings();
    for (int row = 0; row < RowsOf(m_mode); ++row) {
        const double weight = m_food.GetServingWeight(row);
        const QString weightText =
            weight > 0 ? m_doc.Preferences().FormatNumber(weight) : QString();
        m_fields->servings->SetCellText(row, 0, m_food.GetServingName(row));
        m_fields->servings->SetCellText(row, 1, weightText);
        m_fields->shownWeights[row] = weightText;
    }
    if (m_mode == EServingMode::OneServing && m_food.GetServingName(0).isEmpty()) {
        m_fields->proposedServing = kOneServing;
        m_fields->servings->SetCellText(0, 0, m_fields->proposedServing);
    }
}

void CFoodEditDialog::EmptyServings() {
    m_fields->servings->SetRowCount(0);
    m_fields->servings->SetRowCount(RowsOf(m_mode));
    m_fields->shownWeights = QStringList(RowsOf(m_mode), QString());
    m_fields->proposedServing.clear();
}

bool CFoodEditDialog::HasServings() const {
    const CGrid* grid = m_fields->servings;
    for (int row = 0; row < grid->RowCount(); ++row) {
        const QString name = grid->CellText(row, 0);
        if (!grid->CellText(row, 1).isEmpty() ||
            (!name.isEmpty() && name != m_fields->proposedServing)) {
            return true;
        }
    }
    return false;
}

void CFoodEditDialog::ChangeMode(EServingMode mode) {
    if (mode == m_mode) {
        return;
    }
    const bool asks =
        HasServings() &&
        CCatalogueViewSettings::Load(m_doc.Database(), ECatalogueKind::Foods).confirmServingChange;
    if (asks && !AskYesNo(mode == EServingMode::Weighed ? kToWeighed : kToOneServing)) {
        m_fields->modes->button(static_cast<int>(m_mode))->setChecked(true);
        return;
    }
    m_mode = mode;
    EmptyServings();
}

void CFoodEditDialog::EndServingEdit(int row, int column, const QString& text) {
    CGrid* grid = m_fields->servings;
    if (column == 0) {
        grid->SetCellText(row, 0, text.trimmed());
        return;
    }
    const std::optional<QString> weight = TypedAmount(text);
    if (weight && text != grid->CellText(row, 1)) {
        grid->SetCellText(row, 1, *weight);
    }
}

void CFoodEditDialog::EndNutrientEdit(int row, const QString& text) {
    const std::optional<QString> value = TypedAmount(text);
    if (value && text != m_fields->nutrients->CellText(row, 1)) {
        m_fields->nutrients->SetCellText(row, 1, *value);
    }
}

bool CFoodEditDialog::Confirm() {
    const CFoodItem food = ReadFields();
    const std::optional<QString> refusal = CheckFood(m_doc.Database(), food, m_mode, m_position);
    if (refusal) {
        ShowMessage(*refusal);
        return false;
    }
    m_food = food;
    return true;
}

CFoodItem CFoodEditDialog::ReadFields() const {
    CFoodItem food = m_food;
    const QVariant category = m_fields->category->currentData();
    food.SetCategoryId(category.isValid() ? category.toInt() : -1);
    food.SetName(m_fields->name->text().trimmed());
    food.SetType(m_fields->type->text().trimmed());
    for (int row = 0; row < kNutrientCount; ++row) {
        const QString text = m_fields->nutrients->CellText(row, 1);
        if (text != m_fields->shownValues[row]) {
            const int nutrient = m_fields->nutrientOfRow[static_cast<size_t>(row)];
            food.SetNutrientValue(nutrient, m_doc.Preferences().ReadNutrient(nutrient, text));
        }
    }
    ReadServings(food);
    return food;
}

/// Skips empty rows between others: serving 1 decides the mode and must not be empty.
void CFoodEditDialog::ReadServings(CFoodItem& food) const {
    const CGrid* grid = m_fields->servings;
    food.ClearServings();
    int serving = 0;
    for (int row = 0; row < grid->RowCount(); ++row) {
        const QString name = grid->CellText(row, 0);
        if (name.isEmpty()) {
            continue;
        }
        food.SetServingName(serving, name);
        if (m_mode == EServingMode::Weighed) {
            const QString text = grid->CellText(row, 1);
            const bool untouched = !text.isEmpty() && text == m_fields->shownWeights[row];
            food.SetServingWeight(
                serving, untouched ? m_food.GetServingWeight(row) : TypedNumber(text).value_or(0));
        }
        ++serving;
    }
}
