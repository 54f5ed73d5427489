#include "exercise/ExerciseRules.h"

#include <numeric>

#include "app/ListCommands.h"
#include "platform/NumberText.h"
#include "store/engine/PlatformError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double kPresetMinutes = 1;

}  // namespace

CExerciseList ListExercises(CDatabase& database, QDate first, QDate last, EWrongCount wrongCount) {
    CExerciseList list;
    if (!first.isValid() || !last.isValid()) {
        return list;
    }
    auto& exercises = database.Exercises();
    list.leftOut = exercises.ReadList(
        {FirstMomentOf(first), LastMomentOf(last), wrongCount},
        [&](int position, PropertyList& properties) {
            CExerciseEntry entry;
            if (!entry.SetProperties(std::move(properties))) {
                return ETake::Damaged;
            }
            list.entries.push_back({exercises.RecordAt(position), std::move(entry)});
            return ETake::Taken;
        });
    return list;
}

QString ExerciseNameText(const CExerciseEntry& entry) {
    const QString type = entry.GetType();
    return type.isEmpty() ? entry.GetName() : entry.GetName() + u',' + type;
}

QString ExerciseTimeText(double minutes) {
    const int whole = Whole(minutes);
    return TwoDigits(whole / kMinutesPerHour) + u':' + TwoDigits(whole % kMinutesPerHour);
}

QString ExerciseEnergyText(double energyKcal, EEnergyUnit unit) {
    if (!(energyKcal > 0)) {
        return {};
    }
    return QString::number(unit == EEnergyUnit::KJ ? WholeEnergy(energyKcal, unit)
                                                   : Whole(energyKcal));
}

CExerciseEntry NewExercise(QDate day, QTime time) {
    CExerciseEntry entry;
    entry.SetMoment(ToFileTime(day, time));
    entry.SetMinutes(kPresetMinutes);
    return entry;
}

bool AddExercise(CDatabase& database, const CExerciseEntry& entry) {
    return database.Exercises().Write(-1, entry);
}

bool MayEditExercise(int selected) {
    return CheckSelection(
        {"Please select exercise to edit.", "Please select only one exercise to edit."}, selected);
}

bool EditExercise(CDatabase& database, const CListedExercise& before, const CExerciseEntry& after) {
    const int position = database.Exercises().PositionOf(before.record);
    if (position < 0) {
        ShowMessage(FormatText(QLatin1StringView(kExercisesLayout.writeFailure),
                               {static_cast<int>(kErrorFileNotFound)}));
        return false;
    }
    return database.Exercises().Write(position, after);
}

int DeleteExercises(CDatabase& database, const ListedExercises& selected) {
    const int count = static_cast<int>(selected.size());
    if (!CheckSelection({"Please select exercise to delete.", nullptr}, count) ||
        !ConfirmFor({"Are you sure you want to delete exercise '%s'?",
                     "Are you sure you want to delete %d exercises?"},
                    count, {selected.front().entry.GetName()})) {
        return 0;
    }
    std::vector<int> indexes(selected.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    const auto remove = [&](int index) {
        const int position = database.Exercises().PositionOf(selected[index].record);
        return position >= 0 && database.Exercises().Delete(position);
    };
    return ActOnEach(database.GetStore(), indexes, remove, u"Cannot delete exercise."_s);
}

int ExerciseListHeight(int perMille, int viewHeight) {
    return Whole(perMille * viewHeight * 0.001 + 0.5);
}
