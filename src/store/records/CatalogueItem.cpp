#include "store/records/CatalogueItem.h"

#include <array>

namespace {
constexpr int kCategoryId = 0;

const std::array<CCatalogueLayout, 4> kLayouts = {{
    {
        .layout = kFoodLayout,
        .name = 1,
        .type = 2,
        .namesType = true,
        .hasComponents = false,
        .findValue = "find.foods",
        .namesPrefix = "FillArrayWithUniqueFoodNames --> ",
        .settingsFailure = "Cannot save foods props (error# %d).",
    },
    {
        .layout = kMenuLayout,
        .name = 3,
        .type = 4,
        .namesType = false,
        .hasComponents = true,
        .findValue = "find.menus",
    },
    {
        .layout = kRecipeLayout,
        .name = 3,
        .type = 4,
        .namesType = false,
        .hasComponents = true,
        .findValue = "find.recipes",
    },
    {
        .layout = kExerciseLibLayout,
        .name = 1,
        .type = 2,
        .namesType = true,
        .hasComponents = false,
        .findValue = "find.exercises",
        .namesPrefix = "FillArrayWithUniqueExlibNames --> ",
        .settingsFailure = "Cannot save exlib props (error# %d).",
    },
}};
}  // namespace

const CCatalogueLayout& CatalogueLayoutOf(ECatalogueKind kind) {
    return kLayouts.at(static_cast<std::size_t>(kind));
}

bool IsPastLastItem(const PropertyList& properties) {
    const auto* parent = properties.empty() ? nullptr : std::get_if<qint32>(&properties.front());
    return parent != nullptr && *parent >= CViewSettings::kMarker;
}

CCatalogueItem::CCatalogueItem(ECatalogueKind kind)
    : CItemRecord(CatalogueLayoutOf(kind).layout), m_numbers(CatalogueLayoutOf(kind)) {}

qint32 CCatalogueItem::GetCategoryId() const {
    return Get<qint32>(kCategoryId);
}

void CCatalogueItem::SetCategoryId(qint32 id) {
    Set(kCategoryId, id);
}

QString CCatalogueItem::GetName() const {
    return Get<QString>(m_numbers.name);
}

void CCatalogueItem::SetName(const QString& name) {
    SetText(m_numbers.name, name);
}

QString CCatalogueItem::GetType() const {
    return Get<QString>(m_numbers.type);
}

void CCatalogueItem::SetType(const QString& type) {
    SetText(m_numbers.type, type);
}
