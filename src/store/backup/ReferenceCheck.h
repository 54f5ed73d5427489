// Checks what records say of each other: categories, items, components, profiles.
#pragma once

#include <map>
#include <set>
#include <utility>

#include "store/backup/Findings.h"
#include "store/engine/StorageEngine.h"
#include "store/records/RecordLayout.h"

/// Add every sound record, in any order, then Report.
class CReferenceCheck {
  public:
    void Add(const CDatabaseInfo& database, const CRecordLayout& layout, ObjectId record,
             const PropertyList& properties);
    /// `areAllSeen` is false when some records could not be read: what they would have said is then
    /// not missed.
    void Report(CFindings& findings, bool areAllSeen) const;

  private:
    struct CReference {
        ObjectId record = 0;
        qint32 target = 0;
    };
    /// The records of one kind of the catalogue.
    struct CKind {
        std::vector<CReference> categories;  ///< of the items
        std::vector<CReference> parents;     ///< of the components
        std::map<qint32, int> ids;  ///< of the items that have components, with their number
    };

    void AddItem(CKind& kind, bool hasComponents, ObjectId record, const PropertyList& properties);
    void ReportKind(CFindings& findings, const QString& name, qint16 code, const CKind& kind,
                    bool areAllSeen) const;

    std::map<std::pair<qint16, qint32>, int> m_categories;  ///< kind and identifier
    std::map<qint16, CKind> m_kinds;                        ///< by the code of the kind
    std::map<QString, int> m_profiles;                      ///< settings by profile
    std::vector<QString> m_otherVersions;                   ///< profiles
    int m_nutrientNames = 0;
};
