#include "exercise/ExerciseDays.h"

#include <algorithm>

#include "exercise/ExerciseRules.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {

/// In integers, so that rounding errors never lose a percent.
qint64 BurnedPercent(int burned, int surplus) {
    return surplus == 0 ? 0 : std::max(qint64{0}, qint64{burned} * 100 / surplus);
}

}  // namespace

ExerciseWeek ExerciseWeekOf(CVelmoraDoc& doc, QDate last) {
    CDatabase& database = doc.Database();
    ExerciseWeek week;
    for (int index = 0; index < kGraphDays; ++index) {
        CExerciseDay& day = week[index];
        day.day = last.addDays(index - (kGraphDays - 1));
        day.surplusKcal = ReadDay(database.Diet(), day.day, kNoCapacity).GetTotal(kEnergyIndex) -
                          doc.Settings().targets.nutrients[kEnergyIndex];
    }
    for (const CListed<CExerciseEntry>& listed :
         ListExercises(database, week.front().day, last, EWrongCount::IsDamage).entries) {
        const QDate day = DateOf(listed.entry.GetMoment());
        week[week.front().day.daysTo(day)].burnedKcal += listed.entry.GetEnergyKcal();
    }
    return week;
}

QString ExerciseHeadline(const CExerciseDay& day, EEnergyUnit unit) {
    const int burned = WholeExerciseEnergy(day.burnedKcal, unit);
    const int surplus = WholeExerciseEnergy(day.surplusKcal, unit);
    return FormatText("Total energy burned: %d/%d/%d%%"_L1,
                      {burned, surplus, BurnedPercent(burned, surplus)});
}
