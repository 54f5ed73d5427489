#include "diary/DiaryFixture.h"

#include "report/ReportFormat.h"
#include "report/ReportRules.h"
#include "report/ReportWriter.h"
#include "support/DataRows.h"
#include "support/Files.h"

namespace {
const QDate kFirst{2006, 4, 14};
const QDate kLast{2006, 4, 16};
}  // namespace

class TestReport : public CDiaryTest {
    Q_OBJECT

  private:
    void AddFoodEntry(QDateTime moment, qint32 meal, const QString& name, const QString& type,
                      double amount, const QString& serving, double energyKcal, double protein) {
        CDietEntry entry;
        entry.SetMoment(ToFileTime(moment.date(), moment.time()));
        entry.SetMeal(meal);
        entry.SetName(name);
        entry.SetType(type);
        entry.SetAmount(amount);
        entry.SetServingName(serving);
        entry.SetNutrientValue(0, energyKcal);
        entry.SetNutrientValue(1, protein);
        QVERIFY(Database().Diet().Write(-1, entry));
    }
    void AddExercise(QDateTime moment, const QString& name, const QString& type, double minutes,
                     double energyKcal) {
        CExerciseEntry entry;
        entry.SetMoment(ToFileTime(moment.date(), moment.time()));
        entry.SetName(name);
        entry.SetType(type);
        entry.SetMinutes(minutes);
        entry.SetEnergyKcal(energyKcal);
        QVERIFY(Database().Exercises().Write(-1, entry));
    }
    void AddWeight(QDateTime moment, double kg, double chestCm, double waistCm, double fat) {
        CWeightEntry entry;
        entry.SetMoment(ToFileTime(moment.date(), moment.time()));
        entry.SetWeightKg(kg);
        entry.SetMeasurement(0, chestCm);
        entry.SetMeasurement(1, waistCm);
        entry.SetMeasurement(7, fat);
        QVERIFY(Database().Weight().Write(-1, entry));
    }
    /// Two days with entries around one without, in one decimal from 82 kg.
    void AddThreeDays() {
        AddFoodEntry({kFirst, {0, 0}}, 5, u"Tea"_s, u""_s, 1, u"mug"_s, 2, 0);
        AddFoodEntry({kFirst, {8, 0}}, 0, u"Oats"_s, u"dry"_s, 1.5, u"cup"_s, 150.5, 5.5);
        AddFoodEntry({kFirst, {23, 59, 59}}, 0, u"Milk"_s, u"whole, 3.5%"_s, 0.5, u"glass"_s, 61.5,
                     3.2);
        AddFoodEntry({kLast, {12, 0}}, 2, u"Apple"_s, u"raw"_s, 1, u"medium"_s, 77.8, -0.00005);
        AddExercise({kFirst, {7, 30}}, u"Running"_s, u"slow"_s, 65, 400.7);
        AddExercise({kFirst, {18, 0}}, u"Rest"_s, u""_s, 90, 0);
        AddWeight({kFirst, {7, 0}}, 80.5, 100, 90.5, 20.5);
        AddWeight({kLast, {7, 0}}, 81.99999, 0, 0, 0);
        // The days around are not reported.
        AddFoodEntry({kFirst.addDays(-1), {23, 59, 59}}, 0, u"Before"_s, u""_s, 1, u""_s, 1, 1);
        AddFoodEntry({kLast.addDays(1), {0, 0}}, 0, u"After"_s, u""_s, 1, u""_s, 1, 1);
    }
    QByteArray Written(const CReportRequest& request) {
        const QString path = Path(u"report.csv"_s);
        return WriteReport(*m_doc, request, path) ? Load(path) : "no report";
    }
    CPreferences& Preferences() { return m_doc->Settings().preferences; }

  private slots:
    void init() {
        MakeDiary();
        Preferences().decimals = 1;
        m_doc->Settings().targets.startWeightKg = 82;
    }
    void cleanup() { DropVolume(); }

    void threeDaysByDateInKcalAndKg() {
        AddThreeDays();
        m_messages->progress.cancelAfterPumps = 0;  // which changes nothing
        QCOMPARE(Written({kFirst, kLast}),
                 "Velmora report:, Ann\r\n"
                 "From: ,14 Apr 2006\r\n"
                 "To: ,16 Apr 2006\r\n"
                 "\r\n"
                 "14 Apr 2006\r\n"
                 "Breakfast,Serving,Energy (kcal),Protein (g)\r\n"
                 "Oats dry,1.5xcup,150.5,5.5\r\n"
                 "Milk whole, 3.5%,0.5xglass,61.5,3.2\r\n"
                 "Subtotal,,212.0,8.7\r\n"  // 150.5 + 61.5, 5.5 + 3.2
                 "Evening,Serving,Energy (kcal),Protein (g)\r\n"
                 "Tea,1.0xmug,2.0,0.0\r\n"
                 "Subtotal,,2.0,0.0\r\n"
                 "Total,,214.0,8.7\r\n"
                 "Exercises,Ex. time,Energy burned (kcal),\r\n"
                 "Running slow,01:05,400\r\n"  // 400.7 cut off
                 "Rest,01:30,\r\n"
                 "Total,02:35,400.7\r\n"  // 65 + 90 minutes
                 "Weight (kg),Weight change (kg),Chest (cm),Waist (cm),Hips (cm),Bicep (cm),"
                 "Forearm (cm),Thigh (cm),Calf (cm),Body fat(%)\r\n"
                 "80.5,-1.5,100.0,90.5,,,,,,20.5\r\n"  // 80.5 - 82
                 "\r\n"
                 "16 Apr 2006\r\n"
                 "Lunch,Serving,Energy (kcal),Protein (g)\r\n"
                 "Apple raw,1.0xmedium,77.8,0.0\r\n"  // -0.00005 g counts as none
                 "Subtotal,,77.8,0.0\r\n"
                 "Total,,77.8,0.0\r\n"
                 "Weight (kg),Weight change (kg),Chest (cm),Waist (cm),Hips (cm),Bicep (cm),"
                 "Forearm (cm),Thigh (cm),Calf (cm),Body fat(%)\r\n"
                 "82.0,0.0,,,,,,,,\r\n"
                 "\r\n");
        QCOMPARE(m_messages->progress.captions, QStringList{u"Velmora: Report"_s});
        QCOMPARE(m_messages->progress.statuses, QStringList{u"Saving data..."_s});
        QCOMPARE(m_messages->progress.position, 4);  // the header and three days
    }

    void threeDaysByTypeInKJAndStones() {
        AddThreeDays();
        Preferences().energyUnit = EEnergyUnit::KJ;
        Preferences().weightUnit = EWeightUnit::Stones;
        Preferences().heightUnit = EHeightUnit::Inches;
        QVERIFY(m_doc->SaveSettings());
        QCOMPARE(Written({kFirst, kLast, kReportAll, EReportGrouping::Type}),
                 "Velmora report:, Ann\r\n"
                 "From: ,14 Apr 2006\r\n"
                 "To: ,16 Apr 2006\r\n"
                 "\r\n"
                 "Diet\r\n"
                 "Date,Meal,Name,Serving,Energy (kJ),Protein (g)\r\n"
                 "14 Apr 2006,Evening,Tea,1.0xmug,8.4,0.0\r\n"           // 2 x 4.18 = 8.36
                 "14 Apr 2006,Breakfast,Oats dry,1.5xcup,629.1,5.5\r\n"  // 629.09
                 "14 Apr 2006,Breakfast,Milk whole, 3.5%,0.5xglass,257.1,3.2\r\n"  // 257.07
                 "16 Apr 2006,Lunch,Apple raw,1.0xmedium,325.2,0.0\r\n"            // 325.204
                 "\r\n"
                 "Exercises\r\n"
                 "Date,Name,Ex. time,Energy burned (kJ),\r\n"
                 "14 Apr 2006,Running slow,01:05,1675\r\n"  // 400.7 x 4.18 + 0.5 = 1675.426
                 "14 Apr 2006,Rest,01:30,\r\n"
                 "\r\n"
                 "Weights\r\n"
                 "Date,Weight (st,lb),Weight change (st,lb),Chest (in),Waist (in),Hips (in),"
                 "Bicep (in),Forearm (in),Thigh (in),Calf (in),Body fat(%)\r\n"
                 // 80.5 x 2.2046 = 177.4703 = 12 x 14 + 9.4703, -1.5 x 2.2046 = -3.3069,
                 // 100 / 2.54 = 39.37, 90.5 / 2.54 = 35.63
                 "14 Apr 2006,12,9.5,-3.3,39.4,35.6,,,,,,20.5\r\n"
                 "16 Apr 2006,12,12.8,0.0,,,,,,,,\r\n"  // 180.7772 = 168 + 12.7772
                 "\r\n");
        QCOMPARE(m_messages->progress.position, 7);  // the header, and three days twice
    }

    void onlyWhatIsAskedForIsWritten_data() {
        const QByteArray date = "14 Apr 2006\r\n";
        AddRows<int, EReportGrouping, QDate, QByteArray>({
            {"a day without entries", kReportAll, EReportGrouping::Date, {2006, 4, 15}, ""},
            {"exercises", kReportExercises, EReportGrouping::Date, kFirst,
             date + "Exercises,Ex. time,Energy burned (kcal),\r\nRunning slow,01:05,400\r\n"
                    "Rest,01:30,\r\nTotal,02:35,400.7\r\n\r\n"},
            {"exercises by type, none",
             kReportExercises,
             EReportGrouping::Type,
             {2006, 4, 15},
             "Exercises\r\nDate,Name,Ex. time,Energy burned (kcal),\r\n\r\n"},
            {"diet without nutrients",
             kReportDiet,
             EReportGrouping::Date,
             {2006, 4, 16},
             "16 Apr 2006\r\nLunch,Serving\r\nApple raw,1.0xmedium\r\nSubtotal,\r\nTotal,\r\n"
             "\r\n"},
        });
    }
    void onlyWhatIsAskedForIsWritten() {
        const auto& [types, grouping, day, body] =
            DataRow<int, EReportGrouping, QDate, QByteArray>();
        AddThreeDays();
        Preferences().displayed.reset();
        const QByteArray written = Written({day, day, types, grouping});
        QCOMPARE(written.mid(written.indexOf("\r\n\r\n") + 4), body);
    }

    void theLocaleOrdersTheDateButNumbersKeepTheirPoint() {
        QLocale::setDefault(QLocale(u"de_DE"_s));
        const QDate leapDay(2004, 2, 29);
        AddFoodEntry({leapDay, {0, 0}}, 0, u"Käse"_s, u""_s, 1, u"cup"_s, 1, 1);
        const QByteArray written = Written({leapDay, leapDay, kReportDiet, EReportGrouping::Type});
        QVERIFY2(written.contains("\r\n29.02.2004,Breakfast,K\x84se,1.0xcup,1.0,1.0\r\n"),
                 written);  // 84 in code page 850
    }

    void aDayOfManyEntriesIsReportedWhole() {
        for (int i = 0; i < 130; ++i) {
            AddFoodEntry({kFirst, {12, 0}}, 2, u"Pea"_s, u""_s, 1, u"pod"_s, 0.5, 0);
        }
        const QByteArray written = Written({kFirst, kFirst});
        QCOMPARE(written.count("Pea,1.0xpod,0.5,0.0\r\n"), 130);
        QVERIFY(written.endsWith("Total,,65.0,0.0\r\n\r\n"));
    }

    void damagedEntriesAreToldAndLeftOut() {
        AddThreeDays();
        CWeightEntry stranger;
        stranger.SetMoment(ToFileTime(kFirst, {9, 0}));
        CItemDatabaseBase& diet = Database().Diet();
        QVERIFY(diet.Write(-1, stranger));
        AddFoodEntry({kLast, {13, 0}}, 6, u"Mealless"_s, u""_s, 1, u"cup"_s, 1, 1);
        const QByteArray written = Written({kFirst, kLast});
        QCOMPARE(m_messages->Said(),
                 u"Database error. Wrong number of properties, record #3, props = 15 (62)"_s);
        QVERIFY(written.contains("Total,,214.0,8.7") && written.contains("Total,,77.8,0.0"));
        QVERIFY(Written({kLast, kLast, kReportDiet, EReportGrouping::Type})
                    .contains("16 Apr 2006,,Mealless,1.0xcup,1.0,1.0\r\n"));
    }

    void aFileThatDoesNotComeOutWholeLeavesTheOldOne() {
        AddThreeDays();
        const QString path = Path(u"old.csv"_s);
        Save(path, "old");
        const QStringList before = QDir(m_folder->path()).entryList(QDir::Files);
        {
            const CFileSizeLimit limit(200);
            QVERIFY(!WriteReport(*m_doc, {kFirst, kLast}, path));
        }
        QCOMPARE(m_messages->Said(), u"Cannot create file."_s);
        QCOMPARE(Load(path), "old");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), before);
        QVERIFY(!WriteReport(*m_doc, {kFirst, kLast}, Path(u"none/report.csv"_s)));
        QCOMPARE(m_messages->Said(), u"Cannot create file."_s);
        QVERIFY(!m_messages->progress.isShown);
    }

    void requestsAreChecked() {
        QCOMPARE(CheckReportRequest({kFirst, kFirst, kReportWeight}), std::nullopt);
        QCOMPARE(CheckReportRequest({kLast, kFirst, 0}), u"Please select data type to export."_s);
        QCOMPARE(CheckReportRequest({kLast, kFirst}),
                 u"Please select correct From date and To date."_s);
        const CFileChoice choice = ReportFileChoice(u"Ann"_s, QDate(2006, 4, 15));
        QCOMPARE(choice.initialName, u"Ann060415.csv"_s);
        QCOMPARE(choice.defaultExtension + choice.filterName, u".csvCSV file (*.csv)"_s);
        QCOMPARE(ReportFileChoice(u"A/%1"_s, QDate(2100, 1, 2)).initialName, u"A_%1000102.csv"_s);
    }

    void thePickersShowWholeYearsAndTwoDigits_data() {
        AddRows<QString, QString>({
            {"M/d/yy", u"M/d/yy"_s, u"MM/dd/yyyy"_s},
            {"MM/dd/yyyy", u"MM/dd/yyyy"_s, u"MM/dd/yyyy"_s},
            {"dd.MM.yy", u"dd.MM.yy"_s, u"dd.MM.yyyy"_s},
            {"yyyy-MM-dd", u"yyyy-MM-dd"_s, u"yyyy-MM-dd"_s},
            {"d/M/yy", u"d/M/yy"_s, u"d/MM/yyyy"_s},
        });
    }
    void thePickersShowWholeYearsAndTwoDigits() {
        const auto& [pattern, shown] = DataRow<QString, QString>();
        QCOMPARE(ReportDatePattern(pattern), shown);
    }

    void unitsHaveTheirWords_data() {
        using enum EWeightUnit;
        using enum EHeightUnit;
        AddRows<EWeightUnit, EHeightUnit, QString, QString>({
            // 70 x 2.2046 = 154.322 = 11 x 14 + 0.322, -12 x 2.2046 = -26.4552, 10 / 2.54 = 3.937
            {"lb, ft", Pounds, Feet, u"Weight (lb),Weight change (lb),Chest (ft),"_s,
             u"154.32,-26.46,3.94,"_s},
            {"st, lb, cm", StonesAndPounds, Centimetres,
             u"Weight (st,lb),Weight change (st,lb),Chest (cm),"_s, u"11,0.32,-26.46,10.00,"_s},
            {"st, in", Stones, Inches, u"Weight (st,lb),Weight change (st,lb),Chest (in),"_s,
             u"11,0.32,-26.46,3.94,"_s},
        });
    }
    void unitsHaveTheirWords() {
        const auto& [weightUnit, heightUnit, header, fields] =
            DataRow<EWeightUnit, EHeightUnit, QString, QString>();
        const CPreferences preferences{weightUnit, heightUnit};
        const CReportFormat format(preferences, 82);
        CWeightEntry entry;
        entry.SetWeightKg(70);
        entry.SetMeasurement(0, 10);
        QVERIFY2(format.WeightHeader().startsWith(header), qPrintable(format.WeightHeader()));
        QVERIFY2(format.WeightFields(entry).startsWith(fields),
                 qPrintable(format.WeightFields(entry)));
        QCOMPARE(CReportFormat::Time(6005.5), u"100:05"_s);
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "TestReport.moc"
