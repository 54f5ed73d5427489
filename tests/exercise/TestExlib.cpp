// The exercise library without its windows: exchange over real files, and the edit dialog's rules.
#include "ExerciseFixture.h"

#include "catalogue/CsvExchange.h"
#include "exercise/ExlibRules.h"
#include "support/DataRows.h"
#include "support/Files.h"

namespace {
constexpr auto kExercises = ECatalogueKind::Exercises;

QByteArray ExerciseFile(const QByteArray& lines) {
    return "<Exercises>\r\n"
           "NDB_No,Category,Exercise name,Exercise type,Energy (MET),Energy (kcal/min)\r\n" +
           lines + "<End>\r\n";
}
}  // namespace

class TestExlib : public CExercisesTest {
    Q_OBJECT

  private slots:
    void linesAreTakenOrSkippedWithOrWithoutAWord_data() {
        // The line is the third of the file; messages name the next number.
        AddRows<QByteArray, QString>({
            {"MET", "7,Sport,Run,fast,8.5,0", u"Sport/Run/fast/8.5/0"_s},
            {"kcal a minute", "7,Sport,Run,fast,0.000,12.25,", u"Sport/Run/fast/0/12.25"_s},
            {"no number", ",Sport,Run,\"up, down\",8,0,more", u"Sport/Run/up, down/8/0"_s},
            {"no rates", "7,Sport,Run,fast", u"Sport/Run/fast/0/0"_s},
            {"category", "7,,Run,fast,8,0", u"Invalid category name in line 4. Skipped."_s},
            {"name", "7,Sport,\"\",fast,8,0", u"Invalid exercise name in line 4. Skipped."_s},
            {"blanks", "7,\" Sport \",Run ,\" fast \",8,0", u"Sport/Run/ fast /8/0"_s},
            {"type", "7,Sport,Run,\" \",8,0", u"Invalid exercise type in line 4. Skipped."_s},
            {"2 fields", "7,Sport", u"Invalid exercise name in line 4. Skipped."_s},
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
        QCOMPARE(said, (isError ? outcome + u'|' : QString()) +
                           u"Imported %1 exercises."_s.arg(isTaken ? 1 : 0));
        QCOMPARE(Stored(), isTaken ? outcome : QString());
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

    void realExercisesComeOutAsTheyWentIn() {
        const QByteArray source =
            Load(QStringLiteral(VELMORA_SHARED_DATA "/compendium-exercises.csv"));
        if (source.isEmpty()) {
            QSKIP("the large exercise file is not here");
        }
        QCOMPARE(Import(source), u"Imported 820 exercises."_s);
        QVERIFY(Export() == source);
        QCOMPARE(m_messages->Said(), u"Exported 820 exercises."_s);
        QCOMPARE(Import(source, EExisting::Skip),
                 u"Imported 0 exercises. Skipped 820 existing exercises."_s);
    }

    void scriptsSeeBothRates() {
        Import(ExerciseFile("1,Sport,Run,fast,8.5,0\r\n1,Sport,Row,hard,0,9.25\r\n"));
        m_doc.reset();
        const auto run = [this](const QString& command) {
            return Scripted(Path(u"v.db"_s), u"exlib "_s + command);
        };
        const QString header = u"0|category\tname\ttype\tkcal_per_minute\tmet\n"_s;
        const QString fast = u"Sport\tRun\tfast\t0\t8.5\n"_s;
        QCOMPARE(run(u"list --category Sport"_s), header + u"Sport\tRow\thard\t9.25\t0\n"_s + fast);
        QCOMPARE(run(u"find R --type FAST"_s), header + fast);
        QCOMPARE(run(u"find swim"_s), u"1|Exercise not found.\n"_s);
        const QString file = Path(u"out.csv"_s);
        QCOMPARE(run(u"export --category Sport "_s + file), u"0|Exported 2 exercises.\n"_s);
        QCOMPARE(run(u"import --existing overwrite "_s + file),
                 u"0|Imported 2 exercises. Replaced 2 existing exercises.\n"_s);
    }

    void theDialogRefusesInOrder() {
        QCOMPARE(AddCategory(Database(), u"Sport"_s, kExercises), 1);
        for (const QString& type : {u"fast"_s, u"slow"_s}) {
            AddToLibrary(Database(), 1, u"Run"_s, type, 0, 8);
        }
        const auto refusal = [this](const CExlibFields& fields) {
            CExerciseItem item;
            return TakeExlibFields(Database(), {}, fields, 0, item).value_or(u"taken"_s);
        };
        const QString run = u" Run"_s;
        QCOMPARE(refusal({-1, {}, {}, {}}), u"There is no category selected."_s);
        QCOMPARE(refusal({1, u" "_s, {}, {}}), u"Please enter exercise name"_s);
        QCOMPARE(refusal({1, run, u" "_s, {}}), u"Please enter exercise type"_s);
        QCOMPARE(refusal({1, run, u"slow "_s, {}}),
                 u"Exercise 'Run, slow' already exists in category 'Sport'."_s);
        QCOMPARE(refusal({1, run, u"fast"_s, u" "_s}), u"Please enter exercise energy value"_s);
        QCOMPARE(refusal({1, run, u"fast"_s, u"much"_s}), u"taken"_s);  // itself, no number
        QCOMPARE(refusal({2, run, u"slow"_s, u"1"_s}), u"taken"_s);     // another category
    }

    void oneRatingIsStoredAndTheOtherIsNone() {
        const auto stored = [this](EEnergyUnit unit, bool isMet, const QString& text) {
            CExerciseItem item;
            item.SetEnergyRateKcalPerMinute(10.0004);
            item.SetMet(3);
            CPreferences preferences;
            preferences.energyUnit = unit;
            const CExlibFields fields{1, u"Run"_s, u"fast"_s, text, isMet};
            (void)TakeExlibFields(Database(), preferences, fields, -1, item);
            return u"%1 %2 MET"_s.arg(item.GetEnergyRateKcalPerMinute()).arg(item.GetMet());
        };
        using enum EEnergyUnit;
        QCOMPARE(stored(Kcal, false, u"12.5"_s), u"12.5 0 MET"_s);
        QCOMPARE(stored(KJ, false, u"100"_s), u"23.9234 0 MET"_s);  // 100 / 4.18
        QCOMPARE(stored(Kcal, true, u"8.5 or so"_s), u"0 8.5 MET"_s);
        QCOMPARE(stored(Kcal, false, u"much"_s), u"0 0 MET"_s);
        // As it was filled: 10.0004 x 4.18 = 41.801...
        QCOMPARE(stored(KJ, false, u"41.80"_s), u"10.0004 0 MET"_s);
        QCOMPARE(stored(KJ, true, u"41.80"_s), u"0 41.8 MET"_s);
    }

    void listsSayWhyTheyAreEmptyAndThenWhatTheyHold() {
        QCOMPARE(Offered({}),
                 u"There are no categories to select.|There is no category selected.|"
                 "There is no category selected."_s);
        const CExlibFields run{AddCategory(Database(), u"Sport"_s, kExercises), u"Run "_s, {}, {}};
        QCOMPARE(Offered(run),
                 u"Category: Sport|There are no names to select.|There are no types to select."_s);
        for (const auto& [name, type] : {std::pair("Run", "slow"), {"Run", "fast"}, {"row", "-"}}) {
            AddToLibrary(Database(), 1, QLatin1StringView(name), QLatin1StringView(type), 0, 8);
        }
        QCOMPARE(Offered(run), u"Category: Sport|Name: row, Run|Name: fast, slow"_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    QString Import(const QByteArray& bytes, EExisting existing = EExisting::DoNotCheck) {
        Save(Path(u"in.csv"_s), bytes);
        ImportCatalogueFile(Database(), kExercises, existing, Path(u"in.csv"_s));
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
                Database().CategoryNameOf(kExercises, item.GetCategoryId()), item.GetName(),
                item.GetType(), QString::number(item.GetMet()),
                QString::number(item.GetEnergyRateKcalPerMinute())));
        }
        return items.join(u'|');
    }
    /// Of the three lists.
    QString Offered(const CExlibFields& fields) {
        QStringList texts;
        for (const auto list : {EPicker::Category, EPicker::Name, EPicker::Type}) {
            const auto [rows, refusal] =
                PickChoices(Database(), kExercises, list, fields.categoryId, fields.name);
            texts.append(rows.isEmpty() ? refusal
                                        : PickerHeader(list) + u": "_s + rows.join(u", "_s));
        }
        return texts.join(u'|');
    }
};

QTEST_GUILESS_MAIN(TestExlib)
#include "TestExlib.moc"
