// bench_catalogue FOOD_FILE [ROUNDS]: compares the commands of the foods window on a large
// catalogue with the bare reads and writes that they need, run in turn on the same volume. Prints
// the median of the ratios and both median times.
#include <QApplication>
#include <QTemporaryDir>
#include <QTreeView>

#include "Pairs.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/pick/FindItems.h"
#include "catalogue/view/FoodsMainView.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;
constexpr int kMovedFoods = 500;
/// Values of a record up to name and type.
constexpr int kNameAndType = 3;

class CCatalogueBench {
  public:
    CCatalogueBench(CVelmoraDoc& doc, int rounds)
        : m_doc(doc), m_rules(doc.Database(), kFoods), m_rounds(rounds) {
        for (const CCategoryEntry& category : Database().Categories().List(kFoods)) {
            const int count = CountOf(category.id);
            if (count > m_largestCount) {
                m_largest = category;
                m_largestCount = count;
            }
            m_last = category;
        }
    }

    void Run() {
        std::printf("largest category: %d foods\n", m_largestCount);
        Views();
        FindToTheEnd();
        Duplicate();
        Move();
        DeleteCategory();
    }

  private:
    CDatabase& Database() { return m_doc.Database(); }
    CItemDatabaseBase& Foods() { return Database().Items(kFoods); }

    int CountOf(qint32 categoryId) {
        const int first = Foods().FirstPositionOf(categoryId);
        const int next = Foods().FirstPositionInRange(qint64{categoryId} + 1, INT32_MAX);
        return first < 0 ? 0 : (next < 0 ? Foods().Count() : next) - first;
    }
    /// Reads `count` records from position `first` on.
    void ReadOn(int first, int count, int most) {
        int left = count;
        Foods().ForEachFrom(
            first, [&left](int, PropertyList&) { return --left > 0; }, most);
    }

    void Views() {
        CFoodsMainView view(m_doc, nullptr);
        auto* tree = view.findChild<QTreeView*>(u"categories"_s);
        const QAbstractItemModel* model = tree->model();
        QModelIndex largest;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            largest = index.data().toString() == m_largest.name ? index : largest;
        }
        const QModelIndex other = model->index(largest.row() == 0 ? 1 : 0, 0);
        const int first = Foods().FirstPositionOf(m_largest.id);
        Compare(
            "list the largest category", m_rounds,
            [&] { (void)Database().Catalogue().FillCategoryList(kFoods, m_largest.id); },
            [&] { ReadOn(first, m_largestCount, kNameAndType); });
        Compare(
            "select it in the window", m_rounds, [&] { tree->setCurrentIndex(largest); },
            [&] { ReadOn(first, m_largestCount, kNameAndType); },
            [&] { tree->setCurrentIndex(other); });
        Compare(
            "open every category of the tree", m_rounds,
            [&] {
                for (int row = 0; row < model->rowCount(); ++row) {
                    tree->expand(model->index(row, 0));
                }
            },
            [&] { ReadOn(0, Foods().Count(), kNameAndType - 1); },
            [&] {
                tree->collapseAll();
                view.DataChanged();
            });
    }

    void FindToTheEnd() {
        CFindState state{u"zzz"_s, {}, 0, 0};
        Compare(
            "find next without a match", m_rounds,
            [&] { (void)FindNext(Database(), kFoods, state); },
            [&] { ReadOn(0, Foods().Count(), kNameAndType); });
    }

    void Duplicate() {
        const CCatalogueRules::Entries one = {
            Database().Catalogue().FillCategoryList(kFoods, m_largest.id).entries.front()};
        const auto removeCopy = [&] {
            const int copy = Foods().FirstPositionOf(m_largest.id) + m_largestCount;
            (void)Foods().Delete(copy);
        };
        CFoodItem food;
        Compare(
            "duplicate in the largest category", m_rounds, [&] { (void)m_rules.Duplicate(one); },
            [&] {
                ReadOn(Foods().FirstPositionOf(m_largest.id), m_largestCount, kNameAndType);
                (void)Database().Foods().Read(one.front().position, food);
                (void)Database().Foods().Write(kNoPosition, food);
            },
            removeCopy);
    }

    void Move() {
        const auto firstFoods = [this](qint32 categoryId) {
            const int first = Foods().FirstPositionOf(categoryId) + CountOf(categoryId);
            CCatalogueRules::Entries entries;
            for (int i = std::min(kMovedFoods, m_largestCount); i > 0; --i) {
                entries.push_back({first - i, categoryId, {}, {}});
            }
            return entries;
        };
        const auto back = [&] { MoveBare(firstFoods(m_last.id), m_largest.id, false); };
        Compare(
            "move 500 foods to the last category", m_rounds,
            [&] { (void)m_rules.Move(firstFoods(m_largest.id), m_last); },
            [&] { MoveBare(firstFoods(m_largest.id), m_last.id, true); }, back);
    }
    void MoveBare(const CCatalogueRules::Entries& entries, qint32 categoryId, bool descending) {
        CRecordGroup group(Database().GetStore());
        CFoodItem food;
        for (size_t i = 0; i < entries.size(); ++i) {
            const size_t at = descending ? entries.size() - 1 - i : i;
            (void)Database().Foods().Read(entries[at].position, food);
            food.SetCategoryId(categoryId);
            (void)Database().Foods().Write(entries[at].position, food);
        }
        (void)group.Commit();
    }

    void DeleteCategory() {
        std::vector<CFoodItem> kept(static_cast<size_t>(m_largestCount));
        const int first = Foods().FirstPositionOf(m_largest.id);
        for (int i = 0; i < m_largestCount; ++i) {
            (void)Database().Foods().Read(first + i, kept[static_cast<size_t>(i)]);
        }
        const auto restore = [&] {
            CRecordGroup group(Database().GetStore());
            const qint32 id = m_rules.AddCategory(m_largest.name);
            m_largest.id = id;
            for (CFoodItem& food : kept) {
                food.SetCategoryId(id);
                (void)Database().Foods().Write(kNoPosition, food);
            }
            (void)group.Commit();
        };
        Compare(
            "delete the largest category", m_rounds,
            [&] { (void)m_rules.DeleteCategory(m_largest.id); },
            [&] {
                {
                    CRecordGroup group(Database().GetStore());
                    const int from = Foods().FirstPositionOf(m_largest.id);
                    for (int i = m_largestCount - 1; i >= 0; --i) {
                        (void)Foods().Delete(from + i);
                    }
                    (void)group.Commit();
                }
                (void)Database().Categories().Delete(
                    Database().Categories().Find(kFoods, m_largest.id));
            },
            restore);
    }

    CVelmoraDoc& m_doc;
    CCatalogueRules m_rules;
    int m_rounds;
    CCategoryEntry m_largest{};
    CCategoryEntry m_last{};
    int m_largestCount = 0;
};
}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_catalogue FOOD_FILE [ROUNDS]\n");
        return 2;
    }
    CYes messages;
    const QTemporaryDir folder;
    CVelmoraDoc doc(folder.filePath(u"VelmoraDb.db"_s));
    if (!doc.OpenCatalogue() ||
        !ImportCatalogueFile(doc.Database(), kFoods, EDuplicatePolicy::DoNotCheck,
                             QString::fromLocal8Bit(argv[1]))) {
        return 1;
    }
    CCatalogueBench(doc, argc > 2 ? std::max(1, atoi(argv[2])) : 9).Run();
    return 0;
}
