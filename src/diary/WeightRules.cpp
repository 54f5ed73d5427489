#include "diary/WeightRules.h"

#include "app/ListCommands.h"
#include "platform/Messages.h"
#include "store/UnitOfWork.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kCannotAdd = "Cannot add weight."_L1;
/// The last one that a date field shows.
constexpr int kLastYear = 9999;

bool WriteWeight(CVelmoraDoc& doc, int position, const CWeightEntry& entry) {
    const bool isWritten = doc.Database().Weight().Write(position, entry);
    if (!isWritten) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
    }
    return isWritten;
}

}  // namespace

double WeightOnDay(CVelmoraDoc& doc, QDate day) {
    return doc.Database().WeightOnDate(day, doc.Settings().targets.startWeightKg);
}

CWeightEntry NewWeightEntry(CVelmoraDoc& doc, QTime time) {
    auto& database = doc.Database().Weight();
    CWeightEntry entry;
    int position = database.Count() - 1;
    while (position >= 0 && !database.ReadQuietly(position, entry)) {
        --position;
    }
    if (position < 0) {
        entry.SetWeightKg(doc.Settings().targets.startWeightKg);
    }
    entry.SetMoment(ToFileTime(doc.dayShown, time));
    return entry;
}

bool AddWeight(CVelmoraDoc& doc, const CWeightEntry& entry) {
    return WriteWeight(doc, kNoPosition, entry);
}

bool MayEditWeight(int selected) {
    return CheckSelection(
        {"Please select weight to edit.", "Please select only one weight to edit."}, selected);
}

std::optional<CWeightEntry> WeightToEdit(CVelmoraDoc& doc, int position) {
    CWeightEntry entry;
    if (!doc.Database().Weight().Read(position, entry)) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
        return std::nullopt;
    }
    const QDate day = DateOf(entry.GetMoment());
    if (!day.isValid() || day.year() > kLastYear) {
        entry.SetMoment(FirstMomentOf(doc.dayShown));
    }
    return entry;
}

bool EditWeight(CVelmoraDoc& doc, int position, const CWeightEntry& entry) {
    return WriteWeight(doc, position, entry);
}

int DeleteWeights(CVelmoraDoc& doc, const std::vector<int>& positions) {
    const int count = static_cast<int>(positions.size());
    if (!CheckSelection({"Please select weight to delete.", nullptr}, count) ||
        !ConfirmFor({"Are you sure you want to delete selected weight?",
                     "Are you sure you want to delete %d weights?"},
                    count, {})) {
        return 0;
    }
    // From the last one, so that the positions before it hold.
    const std::vector<int> fromTheLast(positions.rbegin(), positions.rend());
    const CWaitCursor wait;
    int deleted = 0;
    RunAsUnit(doc.Database().GetStore(), [&] {
        deleted = 0;
        for (const int position : fromTheLast) {
            if (doc.Database().Weight().Delete(position)) {
                ++deleted;
            } else {
                ShowMessage(u"Cannot delete weight."_s, EMessageIcon::Information);
            }
        }
        return deleted == count;
    });
    return deleted;
}
