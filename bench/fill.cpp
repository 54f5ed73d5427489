// bench_fill VOLUME PROFILE ENTRIES [all|today]: creates a profile with that many diet entries, 15
// per day up to 2026-01-31 or today; "all" adds a weight and a workout per day.
#include <QCoreApplication>
#include <QTextStream>
#include <cstdlib>
#include <cstring>

#include "app/VelmoraDoc.h"
#include "cli/ConsoleMessages.h"

using namespace Qt::StringLiterals;

namespace {
/// People mostly eat what they have eaten before.
constexpr int kDifferentFoods = 500;
constexpr int kEntriesADay = 15;

CDietEntry EntryNumber(int number, QDate day) {
    CDietEntry entry;
    entry.SetMoment(ToFileTime(day, QTime(8, 0).addSecs(number % kEntriesADay * 3000)));
    entry.SetMeal(number % kMealCount);
    entry.SetCategory(u"Fruit"_s);
    entry.SetName(u"Apple %1"_s.arg(number % kDifferentFoods));
    entry.SetType(u"raw"_s);
    entry.SetServingName(u"1 medium"_s);
    entry.SetAmount(1.5);
    for (int i = 0; i < kNutrientCount; ++i) {
        entry.SetNutrientValue(i, (number + i) % 97 * 0.25);
    }
    return entry;
}

bool WriteWeightAndWorkout(CDatabase& database, int number, QDate day) {
    CWeightEntry weight;
    weight.SetMoment(ToFileTime(day, QTime(7, 0)));
    weight.SetWeightKg(80 + number % 50 * 0.1);
    for (int slot = 0; slot < 8; ++slot) {
        weight.SetMeasurement(slot, 30 + slot + number % 10 * 0.5);
    }
    CExerciseEntry exercise;
    exercise.SetMoment(ToFileTime(day, QTime(18, 0)));
    exercise.SetCategory(u"Running"_s);
    exercise.SetName(u"Running %1"_s.arg(number));
    exercise.SetType(u"slow"_s);
    exercise.SetMinutes(30);
    exercise.SetEnergyKcal(300 + number % 100);
    return database.Weight().Write(kNoPosition, weight) &&
           database.Exercises().Write(kNoPosition, exercise);
}
}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    if (argc != 4 && argc != 5) {
        return 2;
    }
    const CConsoleMessages messages;
    const int count = std::atoi(argv[3]);
    const bool fillsAll = argc == 5 && std::strcmp(argv[4], "all") == 0;
    const bool isToday = argc == 5 && std::strcmp(argv[4], "today") == 0;
    CVelmoraDoc doc(QString::fromLocal8Bit(argv[1]));
    if (!doc.OpenCatalogue()) {
        return 1;
    }
    const QDate lastDay = isToday ? QDate::currentDate() : QDate(2026, 1, 31);
    CProfileSettings settings = CProfileSettings::ForNewProfile(lastDay);
    settings.user.name = QString::fromLocal8Bit(argv[2]);
    if (!doc.CreateProfile(settings) || !doc.LoadProfile(settings.user.name)) {
        return 1;
    }
    CRecordGroup group(doc.Database().GetStore());
    for (int i = 0; i < count; ++i) {
        const QDate day = lastDay.addDays(-((count - 1 - i) / kEntriesADay));
        if (!doc.Database().Diet().Write(kNoPosition, EntryNumber(i, day))) {
            return 1;
        }
        if (fillsAll && i % kEntriesADay == 0 && !WriteWeightAndWorkout(doc.Database(), i, day)) {
            return 1;
        }
    }
    return group.Commit() ? 0 : 1;
}
