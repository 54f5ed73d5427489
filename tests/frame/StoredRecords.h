// What the volume of a test holds, and what has changed in it.
#pragma once

#include <QMap>

#include "platform/FileTime.h"
#include "store/Database.h"
#include "support/Portrait.h"

/// The records of the catalogue and of a profile by layout and identifier.
class CStoredRecords {
  public:
    CStoredRecords() = default;
    CStoredRecords(CRecordStore& store, const QString& profile) {
        for (const CRecordLayout* layout : kLayouts) {
            const QString suffix = layout == &kDietLayout        ? u"_Diet"_s
                                   : layout == &kWeightLayout    ? u"_Weight"_s
                                   : layout == &kExercisesLayout ? u"_Exercises"_s
                                                                 : QString();
            const QString name = QString::fromLatin1(layout->databaseName);
            CDatabaseHandle handle =
                store.OpenDatabase(name.isEmpty() ? profile + suffix : name,
                                   layout->SortPropertyId(), layout->databaseType, true);
            for (int position = 0; position < store.CountRecords(handle); ++position) {
                const ObjectId record = store.SeekToPosition(handle, position);
                PropertyList values;
                if (store.ReadCurrent(handle, values) && std::ssize(values) == layout->Count()) {
                    m_records.insert({layout, record}, values);
                }
            }
        }
    }
    /// "+" before what was added, "-" what was deleted, "~" what was changed.
    [[nodiscard]] QString ChangesSince(const CStoredRecords& before) const {
        QString text;
        for (const auto& [key, values] : before.m_records.asKeyValueRange()) {
            if (!m_records.contains(key)) {
                text += u" -"_s + NameOf(*key.first, values);
            }
        }
        for (const auto& [key, values] : m_records.asKeyValueRange()) {
            const PropertyList former = before.m_records.value(key);
            QStringList changes;
            for (int i = 0; i < std::ssize(values); ++i) {
                const PropertyValue empty = CItemRecord(*key.first).GetProperties()[i];
                if (values[i] != (former.empty() ? empty : former[i])) {
                    changes.append(QLatin1StringView(key.first->properties[i].name) + u' ' +
                                   TextOfValue(values[i]));
                }
            }
            if (!changes.isEmpty()) {
                text += (former.empty() ? u" +"_s : u" ~"_s) + NameOf(*key.first, values) +
                        u": "_s +
                        changes.first(std::min<qsizetype>(changes.size(), 12)).join(u", "_s) +
                        CPortrait::DigestOf(changes.mid(12)) + u';';
            }
        }
        return text;
    }

  private:
    static constexpr const CRecordLayout* kLayouts[] = {
        &kFoodLayout,     &kMenuLayout,         &kRecipeLayout,       &kExerciseLibLayout,
        &kCategoryLayout, &kNutrientNameLayout, &kViewSettingsLayout, &kProfileLayout,
        &kDietLayout,     &kWeightLayout,       &kExercisesLayout};

    /// What kind of record it is, and its first text.
    static QString NameOf(const CRecordLayout& layout, const PropertyList& values) {
        const QString kind = QString::fromLatin1(layout.writeFailure).section(u' ', 2, -3);
        for (const PropertyValue& value : values) {
            if (!TextOf(value).isEmpty()) {
                return kind + u" '"_s + TextOf(value) + u'\'';
            }
        }
        return kind;
    }
    static QString TextOfValue(const PropertyValue& value) {
        if (const auto* moment = std::get_if<qint64>(&value)) {
            return CPortrait::TextOf(DateOf(*moment)) + u' ' + CPortrait::TextOf(TimeOf(*moment));
        }
        if (const auto* number = std::get_if<double>(&value)) {
            return QString::number(*number, 'g', 12);
        }
        if (const auto* bytes = std::get_if<QByteArray>(&value)) {
            return QString::number(bytes->size()) + u" bytes"_s;
        }
        const auto* small = std::get_if<qint16>(&value);
        const auto* large = std::get_if<qint32>(&value);
        return small   ? QString::number(*small)
               : large ? QString::number(*large)
                       : u'\'' + CPortrait::Short(TextOf(value)) + u'\'';
    }

    QMap<std::pair<const CRecordLayout*, ObjectId>, PropertyList> m_records;
};
