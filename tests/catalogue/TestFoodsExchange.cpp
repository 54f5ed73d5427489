// Import and export of foods over real files and a real volume.
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

#include "catalogue/CsvExchange.h"
#include "catalogue/FoodSamples.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kFoods = ECatalogueKind::Foods;

void Save(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray Load(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Numbered(int from, int count) {
    QByteArray lines;
    for (int i = from; i < from + count; ++i) {
        lines += FoodLine("Soups", "Soup", "number " + QByteArray::number(i));
    }
    return lines;
}
}  // namespace

class TestFoodsExchange : public QObject {
    Q_OBJECT

  private slots:
    void linesAreSkippedWithOrWithoutAWord_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QStringList>("messages");
        const QByteArray good = FoodLine("Soups", "Soup", "thin");
        // The line is the third of the file; foods name the next number.
        QTest::newRow("name") << FoodLine("Soups", "", "thin")
                              << QStringList{u"Invalid food name in line 4. Skipped."_s};
        QTest::newRow("type") << FoodLine("Soups", "Soup", " ")
                              << QStringList{u"Invalid food type in line 4. Skipped."_s};
        QTest::newRow("name before count")
            << QByteArray("1,Soups,,x,\r\n")
            << QStringList{u"Invalid food name in line 4. Skipped."_s};
        QTest::newRow("58 fields")
            << QByteArray("1,Soups,Soup,thin," + QByteArray("1.0,").repeated(54) + "\r\n")
            << QStringList{u"Invalid number of fields (58) in line 4. Skipped."_s};
        QTest::newRow("3 fields") << QByteArray("1,Soups,Soup\r\n")
                                  << QStringList{
                                         u"Invalid number of fields (3) in line 4. Skipped."_s};
        QTest::newRow("2 fields") << QByteArray("1,Soups\r\n") << QStringList();
        QTest::newRow("no category") << FoodLine("", "Soup", "thin") << QStringList();
        QTest::newRow("no number") << good.sliced(4).prepend("\"\"") << QStringList();
        QTest::newRow("header again")
            << QByteArray("NDB_No,Category,Food name\r\n") << QStringList();
        QTest::newRow("blank") << QByteArray("\r\n") << QStringList();
    }
    void linesAreSkippedWithOrWithoutAWord() {
        QFETCH(QByteArray, line);
        QFETCH(QStringList, messages);
        const QStringList shown = Import(FoodFile(line + FoodLine("Soups", "Soup", "thick")));
        QCOMPARE(shown, messages + QStringList{u"Imported 1 foods."_s});
        QCOMPARE(TypesStored(), QStringList{u"thick"_s});
    }

    void anErrorTooManyStopsTheImport_data() {
        QTest::addColumn<int>("errors");
        QTest::newRow("ten are borne") << 10;
        QTest::newRow("the eleventh is not") << 11;
    }
    void anErrorTooManyStopsTheImport() {
        QFETCH(int, errors);
        const QStringList shown = Import(FoodFile(
            Numbered(0, 1) + FoodLine("Soups", "", "x").repeated(errors) + Numbered(1, 1)));
        QCOMPARE(shown.size(), errors + (errors > 10 ? 2 : 1));
        QCOMPARE(shown.contains(u"Too many errors. Import stopped."_s), errors > 10);
        QCOMPARE(shown.last(), errors > 10 ? u"Imported 1 foods."_s : u"Imported 2 foods."_s);
    }

    void aFileOutOfShapeDoesNoHarm_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("foods");
        const QByteArray line = FoodLine("Soups", "Soup", "thin");
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("header only") << FoodFile("") << 0;
        QTest::newRow("no marker") << line << 0;
        QTest::newRow("wrong marker") << "<Menus>\r\n" + line << 0;
        QTest::newRow("no end marker") << "<Foods>\r\n" + line << 1;
        QTest::newRow("behind the end marker") << FoodFile(line) + line << 1;
        QTest::newRow("unix line ends, quoted marker")
            << QByteArray("\"<Foods>\"\n" + line).replace("\r\n", "\n") << 1;
        QTest::newRow("NUL bytes") << FoodFile(FoodLine(QByteArray("So\0up", 5), "a", "b")) << 1;
        QTest::newRow("10 MB without a comma")
            << FoodFile(QByteArray(10'000'000, 'x') + "\r\n" + line) << 1;
        QTest::newRow("quote without partner")
            << FoodFile("1,\"Soups,Soup\r\n1,\"\r\n" + line) << 1;
    }
    void aFileOutOfShapeDoesNoHarm() {
        QFETCH(QByteArray, file);
        QFETCH(int, foods);
        const QString summary = Import(file).last();
        QCOMPARE(summary, u"Imported %1 foods."_s.arg(foods));
        QCOMPARE(TypesStored().size(), foods);
    }

    void numbersStayFinite_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("nan") << QByteArray("nan") << 0.0;
        QTest::newRow("inf") << QByteArray("-inf") << 0.0;
        QTest::newRow("overflow") << QByteArray("1e999") << 0.0;
        QTest::newRow("empty") << QByteArray() << 0.0;
        QTest::newRow("quoted") << QByteArray("\"2.5\"") << 2.5;
    }
    void numbersStayFinite() {
        QFETCH(QByteArray, text);
        Import(FoodFile(FoodLine("Soups", "Soup", "thin", text)));
        CFoodItem food;
        QVERIFY(m_database->Foods().Read(0, food));
        QTEST(food.GetNutrientValue(53), "value");
    }

    void serving1DecidesTheMode_data() {
        QTest::addColumn<QByteArray>("servings");
        QTest::addColumn<QStringList>("stored");
        const QByteArray longName = '"' + QByteArray(64, 'x') + "\",";
        QTest::newRow("weighed") << QByteArray("\"1 cup\",240.000,\"1 oz\",28.350,")
                                 << QStringList{u"1 cup=240"_s, u"1 oz=28.35"_s};
        QTest::newRow("one serving drops the others")
            << QByteArray("\"1 cup\",0.000,\"1 oz\",28.350,") << QStringList{u"1 cup=0"_s};
        QTest::newRow("no name, no weight")
            << QByteArray("\"\",240.000,\"1 oz\",28.350,") << QStringList{u"one serving=0"_s};
        QTest::newRow("name of 64") << longName + "240.000," << QStringList{u"one serving=0"_s};
        QTest::newRow("later name of 64")
            << "\"1 cup\",240.000," + longName + "5.000," << QStringList{u"1 cup=240"_s};
    }
    void serving1DecidesTheMode() {
        QFETCH(QByteArray, servings);
        Import(FoodFile(FoodLine("Soups", "Soup", "thin", "1.000", servings)));
        CFoodItem food;
        QVERIFY(m_database->Foods().Read(0, food));
        QStringList stored;
        for (int i = 0; i < kServingCount; ++i) {
            if (!food.GetServingName(i).isEmpty() || food.GetServingWeight(i) != 0) {
                stored.append(u"%1=%2"_s.arg(food.GetServingName(i)).arg(food.GetServingWeight(i)));
            }
        }
        QTEST(stored, "stored");
    }

    void longTextsAreCutAndFieldsPastTheLastIgnored() {
        const QByteArray text(130, 'x');
        const QByteArray line = FoodLine(text, text, text).chopped(2) + "more,fields,\r\n";
        QCOMPARE(Import(FoodFile(line)), QStringList{u"Imported 1 foods."_s});
        const QString cut = QString(124, u'x') + u"..."_s;
        CFoodItem food;
        QVERIFY(m_database->Foods().Read(0, food));
        QCOMPARE(food.GetName(), cut);
        QCOMPARE(food.GetType(), cut);
        QCOMPARE(m_database->CategoryNameOf(kFoods, food.GetCategoryId()), cut);
    }

    void existingFoodsAreTreatedAsChosen_data() {
        QTest::addColumn<int>("existing");
        QTest::addColumn<QString>("summary");
        QTest::addColumn<QList<double>>("values");
        // Two foods are there with 7; the file brings 9 for both, one of them twice, and a third.
        QTest::newRow("overwrite")
            << 0 << u"Imported 4 foods. Replaced 3 existing foods."_s << QList<double>{9, 9, 9};
        QTest::newRow("skip") << 1 << u"Imported 1 foods. Skipped 3 existing foods."_s
                              << QList<double>{7, 7, 9};
        QTest::newRow("do not check")
            << 2 << u"Imported 4 foods."_s << QList<double>{7, 7, 9, 9, 9, 9};
    }
    void existingFoodsAreTreatedAsChosen() {
        QFETCH(int, existing);
        Import(FoodFile(FoodLine("Soups", "Soup", "thin") + FoodLine("Soups", "Soup", "thick")));
        const QByteArray lines =
            FoodLine("Soups", "Soup", "thick", "9") + FoodLine("Soups", "Soup", "thin", "9") +
            FoodLine("Soups", "Soup", "Thin", "9") + FoodLine("Soups", "Soup", "thin", "9");
        const QStringList shown = Import(FoodFile(lines), static_cast<EExisting>(existing));
        QCOMPARE(shown.size(), 1);
        QTEST(shown.first(), "summary");
        QList<double> values;
        CFoodItem food;
        for (int i = 0; m_database->Foods().Read(i, food); ++i) {
            values.append(food.GetNutrientValue(0));
        }
        QTEST(values, "values");
    }

    void foodsAddedByTheRunAreFoundAmongOthers() {
        // Categories take turns, so every added food moves the positions of the later category.
        QByteArray lines;
        for (int i = 0; i < 40; ++i) {
            lines += FoodLine(i % 2 == 0 ? "Zoups" : "Soups", "Soup", QByteArray::number(i));
        }
        Import(FoodFile(lines));
        QCOMPARE(Import(FoodFile(FoodLine("Zoups", "New", "one") + lines), EExisting::Skip),
                 QStringList{u"Imported 1 foods. Skipped 40 existing foods."_s});
    }

    void cancelKeepsWhatIsThere() {
        m_messages.progress.cancelAfterPumps = 2;
        QCOMPARE(Import(FoodFile(Numbered(0, 5))),
                 (QStringList{u"Import cancelled."_s, u"Imported 1 foods."_s}));
        QCOMPARE(TypesStored().size(), 1);
        QCOMPARE(m_messages.progress.captions, QStringList{u"Velmora: Import"_s});
        QCOMPARE(m_messages.progress.statuses, QStringList{u"Importing foods..."_s});
    }

    void theFileDialogMayBeLeft() {
        QVERIFY(!ImportCatalogue(*m_database, kFoods, EExisting::Skip));
        QCOMPARE(m_messages.choices.last().filterName, u"CSV file (*.csv)"_s);
        QCOMPARE(m_messages.choices.last().defaultExtension, u".csv"_s);
        m_messages.chosenFile = m_folder->filePath(u"absent.csv"_s);
        QVERIFY(!ImportCatalogue(*m_database, kFoods, EExisting::Skip));
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Cannot open file."_s});
    }

    void aFailedStoreStopsTheImportAndCountsNothingLost_data() {
        QTest::addColumn<bool>("diskFull");
        QTest::newRow("no room for a category") << false;
        QTest::newRow("disk full") << true;
    }
    void aFailedStoreStopsTheImportAndCountsNothingLost() {
        QFETCH(bool, diskFull);
        QStringList shown;
        if (diskFull) {
            const QString path = m_folder->filePath(u"many.csv"_s);
            Save(path, FoodFile(Numbered(0, 6000)));
            Limit(3'000'000);
            QVERIFY(!ImportCatalogueFile(*m_database, kFoods, EExisting::Skip, path));
            Limit(RLIM_INFINITY);
            shown = m_messages.TakeShown();
            QVERIFY(shown.contains(u"Import stopped."_s));
            shown.removeIf([](const QString& text) {
                return text == u"Import stopped."_s || text.startsWith(u"Cannot add food"_s);
            });
        } else {
            for (int i = 0; i < kMaximumCategories; ++i) {
                QVERIFY(AddCategory(*m_database, u"Category %1"_s.arg(i)) > 0);
            }
            shown = Import(FoodFile(FoodLine("Category 0", "a", "b") + Numbered(0, 2)));
            QCOMPARE(shown.takeAt(1), u"Cannot add food from line 5."_s);
            QCOMPARE(shown.takeAt(1), u"Import stopped."_s);
            shown.removeFirst();
        }
        m_database.reset();
        OpenDatabase();
        QCOMPARE(shown, QStringList{u"Imported %1 foods."_s.arg(m_database->Foods().Count())});
        // Groups of 4096: one fits into the space, the other is gone as a whole.
        QCOMPARE(m_database->Foods().Count(), diskFull ? 4096 : 1);
    }

    void picturesComeFromTheFolderAndNowhereElse() {
        const QByteArray bitmap = "BM" + QByteArray(12, 'h') + "pixels";
        QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
        for (const char* name : {"sub/Soups_L.bmp", "Out_L.bmp", "sub/Out_L.bmp"}) {
            Save(m_folder->filePath(QString::fromLatin1(name)), bitmap);
        }
        Save(m_folder->filePath(u"sub/Soups_S.bmp"_s), "GIF" + bitmap);
        const QString path = m_folder->filePath(u"sub/foods.csv"_s);
        Save(path, FoodFile(FoodLine("Soups", "a", "b") + FoodLine("../Out", "a", "b") +
                            FoodLine("..\\Out", "a", "b") + FoodLine("x/../Out", "a", "b")));
        QVERIFY(ImportCatalogueFile(*m_database, kFoods, EExisting::Skip, path));
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Imported 4 foods."_s});
        CCategory category;
        QVERIFY(m_database->Categories().Read(0, category));
        QCOMPARE(category.GetLargePicture(), "pixels" + QByteArray(14, '\0'));
        QCOMPARE(category.GetSmallPicture(), QByteArray());
        for (int i = 1; i < 4; ++i) {
            QVERIFY(m_database->Categories().Read(i, category));
            QCOMPARE(category.GetLargePicture(), QByteArray());
        }
    }

    void whatIsExportedIsWhatWasImported_data() {
        QTest::addColumn<QString>("path");
        QTest::newRow("starter") << QStringLiteral(VELMORA_STARTER_FOODS);
        QTest::newRow("real") << QStringLiteral(VELMORA_SHARED_DATA "/usda-foods.csv");
    }
    void whatIsExportedIsWhatWasImported() {
        QFETCH(QString, path);
        QByteArray bytes = Load(path);
        if (bytes.isEmpty()) {
            QSKIP("the file is not there");
        }
#ifdef __SANITIZE_ADDRESS__
        if (const qsizetype end = bytes.indexOf("\r\n1000,"); end >= 0) {
            bytes = bytes.first(end + 2) + "<End>\r\n";
        }
#endif
        QVERIFY(!Import(bytes).isEmpty());
        QVERIFY(m_database->SaveViewSettings(kFoods, CViewSettings()));
        QCOMPARE(Export({}), bytes);
        m_messages.TakeShown();
    }

    void eachChoiceHasItsOrder_data() {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QStringList>("types");
        QTest::newRow("all: as stored") << 0 << QStringList{u"b"_s, u"a"_s, u"c"_s};
        QTest::newRow("category: as listed") << 1 << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("selected: as given") << 2 << QStringList{u"c"_s, u"b"_s};
    }
    void eachChoiceHasItsOrder() {
        QFETCH(int, choice);
        Import(FoodFile(FoodLine("Soups", "Soup", "b") + FoodLine("Soups", "Soup", "a") +
                        FoodLine("Other", "Soup", "c")));
        const QByteArray file = Export({static_cast<EExportChoice>(choice), 1, {2, 0}});
        QStringList types;
        for (const QByteArray& line : file.split('\n')) {
            if (line.startsWith("000")) {
                types.append(QString::fromLatin1(line.split('"')[5]));
            }
        }
        QTEST(types, "types");
        QCOMPARE(m_messages.TakeShown().last(), u"Exported %1 foods."_s.arg(types.size()));
    }

    void nothingToExportIsSaidBeforeAnyFileIsAskedFor() {
        QVERIFY(m_database->SaveViewSettings(kFoods, CViewSettings()));
        for (const EExportChoice choice :
             {EExportChoice::All, EExportChoice::CurrentCategory, EExportChoice::Selected}) {
            QVERIFY(!ExportCatalogue(*m_database, kFoods, {choice, -1, {}}));
            QCOMPARE(m_messages.TakeShown(), QStringList{u"There are no foods found to export."_s});
        }
        QVERIFY(m_messages.choices.isEmpty());
    }

    void textsWithoutPlaceInTheFileAreReplaced() {
        CFoodItem food = MakeFood(77, u"Caf\u00e9 \u4f60"_s, u"x"_s);
        food.SetServingName(0, QString());
        QVERIFY(m_database->Foods().Write(-1, food));
        const QByteArray file = Export({});
        m_messages.TakeShown();
        // Code page 437 has e acute at 0x82. A serving without a name has no weight either.
        QVERIFY(file.contains("0000,\"Undefined (UID=77, IDX=-1)\",\"Caf\x82 ?\",\"x\",0.000,"));
        QVERIFY(file.contains(",\"\",0.000,\"\",0.000,"));
        QVERIFY(!file.contains("240"));
    }

    void aCancelledExportIsClosedProperly() {
        Import(FoodFile(Numbered(0, 5)));
        m_messages.progress.cancelAfterPumps = m_messages.progress.pumps + 2;
        const QByteArray file = Export({});
        QCOMPARE(m_messages.TakeShown(),
                 (QStringList{u"Export cancelled."_s, u"Exported 2 foods."_s}));
        QCOMPARE(file.count("\r\n"), 5);
        QVERIFY(file.endsWith("<End>\r\n"));
    }

    void anExportThatDoesNotFitKeepsTheOldFile() {
        Import(FoodFile(Numbered(0, 200)));
        const QString path = m_folder->filePath(u"old.csv"_s);
        Save(path, "old");
        Limit(50'000);
        const bool isWhole = ExportCatalogueFile(*m_database, kFoods, {}, path);
        Limit(RLIM_INFINITY);
        QVERIFY(!isWhole);
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Cannot create file."_s});
        QCOMPARE(Load(path), QByteArray("old"));
        QVERIFY(!ExportCatalogueFile(*m_database, kFoods, {}, u"/no such folder/x.csv"_s));
        QCOMPARE(m_messages.TakeShown(), QStringList{u"Cannot create file."_s});
    }

    void initTestCase() {
        std::signal(SIGXFSZ, SIG_IGN);
    }
    void init() {
        m_messages.progress = {};
        m_messages.choices.clear();
        m_messages.chosenFile.clear();
        m_folder = std::make_unique<QTemporaryDir>();
        OpenDatabase();
    }
    void cleanup() {
        m_database.reset();
        QCOMPARE(m_messages.TakeShown(), QStringList());
    }

  private:
    void OpenDatabase() {
        m_database = std::make_unique<CDatabase>(m_folder->filePath(u"v.db"_s));
        QVERIFY(m_database->OpenCatalogue());
    }
    /// What was shown.
    QStringList Import(const QByteArray& bytes, EExisting existing = EExisting::DoNotCheck) {
        m_messages.chosenFile = m_folder->filePath(u"in.csv"_s);
        Save(m_messages.chosenFile, bytes);
        ImportCatalogue(*m_database, kFoods, existing);
        return m_messages.TakeShown();
    }
    QByteArray Export(const CExportRequest& request) {
        m_messages.chosenFile = m_folder->filePath(u"out.csv"_s);
        ExportCatalogue(*m_database, kFoods, request);
        return Load(m_messages.chosenFile);
    }
    QStringList TypesStored() {
        QStringList types;
        CFoodItem food;
        for (int i = 0; m_database->Foods().ReadQuietly(i, food); ++i) {
            types.append(food.GetType());
        }
        return types;
    }
    static void Limit(rlim_t bytes) {
        rlimit limit{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
        limit.rlim_cur = bytes;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }

    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestFoodsExchange)
#include "TestFoodsExchange.moc"
