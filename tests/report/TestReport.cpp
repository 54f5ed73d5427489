#include "diary/DiaryFixture.h"

#include "report/ReportRules.h"
#include "report/ReportWriter.h"

namespace {
const QDate kFirst{2006, 4, 14};
const QDate kLast{2006, 4, 16};
}  // namespace

class TestReport : public CDiaryTest {
    Q_OBJECT

  private:
    void AddFoodEntry(QDateTime moment, qint32 meal, const QString& name, const QString& type = {},
                      double amount = 1, const QString& serving = u"cup"_s, double energyKcal = 1,
                      double protein = 1) {
        auto entry = MakeEntry<CDietEntry>(moment.date(), moment.time());
        entry.SetMeal(meal);
        entry.SetName(name);
        entry.SetType(type);
        entry.SetAmount(amount);
        entry.SetServingName(serving);
        entry.SetNutrientValue(0, energyKcal);
        entry.SetNutrientValue(1, protein);
        QVERIFY(Database().Diet().Write(-1, entry));
    }
    /// Two days with entries around one without.
    void AddThreeDays() {
        AddFoodEntry({kFirst, {0, 0}}, 5, u"Tea\r\n\x1B"_s, u""_s, 1, u"mug\n"_s, 2, 0);
        AddFoodEntry({kFirst, {8, 0}}, 0, u"Oats"_s, u"dry"_s, 1.5, u"cup"_s, 150.5, 5.5);
        AddFoodEntry({kFirst, {23, 59, 59}}, 0, u"Milk"_s, u"whole, 3.5%"_s, 0.5, u"glass"_s, 61.5,
                     3.2);
        AddFoodEntry({kLast, {12, 0}}, 2, u"Apple"_s, u"raw"_s, 1, u"medium"_s, 77.8, -0.00005);
        AddDone(u"Running"_s, kFirst, {7, 30}, 65, 400.7);
        AddDone(u"Rest"_s, kFirst, {18, 0}, 90, 0, {});
        // The days around are not reported.
        AddFoodEntry({kFirst.addDays(-1), {23, 59, 59}}, 0, u"Before"_s);
        AddFoodEntry({kLast.addDays(1), {0, 0}}, 0, u"After"_s);
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
    }
    void cleanup() { DropVolume(); }

    void aReportShowsItsProgressAndIsNotCancelled() {
        AddThreeDays();
        m_messages->progress.cancelAfterPumps = 0;
        // An entry, with line breaks, and an exercise without a type.
        const QByteArray byDate = Written({kFirst, kLast});
        QVERIFY(byDate.contains("\r\nTea   ,1.0xmug ,2.0,0.0\r\n") &&
                byDate.contains("\r\nRest,01:30,"));
        QCOMPARE(m_messages->progress.position, 4);  // the header and three days
        QVERIFY(Written({kFirst, kLast, kReportAll, EReportGrouping::Type}).contains("Apple raw"));
        QCOMPARE(m_messages->progress.position, 7);  // the header, and three days twice
        QCOMPARE(m_messages->progress.captions.value(0), u"Velmora: Report"_s);
        QCOMPARE(m_messages->progress.statuses.value(0), u"Saving data..."_s);
    }

    void theLocaleOrdersTheDateButNumbersKeepTheirPoint() {
        QLocale::setDefault(QLocale(u"de_DE"_s));
        for (const QDate day : {QDate(1601, 1, 1), QDate(2004, 2, 29), QDate(9999, 12, 31)}) {
            AddFoodEntry({day, {0, 0}}, 0, u"Käse"_s);
            AddFoodEntry({day, {23, 59, 59}}, 5, u"Tee"_s);
            const QByteArray written = Written({day, day, kReportDiet, EReportGrouping::Type});
            // 84 is the umlaut in code page 850.
            const QByteArray date = day.toString(u"dd.MM.yyyy").toLatin1();
            QCOMPARE(written.mid(written.indexOf("Energy (kcal),Protein (g)\r\n") + 27),
                     date + ",Breakfast,K\x84se,1.0xcup,1.0,1.0\r\n" + date +
                         ",Evening,Tee,1.0xcup,1.0,1.0\r\n\r\n");
        }
        QLocale::setDefault(QLocale(u"fa_IR"_s));  // which has digits of its own
        QVERIFY(Written({kFirst, kFirst}).contains("From: ,2006/4/14\r\n"));
        QLocale::setDefault(QLocale(u"ar_EG"_s));  // whose dates hold direction marks
        QVERIFY(Written({kFirst, kFirst}).contains("From: ,14/4/2006\r\n"));
    }

    void aDamagedEntryIsToldAndEndsItsDay() {
        AddThreeDays();
        CItemDatabaseBase& diet = Database().Diet();
        for (const int hour : {9, 10}) {
            QVERIFY(diet.Write(-1, MakeEntry<CWeightEntry>(kFirst, {hour, 0})));
        }
        AddFoodEntry({kLast, {13, 0}}, 6, u"Mealless"_s);
        QVERIFY(!WriteReport(*m_doc, {kFirst, kLast}, Path(u"report.csv"_s)));
        const QByteArray written = Load(Path(u"report.csv"_s));
        // The first of the two, and the entry of no meal; the other one and the milk.
        QCOMPARE(m_messages->Said(),
                 u"Database error. Wrong number of properties, record #3, props = 15 (62)|"
                 "The report is written. 2 damaged entries are left out, and 2 entries after one "
                 "of them."_s);
        // Tea and oats: 2 + 150.5.
        QVERIFY(written.contains("Total,,152.5,5.5"));
        QVERIFY(written.contains("Total,,77.8,0.0"));
        QVERIFY(Written({kLast, kLast, kReportDiet, EReportGrouping::Type})
                    .contains("16 Apr 2006,,Mealless,1.0xcup,1.0,1.0\r\n"));
    }

    void aRequestIsCheckedNamedAndPickedInWholeYears() {
        QCOMPARE(CheckReportRequest({kFirst, kFirst, kReportWeight}), std::nullopt);
        QCOMPARE(CheckReportRequest({kLast, kFirst, 0}), u"Please select data type to export."_s);
        const CFileChoice choice = ReportFileChoice(u"A/%1"_s, QDate(2100, 1, 2));
        QCOMPARE(choice.initialName + choice.filterName, u"A_%1000102.csvCSV file (*.csv)"_s);
        QStringList patterns;
        for (const char* text : {"M/d/yy", "MM/dd/yyyy", "dd.MM.yy", "yyyy-MM-dd", "d/M/yy"}) {
            patterns.append(ReportDatePattern(QLatin1StringView(text)));
        }
        QCOMPARE(patterns.join(u' '), u"MM/dd/yyyy MM/dd/yyyy dd.MM.yyyy yyyy-MM-dd d/MM/yyyy"_s);
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "TestReport.moc"
