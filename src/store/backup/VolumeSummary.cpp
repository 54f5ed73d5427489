#include "store/backup/VolumeSummary.h"

#include "platform/FileTime.h"
#include "platform/Messages.h"
#include "store/records/ComposedItem.h"
#include "store/records/DatabaseLayouts.h"

using namespace Qt::StringLiterals;

namespace {
/// Counts the entries of a diary and widens the profile's days by its own.
EPlatformError AddDiary(CStorageEngine& engine, ObjectId diary, int& count,
                        CProfileSummary& profile) {
    EPlatformError error = engine.CountRecords(diary, count);
    int firstDated = 0;  // a moment before 0 has no date
    if (error == kErrorSuccess) {
        error = engine.LowerBound(diary, 0, firstDated);
    }
    qint64 first = 0;
    qint64 last = 0;
    if (error != kErrorSuccess || firstDated == count) {
        return error;
    }
    error = engine.KeyAt(diary, firstDated, first);
    if (error == kErrorSuccess) {
        error = engine.KeyAt(diary, count - 1, last);
    }
    if (const QDate day = DateOf(first); !profile.first.isValid() || day < profile.first) {
        profile.first = day;
    }
    if (const QDate day = DateOf(last); !profile.last.isValid() || day > profile.last) {
        profile.last = day;
    }
    return error;
}

EPlatformError AddProfile(CStorageEngine& engine, const QString& name, CVolumeSummary& summary) {
    CProfileSummary profile{.name = name};
    struct CRow {
        const CProfileDatabase& diary;
        int& count;
    };
    EPlatformError error = kErrorSuccess;
    for (const CRow& row : {CRow{kProfileDatabases[1], profile.dietEntries},
                            {kProfileDatabases[2], profile.weights},
                            {kProfileDatabases[3], profile.exercises}}) {
        CDatabaseInfo diary;
        if (error == kErrorSuccess) {
            error = engine.FindDatabase(name + QLatin1StringView(row.diary.suffix), diary);
        }
        if (error == kErrorSuccess) {
            error = AddDiary(engine, diary.id, row.count, profile);
        } else if (error == kErrorFileNotFound) {
            error = kErrorSuccess;
        }
    }
    summary.profiles.push_back(profile);
    return error;
}

/// Items come before components and view settings.
EPlatformError CountItems(CStorageEngine& engine, const CRecordLayout& layout, int& count) {
    CDatabaseInfo database;
    const EPlatformError error =
        engine.FindDatabase(QString::fromLatin1(layout.databaseName), database);
    if (error != kErrorSuccess) {
        return error == kErrorFileNotFound ? kErrorSuccess : error;
    }
    return engine.LowerBound(database.id, CViewSettings::kMarker, count);
}
}  // namespace

EPlatformError Summarize(CStorageEngine& engine, CVolumeSummary& summary) {
    summary = {};
    std::vector<CDatabaseInfo> profiles;
    EPlatformError error = engine.ListDatabases(kProfileType, profiles);
    for (const CDatabaseInfo& profile : profiles) {
        if (error == kErrorSuccess) {
            error = AddProfile(engine, profile.name, summary);
        }
    }
    struct CRow {
        const CRecordLayout& layout;
        int& count;
    };
    for (const CRow& row : {CRow{kFoodLayout, summary.foods},
                            {kMenuLayout, summary.menus},
                            {kRecipeLayout, summary.recipes},
                            {kExerciseLibLayout, summary.exercises}}) {
        if (error == kErrorSuccess) {
            error = CountItems(engine, row.layout, row.count);
        }
    }
    return error;
}

QString SummaryText(const CVolumeSummary& summary) {
    QString text;
    for (const CProfileSummary& profile : summary.profiles) {
        text += FormatText("%s: diet entries %d, weights %d, exercises %d"_L1,
                           {profile.name, profile.dietEntries, profile.weights, profile.exercises});
        if (profile.first.isValid()) {
            text += FormatText(", %s to %s"_L1, {profile.first.toString(Qt::ISODate),
                                                 profile.last.toString(Qt::ISODate)});
        }
        text += u'\n';
    }
    return text + FormatText("Catalogue: foods %d, menus %d, recipes %d, exercises %d"_L1,
                             {summary.foods, summary.menus, summary.recipes, summary.exercises});
}
