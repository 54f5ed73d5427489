// The inner parts: positions, one day of a diary, reading and writing foods, splitting lines. A day
// is read from diaries of several sizes.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "catalogue/exchange/CsvFields.h"
#include "cli/ConsoleMessages.h"
#include "platform/NumberText.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kEntriesADay = 15;
const QDate kFirstDay(2000, 1, 1);

/// A volume in a temporary folder with one profile of `entries` diet entries.
class CFilledVolume {
  public:
    explicit CFilledVolume(int entries) : m_database(m_folder.filePath(u"VelmoraDb.db"_s)) {
        m_database.OpenCatalogue();
        m_database.Profiles().Open(u"Ann"_s, true);
        CRecordGroup group(m_database.GetStore());
        CDietEntry entry;
        for (int i = 0; i < entries; ++i) {
            entry.SetMoment(ToFileTime(kFirstDay.addDays(i / kEntriesADay), QTime(12, 0)));
            entry.SetNutrientValue(0, i % 500);
            (void)m_database.Diet().Write(kNoPosition, entry);
        }
        group.Commit();
    }
    CDatabase& Database() { return m_database; }

  private:
    CConsoleMessages m_messages;
    QTemporaryDir m_folder;
    CDatabase m_database;
};

void ShowOneDay(benchmark::State& state) {
    const auto entries = static_cast<int>(state.range(0));
    CFilledVolume volume(entries);
    const int days = entries / kEntriesADay;
    int day = 0;
    for (auto _ : state) {
        day = (day + 7919) % days;
        benchmark::DoNotOptimize(ReadDay(volume.Database().Diet(), kFirstDay.addDays(day)));
    }
}
BENCHMARK(ShowOneDay)->Arg(1'000)->Arg(55'000)->Arg(1'000'000);

void WriteFood(benchmark::State& state) {
    CFilledVolume volume(0);
    CFoodItem food;
    food.SetCategoryId(1);
    food.SetName(u"Apple"_s);
    for (int i = 0; i < kFirstUserNutrient; ++i) {
        food.SetNutrientValue(i, i * 1.5);
    }
    CRecordGroup group(volume.Database().GetStore());
    for (auto _ : state) {
        benchmark::DoNotOptimize(volume.Database().Foods().Write(kNoPosition, food));
    }
    group.Commit();
}
BENCHMARK(WriteFood);

void ReadFood(benchmark::State& state) {
    CFilledVolume volume(0);
    CFoodItem food;
    food.SetCategoryId(1);
    for (int i = 0; i < kFirstUserNutrient; ++i) {
        food.SetNutrientValue(i, i * 1.5);
    }
    (void)volume.Database().Foods().Write(kNoPosition, food);
    for (auto _ : state) {
        benchmark::DoNotOptimize(volume.Database().Foods().Read(0, food));
    }
}
BENCHMARK(ReadFood);

void SplitLine(benchmark::State& state) {
    QString line = u"0000,\"Dairy and Egg Products\",\"Butter\",\"salted\","_s;
    for (int i = 0; i < kNutrientCount; ++i) {
        line += u"717.000,"_s;
    }
    for (auto _ : state) {
        CCsvFields fields(line);
        while (const std::optional<QStringView> field = fields.Next()) {
            benchmark::DoNotOptimize(ImportedNumber(*field));
        }
    }
}
BENCHMARK(SplitLine);

void WriteNumber(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(FixedNumber(717.125, 3));
    }
}
BENCHMARK(WriteNumber);
}  // namespace

BENCHMARK_MAIN();
