
#include <QTest>
#include "diary/DietTotals.h"
#include "diary/ListSizes.h"

using namespace Qt::StringLiterals;

class TestDietTotals : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void totalsAreShortAndUseTheReadersSeparator() {
        const std::pair<double, QString> texts[] = {
            {0, u"0/"_s},   {0.05, u"0/"_s},  {0.1, u"0.1/"_s},          {9.5, u"9.5/"_s},
            {10, u"10/"_s}, {10.5, u"11/"_s}, {1e300, u"2147483647/"_s},
        };
        for (const auto& [value, text] : texts) {
            QCOMPARE(TotalText(value), text);
        }
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(TotalText(9.5), u"9,5/"_s);
        QLocale::setDefault(QLocale::c());
    }

    void aRowSetsTheTotalAgainstItsTarget() {
        using enum EBarFill;
        const std::tuple<int, double, double, QString, EBarFill> rows[] = {
            // nutrient; total, target and percentage
            {1, 50, 0, u"50/"_s, Empty},
            {1, 50, 0.001, u"50/"_s, Empty},
            {1, 0.5, 0.01, u"0.5/0/50%"_s, Partial},  // up to 0.01 the total is set against 1
            {1, 0.99, 100, u"1.0/100/1%"_s, Empty},
            {1, 1, 100, u"1.0/100/1%"_s, Partial},
            {1, 99.6, 100, u"100/100/100%"_s, Partial},
            {1, 100, 100, u"100/100/100%"_s, Over},
            {1, 413, 100, u"413/100/413%"_s, Over},
            // The one that is in kJ: times 4.18.
            {kEnergyIndex, 500, 2000, u"2090/8360/25%"_s, Partial},
        };
        for (const auto& [nutrient, total, target, texts, fill] : rows) {
            const CTotalsRow row = TotalsRow(nutrient, {}, total, target, EEnergyUnit::KJ);
            QCOMPARE(row.total + row.target + row.percent, texts);
            QCOMPARE(row.bar.fill, fill);
        }
    }

    void aLongNameIsCutFromItsEnd() {
        const auto widthOf = [](const QString& text) { return static_cast<int>(text.size()); };
        QCOMPARE(FittedName(u"Protein (g)"_s, 12, widthOf), u"Protein (g):"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 11, widthOf), u"Protein...:"_s);
        QCOMPARE(FittedName(u"Protein (g)"_s, 2, widthOf), u"...:"_s);
    }

    // At six pixels a character: "9999/" and a pixel are 31, "999%" and a pixel 25; the three
    // together 87. The scroll bar takes 16 and the list's margin 4.
    void columnsShareTheWidth() {
        const std::pair<int, CTotalsColumns> rows[] = {
            {600, {100, 393, 31, 31, 25}},  // the name is as wide as needed
            {240, {80, 53, 31, 31, 25}},    // at most a third
            {150, {33, 10, 31, 31, 25}},    // the least bar
            {123, {6, 10, 31, 31, 25}},     // the least name
            {122, {6, 10, 43, 43, 0}},     {10, {6, 10, 0, 0, 0}},
        };
        for (const auto& [listWidth, widths] : rows) {
            const CTotalsColumns columns = TotalsColumnWidths(
                listWidth, 16, 95, [](const QString& text) { return 6 * int(text.size()); });
            QCOMPARE(columns, widths);
        }
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
