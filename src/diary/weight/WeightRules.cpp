#include "diary/weight/WeightRules.h"

#include <limits>

#include "diary/DiaryCommands.h"
#include "platform/Messages.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kCannotAdd = "Cannot add weight."_L1;
/// The last year that a date field can show.
constexpr int kLastYear = 9999;

constexpr CEntryCommand kDelete = {{"Please select weight to delete.", nullptr},
                                   {"Are you sure you want to delete selected weight?",
                                    "Are you sure you want to delete %d weights?"},
                                   "Cannot delete weight.",
                                   kDeleteStep,
                                   "a weight"_L1,
                                   "weights"_L1};

bool ReportUnlessWritten(bool isWritten) {
    if (!isWritten) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
    }
    return isWritten;
}

}  // namespace

double WeightOnDay(CVelmoraDoc& doc, QDate day) {
    auto& database = doc.Database().Weight();
    const int count = database.Count();
    const FileTime dayAfter = day.isValid() ? LastMomentOf(day) + 1 : 0;
    const int found = database.FirstPositionInRange(dayAfter, std::numeric_limits<FileTime>::max());
    const int firstLater = found == kNoPosition ? count : found;
    CWeightEntry entry;
    for (int position = firstLater - 1; position >= 0; --position) {
        if (database.ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    for (int position = firstLater; position < count; ++position) {
        if (database.ReadQuietly(position, entry)) {
            return entry.GetWeightKg();
        }
    }
    return doc.Settings().targets.startWeightKg;
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
    const CStep step(doc.Database().GetStore(), StepName(kAdditionStep, u"a weight"_s));
    return ReportUnlessWritten(doc.Database().Weight().Write(kNoPosition, entry));
}

bool MayEditWeight(int selected) {
    return CheckSelection(
        {"Please select weight to edit.", "Please select only one weight to edit."}, selected);
}

std::optional<CWeightEntry> WeightToEdit(CVelmoraDoc& doc, ObjectId record) {
    auto& database = doc.Database().Weight();
    CWeightEntry entry;
    if (!database.Read(database.PositionOf(record), entry)) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
        return std::nullopt;
    }
    const QDate day = DateOf(entry.GetMoment());
    if (!day.isValid() || day.year() > kLastYear) {
        entry.SetMoment(FirstMomentOf(doc.dayShown));
    }
    return entry;
}

bool EditWeight(CVelmoraDoc& doc, ObjectId record, const CWeightEntry& entry) {
    const CStep step(doc.Database().GetStore(), StepName(kEditStep, u"a weight"_s));
    return ReportUnlessWritten(ReplaceEntry(doc.Database().Weight(), record, entry) ==
                               EReplaced::Yes);
}

int DeleteWeights(CVelmoraDoc& doc, const ListedEntries<CWeightEntry>& selected) {
    return DeleteEntries(doc.Database().Weight(), selected, kDelete, EAfterFailure::Continue);
}
