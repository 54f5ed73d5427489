#include "catalogue/pick/AddFoodForm.h"

#include <algorithm>
#include <utility>

#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/CategoryItems.h"
#include "catalogue/items/FoundItem.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kNoCategory = -1;

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

}  // namespace

CAddFoodRequest CAddFoodRequest::ForNewEntry(QTime time) {
    CAddFoodRequest request;
    request.isNew = true;
    request.food.time = time;
    request.food.item.SetCategoryId(kNoCategory);
    request.food.item.SetServingName(0, kOneServing);
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
    : CPickForm(doc),
      m_isNew(request.isNew),
      m_allowedKinds(request.allowedKinds),
      m_refuseDuplicates(request.refuseDuplicates),
      m_hasTime(request.hasTime),
      m_food(request.food),
      m_nutrients(doc.Preferences().DisplayedNutrients()),
      m_valuesAreTotals(request.valuesAreTotals),
      m_totalsAmount(request.food.amount > kLeastAmount ? request.food.amount : 1.0) {
    TakeItem(request.food.item);
    SetTime(request.food.time);
    if (m_food.amount <= kLeastAmount) {
        m_food.amount = 1.0;
    }
    m_amountText = doc.Preferences().FormatNumber(m_food.amount);
    if (m_isNew) {
        ChooseSingleCategory();
    }
    m_mayOffer = !m_isNew;
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
    ChooseSingleCategory();
    ClearItem({});
}

EPicker CAddFoodForm::Pick(EPicker picker, const QString& row) {
    CDatabase& database = Doc().Database();
    switch (picker) {
        case EPicker::Category:
            m_food.item.SetCategoryId(database.Categories().IdOf(Catalogue(), row));
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
            (void)PickType(row);  // shows a message when it fails
            return EPicker::None;
        case EPicker::None:
            break;
    }
    return EPicker::None;
}

CSearchQuery CAddFoodForm::SearchQuery() const {
    CSearchQuery query{.kinds = 0, .meal = m_hasTime ? Doc().selectedMeal : kAllMeals};
    for (const EItemKind kind : Kinds()) {
        query.kinds |= KindBit(CatalogueOf(kind));
    }
    return query;
}

bool CAddFoodForm::TakeFound(ECatalogueKind kind, int position) {
    SetKind(*KindOf(kind).itemKind);
    if (!Load(position)) {
        return false;
    }
    TakeOneServing();
    return true;
}

void CAddFoodForm::TakeOneServing() {
    m_amountText = ShownNumber(1.0, 2);
    Recompute(1.0);
}

QStringList CAddFoodForm::Servings() const {
    QStringList names;
    for (const CServing& serving : m_servings) {
        names.append(serving.name);
    }
    return names;
}

void CAddFoodForm::OfferServings() {
    if (!std::exchange(m_mayOffer, false)) {
        return;
    }
    CDatabase& database = Doc().Database();
    const ItemUseKey key = NameUseKey(m_food.item.GetName(), m_food.item.GetType());
    int position = -1;
    ForEachItemOf(database, Catalogue(), CategoryId(),
                  [&](int at, const QString& name, const QString& type) {
                      position = position < 0 && NameUseKey(name, type) == key ? at : position;
                  });
    CFoodItem food;
    if (!ReadAsFood(database, Catalogue(), position, food, true)) {
        return;
    }
    for (int index = 0; index < kServingCount; ++index) {
        const QString serving = food.GetServingName(index);
        if (!serving.isEmpty() && !Servings().contains(serving)) {
            m_servings.push_back({serving, food.GetServingWeight(index), true});
        }
    }
}

void CAddFoodForm::SelectServing(int index) {
    if (index == m_selectedServing || index < 0 || index >= static_cast<int>(m_servings.size())) {
        return;
    }
    const CServing serving = m_servings[index];
    if (serving.isOffered) {
        if (PickType(m_food.item.GetType())) {
            SetServingText(serving.name);
        }
        return;
    }
    m_selectedServing = index;
    m_servingText = serving.name;
    Recompute(m_food.amount);
}

void CAddFoodForm::SetServingText(const QString& text) {
    if (text == m_servingText) {
        return;
    }
    const auto named = std::ranges::find_if(m_servings, [&text](const CServing& serving) {
        return serving.name == text && !serving.isOffered;
    });
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
    m_amountText = typed > kLeastAmount ? text : Doc().Preferences().FormatNumber(amount);
    Recompute(amount);
}

bool CAddFoodForm::FollowAmount(const QString& text) {
    const bool isAmount = TypedNumber(text).value_or(0) > kLeastAmount;
    if (isAmount) {
        SetAmountText(text);
    }
    return isAmount;
}

QString CAddFoodForm::RowTitle(int row) {
    return Doc().NutrientNames().value(m_nutrients[row]);
}

QString CAddFoodForm::RowText(int row) const {
    const int nutrient = m_nutrients[row];
    const auto& typed = m_typed[nutrient];
    return typed ? typed->text : Doc().Preferences().FormatNutrient(nutrient, Computed(nutrient));
}

void CAddFoodForm::SetRowText(int row, const QString& text) {
    if (text == RowText(row) || IsTypedTooLarge(text)) {
        return;
    }
    const int nutrient = m_nutrients[row];
    m_typed[nutrient] = {text, Doc().Preferences().ReadNutrient(nutrient, text)};
}

bool CAddFoodForm::Confirm() {
    const QString name = NameText().trimmed();
    const QString type = TypeText().trimmed();
    if (name.isEmpty()) {
        ShowInformation(QString::fromLatin1(KindOf(ECatalogueKind::Foods).item.noName));
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
    m_result.time = GetTime();
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
    m_servingText = kOneServing;
    m_valuesAreTotals = false;
    m_food.cataloguePosition = -1;
    TakeOneServing();
}

/// Leaves the amount as it is.
bool CAddFoodForm::Load(int position) {
    CFoodItem food;
    if (!ReadAsFood(Doc().Database(), Catalogue(), position, food)) {
        ShowInformation(QString::fromLatin1(KindOf(ECatalogueKind::Foods).item.cannotLoad));
        return false;
    }
    TakeItem(food);
    m_valuesAreTotals = false;
    m_food.cataloguePosition = position;
    return true;
}

/// Shows an item with its named servings, the first one selected.
void CAddFoodForm::TakeItem(const CFoodItem& item) {
    m_mayOffer = false;
    m_food.item = item;
    SetNameText(item.GetName());
    SetTypeText(item.GetType());
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

void CAddFoodForm::ChooseSingleCategory() {
    const std::vector<CCategoryEntry> categories =
        Doc().Database().Categories().List(CatalogueOf(m_food.kind));
    if (categories.size() == 1) {
        m_food.item.SetCategoryId(categories.front().id);
    }
}

/// Loads the item of that type, one serving of it.
bool CAddFoodForm::PickType(const QString& type) {
    const bool isLoaded = LoadOfType(type);
    if (isLoaded) {
        TakeOneServing();
    }
    return isLoaded;
}

/// Discards typed values when the item was picked from the catalogue. When its values are totals,
/// or it is not from the catalogue, typed values are scaled with the amount.
void CAddFoodForm::Recompute(double amount) {
    const double ratio = amount / m_food.amount;
    m_food.amount = amount;
    if (m_food.cataloguePosition >= 0 && !m_valuesAreTotals) {
        m_typed = {};
        return;
    }
    if (ratio == 1.0) {
        return;
    }
    for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
        if (auto& typed = m_typed[nutrient]) {
            typed->value *= ratio;
            typed->text = Doc().Preferences().FormatNutrient(nutrient, typed->value);
        }
    }
}

double CAddFoodForm::Computed(int nutrient) const {
    const double value = m_food.item.GetNutrientValue(nutrient);
    const double amount = m_food.amount;
    if (m_valuesAreTotals) {
        // For the original amount the totals are returned exactly.
        return amount == m_totalsAmount ? value : value / m_totalsAmount * amount;
    }
    const double weightGrams =
        m_selectedServing < 0 ? 0 : m_servings[m_selectedServing].weightGrams;
    return ValueOfServings(value, amount, m_food.kind == EItemKind::Food ? weightGrams : 0);
}

double CAddFoodForm::Value(int nutrient) const {
    const auto& typed = m_typed[nutrient];
    return typed ? typed->value : Computed(nutrient);
}

bool CAddFoodForm::CheckDuplicate(const QString& name, const QString& type) {
    const qint32 category = m_food.item.GetCategoryId();
    if (Doc().Database().Catalogue().FindItem(Catalogue(), category, name, type) < 0) {
        return true;
    }
    const bool isFood = m_food.kind == EItemKind::Food;
    // Recipes share the wording of menus.
    const CCatalogueKind& kind = KindOf(isFood ? ECatalogueKind::Foods : ECatalogueKind::Menus);
    const QLatin1StringView exists(kind.item.exists);
    ShowInformation(isFood ? FormatText(exists, {name, type, CategoryText()})
                           : FormatText(exists, {name, CategoryText()}));
    return false;
}
