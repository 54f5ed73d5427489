#include "catalogue/pick/SearchItems.h"

#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
enum : int { kName, kCategory, kEnergy };

QString NoteOf(const CSearchMatches& matches, int shown) {
    QStringList notes = {FoundText(matches.found)};
    notes.removeAll(QString());
    if (matches.total > shown) {
        notes.append(u"The best %1 of %2"_s.arg(shown).arg(matches.total));
    }
    return notes.join(u' ');
}
}  // namespace

QString FoundText(EFound found) {
    return found == EFound::Near   ? u"Similar words:"_s
           : found == EFound::Most ? u"Nothing has all these words."_s
                                   : QString();
}

CSearchItems SearchItems(CVelmoraDoc& doc, CSearchQuery query) {
    CDatabase& database = doc.Database();
    if (database.Search().PrepareSome()) {
        return {.hint = kSearching, .isPending = true};
    }
    query.profile = database.Profiles().GetId();
    query.limit = kSearchRows;
    const CSearchMatches matches = database.Search().Find(query);
    CSearchItems found;
    for (const CSearchMatch& match : matches.best) {
        if (auto item = ReadFoundItem(database, match)) {
            found.items.push_back(std::move(*item));
        }
    }
    found.note = NoteOf(matches, static_cast<int>(std::ssize(found.items)));
    found.hint = query.text.trimmed().isEmpty()
                     ? u"Type a few letters of what you are looking for."_s
                     : u"Nothing found."_s;
    return found;
}

QStringList SearchTitles(const CVelmoraDoc& doc) {
    return {u"Name and type"_s, u"Category"_s,
            UnitName(doc.Preferences().energyUnit, EUnitForm::Abbreviated)};
}

QString FoundName(const QString& name, const QString& type) {
    return type.isEmpty() ? name : name + u", "_s + type;
}

QString SearchCell(const CVelmoraDoc& doc, const CFoundItem& item, int column) {
    switch (column) {
        case kName:
            return FoundName(item.name, item.type);
        case kCategory:
            return item.category;
        case kEnergy:
            break;
        default:
            return {};
    }
    if (item.met > 0) {
        return ShownNumber(item.met, 1) + u" MET"_s;
    }
    return ShownNumber(EnergyShown(item.energyKcal, doc.Preferences().energyUnit), 0);
}
