// Import and export of the exercise library over real files and a real volume.
#include "exercise/ExerciseFixture.h"

#include "catalogue/exchange/CsvExchange.h"
#include "support/DataRows.h"
#include "support/Files.h"

namespace {
QByteArray ExerciseFile(const QByteArray& lines) {
    return "<Exercises>\r\n"
           "NDB_No,Category,Exercise name,Exercise type,Energy (MET),Energy (kcal/min)\r\n" +
           lines + "<End>\r\n";
}
}  // namespace

class TestExlibExchange : public CExercisesTest {
    Q_OBJECT

  private slots:
    void linesAreTakenOrSkippedWithOrWithoutAWord_data() {
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
    void linesAreTakenOrSkippedWithOrWithoutAWord() {
        const auto& [line, outcome] = DataRow<QByteArray, QString>();
        const QString said = Import(ExerciseFile(line + "\r\n"));
        const bool isTaken = outcome.contains(u'/');
        const bool isError = !isTaken && !outcome.isEmpty();
        // The line is the third of the file; messages name the next number.
        QCOMPARE(said, (isError ? outcome + u" in line 4. Skipped.|"_s : QString()) +
                           u"Imported %1 exercises."_s.arg(isTaken ? 1 : 0));
        QCOMPARE(Stored(), isTaken ? outcome : QString());
        // A skipped line leaves the category that it names.
        const bool namesCategory = isTaken || outcome.contains(u"exercise"_s);
        QCOMPARE(Database().Categories().Find(kExercises, u"Sport"_s) >= 0, namesCategory);
    }

    void aFullStoreStopsTheImport() {
        for (int i = 0; i < kMaximumCategories; ++i) {
            QVERIFY(AddCategory(Database(), u"Category %1"_s.arg(i)) > 0);
        }
        QVERIFY(Import(ExerciseFile("1,Sport,Run,fast,8,0\r\n"))
                    .endsWith(u"|Cannot add exercise from line 4.|Import stopped.|"
                              "Imported 0 exercises."));
    }

    void anExportWritesEveryRateAndTheLostCategory() {
        AddToLibrary(Database(), 77, u"Row"_s, u"hard"_s, 9.1234, 0);
        Import(ExerciseFile("1,Sport,Run,fast,8.5,0\r\n"));
        QCOMPARE(Export(), ExerciseFile("0000,\"Sport\",\"Run\",\"fast\",8.500,0.000,\r\n"
                                        "0001,\"Undefined\",\"Row\",\"hard\",0.000,9.123,\r\n"));
        QCOMPARE(m_messages->Said(), u"Exported 2 exercises."_s);
        m_messages->progress.cancelAfterPumps = m_messages->progress.pumps + 1;
        QCOMPARE(Export(), ExerciseFile("0000,\"Sport\",\"Run\",\"fast\",8.500,0.000,\r\n"));
        QCOMPARE(m_messages->Said(), u"Export cancelled."_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    QString Import(const QByteArray& bytes) {
        Save(Path(u"in.csv"_s), bytes);
        ImportCatalogueFile(Database(), kExercises, EExisting::DoNotCheck, Path(u"in.csv"_s));
        return m_messages->Said();
    }
    QByteArray Export() {
        ExportCatalogueFile(Database(), kExercises, {}, Path(u"out.csv"_s));
        return Load(Path(u"out.csv"_s));
    }
    /// "category/name/type/MET/rate", an item between two '|'.
    QString Stored() {
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
};

QTEST_GUILESS_MAIN(TestExlibExchange)
#include "TestExlibExchange.moc"
