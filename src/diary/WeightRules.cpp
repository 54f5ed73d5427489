#include "diary/WeightRules.h"

#include "app/ListCommands.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {

bool WriteWeight(CVelmoraDoc& doc, int position, const CWeightEntry& entry) {
    const bool isWritten = doc.Database().Weight().Write(position, entry);
    if (!isWritten) {
        ShowMessage(u"Cannot add weight."_s, EMessageIcon::Information);
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
    CRecordGroup group(doc.Database().GetStore());
    const int deleted =
        !group.IsOpen()
            ? 0
            : ActOnEach(fromTheLast,
                        [&](int position) { return doc.Database().Weight().Delete(position); }, {});
    const int gone = group.Commit() ? deleted : 0;
    if (gone < count) {
        ShowMessage(u"Cannot delete weight."_s, EMessageIcon::Information);
    }
    return gone;
}
