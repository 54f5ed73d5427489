#include "catalogue/tables/FoodValues.h"

#include <algorithm>

#include "catalogue/tables/TableFolder.h"

using namespace Qt::StringLiterals;

namespace {
constexpr quint8 kFree = 0xFF;
/// What a food weighs at least in a window, whose brands and texts take memory beside the amounts:
/// about as many amounts as a label has.
constexpr qint64 kFewAmounts = 12;

enum : int { kFdcId, kNutrientId, kAmount };
constexpr CTableColumn kColumns[] = {{"fdc_id"}, {"nutrient_id"}, {"amount"}};
constexpr CTableLayout kLayout = {"food_nutrient.csv", kColumns};
}  // namespace

CFoodValues::CFoodValues(CTableFolder& folder, const CNutrientNumbers& nutrients,
                         CFoodPlaces& places)
    : m_folder(folder), m_nutrients(nutrients), m_places(places) {}

qint64 CFoodValues::SizeOfTable(const CTableFolder& folder) {
    return folder.SizeOf(kLayout);
}

template <typename Take>
bool CFoodValues::ForEachAmount(const Take& take) {
    CCsvTable table = m_folder.Open(kLayout);
    while (table.NextRow()) {
        quint32 fdcId = 0;
        quint32 nutrientId = 0;
        double amount = 0;
        if (!table.ReadNumber(kNutrientId, nutrientId) || !table.ReadNumber(kFdcId, fdcId)) {
            break;
        }
        // A row without an amount says that it was not measured.
        if (m_nutrients.PlaceOf(nutrientId) < 0 || table.Field(kAmount).empty()) {
            continue;
        }
        const int place = m_places.PlaceOf(fdcId);
        if (place < 0) {
            continue;
        }
        if (!table.ReadAmount(kAmount, amount)) {
            break;
        }
        if (!take(place, nutrientId, amount)) {
            table.Refuse(u"the file changed while it was being read"_s);
            break;
        }
    }
    return m_folder.HasReadAll(table);
}

bool CFoodValues::Count() {
    m_counts.assign(m_places.Count(), 0);
    return ForEachAmount([this](int place, quint32 /*nutrientId*/, double /*amount*/) {
        m_counts[place] = static_cast<quint8>(std::min(m_counts[place] + 1, kTableNutrientCount));
        return true;
    });
}

std::vector<CFoodWindow> CFoodValues::PlanWindows(qint64 mostAmounts) const {
    std::vector<CFoodWindow> windows = {{}};
    qint64 amounts = 0;
    for (const quint8 count : m_counts) {
        const qint64 weight = std::max<qint64>(count, kFewAmounts);
        if (amounts + weight > mostAmounts && windows.back().Count() > 0) {
            const int end = windows.back().end;
            windows.push_back({end, end});
            amounts = 0;
        }
        amounts += weight;
        ++windows.back().end;
    }
    return windows;
}

bool CFoodValues::ReadWindow(const CFoodWindow& window) {
    m_window = window;
    m_starts.assign(1, 0);
    m_starts.reserve(window.Count() + 1);
    for (int place = window.first; place < window.end; ++place) {
        m_starts.push_back(m_starts.back() + m_counts[place]);
    }
    m_amountNutrients.assign(m_starts.back(), kFree);
    m_amounts.resize(m_starts.back());
    return ForEachAmount([this](int place, quint32 nutrientId, double amount) {
        return !m_window.Contains(place) ||
               Put(place - m_window.first, static_cast<quint8>(m_nutrients.PlaceOf(nutrientId)),
                   m_nutrients.Convert(nutrientId, amount));
    });
}

bool CFoodValues::Put(int food, quint8 nutrient, double amount) {
    quint32 at = m_starts[food];
    const quint32 end = m_starts[food + 1];
    while (at < end && m_amountNutrients[at] != kFree && m_amountNutrients[at] != nutrient) {
        ++at;
    }
    if (at == end) {
        return false;  // not counted before
    }
    const bool isFirst = m_amountNutrients[at] == kFree;
    m_amounts[at] = isFirst ? amount : std::max(m_amounts[at], amount);
    m_amountNutrients[at] = nutrient;
    return true;
}

bool CFoodValues::ValuesOf(int place, NutrientValues& values) {
    const int food = place - m_window.first;
    m_scratch.Clear();
    for (quint32 at = m_starts[food]; at < m_starts[food + 1]; ++at) {
        if (m_amountNutrients[at] != kFree) {
            m_scratch.Set(m_amountNutrients[at], m_amounts[at]);
        }
    }
    return m_scratch.Resolve(values);
}
