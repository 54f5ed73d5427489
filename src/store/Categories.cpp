#include "store/Categories.h"

#include <algorithm>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

bool CCategories::AddOrUpdate(int position, CCategory& category) {
    if (position >= 0) {
        CCategory stored;
        if (Read(position, stored)) {
            category.SetId(stored.GetId());
        }
    } else {
        qint32 largestId = 0;
        for (const CCategoryEntry& entry : List(category.GetKind())) {
            if (entry.name == category.GetName()) {
                return false;
            }
            largestId = std::max(largestId, entry.id);
        }
        if (largestId >= CViewSettings::kMarker - 1) {
            return false;  // only a damaged record has so large an identifier
        }
        category.SetId(largestId + 1);
        if (!MayAdd(1)) {
            return false;
        }
    }
    // The result is ignored: callers see in the list whether the category was stored.
    (void)Write(position, category);
    return true;
}

bool CCategories::MayAdd(int count) {
    if (count == 0 || Count() + count <= kMaximumCategories) {
        return true;
    }
    ShowMessage(u"Cannot add category. Maximum number of categories has been reached."_s);
    return false;
}

// The pictures after the name are not decoded.
CCategoryEntries CCategories::ReadEntries(ECatalogueKind kind) {
    constexpr int kIdNumber = 1;
    constexpr int kNameNumber = 2;
    const auto key = static_cast<qint64>(kind);
    CCategoryEntries categories;
    categories.leftOut =
        ReadList({key, key, EWrongCount::IsDamage, kNameNumber + 1},
                 [&](int position, PropertyList& properties) {
                     const auto* id = std::get_if<qint32>(&properties[kIdNumber]);
                     if (id == nullptr) {
                         return ETake::Damaged;
                     }
                     categories.entries.push_back({position, *id, TextOf(properties[kNameNumber])});
                     return ETake::Taken;
                 });
    return categories;
}

std::optional<CCategoryEntry> CCategories::FindEntry(
    ECatalogueKind kind, const std::function<bool(const CCategoryEntry&)>& isMatch) {
    const std::vector<CCategoryEntry> entries = List(kind);
    const auto found = std::ranges::find_if(entries, isMatch);
    return found == entries.end() ? std::nullopt : std::optional(*found);
}

int CCategories::Find(ECatalogueKind kind, const QString& name) {
    const auto found = FindEntry(kind, [&](const auto& entry) { return entry.name == name; });
    return found ? found->position : kNoPosition;
}

int CCategories::Find(ECatalogueKind kind, qint32 id) {
    const auto found = FindEntry(kind, [id](const auto& entry) { return entry.id == id; });
    return found ? found->position : kNoPosition;
}

qint32 CCategories::IdOf(ECatalogueKind kind, const QString& name) {
    const auto found = FindEntry(kind, [&](const auto& entry) { return entry.name == name; });
    return found ? found->id : -1;
}

QString CCategories::NameOf(ECatalogueKind kind, qint32 id) {
    const auto found = FindEntry(kind, [id](const auto& entry) { return entry.id == id; });
    return found ? found->name : QString();
}
