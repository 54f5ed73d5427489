#include "diary/PurgeRules.h"

#include "platform/Messages.h"

#include <variant>

using namespace Qt::StringLiterals;

namespace {
enum class EFailure { Stops, IsCounted };

/// Returns the number of entries purged. Positions go up after a removal too.
int Walk(CItemDatabaseBase& diary, const CPurgeRequest& request, EFailure failure) {
    const FileTime first = FirstMomentOf(request.begin);
    const FileTime last = LastMomentOf(request.end);
    const int expected = diary.GetLayout().Count();
    int purged = 0;
    const auto purge = [&](int position, PropertyList& properties) {
        if (std::ssize(properties) != expected) {
            return true;
        }
        const auto* moment = std::get_if<FileTime>(&properties.front());
        if (moment == nullptr || *moment < first || *moment > last) {
            return true;
        }
        ++purged;
        // The walk that counts tells of each failure.
        if (failure == EFailure::IsCounted) {
            (void)diary.Delete(position);
            return true;
        }
        return diary.DeleteQuietly(position);
    };
    diary.ForEachFrom(0, purge, 1);
    return purged;
}

int PurgeDiary(CItemDatabaseBase& diary, const CPurgeRequest& request) {
    CRecordGroup group(diary.GetStore());
    if (!group.IsOpen()) {
        return Walk(diary, request, EFailure::IsCounted);
    }
    const int purged = Walk(diary, request, EFailure::Stops);
    // A group that cannot be kept leaves everything as it was: then each record goes for itself.
    return group.Commit() ? purged : Walk(diary, request, EFailure::IsCounted);
}
}  // namespace

bool PurgeDiaries(CDatabase& database, const CPurgeRequest& request,
                  const std::function<void()>& changed) {
    if (!AskYesNo(u"You are about to remove data entries. Are you sure?"_s)) {
        return false;
    }
    int diet = 0;
    int weights = 0;
    int exercises = 0;
    {
        const CWaitCursor wait;
        diet = request.diet ? PurgeDiary(database.Diet(), request) : 0;
        weights = request.weights ? PurgeDiary(database.Weight(), request) : 0;
        exercises = request.exercises ? PurgeDiary(database.Exercises(), request) : 0;
        if (changed) {
            changed();
        }
    }
    ShowMessage(FormatText("Total purged:\n\nDiet entries: %d\nWeight entries: %d\n"
                           "Exersises: %d\n\n"_L1,
                           {diet, weights, exercises}),
                EMessageIcon::Result);
    return true;
}
