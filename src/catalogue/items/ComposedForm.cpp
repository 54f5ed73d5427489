#include "catalogue/items/ComposedForm.h"

#include <algorithm>

#include "app/ItemTexts.h"
#include "app/ListCommands.h"
#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/ChosenFood.h"
#include "platform/NumberText.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {
/// Messages call all components foods, recipes too.
const CItemTexts& FoodTexts() {
    return KindOf(ECatalogueKind::Foods).item;
}
}  // namespace

CComposedForm::CComposedForm(CVelmoraDoc& doc, ECatalogueKind kind, int position, qint32 categoryId)
    : m_doc(doc),
      m_step(
          doc.Database().GetStore(),
          FormatText("addition of a %s"_L1, {QString(QLatin1StringView(KindOf(kind).words.one))})),
      m_kind(kind),
      m_position(position),
      m_item(kind),
      m_nutrients(doc.Preferences().DisplayedNutrients()) {
    if (position < 0) {
        m_step.SetProvisional(true);
        m_item.SetParentId(categoryId);
        m_item.SetItemId(doc.Database().Composed().AllocateItemId(kind));
    } else {
        m_isLoaded = Items().Read(position, m_item);
        m_step.Rename(StepName(kEditStep, m_item.GetName()));
    }
    m_fields = {m_item.GetParentId(), m_item.GetName(), QString(), m_item.GetInstructions()};
    if (kind == ECatalogueKind::Recipes) {
        m_fields.servings = m_item.GetServingName();
    }
    LoadComponents();
}

CComposedForm::~CComposedForm() {
    if (m_position >= 0 || m_doc.Database().GetStore().IsVolumeLost()) {
        return;
    }
    // After a failure the rest is removed by undoing the step, or when the catalogue is next
    // opened.
    if (m_doc.Database().Composed().DeleteComponents(m_kind, m_item.GetItemId())) {
        m_step.Cancel();
    }
}

QString CComposedForm::CategoryText() const {
    return m_doc.Database().Categories().NameOf(m_kind, m_fields.categoryId);
}

QString CComposedForm::RowTitle(int row) const {
    return m_doc.NutrientNames().value(m_nutrients[static_cast<size_t>(row)]);
}

QString CComposedForm::RowText(int row) const {
    const int nutrient = m_nutrients[static_cast<size_t>(row)];
    return m_doc.Preferences().FormatNutrient(nutrient, m_item.GetNutrientValue(nutrient));
}

void CComposedForm::SetRowText(int row, const QString& typed) {
    if (typed.trimmed() == RowText(row) || IsTypedTooLarge(typed)) {
        return;
    }
    const int nutrient = m_nutrients[static_cast<size_t>(row)];
    m_item.SetNutrientValue(nutrient, m_doc.Preferences().ReadNutrient(nutrient, typed));
}

QString CComposedForm::ServingText(int component) const {
    const CComposedItem& item = m_components[static_cast<size_t>(component)];
    return ::ServingText(m_doc.Preferences().FormatNumber(item.GetServingX()),
                         item.GetServingName());
}

bool CComposedForm::MayEditComponent(int selected) {
    return CheckSelection(FoodTexts().edit, selected);
}

bool CComposedForm::TakeChosen(const CChosenFood& chosen, CComposedItem& component) {
    const qint32 itemId = ComponentItemId(m_doc.Database(), chosen.kind, chosen.cataloguePosition);
    const bool isRecipeOfRecipe =
        m_kind == ECatalogueKind::Recipes && chosen.kind == EItemKind::Recipe;
    if (isRecipeOfRecipe &&
        m_doc.Database().Composed().RecipeContains(itemId, m_item.GetItemId())) {
        ShowMessage(
            FormatText("Recipe '%s' cannot be a part of itself."_L1, {chosen.item.GetName()}),
            EMessageIcon::Information);
        return false;
    }
    const bool isSameItem = chosen.cataloguePosition < 0 &&
                            component.GetName() == chosen.item.GetName() &&
                            component.GetType() == chosen.item.GetType();
    if (!isSameItem) {
        component.SetItemId(itemId);
    }
    component.SetItemKind(chosen.kind);
    component.SetName(chosen.item.GetName());
    component.SetType(chosen.item.GetType());
    component.SetNutrientValues(chosen.item.GetNutrientValues());
    component.SetServingName(chosen.item.GetServingName(0));
    component.SetServingX(chosen.item.GetServingWeight(0));
    return true;
}

bool CComposedForm::AddComponent(const CChosenFood& chosen) {
    CComposedItem component(m_kind);
    component.SetParentId(m_item.GetItemId());
    const bool isAdded = TakeChosen(chosen, component) && Items().Write(kNoPosition, component);
    LoadComponents();
    return isAdded;
}

bool CComposedForm::ReplaceComponent(int component, const CChosenFood& chosen) {
    CComposedItem item = m_components[static_cast<size_t>(component)];
    item.SetParentId(m_item.GetItemId());  // a damaged one has none
    const std::vector<int> positions =
        m_doc.Database().Composed().ComponentPositions(m_kind, m_item.GetItemId());
    const bool isReplaced = positions.size() == m_components.size() && TakeChosen(chosen, item) &&
                            Items().Write(positions[static_cast<size_t>(component)], item);
    LoadComponents();
    return isReplaced;
}

bool CComposedForm::DeleteComponents(const std::vector<int>& selected) {
    const auto count = static_cast<int>(selected.size());
    if (!CheckSelection(FoodTexts().remove, count) ||
        !ConfirmFor(KindOf(m_kind).component.confirmDelete, count,
                    {m_components[static_cast<size_t>(selected.front())].GetName()})) {
        return false;
    }
    const std::vector<int> positions =
        m_doc.Database().Composed().ComponentPositions(m_kind, m_item.GetItemId());
    // Last first: a deletion changes the positions after it.
    const std::vector<int> descending(selected.rbegin(), selected.rend());
    const int deleted = ActOnEach(
        m_doc.Database().GetStore(), descending,
        [&](int row) { return Items().Delete(positions[static_cast<size_t>(row)]); },
        QString::fromLatin1(FoodTexts().cannotDelete));
    LoadComponents();
    return deleted > 0;
}

void CComposedForm::Recalculate() {
    NutrientValues sums{};
    for (const CComposedItem& component : m_components) {
        for (int nutrient = 0; nutrient < kNutrientCount; ++nutrient) {
            sums[static_cast<size_t>(nutrient)] += component.GetNutrientValue(nutrient);
        }
    }
    m_item.SetNutrientValues(sums);
}

bool CComposedForm::LacksValues() const {
    const auto isZero = [](const CComposedItem& item) {
        return item.GetNutrientValues() == NutrientValues{};
    };
    return isZero(m_item) && !std::ranges::all_of(m_components, isZero);
}

bool CComposedForm::Confirm() {
    CDatabase& database = m_doc.Database();
    const CCatalogueKind& kind = KindOf(m_kind);
    if (m_fields.categoryId < 0) {
        ShowMessage(kNoCategorySelected);
        return false;
    }
    CComposedItem item = m_item;
    item.SetParentId(m_fields.categoryId);
    item.SetItemKind(*kind.itemKind);
    item.SetName(m_fields.name.trimmed());  // may cut it; the cut name must be unique
    if (item.GetName().isEmpty()) {
        ShowMessage(QString::fromLatin1(kind.item.noName));
        return false;
    }
    if (database.Catalogue().FindItem(m_kind, m_fields.categoryId, item.GetName(), {},
                                      m_position) >= 0) {
        ShowMessage(
            FormatText(QLatin1StringView(kind.item.exists), {item.GetName(), CategoryText()}));
        return false;
    }
    item.SetType({});
    item.SetServingName(m_kind == ECatalogueKind::Menus ? QString(kOneServing)
                                                        : m_fields.servings.trimmed());
    item.SetServingX(1.0);
    item.SetInstructions(m_fields.instructions);
    m_step.Rename(StepName(m_position < 0 ? kAdditionStep : kEditStep, item.GetName()));
    m_step.SetProvisional(false);
    if (!Items().Write(m_position, item)) {
        m_step.SetProvisional(m_position < 0);
        ShowMessage(
            QString::fromLatin1(m_position < 0 ? kind.item.cannotAdd : kind.item.cannotUpdate));
        return false;
    }
    m_item = item;
    m_position = database.Catalogue().FindItem(m_kind, m_fields.categoryId, item.GetName(), {});
    return true;
}

void CComposedForm::LoadComponents() {
    m_components.clear();
    CItemDatabaseBase& items = Items();
    for (const int position :
         m_doc.Database().Composed().ComponentPositions(m_kind, m_item.GetItemId())) {
        // A damaged component gets an empty row, so that it can be deleted.
        (void)items.ReadQuietly(position, m_components.emplace_back(m_kind));
    }
}
