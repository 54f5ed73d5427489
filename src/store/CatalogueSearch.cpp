#include "store/CatalogueSearch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {
constexpr std::array kKinds = {ECatalogueKind::Foods, ECatalogueKind::Menus,
                               ECatalogueKind::Recipes, ECatalogueKind::Exercises};
/// How many entries of the diary are "lately".
constexpr int kLatestEntries = 200;
/// After more changes than a quarter of the items and these, all items are read again.
constexpr int kManyChanges = 1000;
/// Read in about 20 ms: a usual catalogue in one step, and between the steps of a large one a
/// window still follows the keys.
constexpr int kReadAtOnce = 10000;

/// A number that sorts by the uses at the meal, then by all uses, then by the last one: 20, 20 and
/// 24 bits.
quint64 HabitWeight(int atMeal, int total, int recency) {
    constexpr int kMost = (1 << 20) - 1;
    return static_cast<quint64>(std::clamp(atMeal, 0, kMost)) << 44 |
           static_cast<quint64>(std::clamp(total, 0, kMost)) << 24 | static_cast<quint64>(recency);
}
}  // namespace

CCatalogueSearch::CCatalogueSearch(CRecordStore& store, CCatalogue& catalogue,
                                   CCategories& categories, CUsage& usage)
    : m_store(store), m_catalogue(catalogue), m_categories(categories), m_usage(usage) {
    m_store.AddListener(this);
}

bool CCatalogueSearch::IsBuilt() const {
    return m_index && m_nextKind == static_cast<int>(kKinds.size());
}

CCatalogueSearch::~CCatalogueSearch() {
    m_store.RemoveListener(this);
}

CSearchMatches CCatalogueSearch::Find(const CSearchQuery& query) {
    BringUpToDate();
    const ItemWeights habits = Habits(query);
    const CIndexQuery words{.text = query.text,
                            .kinds = query.kinds,
                            .categoryId = query.categoryId,
                            .limit = query.limit,
                            .weights = &habits};
    return CFoldedWords(query.text).Count() == 0 ? m_index->FindWeighted(words)
                                                 : m_index->Find(words);
}

ItemWeights CCatalogueSearch::Habits(const CSearchQuery& query) {
    ItemWeights weights;
    if (query.profile == 0) {
        return weights;
    }
    const bool hasText = CFoldedWords(query.text).Count() > 0;
    const bool hasMeal = !hasText && query.meal >= 0 && query.meal < kMealCount;
    std::unordered_map<ItemUseKey, int> recency;
    if (!hasText) {
        const std::vector<ItemUseKey> latest = m_usage.Latest(query.profile, kLatestEntries);
        for (std::size_t i = 0; i < latest.size(); ++i) {
            recency.try_emplace(latest[i], kLatestEntries - static_cast<int>(i));
        }
    }
    for (const auto& [key, count] : m_usage.CountsOf(query.profile)) {
        const auto last = recency.find(key);
        weights[key] = HabitWeight(hasMeal ? count.atMeal.at(query.meal) : 0, count.total,
                                   last == recency.end() ? 0 : last->second);
    }
    return weights;
}

void CCatalogueSearch::Forget() {
    m_index.reset();
    m_nextKind = 0;
    m_nextPosition = 0;
    m_underWay = {};
    m_changed = {};
}

bool CCatalogueSearch::Watches(qint64 database) const {
    return m_index && (database == m_categories.GetId() || KindOf(database));
}

std::optional<ECatalogueKind> CCatalogueSearch::KindOf(ObjectId database) const {
    for (const ECatalogueKind kind : kKinds) {
        if (database == m_catalogue.Items(kind).GetId()) {
            return kind;
        }
    }
    return std::nullopt;
}

EPlatformError CCatalogueSearch::RecordChanged(const CRecordChange& change) {
    if (const auto kind = KindOf(change.database)) {
        m_underWay.items.push_back({*kind, change.record});
    } else {
        m_underWay.categories = true;
    }
    return kErrorSuccess;
}

void CCatalogueSearch::UnitCommitted() {
    if (!IsBuilt()) {
        Forget();  // unread items may have moved
        return;
    }
    m_changed.categories |= m_underWay.categories;
    m_changed.items.insert(m_changed.items.end(), m_underWay.items.begin(), m_underWay.items.end());
    m_underWay = {};
}

void CCatalogueSearch::UnitAbandoned() {
    m_underWay = {};
}

bool CCatalogueSearch::PrepareSome() {
    ForgetIfOutdated();
    return ReadSome(kReadAtOnce);
}

void CCatalogueSearch::ForgetIfOutdated() {
    if (m_index && std::ssize(m_changed.items) > m_index->Count() / 4 + kManyChanges) {
        Forget();
    }
}

void CCatalogueSearch::BringUpToDate() {
    ForgetIfOutdated();
    (void)ReadSome(std::numeric_limits<int>::max());  // leaves nothing to read
    const CChanges changed = std::exchange(m_changed, {});
    if (!changed.items.empty()) {
        ReadAgain(changed.items);
    }
    if (changed.categories) {
        ReadCategories();
    }
}

bool CCatalogueSearch::ReadSome(int most) {
    if (IsBuilt()) {
        return false;
    }
    if (!m_index) {
        m_index.emplace();
    }
    for (int count = 0; count < most && !IsBuilt();) {
        count += ReadNext(kKinds.at(m_nextKind), most - count);
    }
    if (IsBuilt()) {
        m_index->Trim();
        ReadCategories();
    }
    return !IsBuilt();
}

int CCatalogueSearch::ReadNext(ECatalogueKind kind, int most) {
    int count = 0;
    const CLeftOut leftOut =
        m_catalogue.Items(kind).ReadRecords({.low = std::numeric_limits<qint64>::min(),
                                             .high = CViewSettings::kMarker - 1,
                                             .wrongCount = EWrongCount::IsDamage,
                                             .most = CatalogueLayoutOf(kind).type + 1,
                                             .from = m_nextPosition},
                                            [&](ObjectId record, PropertyList& properties) {
                                                Add(kind, record, properties);
                                                return ++count < most ? ETake::Taken : ETake::Last;
                                            });
    m_nextPosition = m_catalogue.CountItems(kind) - leftOut.beyond;
    if (leftOut.beyond == 0) {
        m_nextPosition = 0;
        ++m_nextKind;
    }
    return count;
}

void CCatalogueSearch::Add(ECatalogueKind kind, ObjectId record, const PropertyList& properties) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    const auto* category = std::get_if<qint32>(&properties.front());
    if (std::ssize(properties) == numbers.layout.Count() && category != nullptr) {
        m_index->Add({.record = record,
                      .kind = kind,
                      .categoryId = *category,
                      .name = TextOf(properties[numbers.name]),
                      .type = TextOf(properties[numbers.type])});
    }
}

void CCatalogueSearch::ReadAgain(const std::vector<CSearchMatch>& changed) {
    std::unordered_set<ObjectId> records;
    for (const CSearchMatch& item : changed) {
        records.insert(item.record);
    }
    m_index->Remove(records);
    PropertyList properties;
    for (const CSearchMatch& item : changed) {
        const int most = CatalogueLayoutOf(item.kind).type + 1;
        if (records.erase(item.record) > 0 && m_store.ReadRecord(item.record, properties, most) &&
            !properties.empty() && !IsPastLastItem(properties)) {
            Add(item.kind, item.record, properties);
        }
    }
}

void CCatalogueSearch::ReadCategories() {
    std::vector<CIndexedCategory> categories;
    for (const ECatalogueKind kind : kKinds) {
        for (const CCategoryEntry& category : m_categories.List(kind)) {
            categories.push_back({kind, category.id, category.name});
        }
    }
    m_index->SetCategories(categories);
}
