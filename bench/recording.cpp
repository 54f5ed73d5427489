// bench_recording FOOD_FILE [ROUNDS]: what the history costs. Commands are compared with the same
// ones unrecorded, and undo with the command that it takes back. Prints the median of the ratios
// and both median times.
#include <QCoreApplication>
#include <QTemporaryDir>

#include "Pairs.h"
#include "app/UndoRules.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "diary/DietRules.h"
#include "diary/PurgeRules.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;
constexpr int kEntries = 55000;
constexpr int kEntriesADay = 15;
constexpr int kDifferentFoods = 500;
const QDate kLastDay(2026, 1, 31);

class CRecordingBench {
  public:
    CRecordingBench(CVelmoraDoc& doc, QString foodFile, int rounds)
        : m_doc(doc), m_foodFile(std::move(foodFile)), m_rounds(rounds) {}

    void Run() {
        FillDiary();
        const auto add = [this] { (void)AddDietEntry(m_doc, kLastDay, 0, EntryFood(0)); };
        Compare("add an entry, recorded / not", m_rounds * 10, add, Unrecorded(add));

        const auto import = [this] {
            (void)ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::DoNotCheck, m_foodFile);
        };
        Compare("import, recorded / not", m_rounds, import, Unrecorded(import),
                Unrecorded([this] { EmptyCatalogue(); }));
        import();
        Compare("undo of an import / the import", m_rounds, Undo(kCatalogueScope), import);

        const auto purge = [this] {
            const CPurgeRequest all{QDate(2000, 1, 1), kLastDay, true, false, false};
            (void)PurgeDiaries(Database(), all);
        };
        Compare("purge of 55,000 entries, recorded / not", m_rounds, purge, Unrecorded(purge),
                Unrecorded([this] {
                    EmptyDiary();
                    FillDiary();
                }));
        purge();
        Compare("undo of a purge / the purge", m_rounds, Undo(Profile()), purge);
    }

  private:
    CDatabase& Database() { return m_doc.Database(); }
    CItemDatabaseBase& Diary() { return Database().Diet(); }
    qint64 Profile() { return Database().Profiles().GetId(); }

    std::function<void()> Unrecorded(const std::function<void()>& work) {
        return [this, work] {
            CHistory& history = Database().GetStore().History();
            CItemDatabaseBase& foods = Database().Items(kFoods);
            const qint64 categories = Database().Categories().GetId();
            history.Unwatch(Diary().GetId());
            history.Unwatch(foods.GetId());
            history.Unwatch(categories);
            work();
            history.Watch(Diary().GetId(), Profile());
            history.Watch(foods.GetId(), kCatalogueScope, CViewSettings::kMarker);
            history.Watch(categories, kCatalogueScope);
        };
    }

    std::function<void()> Undo(qint64 scope) {
        return [this, scope] {
            if (!RevertNext(Database(), EUndo::Undo, scope)) {
                std::exit(1);
            }
        };
    }

    static CChosenFood EntryFood(int number) {
        CChosenFood chosen;
        CFoodItem& food = chosen.item;
        food.SetName(u"Apple %1"_s.arg(number % kDifferentFoods));
        food.SetType(u"raw"_s);
        food.SetServingName(0, u"1 medium"_s);
        for (int i = 0; i < kNutrientCount; ++i) {
            food.SetNutrientValue(i, (number + i) % 97 * 0.25);
        }
        return chosen;
    }

    void FillDiary() {
        CRecordGroup group(Database().GetStore());
        for (int number = 0; number < kEntries; ++number) {
            const QDate day = kLastDay.addDays(-((kEntries - 1 - number) / kEntriesADay));
            CDietEntry entry;
            TakeChosenFood(Database(), EntryFood(number), entry);
            entry.SetMoment(ToFileTime(day, QTime(8, 0).addSecs(number % kEntriesADay * 3000)));
            entry.SetMeal(number % kMealCount);
            (void)Database().Diet().Write(kNoPosition, entry);
        }
        (void)group.Commit();
    }

    void EmptyDiary() {
        CRecordGroup group(Database().GetStore());
        for (int position = Diary().Count() - 1; position >= 0; --position) {
            (void)Diary().Delete(position);
        }
        (void)group.Commit();
    }

    void EmptyCatalogue() {
        CCatalogueRules rules(Database(), kFoods);
        for (const CCategoryEntry& category : Database().Categories().List(kFoods)) {
            (void)rules.DeleteCategory(category.id);
        }
    }

    CVelmoraDoc& m_doc;
    QString m_foodFile;
    int m_rounds;
};
}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_recording FOOD_FILE [ROUNDS]\n");
        return 2;
    }
    CYes messages;
    const QTemporaryDir folder;
    CVelmoraDoc doc(folder.filePath(u"VelmoraDb.db"_s));
    CProfileSettings settings = CProfileSettings::ForNewProfile(kLastDay);
    settings.user.name = u"Ann"_s;
    if (!doc.OpenCatalogue() || !doc.CreateProfile(settings) || !doc.LoadProfile(u"Ann"_s)) {
        return 1;
    }
    CRecordingBench(doc, QString::fromLocal8Bit(argv[1]),
                    argc > 2 ? std::max(1, std::atoi(argv[2])) : 9)
        .Run();
    return 0;
}
