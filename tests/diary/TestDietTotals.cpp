
#include "diary/DietTotals.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(EBarFill)

class TestDietTotals : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void totalsAreShortAndUseTheReadersSeparator() {
        QCOMPARE(TotalText(0), u"0/"_s);
        QCOMPARE(TotalText(0.05), u"0/"_s);
        QCOMPARE(TotalText(0.1), u"0.1/"_s);
        QCOMPARE(TotalText(9.5), u"9.5/"_s);
        QCOMPARE(TotalText(10), u"10/"_s);
        QCOMPARE(TotalText(10.5), u"11/"_s);
        QCOMPARE(TotalText(1e300), u"2147483647/"_s);
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(TotalText(9.5), u"9,5/"_s);
        QLocale::setDefault(QLocale::c());
    }

    void aRowSetsTheTotalAgainstItsTarget_data() {
        AddRows<double, double, QString, EBarFill>({
            // target and percentage
            {"no target", 50.0, 0.0, u""_s, EBarFill::Empty},
            {"target too small", 50.0, 0.001, u""_s, EBarFill::Empty},
            // Up to 0.01 the total is set against 1.
            {"divisor of one", 0.5, 0.01, u"0/50%"_s, EBarFill::Partial},
            {"below 1 %", 0.99, 100.0, u"100/1%"_s, EBarFill::Empty},
            {"at 1 %", 1.0, 100.0, u"100/1%"_s, EBarFill::Partial},
            {"nearly there", 99.6, 100.0, u"100/100%"_s, EBarFill::Partial},
            {"reached", 100.0, 100.0, u"100/100%"_s, EBarFill::Over},
            {"above", 413.0, 100.0, u"100/413%"_s, EBarFill::Over},
        });
    }
    void aRowSetsTheTotalAgainstItsTarget() {
        const auto& [total, target, texts, fill] = DataRow<double, double, QString, EBarFill>();
        const CTotalsRow row = TotalsRow(1, u"Protein (g)"_s, total, target, EEnergyUnit::KJ);
        QCOMPARE(row.target + row.percent, texts);
        QCOMPARE(row.bar.fill, fill);
    }

    void onlyTheFiguresOfEnergyAreInKJ() {
        const CTotalsRow row = TotalsRow(0, u"Energy (kJ)"_s, 500, 2000, EEnergyUnit::KJ);
        QCOMPARE(row.total, u"2090/"_s);   // 500 * 4.18
        QCOMPARE(row.target, u"8360/"_s);  // 2000 * 4.18
        QCOMPARE(row.percent, u"25%"_s);
    }

    void aLongNameIsCutFromItsEnd() {
        const auto widthOf = [](const QString& text) { return static_cast<int>(text.size()); };
        QCOMPARE(FittedName(u"Protein (g)"_s, 12, widthOf), u"Protein (g):"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 11, widthOf), u"Protein...:"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 2, widthOf), u"...:"_s);
    }

    // At six pixels a character: "9999/" and a pixel are 31, "999%" and a pixel 25; the three
    // together 87. The scroll bar takes 16 and the list's margin 4.
    void columnsShareTheWidth_data() {
        AddRows<int, int, QList<int>>({
            {"name as wide as needed", 600, 95, {100, 393, 31, 31, 25}},
            {"name at most a third", 240, 95, {80, 53, 31, 31, 25}},
            {"least bar", 150, 95, {33, 10, 31, 31, 25}},
            {"least name", 123, 95, {6, 10, 31, 31, 25}},
            {"percent dropped", 122, 95, {6, 10, 43, 43, 0}},
            {"no room at all", 10, 95, {6, 10, 0, 0, 0}},
        });
    }
    void columnsShareTheWidth() {
        const auto& [listWidth, widestName, widths] = DataRow<int, int, QList<int>>();
        const CTotalsColumns columns = TotalsColumnWidths(
            listWidth, 16, widestName, [](const QString& text) { return 6 * int(text.size()); });
        QCOMPARE(
            (QList<int>{columns.name, columns.bar, columns.total, columns.target, columns.percent}),
            widths);
    }

    void theSplitIsAShareOfTheHeight() {
        QCOMPARE(EntryListHeight(500, 301), 151);  // 150.5 + 0.5
        QCOMPARE(EntryListHeight(333, 100), 34);   // 33.3 + 0.5, rounded
        QCOMPARE(PerMilleOf(151, 301), 502);       // 501.66 rounded
        QCOMPARE(PerMilleOf(500, 0), 0);
        QCOMPARE(PerMilleOf(500, 400), 1000);
    }
};

QTEST_GUILESS_MAIN(TestDietTotals)
#include "TestDietTotals.moc"
