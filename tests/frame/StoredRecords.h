// What the volume of a test holds, and what has changed in it.
#pragma once

#include <QMap>
#include <QVariant>

#include "platform/FileTime.h"
#include "store/Database.h"
#include "support/Portrait.h"

/// The records of the catalogue and of a profile by layout and identifier.
class CStoredRecords {
  public:
    CStoredRecords() = default;
    CStoredRecords(CRecordStore& store, const QString& profile) {
        for (int source = 0; source < std::ssize(kSources); ++source) {
            const CRecordLayout& layout = *kSources[source].layout;
            const QString name = QString::fromLatin1(layout.databaseName);
            CDatabaseHandle handle = store.OpenDatabase(
                name.isEmpty() ? profile + QLatin1StringView(kSources[source].suffix) : name,
                layout.SortPropertyId(), layout.databaseType, true);
            for (int position = 0; position < store.CountRecords(handle); ++position) {
                const ObjectId record = store.SeekToPosition(handle, position);
                PropertyList values;
                if (store.ReadCurrent(handle, values)) {
                    m_records.insert({source, record}, values);
                }
            }
        }
    }
    /// "+" before what was added, "-" what was deleted, "~" what was changed.
    [[nodiscard]] QString ChangesSince(const CStoredRecords& before) const {
        QString text;
        for (const auto& [key, values] : before.m_records.asKeyValueRange()) {
            if (!m_records.contains(key)) {
                text += u" -"_s + NameOf(key.first, values);
            }
        }
        for (const auto& [key, values] : m_records.asKeyValueRange()) {
            const PropertyList former = before.m_records.value(key);
            const CRecordLayout& layout = std::ssize(values) == kViewSettingsLayout.Count()
                                              ? kViewSettingsLayout
                                              : *kSources[key.first].layout;
            const CItemRecord empty(layout);
            QStringList changes;
            for (int i = 0; i < std::ssize(values); ++i) {
                if (values[i] != (former.empty() ? empty.GetProperties() : former)[i]) {
                    changes.append(QLatin1StringView(layout.properties[i].name) + u'=' +
                                   TextOfValue(values[i]));
                }
            }
            if (!changes.isEmpty()) {
                text += (former.empty() ? u" +"_s : u" ~"_s) + NameOf(key.first, values) + u": "_s +
                        changes.first(std::min<qsizetype>(changes.size(), 12)).join(u", "_s) +
                        CPortrait::DigestOf(changes.mid(12)) + u';';
            }
        }
        return text;
    }

  private:
    struct CSource {
        const CRecordLayout* layout;
        const char* suffix;  ///< of a profile's database, after the profile's name
    };
    static constexpr CSource kSources[] = {
        {&kFoodLayout, ""},          {&kMenuLayout, ""},
        {&kRecipeLayout, ""},        {&kExerciseLibLayout, ""},
        {&kCategoryLayout, ""},      {&kNutrientNameLayout, ""},
        {&kProfileLayout, ""},       {&kDietLayout, "_Diet"},
        {&kWeightLayout, "_Weight"}, {&kExercisesLayout, "_Exercises"}};

    /// What kind of record it is, and its first text.
    static QString NameOf(int source, const PropertyList& values) {
        const QString failure = QString::fromLatin1(kSources[source].layout->writeFailure);
        const QString kind = failure.section(u' ', 2, -3);
        for (const PropertyValue& value : values) {
            if (!TextOf(value).isEmpty()) {
                return kind + u" '"_s + CPortrait::Short(TextOf(value)) + u'\'';
            }
        }
        return kind;
    }
    static QString TextOfValue(const PropertyValue& value) {
        if (const auto* moment = std::get_if<qint64>(&value)) {
            return CPortrait::TextOf(DateOf(*moment)) + u' ' + CPortrait::TextOf(TimeOf(*moment));
        }
        const auto textOf = [](const auto& any) { return QVariant::fromValue(any).toString(); };
        return CPortrait::Short(std::visit(textOf, value));
    }

    QMap<std::pair<int, ObjectId>, PropertyList> m_records;
};
