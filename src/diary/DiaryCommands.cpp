#include "diary/DiaryCommands.h"

#include <numeric>

namespace {

int DeleteAllPossible(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                      const char* failure) {
    const std::vector<ObjectId> fromTheLast(records.rbegin(), records.rend());
    const CWaitCursor wait;
    int deleted = 0;
    RunAsUnit(diary.GetStore(), [&] {
        deleted = 0;
        for (const ObjectId record : fromTheLast) {
            // Position -1, of a record that no longer exists, fails with the same message.
            if (diary.Delete(diary.PositionOf(record))) {
                ++deleted;
            } else {
                diary.GetStore().SilenceStep();
                ShowMessage(QString::fromLatin1(failure), EMessageIcon::Information);
            }
        }
        return deleted == std::ssize(records);
    });
    return deleted;
}

}  // namespace

int ActOnRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                 const std::function<bool(int)>& act, const char* failure) {
    std::vector<int> indexes(records.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    const auto actOn = [&](int index) {
        const int position = diary.PositionOf(records[index]);
        return position >= 0 && act(position);
    };
    return ActOnEach(diary.GetStore(), indexes, actOn, QString::fromLatin1(failure));
}

int DeleteRecords(CItemDatabaseBase& diary, const std::vector<ObjectId>& records,
                  const char* failure, EAfterFailure afterFailure) {
    if (afterFailure == EAfterFailure::Continue) {
        return DeleteAllPossible(diary, records, failure);
    }
    return ActOnRecords(
        diary, records, [&diary](int position) { return diary.Delete(position); }, failure);
}
