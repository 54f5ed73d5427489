// The exercise library without its windows: exchange over real files, and the edit dialog's rules.
#include "catalogue/CsvExchange.h"
#include "exercise/ExlibRules.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
constexpr auto kExercises = ECatalogueKind::Exercises;

QByteArray ExerciseFile(const QByteArray& lines) {
    return "<Exercises>\r\n"
           "NDB_No,Category,Exercise name,Exercise type,Energy (MET),Energy (kcal/min)\r\n" +
           lines + "<End>\r\n";
}

CPreferences In(EEnergyUnit unit) {
    CPreferences preferences;
    preferences.energyUnit = unit;
    return preferences;
}
}  // namespace

class TestExlib : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void linesAreTakenOrSkippedWithOrWithoutAWord_data() {
        // The line is the third of the file; messages name the next number.
        AddRows<QByteArray, QString>({
            {"MET", "7,Sport,Run,fast,8.5,0", u"Sport/Run/fast/8.5/0"_s},
            {"kcal a minute", "7,Sport,Run,fast,0.000,12.25,", u"Sport/Run/fast/0/12.25"_s},
            {"no number", ",Sport,Run,fast,8,0", u"Sport/Run/fast/8/0"_s},
            {"no rates", "7,Sport,Run,fast", u"Sport/Run/fast/0/0"_s},
            {"comma in quotes", R"(7,"Sport","Run","up, down",8,0,more)",
             u"Sport/Run/up, down/8/0"_s},
            {"MET of 20", "7,Sport,Run,fast,12345678901234567890,2", u"Sport/Run/fast/0/2"_s},
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

    void theEleventhErrorStopsTheImport() {
        const QByteArray error = "1,Sport,,fast,8,0\r\n";
        QVERIFY(Import(ExerciseFile(error.repeated(11) + "1,Sport,Run,fast,8,0\r\n"))
                    .endsWith(u"14. Skipped.|Too many errors. Import stopped.|"
                              "Imported 0 exercises."));
        QCOMPARE(Import("no section\r\n1,Sport,Run,fast,8,0\r\n"), u"Imported 0 exercises."_s);
    }

    void existingExercisesAreTreatedAsChosen_data() {
        AddRows<int, QString, QString>({
            {"overwrite", 0, u"Imported 2 exercises. Replaced 1 existing exercises."_s,
             u"Sport/Run/fast/9/0|Sport/Run/slow/9/0"_s},
            {"skip", 1, u"Imported 1 exercises. Skipped 1 existing exercises."_s,
             u"Sport/Run/fast/8/0|Sport/Run/slow/9/0"_s},
            {"do not check", 2, u"Imported 2 exercises."_s,
             u"Sport/Run/fast/8/0|Sport/Run/fast/9/0|Sport/Run/slow/9/0"_s},
        });
    }
    void existingExercisesAreTreatedAsChosen() {
        const auto& [existing, summary, stored] = DataRow<int, QString, QString>();
        Import(ExerciseFile("1,Sport,Run,fast,8,0\r\n"));
        QCOMPARE(Import(ExerciseFile("1,Sport,Run,fast,9,0\r\n1,Sport,Run,slow,9,0\r\n"),
                        static_cast<EExisting>(existing)),
                 summary);
        QCOMPARE(Stored(), stored);
    }

    void whatCannotBeStoredStopsTheImport() {
        for (int i = 0; i < kMaximumCategories; ++i) {
            QVERIFY(AddCategory(Database(), u"Category %1"_s.arg(i)) > 0);
        }
        QVERIFY(Import(ExerciseFile("1,Sport,Run,fast,8,0\r\n"))
                    .endsWith(u"|Cannot add exercise from line 4.|Import stopped.|"
                              "Imported 0 exercises."));
    }

    void anExportWritesEveryRateAndTheLostCategory() {
        Add(77, u"Row"_s, u"hard"_s, 0, 9.1234);
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
        m_doc.reset();  // one process at a time
        const auto run = [this](const QString& command) {
            QProcess process;
            process.start(QStringLiteral(VELMORA_CLI),
                          QStringList{u"--volume"_s, Path(u"v.db"_s), u"exlib"_s} +
                              QProcess::splitCommand(command));
            process.waitForFinished();
            return QString::fromUtf8(process.readAllStandardOutput() +
                                     process.readAllStandardError());
        };
        const QString header = u"category\tname\ttype\tkcal_per_minute\tmet\n"_s;
        const QString fast = u"Sport\tRun\tfast\t0\t8.5\n"_s;
        QCOMPARE(run(u"list --category Sport"_s), header + u"Sport\tRow\thard\t9.25\t0\n"_s + fast);
        QCOMPARE(run(u"find R --type FAST"_s), header + fast);
        QCOMPARE(run(u"find swim"_s), u"Exercise not found.\n"_s);
        QCOMPARE(run(u"export --category Sport "_s + Path(u"out.csv"_s)),
                 u"Exported 2 exercises.\n"_s);
        QCOMPARE(run(u"import --existing skip "_s + Path(u"out.csv"_s)),
                 u"Imported 0 exercises. Skipped 2 existing exercises.\n"_s);
    }

    void theListShowsTheRateBeforeTheMet_data() {
        AddRows<double, double, int, QString>({
            {"rate", 12.5, 0., 0, u"12.50 kcal/min"_s},
            {"rate in kJ", 12.5, 0., 1, u"52.25 kJ/min"_s},  // 12.5 x 4.18
            {"rate and MET", 1., 8., 0, u"1.00 kcal/min"_s},
            {"MET", 0., 8., 1, u"8.00"_s},
            {"none", 0., 0., 0, {}},
        });
    }
    void theListShowsTheRateBeforeTheMet() {
        const auto& [rate, met, unit, text] = DataRow<double, double, int, QString>();
        CExerciseItem item;
        item.SetEnergyRateKcalPerMinute(rate);
        item.SetMet(met);
        QCOMPARE(ExlibEnergyText(item, In(static_cast<EEnergyUnit>(unit))), text);
    }

    void theDialogRefusesInOrder_data() {
        AddRows<CExlibFields, QString>({
            {"category", {-1, {}, {}, {}}, u"There is no category selected."_s},
            {"name", {1, u" "_s, {}, {}}, u"Please enter exercise name"_s},
            {"type", {1, u"Run"_s, u" "_s, {}}, u"Please enter exercise type"_s},
            {"taken",
             {1, u" Run"_s, u"slow "_s, {}},
             u"Exercise 'Run, slow' already exists in category 'Sport'."_s},
            {"energy", {1, u"Run"_s, u"fast"_s, u" "_s}, u"Please enter exercise energy value"_s},
            {"itself", {1, u"Run"_s, u"fast"_s, u"1"_s}, {}},
            {"other category", {2, u"Run"_s, u"slow"_s, u"1"_s}, {}},
            {"any number", {1, u"Run"_s, u"fast"_s, u"much"_s}, {}},
        });
    }
    void theDialogRefusesInOrder() {
        const auto& [fields, message] = DataRow<CExlibFields, QString>();
        QCOMPARE(AddCategory(Database(), u"Sport"_s, kExercises), 1);
        Add(1, u"Run"_s, u"fast"_s, 8, 0);
        Add(1, u"Run"_s, u"slow"_s, 8, 0);
        CExerciseItem item;
        QVERIFY(Database().Exlib().Read(0, item));
        QCOMPARE(TakeExlibFields(Database(), CPreferences(), fields, 0, item).value_or(QString()),
                 message);
    }

    void oneRatingIsStoredAndTheOtherIsNone_data() {
        AddRows<QString, bool, int, double, double>({
            {"kcal", u"12.5"_s, false, 0, 12.5, 0.},
            {"kJ", u"100"_s, false, 1, 23.923444976076558, 0.},  // 100 x 0.23923444976076558
            {"MET", u"8.5 or so"_s, true, 1, 0., 8.5},
            {"no number", u"much"_s, false, 0, 0., 0.},
            {"as it was filled", u"41.80"_s, false, 1, 10.0004, 0.},  // 10.0004 x 4.18 = 41.801...
            {"the same as MET", u"41.80"_s, true, 1, 0., 41.8},
        });
    }
    void oneRatingIsStoredAndTheOtherIsNone() {
        const auto& [text, isMet, unit, rate, met] = DataRow<QString, bool, int, double, double>();
        CExerciseItem item;
        item.SetEnergyRateKcalPerMinute(10.0004);
        item.SetMet(3);
        QVERIFY(!TakeExlibFields(Database(), In(static_cast<EEnergyUnit>(unit)),
                                 {1, u"Run"_s, u"fast"_s, text, isMet}, -1, item));
        QCOMPARE(item.GetEnergyRateKcalPerMinute(), rate);
        QCOMPARE(item.GetMet(), met);
    }

    void emptyListsSayWhy() {
        CExlibFields fields;
        QCOMPARE(Offer(EExlibPicker::Category, fields), u"There are no categories to select."_s);
        QCOMPARE(Offer(EExlibPicker::Type, fields), u"There is no category selected."_s);
        fields.categoryId = AddCategory(Database(), u"Sport"_s, kExercises);
        QCOMPARE(Offer(EExlibPicker::Name, fields), u"There are no names to select."_s);
        QCOMPARE(Offer(EExlibPicker::Type, fields), u"There are no types to select."_s);
        Add(fields.categoryId, u"Run"_s, u"slow"_s, 8, 0);
        Add(fields.categoryId, u"Run"_s, u"fast"_s, 8, 0);
        Add(fields.categoryId, u"row"_s, u"hard"_s, 8, 0);
        fields.name = u"Run "_s;
        QCOMPARE(Offer(EExlibPicker::Category, fields), u"Category: Sport"_s);
        QCOMPARE(Offer(EExlibPicker::Name, fields), u"Name: row, Run"_s);
        QCOMPARE(Offer(EExlibPicker::Type, fields), u"Name: fast, slow"_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }

  private:
    void Add(qint32 categoryId, const QString& name, const QString& type, double met, double rate) {
        CExerciseItem item;
        item.SetCategoryId(categoryId);
        item.SetName(name);
        item.SetType(type);
        item.SetMet(met);
        item.SetEnergyRateKcalPerMinute(rate);
        QVERIFY(Database().Exlib().Write(-1, item));
    }
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
    QString Offer(EExlibPicker picker, const CExlibFields& fields) {
        const CExlibChoices choices = ExlibChoices(Database(), picker, fields);
        return choices.rows.isEmpty() ? choices.refusal
                                      : choices.header + u": "_s + choices.rows.join(u", "_s);
    }
};

QTEST_GUILESS_MAIN(TestExlib)
#include "TestExlib.moc"
