#include "store/backup/ReferenceCheck.h"

#include <array>

#include "platform/Messages.h"
#include "store/records/ComposedItem.h"
#include "store/records/ProfileRecord.h"

using namespace Qt::StringLiterals;

namespace {
constexpr std::array<ECatalogueKind, 4> kKinds = {ECatalogueKind::Foods, ECatalogueKind::Menus,
                                                  ECatalogueKind::Recipes,
                                                  ECatalogueKind::Exercises};
// Property numbers.
constexpr int kCategoryIdNumber = 1;
constexpr int kItemIdNumber = 2;
constexpr int kVersionNumber = 1;

qint32 WholeAt(const PropertyList& properties, int number) {
    return std::get<qint32>(properties[number]);
}
}  // namespace

void CReferenceCheck::Add(const CDatabaseInfo& database, const CRecordLayout& layout,
                          ObjectId record, const PropertyList& properties) {
    if (&layout == &kCategoryLayout) {
        ++m_categories[{std::get<qint16>(properties[0]), WholeAt(properties, kCategoryIdNumber)}];
    } else if (&layout == &kProfileLayout) {
        if (WholeAt(properties, 0) == CProfileRecord::kMarker) {
            ++m_profiles[database.name];
            if (WholeAt(properties, kVersionNumber) != CProfileRecord::kVersion) {
                m_otherVersions.push_back(database.name);
            }
        }
    } else if (&layout == &kNutrientNameLayout) {
        ++m_nutrientNames;
    }
    for (const ECatalogueKind kind : kKinds) {
        if (&CatalogueLayoutOf(kind).layout == &layout) {
            AddItem(m_kinds[static_cast<qint16>(kind)], HasComponents(kind), record, properties);
        }
    }
}

void CReferenceCheck::AddItem(CKind& kind, bool hasComponents, ObjectId record,
                              const PropertyList& properties) {
    const qint32 parent = WholeAt(properties, 0);
    if (!IsPastLastItem(properties)) {
        kind.categories.push_back({record, parent});
        if (hasComponents) {
            ++kind.ids[WholeAt(properties, kItemIdNumber)];
        }
    } else if (hasComponents) {
        kind.parents.push_back({record, parent});
    }
}

void CReferenceCheck::Report(CFindings& findings, bool areAllSeen) const {
    if (m_categories.size() > kMaximumCategories) {
        findings.AddFault(FormatText("Categories: %d categories, more than %d."_L1,
                                     {qint64(m_categories.size()), kMaximumCategories}));
    }
    for (const auto& [category, count] : m_categories) {
        if (count > 1) {
            findings.AddFault(FormatText("Categories: %d categories have the number %d."_L1,
                                         {count, category.second}));
        }
    }
    for (const ECatalogueKind kind : kKinds) {
        const auto code = static_cast<qint16>(kind);
        if (const auto found = m_kinds.find(code); found != m_kinds.end()) {
            ReportKind(findings, QString::fromLatin1(CatalogueLayoutOf(kind).layout.databaseName),
                       code, found->second, areAllSeen);
        }
    }
    for (const auto& [name, count] : m_profiles) {
        if (count > 1) {
            findings.AddFault(FormatText("%s: the profile has %d settings."_L1, {name, count}));
        }
    }
    for (const QString& name : m_otherVersions) {
        findings.AddFault(
            FormatText("%s: the settings of the profile are of another version."_L1, {name}));
    }
    // The next start of the program writes them again.
    if (areAllSeen && m_nutrientNames != kNutrientCount) {
        findings.AddNote(FormatText("NutrientNames: %d names instead of %d."_L1,
                                    {m_nutrientNames, kNutrientCount}));
    }
}

void CReferenceCheck::ReportKind(CFindings& findings, const QString& name, qint16 code,
                                 const CKind& kind, bool areAllSeen) const {
    for (const auto& [id, count] : kind.ids) {
        if (count > 1) {
            findings.AddFault(FormatText("%s: %d items have the number %d."_L1, {name, count, id}));
        }
    }
    if (!areAllSeen) {
        return;
    }
    for (const CReference& item : kind.categories) {
        if (!m_categories.contains({code, item.target})) {
            findings.AddFault(
                FormatText("%s: record %ld is in category %d, which does not exist."_L1,
                           {name, item.record, item.target}));
        }
    }
    // A dialog that was killed leaves them; the next start of the program removes them.
    int orphans = 0;
    for (const CReference& component : kind.parents) {
        orphans += kind.ids.contains(component.target) ? 0 : 1;
    }
    if (orphans > 0) {
        findings.AddNote(
            FormatText("%s: components that belong to no item: %d."_L1, {name, orphans}));
    }
}
