#include "diary/PurgeRules.h"

#include "platform/Messages.h"

#include <variant>

using namespace Qt::StringLiterals;

namespace {
enum class EFailure { Stops, IsCounted };

struct CPurged {
    int count = 0;        ///< with those whose removal failed
    bool isWhole = true;  ///< none failed
};

/// Positions go up after a removal too.
CPurged Walk(CItemDatabaseBase& diary, const CPurgeRequest& request, EFailure failure) {
    const FileTime first = FirstMomentOf(request.begin);
    const FileTime last = LastMomentOf(request.end);
    const int expected = diary.GetLayout().Count();
    CPurged purged;
    const auto purge = [&](int position, PropertyList& properties) {
        if (std::ssize(properties) != expected) {
            return true;
        }
        const auto* moment = std::get_if<FileTime>(&properties.front());
        if (moment == nullptr || *moment < first || *moment > last) {
            return true;
        }
        ++purged.count;
        // The walk that counts tells of each failure.
        const bool isGone =
            failure == EFailure::IsCounted ? diary.Delete(position) : diary.DeleteQuietly(position);
        purged.isWhole = purged.isWhole && isGone;
        return isGone || failure == EFailure::IsCounted;
    };
    diary.ForEachFrom(0, purge, 1);
    return purged;
}

CPurged PurgeDiary(CItemDatabaseBase& diary, const CPurgeRequest& request) {
    CRecordGroup group(diary.GetStore());
    if (!group.IsOpen()) {
        return Walk(diary, request, EFailure::IsCounted);
    }
    const CPurged purged = Walk(diary, request, EFailure::Stops);
    // A group that cannot be kept leaves everything as it was: then each record goes for itself.
    return group.Commit() ? purged : Walk(diary, request, EFailure::IsCounted);
}
}  // namespace

bool PurgeDiaries(CDatabase& database, const CPurgeRequest& request,
                  const std::function<void()>& changed) {
    if (!AskYesNo(u"You are about to remove data entries. Are you sure?"_s)) {
        return false;
    }
    CPurged diet;
    CPurged weights;
    CPurged exercises;
    {
        const CWaitCursor wait;
        diet = request.diet ? PurgeDiary(database.Diet(), request) : CPurged();
        weights = request.weights ? PurgeDiary(database.Weight(), request) : CPurged();
        exercises = request.exercises ? PurgeDiary(database.Exercises(), request) : CPurged();
        if (changed) {
            changed();
        }
    }
    ShowMessage(FormatText("Total purged:\n\nDiet entries: %d\nWeight entries: %d\n"
                           "Exersises: %d\n\n"_L1,
                           {diet.count, weights.count, exercises.count}),
                EMessageIcon::Result);
    return diet.isWhole && weights.isWhole && exercises.isWhole;
}
