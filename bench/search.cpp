// bench_search FOOD_FILE [FOODS]: searches at each key of some typed texts, over the foods of the
// file and, when FOODS is more than these, made-up brands of them. Beside it, `grep -i` over the
// names as text and a full-text query of SQLite. Prints one figure a line.
#include <sqlite3.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>

#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/FoundItem.h"
#include "cli/ConsoleMessages.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;
constexpr int kRows = 50;  // as many as a list shows at first
const QStringList kTyped = {u"egg"_s,          u"whole milk"_s,     u"rye bread"_s,
                            u"black coffee"_s, u"chicken breast"_s, u"brocoli"_s,
                            u"chiken brest"_s, u"oatmeal"_s};

double Milliseconds(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void Print(const char* name, std::vector<double> times) {
    std::ranges::sort(times);
    std::printf("%-44s %8.2f ms median, %8.2f ms at most\n", name, times[times.size() / 2],
                times.back());
}

/// Resident memory of this process in bytes.
double Resident() {
    QFile status(u"/proc/self/statm"_s);
    constexpr double kPage = 4096;
    return status.open(QIODevice::ReadOnly) ? status.readAll().split(' ')[1].toDouble() * kPage : 0;
}

QString MadeUpWord(std::mt19937& random) {
    static const QString kConsonants = u"bcdfghklmnprstvz"_s;
    static const QString kVowels = u"aeiou"_s;
    QString word;
    for (int syllable = static_cast<int>(random() % 3) + 2; syllable > 0; --syllable) {
        word += kConsonants[static_cast<int>(random() % kConsonants.size())];
        word += kVowels[static_cast<int>(random() % kVowels.size())];
    }
    return word;
}

/// Adds foods of other brands until there are `foods`, with words of so many made-up ones.
void AddBrands(CDatabase& database, int foods) {
    constexpr std::size_t kMadeUp = 40'000;
    std::mt19937 random(1);
    std::vector<QString> words(kMadeUp);
    std::ranges::generate(words, [&random] { return MadeUpWord(random); });
    const int count = database.Catalogue().CountItems(kFoods);
    std::vector<CFoodItem> originals(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        (void)database.Foods().Read(i, originals[static_cast<std::size_t>(i)]);
    }
    CRecordGroup group(database.GetStore());
    for (int i = count; i < foods; ++i) {
        CFoodItem food = originals[static_cast<std::size_t>(i % count)];
        food.SetName(words[random() % kMadeUp].toUpper() + u' ' + food.GetName());
        food.SetType(food.GetType() + u", "_s + words[random() % kMadeUp]);
        (void)database.Foods().Write(kNoPosition, food);
    }
    (void)group.Commit();
}

class CFullText {
  public:
    explicit CFullText(const QByteArray& lines) {
        sqlite3_open(":memory:", &m_connection);
        sqlite3_exec(m_connection,
                     "CREATE VIRTUAL TABLE foods USING fts5(text, prefix='2 3'); BEGIN", nullptr,
                     nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(m_connection, "INSERT INTO foods VALUES(?)", -1, &insert, nullptr);
        for (const QByteArray& line : lines.split('\n')) {
            sqlite3_bind_text(insert, 1, line.constData(), static_cast<int>(line.size()),
                              SQLITE_STATIC);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(m_connection, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(m_connection,
                           "SELECT rowid FROM foods WHERE foods MATCH ? ORDER BY rank LIMIT 50", -1,
                           &m_query, nullptr);
    }
    ~CFullText() {
        sqlite3_finalize(m_query);
        sqlite3_close(m_connection);
    }
    CFullText(const CFullText&) = delete;
    CFullText& operator=(const CFullText&) = delete;

    void Find(const QString& text) {
        const QByteArray match = text.split(u' ', Qt::SkipEmptyParts).join(u"* "_s).toUtf8() + '*';
        sqlite3_bind_text(m_query, 1, match.constData(), -1, SQLITE_TRANSIENT);
        while (sqlite3_step(m_query) == SQLITE_ROW) {
        }
        sqlite3_reset(m_query);
    }

  private:
    sqlite3* m_connection = nullptr;
    sqlite3_stmt* m_query = nullptr;
};

void Measure(const char* name, const std::function<void(const QString&)>& find) {
    std::vector<double> times;
    for (int round = 0; round < 3; ++round) {
        for (const QString& text : kTyped) {
            for (int length = 1; length <= text.size(); ++length) {
                times.push_back(Milliseconds([&] { find(text.first(length)); }));
            }
        }
    }
    Print(name, times);
}

void Compare(CDatabase& database, const QString& folder) {
    QByteArray lines;
    CFoodItem food;
    for (int i = 0; i < database.Catalogue().CountItems(kFoods); ++i) {
        if (database.Foods().ReadQuietly(i, food)) {
            lines += (food.GetName() + u' ' + food.GetType() + u'\n').toUtf8();
        }
    }
    const QString path = folder + u"/names.txt"_s;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(lines);
        file.close();
    }
    std::vector<double> greps;
    for (const QString& text : kTyped) {
        greps.push_back(Milliseconds([&] {
            QProcess grep;
            grep.start(u"grep"_s, {u"-ic"_s, u"--"_s, text, path});
            grep.waitForFinished();
        }));
    }
    Print("grep -i over name and type, as a program", greps);
    CFullText fullText(lines);
    Measure("full-text query of SQLite", [&](const QString& text) { fullText.Find(text); });
}
}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_search FOOD_FILE [FOODS]\n");
        return 2;
    }
    CConsoleMessages messages;
    const QTemporaryDir folder;
    CDatabase database(folder.filePath(u"VelmoraDb.db"_s));
    if (!database.OpenCatalogue() ||
        !ImportCatalogueFile(database, kFoods, EDuplicatePolicy::DoNotCheck,
                             QString::fromLocal8Bit(argv[1]))) {
        return 1;
    }
    AddBrands(database, argc > 2 ? atoi(argv[2]) : 0);
    CSearchMatches matches;
    const auto find = [&](const QString& text) {
        matches = database.Search().Find({.text = text, .limit = kRows});
    };
    const double before = Resident();
    std::printf("%-44s %8.2f ms\n", "first key", Milliseconds([&] { find(u"e"_s); }));
    const int foods = database.Catalogue().CountItems(kFoods);
    std::printf("%-44s %8d\n", "foods", foods);
    std::printf("%-44s %8.1f bytes a food by its own count, %.1f resident\n", "memory",
                static_cast<double>(database.Search().Size()) / foods,
                (Resident() - before) / foods);
    Measure("a key", find);
    Measure("a key with its rows read", [&](const QString& text) {
        find(text);
        for (const CSearchMatch& match : matches.best) {
            (void)ReadFoundItem(database, match);
        }
    });
    Compare(database, folder.path());
    return 0;
}
