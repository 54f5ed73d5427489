// Axes, dates and lines of the graphs, without a window.
#include <QLocale>

#include "controls/GraphScale.h"
#include "support/DataRows.h"

class TestGraphScale : public QObject {
    Q_OBJECT

  private slots:
    void axesTakeRoundStepsThatFit_data() {
        AddRows<double, double, int, QString, int>({
            // 10 kg in at most 5 ticks: steps of 5 make 3 of them, steps of 2 would make 7.
            {"weights", 61, 71, 5, u"60 65 70 75"_s, 0},
            {"fine", 70.1, 70.4, 5, u"70.1 70.2 70.3 70.4"_s, 1},
            {"one value", 70, 70, 4, u"65 70 75"_s, 0},
            {"zero", 0, 0, 5, u"-1 -0.5 0 0.5 1"_s, 1},
            {"below zero", -800, 450, 6, u"-1000 -500 0 500"_s, 0},
            {"room for one", 3, 97, 1, u"0 100"_s, 0},
            {"two ticks over a round number", 95, 105, 2, u"90 110"_s, 0},
            {"two ticks around zero", -80, 45, 2, u"-200 200"_s, 0},
            {"next to nothing", 70, std::nextafter(70.0, 71.0), 2, u"60 80"_s, 0},
            {"large", 0, 2'000'000, 4, u"0 1e+06 2e+06"_s, 0},
            {"damaged", -1e308, 1e308, 3, u"-1e+300 0 1e+300"_s, 0},
        });
    }
    void axesTakeRoundStepsThatFit() {
        const auto& [low, high, most, ticks, decimals] =
            DataRow<double, double, int, QString, int>();
        const CAxis axis = ValueAxis(low, high, most);
        QStringList texts;
        for (const double tick : axis.Ticks()) {
            texts.append(QString::number(tick));
        }
        QCOMPARE(texts.join(u' '), ticks);
        QCOMPARE(axis.decimals, decimals);
    }

    void datesAreCountedInTheUnitThatFits_data() {
        AddRows<QDate, QDate, int, QString>({
            {"days", {2026, 2, 27}, {2026, 3, 2}, 5, u"27 Feb,28 Feb,1 Mar,2 Mar"_s},
            {"weeks", {2026, 1, 1}, {2026, 1, 31}, 6, u"1 Jan,8 Jan,15 Jan,22 Jan,29 Jan"_s},
            {"fortnights", {2026, 1, 1}, {2026, 2, 28}, 5, u"1 Jan,15 Jan,29 Jan,12 Feb,26 Feb"_s},
            {"months", {2025, 12, 5}, {2026, 3, 20}, 4, u"Jan 2026,Feb 2026,Mar 2026"_s},
            {"quarters", {2025, 12, 5}, {2026, 9, 30}, 4, u"Jan 2026,Apr 2026,Jul 2026"_s},
            {"halves", {2025, 12, 5}, {2027, 6, 30}, 3, u"Jan 2026,Jul 2026,Jan 2027"_s},
            {"years", {2020, 5, 1}, {2026, 5, 1}, 6, u"2021,2022,2023,2024,2025,2026"_s},
            {"decades", {1990, 1, 1}, {2026, 1, 1}, 4, u"1990,2000,2010,2020"_s},
            {"2 years", {2019, 5, 1}, {2029, 5, 1}, 6, u"2020,2022,2024,2026,2028"_s},
            {"1000 years", {1601, 1, 1}, {4000, 1, 1}, 3, u"2000,3000,4000"_s},
            {"one day", {2026, 2, 28}, {2026, 2, 28}, 3, u"28 Feb"_s},
        });
    }
    void datesAreCountedInTheUnitThatFits() {
        const auto& [from, to, most, labels] = DataRow<QDate, QDate, int, QString>();
        QLocale::setDefault(QLocale::c());
        QStringList texts;
        for (const CDateTick& tick : DateTicks(from, to, most)) {
            texts.append(tick.label);
        }
        QCOMPARE(texts.join(u','), labels);
    }

    void aLongLineKeepsItsPeaksAndFewPoints() {
        std::vector<QPointF> points;
        for (int i = 0; i < 3650; ++i) {
            points.emplace_back(i * 200.0 / 3650, i == 1234 ? -5 : i == 2000 ? 99 : 50);
        }
        const std::vector<QPointF> line = ThinnedLine(points);
        QVERIFY(line.size() <= 200);
        const auto [low, high] = std::ranges::minmax(line, {}, &QPointF::y);
        QCOMPARE(low, points[1234]);
        QCOMPARE(high, points[2000]);
        QVERIFY(std::ranges::is_sorted(line, {}, &QPointF::x));
        QCOMPARE(ThinnedLine({{0, 1}, {10, 2}}).size(), 2U);
    }

    void aLineIsCutWhereItLeavesTheSight() {
        QPointF from(0, 80);
        QPointF to(100, 60);
        QVERIFY(ClipLine(from, to, 25, 75));
        QCOMPARE(from, QPointF(25, 75));  // 80 - 20 x 25 / 100
        QCOMPARE(to, QPointF(75, 65));
        QVERIFY(!ClipLine(from, to, 200, 300));
        const CScale scale{60, 80, 100, 0};
        QCOMPARE(scale.At(65), 75.0);
        QCOMPARE((CScale{5, 5, 0, 10}.At(5)), 5.0);
    }
};

QTEST_GUILESS_MAIN(TestGraphScale)
#include "TestGraphScale.moc"
