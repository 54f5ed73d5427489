#include "exercise/ExerciseRules.h"

#include "diary/DiaryCommands.h"
#include "platform/NumberText.h"
#include "store/Step.h"
#include "store/engine/PlatformError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double kPresetMinutes = 1;
constexpr CEntryCommand kDelete = {{"Please select exercise to delete.", nullptr},
                                   {"Are you sure you want to delete exercise '%s'?",
                                    "Are you sure you want to delete %d exercises?"},
                                   "Cannot delete exercise.",
                                   kDeleteStep,
                                   "an exercise"_L1,
                                   "exercises"_L1};

}  // namespace

CEntryRange<CExerciseEntry> ListExercises(CDatabase& database, QDate first, QDate last,
                                          EWrongCount wrongCount) {
    if (!first.isValid() || !last.isValid()) {
        return {};
    }
    return ReadEntries(database.Exercises(),
                       {FirstMomentOf(first), LastMomentOf(last), wrongCount});
}

QString ExerciseTimeText(double minutes) {
    const int whole = Whole(minutes);
    return TwoDigits(whole / kMinutesPerHour) + u':' + TwoDigits(whole % kMinutesPerHour);
}

int WholeExerciseEnergy(double energyKcal, EEnergyUnit unit) {
    return unit == EEnergyUnit::KJ ? WholeEnergy(energyKcal, unit) : Whole(energyKcal);
}

QString ExerciseEnergyText(double energyKcal, EEnergyUnit unit) {
    return energyKcal > 0 ? QString::number(WholeExerciseEnergy(energyKcal, unit)) : QString();
}

CExerciseEntry NewExercise(QDate day, QTime time) {
    CExerciseEntry entry;
    entry.SetMoment(ToFileTime(day, time));
    entry.SetMinutes(kPresetMinutes);
    return entry;
}

bool AddExercise(CDatabase& database, const CExerciseEntry& entry) {
    const CStep step(database.GetStore(), StepName(kAdditionStep, entry.GetName()));
    return database.Exercises().Write(-1, entry);
}

bool MayEditExercise(int selected) {
    return CheckSelection(
        {"Please select exercise to edit.", "Please select only one exercise to edit."}, selected);
}

bool EditExercise(CDatabase& database, ObjectId record, const CExerciseEntry& entry) {
    const CStep step(database.GetStore(), StepName(kEditStep, entry.GetName()));
    const EReplaced replaced = ReplaceEntry(database.Exercises(), record, entry);
    if (replaced == EReplaced::NoRecord) {
        ShowMessage(FormatText(QLatin1StringView(kExercisesLayout.writeFailure),
                               {static_cast<int>(kErrorFileNotFound)}));
    }
    return replaced == EReplaced::Yes;
}

int DeleteExercises(CDatabase& database, const ListedEntries<CExerciseEntry>& selected) {
    return DeleteEntries(database.Exercises(), selected, kDelete, EAfterFailure::Stop);
}

int ExerciseListHeight(int perMille, int viewHeight) {
    return Whole(perMille * viewHeight * 0.001 + 0.5);
}
