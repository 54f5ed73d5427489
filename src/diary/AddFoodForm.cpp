#include "diary/AddFoodForm.h"

#include <algorithm>

#include "catalogue/CatalogueTexts.h"
#include "catalogue/FindItems.h"
#include "diary/CatalogueChoices.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kNoCategory = -1;
constexpr double kLeastAmount = 0.001;
constexpr double kLeastWeightGrams = 0.0001;
constexpr auto kDefaultServing = "1 serving"_L1;

struct CKindRow {
    EAllowedKinds bit;
    EItemKind kind;
};
constexpr CKindRow kKinds[] = {
    {kAllowFood, EItemKind::Food},
    {kAllowMenu, EItemKind::Menu},
    {kAllowRecipe, EItemKind::Recipe},
};

int BitOf(EItemKind kind) {
    const auto* row = std::ranges::find(kKinds, kind, &CKindRow::kind);
    return row == std::end(kKinds) ? 0 : row->bit;
}

/// How a picker is headed and what it says when it has nothing to list.
struct CPickerRow {
    const char* header;
    const char* empty;
};
constexpr CPickerRow kPickers[] = {
    {"", ""},
    {"Category", "There are no categories to select."},
    {"Name", "There are no names to select."},
    {"Name", "There are no types to select."},
};

const CPickerRow& RowOf(EPicker picker) {
    return kPickers[static_cast<int>(picker)];
}

void ShowInformation(const QString& text) {
    ShowMessage(text, EMessageIcon::Information);
}

}  // namespace

CAddFoodRequest CAddFoodRequest::ForNewEntry(QTime time) {
    CAddFoodRequest request;
    request.food.time = time;
    request.food.item.SetCategoryId(kNoCategory);
    request.food.item.SetServingName(0, kDefaultServing);
    return request;
}

CAddFoodRequest CAddFoodRequest::ForEntry(CDatabase& database, const CDietEntry& entry) {
    CAddFoodRequest request;
    request.allowedKinds = BitOf(entry.GetKind());
    request.food = {entry.GetKind(), TimeOf(entry.GetMoment()), entry.GetAmount(),
                    ItemFromEntry(database, entry)};
    request.valuesAreTotals = true;
    return request;
}

CAddFoodRequest CAddFoodRequest::ForNewComponent() {
    CAddFoodRequest request = ForNewEntry({});
    request.allowedKinds = kAllowFood | kAllowRecipe;
    request.hasTime = false;
    return request;
}

CAddFoodRequest CAddFoodRequest::ForComponent(CDatabase& database, const CComposedItem& component) {
    CAddFoodRequest request;
    request.allowedKinds = BitOf(component.GetItemKind());
    request.hasTime = false;
    request.valuesAreTotals = true;
    CFoodItem item;
    item.SetCategoryId(CategoryOfComponent(database, component));
    item.SetName(component.GetName());
    item.SetType(component.GetType());
    item.SetNutrientValues(component.GetNutrientValues());
    item.SetServingName(0, component.GetServingName());
    item.SetServingWeight(0, component.GetServingX());
    request.food = {component.GetItemKind(), {}, component.GetServingX(), item};
    return request;
}

CAddFoodForm::CAddFoodForm(CVelmoraDoc& doc, const CAddFoodRequest& request)
    : m_doc(doc),
      m_allowedKinds(request.allowedKinds),
      m_refuseDuplicates(request.refuseDuplicates),
      m_hasTime(request.hasTime),
      m_food(request.food),
      m_nutrients(doc.Preferences().DisplayedNutrients()),
      m_valuesAreTotals(request.valuesAreTotals),
      m_totalsAmount(request.food.amount > kLeastAmount ? request.food.amount : 1.0) {
    TakeItem(request.food.item);
    if (m_food.amount <= kLeastAmount) {
        m_food.amount = 1.0;
    }
    m_amountText = doc.Preferences().FormatNumber(m_food.amount);
}

std::vector<EItemKind> CAddFoodForm::Kinds() const {
    std::vector<EItemKind> kinds;
    for (const CKindRow& row : kKinds) {
        if ((m_allowedKinds & row.bit) != 0) {
            kinds.push_back(row.kind);
        }
    }
    if (kinds.empty()) {
        kinds.push_back(EItemKind::Food);
    }
    return kinds;
}

void CAddFoodForm::SetKind(EItemKind kind) {
    if (kind == m_food.kind) {
        return;
    }
    m_food.kind = kind;
    m_food.item.SetCategoryId(kNoCategory);
    ClearItem({});
}

QStringList CAddFoodForm::Choices(EPicker picker) {
    if (picker != EPicker::Category && m_food.item.GetCategoryId() < 0) {
        ShowInformation(u"There is no category selected."_s);
        return {};
    }
    const qint32 category = m_food.item.GetCategoryId();
    CDatabase& database = m_doc.Database();
    QStringList choices;
    switch (picker) {
        case EPicker::Category:
            choices = CategoryNames(database, Catalogue());
            break;
        case EPicker::Name:
            choices = NamesInCategory(database, Catalogue(), category);
            break;
        case EPicker::Type:
            choices = TypesOfName(database, Catalogue(), category, m_name);
            break;
        case EPicker::None:
            break;
    }
    if (choices.isEmpty()) {
        ShowInformation(QLatin1StringView(RowOf(picker).empty));
    }
    return choices;
}

QString CAddFoodForm::HeaderOf(EPicker picker) {
    return QLatin1StringView(RowOf(picker).header);
}

EPicker CAddFoodForm::Pick(EPicker picker, const QString& row) {
    CDatabase& database = m_doc.Database();
    switch (picker) {
        case EPicker::Category:
            m_food.item.SetCategoryId(database.CategoryIdOf(Catalogue(), row));
            ClearItem({});
            return EPicker::Name;
        case EPicker::Name:
            ClearItem(row);
            if (m_food.kind == EItemKind::Food) {
                return EPicker::Type;
            }
            LoadOfType({});
            return EPicker::None;
        case EPicker::Type:
            if (LoadOfType(row)) {
                m_amountText = ShownNumber(1.0, 2);
                Recompute(1.0);
            }
            return EPicker::None;
        case EPicker::None:
            break;
    }
    return EPicker::None;
}

bool CAddFoodForm::Find(const QString& name, const QStringList& types) {
    FindState().name = name;
    FindState().types = types;
    return LoadFound(FindFirst(m_doc.Database(), ECatalogueKind::Foods, FindState()));
}

bool CAddFoodForm::FindNext() {
    return LoadFound(::FindNext(m_doc.Database(), ECatalogueKind::Foods, FindState()));
}

bool CAddFoodForm::LoadFound(int position) {
    if (position < 0) {
        ShowInformation(QString::fromLatin1(kFoodsTexts.notFound));
        return false;
    }
    return Load(position);
}

QString CAddFoodForm::CategoryText() const {
    const qint32 category = m_food.item.GetCategoryId();
    return category < 0 ? QString() : m_doc.Database().CategoryNameOf(Catalogue(), category);
}

QStringList CAddFoodForm::Servings() const {
    QStringList names;
    for (const CServing& serving : m_servings) {
        names.append(serving.name);
    }
    return names;
}

void CAddFoodForm::SelectServing(int index) {
    if (index == m_selectedServing || index < 0 || index >= static_cast<int>(m_servings.size())) {
        return;
    }
    m_selectedServing = index;
    m_servingText = m_servings[index].name;
    Recompute(m_food.amount);
}

void CAddFoodForm::SetServingText(const QString& text) {
    if (text == m_servingText) {
        return;
    }
    const auto named = std::ranges::find(m_servings, text, &CServing::name);
    m_servingText = text;
    m_selectedServing =
        named == m_servings.end() ? -1 : static_cast<int>(named - m_servings.begin());
    Recompute(m_food.amount);
}

void CAddFoodForm::SetAmountText(const QString& text) {
    if (text == m_amountText) {
        return;
    }
    const double typed = TypedNumber(text).value_or(0);
    const double amount = typed > kLeastAmount ? typed : 1.0;
    m_amountText = typed > kLeastAmount ? text : m_doc.Preferences().FormatNumber(amount);
    Recompute(amount);
}

QString CAddFoodForm::RowTitle(int row) {
    return m_doc.NutrientNames().value(m_nutrients[row]);
}

QString CAddFoodForm::RowText(int row) const {
    const int nutrient = m_nutrients[row];
    const auto& typed = m_typed[nutrient];
    return typed ? typed->text : m_doc.Preferences().FormatNutrient(nutrient, Computed(nutrient));
}

void CAddFoodForm::SetRowText(int row, const QString& text) {
    if (text == RowText(row)) {
        return;
    }
    const int nutrient = m_nutrients[row];
    m_typed[nutrient] = {text, m_doc.Preferences().ReadNutrient(nutrient, text)};
}

bool CAddFoodForm::Confirm() {
    const QString name = m_name.trimmed();
    const QString type = m_type.trimmed();
    if (name.isEmpty()) {
        ShowInformation(u"Please enter food name"_s);
        return false;
    }
    if (m_refuseDuplicates && !CheckDuplicate(name, type)) {
        return false;
    }
    const QString serving = m_servingText.trimmed();
    if (serving.isEmpty()) {
        ShowInformation(u"Please enter serving name."_s);
        return false;
    }
    m_result = m_food;
    m_result.item.SetName(name);
    m_result.item.SetType(type);
    m_result.item.ClearServings();
    m_result.item.SetServingName(0, serving);
    m_result.item.SetServingWeight(0, m_food.amount);
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        m_result.item.SetNutrientValue(nutrient, Value(nutrient));
    }
    return true;
}

/// Keeps kind and category.
void CAddFoodForm::ClearItem(const QString& name) {
    CFoodItem item;
    item.SetCategoryId(m_food.item.GetCategoryId());
    item.SetName(name);
    TakeItem(item);
    m_servingText = kDefaultServing;
    m_valuesAreTotals = false;
    m_pickedPosition = -1;
    m_amountText = ShownNumber(1.0, 2);
    Recompute(1.0);
}

/// The item of the chosen category and name, and of a type unless menus and recipes have none.
bool CAddFoodForm::LoadOfType(const QString& type) {
    return Load(m_doc.Database().FindItem(Catalogue(), m_food.item.GetCategoryId(), m_name, type));
}

/// Leaves the amount as it is.
bool CAddFoodForm::Load(int position) {
    CFoodItem food;
    if (!ReadAsFood(m_doc.Database(), Catalogue(), position, food)) {
        ShowInformation(QString::fromLatin1(kFoodsTexts.cannotLoad));
        return false;
    }
    TakeItem(food);
    m_valuesAreTotals = false;
    m_pickedPosition = position;
    return true;
}

/// Shows an item with its named servings, the first one selected.
void CAddFoodForm::TakeItem(const CFoodItem& item) {
    m_food.item = item;
    m_name = item.GetName();
    m_type = item.GetType();
    m_servings.clear();
    for (int index = 0; index < kServingCount; ++index) {
        const QString name = item.GetServingName(index);
        if (!name.isEmpty()) {
            m_servings.push_back({name, item.GetServingWeight(index)});
        }
    }
    m_selectedServing = m_servings.empty() ? -1 : 0;
    m_servingText = m_servings.empty() ? QString() : m_servings.front().name;
    m_typed = {};
}

/// Typed values give way to those of a picked item; where the item's values are totals, or there
/// is no item behind them, they follow the amount like any total.
void CAddFoodForm::Recompute(double amount) {
    const double ratio = amount / m_food.amount;
    m_food.amount = amount;
    if (m_pickedPosition >= 0 && !m_valuesAreTotals) {
        m_typed = {};
        return;
    }
    if (ratio == 1.0) {
        return;
    }
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        if (auto& typed = m_typed[nutrient]) {
            typed->value *= ratio;
            typed->text = m_doc.Preferences().FormatNutrient(nutrient, typed->value);
        }
    }
}

double CAddFoodForm::Computed(int nutrient) const {
    const double value = m_food.item.GetNutrientValue(nutrient);
    const double amount = m_food.amount;
    if (m_valuesAreTotals) {
        // The amount that the totals were made for gives them back to the last bit.
        return amount == m_totalsAmount ? value : value / m_totalsAmount * amount;
    }
    const double weightGrams =
        m_selectedServing < 0 ? 0 : m_servings[m_selectedServing].weightGrams;
    if (m_food.kind == EItemKind::Food && weightGrams > kLeastWeightGrams) {
        return value * amount * weightGrams * 0.01;  // foods are stored per 100 g
    }
    return value * amount;
}

double CAddFoodForm::Value(int nutrient) const {
    const auto& typed = m_typed[nutrient];
    return typed ? typed->value : Computed(nutrient);
}

bool CAddFoodForm::CheckDuplicate(const QString& name, const QString& type) {
    const qint32 category = m_food.item.GetCategoryId();
    if (m_doc.Database().FindItem(Catalogue(), category, name, type) < 0) {
        return true;
    }
    // Recipes share the wording of menus.
    ShowInformation(
        m_food.kind == EItemKind::Food
            ? FormatText("Food '%s, %s' already exists in category '%s'."_L1,
                         {name, type, CategoryText()})
            : FormatText("Menu '%s' already exists in category '%s'."_L1, {name, CategoryText()}));
    return false;
}
