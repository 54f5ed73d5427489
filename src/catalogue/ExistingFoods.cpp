#include "catalogue/ExistingFoods.h"

namespace {
size_t HashOf(const CFoodItem& food) {
    return qHashMulti(0, food.GetName(), food.GetType());
}
}  // namespace

CExistingFoods::CExistingFoods(CDatabase& database) : m_database(database) {}

int CExistingFoods::Find(const CFoodItem& food) {
    const CIndex& index = IndexOf(food.GetCategoryId());
    const auto place = index.places.constFind(HashOf(food));
    if (place == index.places.constEnd()) {
        return -1;
    }
    CItemDatabase<CFoodItem>& foods = m_database.Foods();
    const int position = foods.FirstPositionOf(food.GetCategoryId()) + *place;
    if (foods.ReadQuietly(position, m_scratch) &&
        m_scratch.GetCategoryId() == food.GetCategoryId() &&
        m_scratch.GetName() == food.GetName() && m_scratch.GetType() == food.GetType()) {
        return position;
    }
    // Two names share a hash, or a record cannot be read.
    return m_database.FindItem(ECatalogueKind::Foods, food.GetCategoryId(), food.GetName(),
                               food.GetType());
}

void CExistingFoods::NoteAdded(const CFoodItem& food) {
    CIndex& index = IndexOf(food.GetCategoryId());
    Enter(index, food, index.count);
    ++index.count;
}

CExistingFoods::CIndex& CExistingFoods::IndexOf(qint32 categoryId) {
    const auto known = m_indexes.find(categoryId);
    if (known != m_indexes.end()) {
        return *known;
    }
    CIndex& index = m_indexes[categoryId];
    CItemDatabase<CFoodItem>& foods = m_database.Foods();
    const int first = foods.FirstPositionOf(categoryId);
    if (first < 0) {
        return index;
    }
    foods.ForEachFrom(first, [&](int position, PropertyList& properties) {
        if (!m_scratch.SetProperties(std::move(properties))) {
            return true;
        }
        if (m_scratch.GetCategoryId() != categoryId) {
            return false;
        }
        index.count = position - first + 1;
        Enter(index, m_scratch, position - first);
        return true;
    });
    return index;
}

void CExistingFoods::Enter(CIndex& index, const CFoodItem& food, int place) {
    const size_t hash = HashOf(food);
    if (!index.places.contains(hash)) {
        index.places.insert(hash, place);
    }
}
