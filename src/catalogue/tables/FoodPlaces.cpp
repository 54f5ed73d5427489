#include "catalogue/tables/FoodPlaces.h"

#include <algorithm>
#include <tuple>

void CFoodPlaces::Add(quint32 fdcId) {
    m_foods.push_back({fdcId, Count()});
}

void CFoodPlaces::Sort() {
    std::ranges::sort(m_foods, {},
                      [](const CFood& food) { return std::tie(food.fdcId, food.place); });
}

int CFoodPlaces::PlaceOf(quint32 fdcId) {
    if (fdcId == m_soughtId) {
        return m_soughtPlace;
    }
    if (m_next >= m_foods.size() || m_foods[m_next].fdcId != fdcId) {
        const auto found = std::ranges::lower_bound(m_foods, fdcId, {}, &CFood::fdcId);
        m_next = found - m_foods.begin();
    }
    m_soughtId = fdcId;
    const bool isThere = m_next < m_foods.size() && m_foods[m_next].fdcId == fdcId;
    m_soughtPlace = isThere ? m_foods[m_next].place : -1;
    m_next += isThere ? 1 : 0;
    return m_soughtPlace;
}
