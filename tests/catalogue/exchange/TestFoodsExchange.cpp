// Import and export of foods and exercises over real files and a real volume.
#include <sys/stat.h>

#include <QDir>

#include "catalogue/exchange/CsvExchange.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
/// A line of 78 fields. `numbers` stands for the 54 nutrient values; "7.000" by default.
QByteArray FoodLine(const QByteArray& category, const QByteArray& name, const QByteArray& type,
                    const QByteArray& number = "7.000",
                    const QByteArray& servings = "\"1 cup\",240.000,") {
    const QByteArray emptyServing = "\"\",0.000,";
    const auto given = servings.count(',') / 2;
    return "0000,\"" + category + "\",\"" + name + "\",\"" + type + "\"," +
           (number + ',').repeated(kNutrientCount) + servings +
           emptyServing.repeated(kServingCount - given) + "\r\n";
}

QByteArray FoodFile(const QByteArray& lines) {
    return "<Foods>\r\nNDB_No,Category\r\n" + lines + "<End>\r\n";
}

QByteArray ExerciseFile(const QByteArray& lines) {
    return "<Exercises>\r\n"
           "NDB_No,Category,Exercise name,Exercise type,Energy (MET),Energy (kcal/min)\r\n" +
           lines + "<End>\r\n";
}

QByteArray Numbered(int from, int count) {
    QByteArray lines;
    for (int i = from; i < from + count; ++i) {
        lines += FoodLine("Soups", "Soup", "number " + QByteArray::number(i));
    }
    return lines;
}
}  // namespace

class TestFoodsExchange : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void linesAreSkippedWithOrWithoutAWord_data() {
        const QByteArray good = FoodLine("Soups", "Soup", "thin");
        const QByteArray cut = "1,Soups,Soup,thin," + QByteArray("1.0,").repeated(54) + "\r\n";
        AddRows<QByteArray, QString>({
            {"name", FoodLine("Soups", "", "thin"), u"Invalid food name"_s},
            {"type", FoodLine("Soups", "Soup", " "), u"Invalid food type"_s},
            {"name before count", "1,Soups,,x,\r\n", u"Invalid food name"_s},
            {"58 fields", cut, u"Invalid number of fields (58)"_s},
            {"3 fields", "1,Soups,Soup\r\n", u"Invalid number of fields (3)"_s},
            {"2 fields", "1,Soups\r\n", {}},
            {"no category", FoodLine("", "Soup", "thin"), {}},
            {"no number", good.sliced(4).prepend("\"\""), {}},
            {"header again", "NDB_No,Category,Food name\r\n", {}},
            {"blank", "\r\n", {}},
        });
    }
    void linesAreSkippedWithOrWithoutAWord() {
        const auto& [line, reason] = DataRow<QByteArray, QString>();
        // The line is the third of the file; foods name the next number.
        QCOMPARE(Import(FoodFile(line + FoodLine("Stews", "Stew", "thick"))),
                 (reason.isEmpty() ? QString() : reason + u" in line 4. Skipped.|"_s) +
                     u"Imported 1 foods."_s);
        QCOMPARE(TypesStored(), QStringList{u"thick"_s});
        // A refused line leaves the category that it names.
        QVERIFY(reason.isEmpty() || Database().Categories().Find(kFoods, u"Soups"_s) >= 0);
    }

    void anErrorTooManyStopsTheImport() {
        const QByteArray error = FoodLine("Soups", "", "x");
        const QByteArray borne = Numbered(0, 1) + error.repeated(10);
        QVERIFY(
            Import(FoodFile(borne + Numbered(1, 1))).endsWith(u"14. Skipped.|Imported 2 foods."));
        QVERIFY(Import(FoodFile(borne + error + Numbered(1, 1)))
                    .endsWith(u"15. Skipped.|Too many errors. Import stopped.|Imported 1 foods."));
    }

    void aFileOutOfShapeDoesNoHarm_data() {
        const QByteArray line = FoodLine("Soups", "Soup", "thin");
        AddRows<QByteArray, int>({
            {"empty", {}, 0},
            {"header only", FoodFile(""), 0},
            {"no marker", line, 0},
            {"wrong marker", "<Menus>\r\n" + line, 0},
            {"no end marker", "<Foods>\r\n" + line, 1},
            {"behind the end marker", FoodFile(line) + line, 1},
            {"unix line ends, quoted marker",
             QByteArray("\"<Foods>\"\n" + line).replace("\r\n", "\n"), 1},
            {"NUL bytes", FoodFile(FoodLine(QByteArray("So\0up", 5), "a", "b")), 1},
            {"10 MB without a comma", FoodFile(QByteArray(10'000'000, 'x') + "\r\n" + line), 1},
            {"quote without partner", FoodFile("1,\"Soups,Soup\r\n1,\"\r\n" + line), 1},
        });
    }
    void aFileOutOfShapeDoesNoHarm() {
        const auto& [file, foods] = DataRow<QByteArray, int>();
        QVERIFY(Import(file).endsWith(u"Imported %1 foods."_s.arg(foods)));
        QCOMPARE(TypesStored().size(), foods);
    }

    void serving1DecidesTheMode_data() {
        const QByteArray longName = '"' + QByteArray(64, 'x') + "\",";
        AddRows<QByteArray, QStringList>({
            {"weighed", "\"1 cup\",240.000,\"1 oz\",28.350,", {u"1 cup=240"_s, u"1 oz=28.35"_s}},
            {"one serving drops the others", "\"1 cup\",0.000,\"1 oz\",28.350,", {u"1 cup=0"_s}},
            {"no name, no weight", "\"\",240.000,\"1 oz\",28.350,", {u"one serving=0"_s}},
            {"name of 64", longName + "240.000,", {u"one serving=0"_s}},
            {"later name of 64", "\"1 cup\",240.000," + longName + "5.000,", {u"1 cup=240"_s}},
        });
    }
    void serving1DecidesTheMode() {
        const auto& [servings, expected] = DataRow<QByteArray, QStringList>();
        Import(FoodFile(FoodLine("Soups", "Soup", "thin", "1.000", servings)));
        CFoodItem food;
        QVERIFY(Database().Foods().Read(0, food));
        QStringList stored;
        for (int i = 0; i < kServingCount; ++i) {
            if (!food.GetServingName(i).isEmpty() || food.GetServingWeight(i) != 0) {
                stored.append(u"%1=%2"_s.arg(food.GetServingName(i)).arg(food.GetServingWeight(i)));
            }
        }
        QCOMPARE(stored, expected);
    }

    void longTextsAreCutAndFieldsPastTheLastIgnored() {
        const QByteArray text(128, 'x');
        const QByteArray line =
            FoodLine(text, text, text.first(127)).chopped(2) + "more,fields,\r\n";
        QCOMPARE(Import(FoodFile(line)), u"Imported 1 foods."_s);
        const QString cut = QString(124, u'x') + u"..."_s;
        CFoodItem food;
        QVERIFY(Database().Foods().Read(0, food));
        QCOMPARE(food.GetName(), cut);
        QCOMPARE(food.GetType(), QString(127, u'x'));
        QCOMPARE(Database().Categories().NameOf(kFoods, food.GetCategoryId()), cut);
    }

    void existingFoodsAreTreatedAsChosen_data() {
        AddRows<int, QString, QList<double>>({
            // Two foods are there with 7; the file brings 9 for both, one of them twice, and a
            // third.
            {"overwrite", 0, u"Imported 4 foods. Replaced 3 existing foods."_s, {9, 9, 9}},
            {"skip", 1, u"Imported 1 foods. Skipped 3 existing foods."_s, {7, 7, 9}},
            {"do not check", 2, u"Imported 4 foods."_s, {7, 7, 9, 9, 9, 9}},
        });
    }
    void existingFoodsAreTreatedAsChosen() {
        const auto& [existing, summary, expected] = DataRow<int, QString, QList<double>>();
        Import(FoodFile(FoodLine("Soups", "Soup", "thin") + FoodLine("Soups", "Soup", "thick")));
        const QByteArray lines =
            FoodLine("Soups", "Soup", "thick", "9") + FoodLine("Soups", "Soup", "thin", "9") +
            FoodLine("Soups", "Soup", "Thin", "9") + FoodLine("Soups", "Soup", "thin", "9");
        QCOMPARE(Import(FoodFile(lines), static_cast<EDuplicatePolicy>(existing)), summary);
        QList<double> values;
        CFoodItem food;
        for (int i = 0; Database().Foods().Read(i, food); ++i) {
            values.append(food.GetNutrientValue(0));
        }
        QCOMPARE(values, expected);
    }

    void foodsAddedByTheRunAreFoundAmongOthers() {
        // Categories take turns, so every added food moves the positions of the later category.
        QByteArray lines;
        for (int i = 0; i < 40; ++i) {
            lines += FoodLine(i % 2 == 0 ? "Zoups" : "Soups", "Soup", QByteArray::number(i));
        }
        Import(FoodFile(lines));
        QCOMPARE(Import(FoodFile(FoodLine("Zoups", "New", "one") + lines), EDuplicatePolicy::Skip),
                 u"Imported 1 foods. Skipped 40 existing foods."_s);
    }

    void cancelKeepsWhatIsThere() {
        m_messages->progress.cancelAfterPumps = 2;
        QCOMPARE(Import(FoodFile(Numbered(0, 5))), u"Import cancelled.|Imported 1 foods."_s);
        QCOMPARE(TypesStored().size(), 1);
        QCOMPARE(m_messages->progress.captions, QStringList{u"Velmora: Import"_s});
        QCOMPARE(m_messages->progress.statuses, QStringList{u"Importing foods..."_s});
    }

    void waitingForAPipeCanBeCancelled() {
        QCOMPARE(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
        m_messages->progress.cancelAfterPumps = 2;
        QVERIFY(!ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Skip, Path(u"pipe"_s)));
        QCOMPARE(m_messages->Said(), u"Import cancelled.|Imported 0 foods."_s);
    }

    void theFileDialogMayBeLeft() {
        QVERIFY(!ImportCatalogue(Database(), kFoods, EDuplicatePolicy::Skip));
        QCOMPARE(m_messages->choices.last().filterName, u"CSV file (*.csv)"_s);
        QCOMPARE(m_messages->choices.last().defaultExtension, u".csv"_s);
        m_messages->chosenFile = Path(u"absent.csv"_s);
        QVERIFY(!ImportCatalogue(Database(), kFoods, EDuplicatePolicy::Skip));
        QCOMPARE(m_messages->Said(), u"Cannot open file."_s);
    }

    void aCategoryWithoutRoomStopsTheImport() {
        for (int i = 0; i < kMaximumCategories; ++i) {
            QVERIFY(AddCategory(Database(), u"Category %1"_s.arg(i)) > 0);
        }
        QVERIFY(Import(FoodFile(FoodLine("Category 0", "a", "b") + Numbered(0, 2)))
                    .endsWith(u"|Cannot add food from line 5.|Import stopped.|Imported 1 foods."));
        QCOMPARE(TypesStored(), QStringList{u"b"_s});
        QVERIFY(Import(ExerciseFile("1,Sport,Run,fast,8,0\r\n"), EDuplicatePolicy::Skip, kExercises)
                    .endsWith(u"|Cannot add exercise from line 4.|Import stopped.|"
                              "Imported 0 exercises."));
    }

    void aFullDiskStopsTheImportAndCountsNothingLost() {
        const QString path = Path(u"many.csv"_s);
        Save(path, FoodFile(Numbered(0, 6000)));
        {
            const CFileSizeLimit limit(3'000'000);
            QVERIFY(!ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Skip, path));
        }
        const QStringList shown = m_messages->TakeShown();
        QVERIFY(shown.contains(u"Import stopped."_s));
        // Groups of 4096: one fits into the space, the other is gone as a whole.
        QCOMPARE(shown.last(), u"Imported 4096 foods."_s);
        Reopen();
        QCOMPARE(Database().Foods().Count(), 4096);
    }

    void picturesComeFromTheFolderAndNowhereElse() {
        const QByteArray bitmap = "BM" + QByteArray(12, 'h') + "pixels";
        QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
        for (const QString& name : {u"sub/Soups_L.bmp"_s, u"Out_L.bmp"_s, u"sub/Out_L.bmp"_s}) {
            Save(Path(name), bitmap);
        }
        Save(Path(u"sub/Soups_S.bmp"_s), "GIF" + bitmap);
        QByteArray lines;
        for (const char* category : {"Soups", "../Out", "..\\Out", "x/../Out"}) {
            lines += FoodLine(category, "a", "b");
        }
        Save(Path(u"sub/foods.csv"_s), FoodFile(lines));
        QVERIFY(ImportCatalogueFile(Database(), kFoods, EDuplicatePolicy::Skip,
                                    Path(u"sub/foods.csv"_s)));
        QCOMPARE(m_messages->Said(), u"Imported 4 foods."_s);
        CCategory category;
        for (int i = 0; i < 4; ++i) {
            QVERIFY(Database().Categories().Read(i, category));
            QCOMPARE(category.GetLargePicture(),
                     i == 0 ? "pixels" + QByteArray(14, '\0') : QByteArray());
            QCOMPARE(category.GetSmallPicture(), QByteArray());
        }
    }

    void eachChoiceHasItsOrder() {
        Import(FoodFile(FoodLine("Soups", "Soup", "b") + FoodLine("Soups", "Soup", "a") +
                        FoodLine("Other", "Soup", "c")));
        QVERIFY(Database().ViewSettings(kFoods).Save(CViewSettings()));
        const std::pair<EExportChoice, QStringList> rows[] = {
            {EExportChoice::All, {u"b"_s, u"a"_s, u"c"_s}},      // as stored
            {EExportChoice::CurrentCategory, {u"a"_s, u"b"_s}},  // as listed
            {EExportChoice::Selected, {u"c"_s, u"b"_s}},         // as given
        };
        for (const auto& [choice, expected] : rows) {
            QStringList types;
            for (const QByteArray& line : Export({choice, 1, {2, 0}}).split('\n')) {
                if (line.startsWith("000")) {
                    types.append(QString::fromLatin1(line.split('"')[5]));
                }
            }
            QCOMPARE(types, expected);
            QCOMPARE(m_messages->TakeShown().last(), u"Exported %1 foods."_s.arg(types.size()));
        }
    }

    void aCategoryIsExportedWholeExceptForExercises() {
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < 1026; ++i) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(1, QString::number(i), u"raw"_s)));
            CExerciseItem exercise;
            exercise.SetCategoryId(1);
            QVERIFY(Database().Exlib().Write(-1, exercise));
        }
        QVERIFY(group.Commit());
        const CExportRequest category{EExportChoice::CurrentCategory, 1, {}};
        const QString path = Path(u"out.csv"_s);
        QVERIFY(ExportCatalogueFile(Database(), kFoods, category, path));
        QCOMPARE(m_messages->Said(), u"Exported 1026 foods."_s);
        QVERIFY(ExportCatalogueFile(Database(), kExercises, category, path));
        QCOMPARE(m_messages->Said(), u"Exported 1024 exercises."_s);
        QCOMPARE(m_messages->details,
                 QStringList{u"Only 1024 of 1026 exercises are listed and exported."_s});
    }

    void damageIsToldWithTheSummary() {
        Import(FoodFile(FoodLine("Soups", "Soup", "b") + FoodLine("Soups", "Soup", "a") +
                        FoodLine("Soups", "Soup", "c")));
        m_messages->TakeShown();
        QVERIFY(Database().ViewSettings(kFoods).Save(CViewSettings()));
        Damage(Database().Foods(), 1);
        const QString path = Path(u"out.csv"_s);
        for (const CExportRequest& request : {CExportRequest{},
                                              {EExportChoice::CurrentCategory, 1, {}},
                                              {EExportChoice::Selected, 1, {0, 1, 2}}}) {
            QVERIFY(!ExportCatalogueFile(Database(), kFoods, request, path));
            QCOMPARE(m_messages->Said(), u"Exported 2 foods."_s);
            QCOMPARE(std::exchange(m_messages->details, {}),
                     QStringList{u"1 damaged food is left out."_s});
        }
        Damage(Database().Foods(), 0);
        Damage(Database().Foods(), 2);
        QVERIFY(!ExportCatalogueFile(Database(), kFoods, {EExportChoice::CurrentCategory, 1, {}},
                                     path));
        QCOMPARE(m_messages->Said(), u"There are no foods found to export."_s);
        QCOMPARE(m_messages->details.takeLast(), u"3 damaged foods are left out."_s);
        // The positions themselves.
        Change("UPDATE blocks SET ordinal=0");
        QVERIFY(!ExportCatalogueFile(Database(), kFoods, {}, path));
        QCOMPARE(m_messages->details.last(),
                 u"Part of the database is damaged: foods may be missing."_s);
        m_messages->TakeShown();
    }

    void nothingToExportIsSaidBeforeAnyFileIsAskedFor() {
        QVERIFY(Database().ViewSettings(kFoods).Save(CViewSettings()));
        for (const EExportChoice choice :
             {EExportChoice::All, EExportChoice::CurrentCategory, EExportChoice::Selected}) {
            QVERIFY(!ExportCatalogue(Database(), kFoods, {choice, -1, {}}));
            QCOMPARE(m_messages->Said(), u"There are no foods found to export."_s);
        }
        QVERIFY(m_messages->choices.isEmpty());
    }

    void textsWithoutPlaceInTheFileAreReplaced() {
        CFoodItem food = MakeFood(77, u"Caf\u00e9 \u4f60"_s, u"x"_s);
        food.SetServingName(0, QString());
        QVERIFY(Database().Foods().Write(-1, food));
        const QByteArray file = Export({});
        m_messages->TakeShown();
        // Code page 437 has e acute at 0x82. A serving without a name has no weight either.
        QVERIFY(file.contains("0000,\"Undefined (UID=77, IDX=-1)\",\"Caf\x82 ?\",\"x\",0.000,"));
        QVERIFY(file.contains(",\"\",0.000,\"\",0.000,"));
        QVERIFY(!file.contains("240"));
    }

    void namesThatCannotComeBackAreNamedWithTheSummary() {
        const qint32 category = AddCategory(Database(), u"\"Raw\", cold"_s);
        for (const QString& name :
             {u"The \"best\" soup"_s, u"5\", deep"_s, u"Say \"no\""_s, u"\"No\" again"_s}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(category, name, u"x"_s)));
        }
        Export({});
        QCOMPARE(m_messages->Said(),
                 u"Exported 4 foods.|Names that an import will change because of their quotes (4): "
                 "'\"Raw\", cold', '5\", deep', 'Say \"no\"', ..."_s);
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Warning);
        // The line of a value that needs so many digits.
        CFoodItem food = MakeFood(category, u"Sun"_s, u"hot"_s);
        for (int nutrient = 0; nutrient < 13; ++nutrient) {
            food.SetNutrientValue(nutrient, 1e307);
        }
        QVERIFY(Database().Foods().Write(-1, food));
        Export({EExportChoice::Selected, -1, {4}});
        QVERIFY(m_messages->Said().endsWith(
            u"|Items whose lines are too long for an import (1): 'Sun'"));
    }

    void aCancelledExportIsClosedProperly() {
        Import(FoodFile(Numbered(0, 5)));
        m_messages->progress.cancelAfterPumps = m_messages->progress.pumps + 2;
        const QByteArray file = Export({});
        QCOMPARE(m_messages->Said(), u"Export cancelled.|Exported 2 foods."_s);
        QCOMPARE(file.count("\r\n"), 5);
        QVERIFY(file.endsWith("<End>\r\n"));
    }

    void theVolumeIsNoTargetAndNeitherIsItsJournal() {
        Import(FoodFile(Numbered(0, 1)));
        const auto stored = [this] {
            return Load(Path(u"v.db"_s)) + Load(Path(u"v.db-journal"_s));
        };
        const QByteArray before = stored();
        QVERIFY(QDir(m_folder->path()).mkdir(u"sub"_s));
        QVERIFY(QFile::link(Path(u"v.db-journal"_s), Path(u"link.csv"_s)));
        QVERIFY(QFile::link(Path(u"sub"_s), Path(u"linked"_s)));
        for (const QString& name : {u"v.db"_s, u"v.db-journal"_s, u"sub/../v.db-journal"_s,
                                    u"linked/../v.db-journal"_s, u"link.csv"_s}) {
            QVERIFY2(!ExportCatalogueFile(Database(), kFoods, {}, Path(name)), qPrintable(name));
            QCOMPARE(m_messages->Said(), u"Cannot create file."_s);
        }
        QVERIFY(stored() == before);
        QVERIFY(ExportCatalogueFile(Database(), kFoods, {}, Path(u"sub/v.db-journal"_s)));
        QCOMPARE(m_messages->Said(), u"Exported 1 foods."_s);
    }

    void anExportThatDoesNotFitKeepsTheOldFile() {
        Import(FoodFile(Numbered(0, 200)));
        const QString path = Path(u"old.csv"_s);
        Save(path, "old");
        {
            const CFileSizeLimit limit(50'000);
            QVERIFY(!ExportCatalogueFile(Database(), kFoods, {}, path));
        }
        QCOMPARE(Load(path), QByteArray("old"));
        QVERIFY(!ExportCatalogueFile(Database(), kFoods, {}, u"/no such folder/x.csv"_s));
        QCOMPARE(m_messages->TakeShown(), QStringList(2, u"Cannot create file."_s));
    }

    void exercisesAreTakenOrSkippedWithOrWithoutAWord_data() {
        AddRows<QByteArray, QString>({
            {"MET", "7,Sport,Run,fast,8.5,0", u"Sport/Run/fast/8.5/0"_s},
            {"kcal a minute", "7,Sport,Run,fast,0.000,12.25,", u"Sport/Run/fast/0/12.25"_s},
            {"no number", ",Sport,Run,\"up, down\",8,0,more", u"Sport/Run/up, down/8/0"_s},
            {"no rates", "7,Sport,Run,fast", u"Sport/Run/fast/0/0"_s},
            {"category", "7,,Run,fast,8,0", u"Invalid category name"_s},
            {"name", "7,Sport,\"\",fast,8,0", u"Invalid exercise name"_s},
            {"blanks", "7,\" Sport \",Run ,\" fast \",8,0", u"Sport/Run/fast/8/0"_s},
            {"blanks in inner quotes", "7,Sport,\"\" Run \"\",\"fast\",8,0",
             u"Sport/ Run /fast/8/0"_s},
            {"type", "7,Sport,Run,\" \",8,0", u"Invalid exercise type"_s},
            {"2 fields", "7,Sport", u"Invalid exercise name"_s},
            {"1 field", "7", {}},
            {"blank", "", {}},
            {"header again", "NDB_No,Sport,Run,fast,8,0", {}},
        });
    }
    void exercisesAreTakenOrSkippedWithOrWithoutAWord() {
        const auto& [line, outcome] = DataRow<QByteArray, QString>();
        const QString said =
            Import(ExerciseFile(line + "\r\n"), EDuplicatePolicy::DoNotCheck, kExercises);
        const bool isTaken = outcome.contains(u'/');
        const bool isError = !isTaken && !outcome.isEmpty();
        // The line is the third of the file; messages name the next number.
        QCOMPARE(said, (isError ? outcome + u" in line 4. Skipped.|"_s : QString()) +
                           u"Imported %1 exercises."_s.arg(isTaken ? 1 : 0));
        QCOMPARE(ExercisesStored(), isTaken ? outcome : QString());
        // A skipped line leaves the category that it names.
        const bool namesCategory = isTaken || outcome.contains(u"exercise"_s);
        QCOMPARE(Database().Categories().Find(kExercises, u"Sport"_s) >= 0, namesCategory);
    }

    void exercisesAreWrittenWithEveryRateAndTheLostCategory() {
        CExerciseItem row;
        row.SetCategoryId(77);
        row.SetName(u"Row"_s);
        row.SetType(u"hard"_s);
        row.SetEnergyRateKcalPerMinute(9.1234);
        QVERIFY(Database().Exlib().Write(-1, row));
        Import(ExerciseFile("1,Sport,Run,fast,8.5,0\r\n"), EDuplicatePolicy::DoNotCheck,
               kExercises);
        QCOMPARE(Export({}, kExercises),
                 ExerciseFile("0000,\"Sport\",\"Run\",\"fast\",8.500,0.000,\r\n"
                              "0001,\"Undefined\",\"Row\",\"hard\",0.000,9.123,\r\n"));
        QCOMPARE(m_messages->Said(), u"Exported 2 exercises."_s);
        m_messages->progress.cancelAfterPumps = m_messages->progress.pumps + 1;
        QCOMPARE(Export({}, kExercises),
                 ExerciseFile("0000,\"Sport\",\"Run\",\"fast\",8.500,0.000,\r\n"));
        QCOMPARE(m_messages->Said(), u"Export cancelled."_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    /// What was shown.
    QString Import(const QByteArray& bytes,
                   EDuplicatePolicy existing = EDuplicatePolicy::DoNotCheck,
                   ECatalogueKind kind = kFoods) {
        m_messages->chosenFile = Path(u"in.csv"_s);
        Save(m_messages->chosenFile, bytes);
        ImportCatalogue(Database(), kind, existing);
        return m_messages->Said();
    }
    QByteArray Export(const CExportRequest& request, ECatalogueKind kind = kFoods) {
        m_messages->chosenFile = Path(u"out.csv"_s);
        ExportCatalogue(Database(), kind, request);
        return Load(m_messages->chosenFile);
    }
    /// "category/name/type/MET/rate", an item between two '|'.
    QString ExercisesStored() {
        QStringList items;
        CExerciseItem item;
        for (int i = 0; Database().Exlib().ReadQuietly(i, item); ++i) {
            items.append(u"%1/%2/%3/%4/%5"_s.arg(
                Database().Categories().NameOf(kExercises, item.GetCategoryId()), item.GetName(),
                item.GetType(), QString::number(item.GetMet()),
                QString::number(item.GetEnergyRateKcalPerMinute())));
        }
        return items.join(u'|');
    }
    QStringList TypesStored() {
        QStringList types;
        CFoodItem food;
        for (int i = 0; Database().Foods().ReadQuietly(i, food); ++i) {
            types.append(food.GetType());
        }
        return types;
    }
};

QTEST_GUILESS_MAIN(TestFoodsExchange)
#include "TestFoodsExchange.moc"
