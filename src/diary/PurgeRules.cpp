#include "diary/PurgeRules.h"

#include "platform/Messages.h"
#include "store/Step.h"
#include "store/UnitOfWork.h"

#include <variant>

using namespace Qt::StringLiterals;

namespace {
struct CPurged {
    int count = 0;        ///< includes entries that could not be removed
    bool isWhole = true;  ///< every removal succeeded
};

/// The position advances after a removal, too: see PurgeDiaries.
CPurged PurgeDiary(CItemDatabaseBase& diary, const CPurgeRequest& request) {
    const FileTime first = FirstMomentOf(request.begin);
    const FileTime last = LastMomentOf(request.end);
    const int expected = diary.GetLayout().Count();
    CPurged purged;
    if (diary.Count() == 0 && diary.GetStore().GetLastError() != kErrorSuccess) {
        diary.GetStore().ShowFailedDeletion();
        purged.isWhole = false;
        return purged;
    }
    // Without a range, every readable record is filtered by its own moment.
    const std::optional<CPositionRange> range = diary.RangeBetween(first, last);
    int end = range ? range->first + range->count : diary.Count();
    const auto purge = [&](int position, PropertyList& properties) {
        if (position >= end) {
            return false;
        }
        if (std::ssize(properties) != expected) {
            return true;
        }
        const auto* moment = std::get_if<FileTime>(&properties.front());
        if (moment != nullptr && *moment >= first && *moment <= last) {
            ++purged.count;
            const bool isDeleted = diary.Delete(position);
            end -= isDeleted ? 1 : 0;
            purged.isWhole = purged.isWhole && isDeleted;
        }
        return true;
    };
    diary.ForEachFrom(range ? range->first : 0, purge, 1);
    return purged;
}

/// About the HistoryRoom of all entries of the days, of which the purge removes a part.
qint64 RoomFor(CDatabase& database, const CPurgeRequest& request) {
    struct CRow {
        bool isPurged;
        CItemDatabaseBase& diary;
    };
    qint64 room = 0;
    for (const CRow& row : {CRow{request.diet, database.Diet()},
                            {request.weights, database.Weight()},
                            {request.exercises, database.Exercises()}}) {
        if (row.isPurged) {
            const auto range =
                row.diary.RangeBetween(FirstMomentOf(request.begin), LastMomentOf(request.end));
            room += row.diary.EstimateRoom(range.value_or(CPositionRange{}));
        }
    }
    return room;
}
}  // namespace

bool PurgeDiaries(CDatabase& database, const CPurgeRequest& request,
                  const std::function<void()>& changed) {
    if (!AskYesNo(u"You are about to remove data entries. Are you sure?"_s)) {
        return false;
    }
    CStep step(database.GetStore(), u"purge"_s);
    if (!database.MayChangeMuch(step, RoomFor(database, request))) {
        return false;
    }
    CPurged diet;
    CPurged weights;
    CPurged exercises;
    bool isWhole = false;
    {
        const CWaitCursor wait;
        isWhole = RunAsUnit(database.GetStore(), [&] {
            diet = request.diet ? PurgeDiary(database.Diet(), request) : CPurged();
            weights = request.weights ? PurgeDiary(database.Weight(), request) : CPurged();
            exercises = request.exercises ? PurgeDiary(database.Exercises(), request) : CPurged();
            return diet.isWhole && weights.isWhole && exercises.isWhole;
        });
        if (changed) {
            changed();
        }
    }
    ShowMessage(FormatText("Total purged:\n\nDiet entries: %d\nWeight entries: %d\n"
                           "Exersises: %d\n\n"_L1,
                           {diet.count, weights.count, exercises.count}),
                EMessageIcon::Result);
    return isWhole;
}
