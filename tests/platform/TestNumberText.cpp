#include <QRandomGenerator>
#include <QTest>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

class TestNumberText : public QObject {
    Q_OBJECT

  private slots:
    void theLeadingNumberIsRead() {
        // A number and the texts it is read from.
        const std::pair<double, QString> rows[] = {
            {12.5, u"12.5"_s},      {-3.25, u" \t-3.25 g"_s},
            {7, u"+7"_s},           {0.5, u".5"_s},
            {5, u"5."_s},           {1.2, u"1.2.3"_s},
            {1000, u"1e3x"_s},      {2, u"2e|2e+"_s},
            {0.2, u"2E-1"_s},       {1, u"1,5|1\0002"_s},
            {5e-324, u"5e-324"_s},  {0, u"0x1A|nan|inf"_s},
            {0, u"1e999|1e-999"_s}, {0, u"|-|.|+-5|- 5"_s},
            {0, u"e5|\u0661"_s},    {7, u"\r\f\v\n7/2|7:2"_s},
            {0, u"\x0E7|\b7"_s},    {90, u"90-1"_s},
        };
        for (const auto& [number, texts] : rows) {
            for (const QString& text : texts.split(u'|')) {
                QVERIFY2(LeadingNumber(text) == number, qPrintable(text));
            }
        }
        QVERIFY(LeadingNumber(u"0."_s + QString(400, u'3')) == 1 / 3.0);
    }

    void typedNumbersFollowTheLocale() {
        const std::tuple<QString, QString, std::optional<double>> rows[] = {
            {u" 70,5 "_s, u"de_DE"_s, 70.5},
            {u"70.5"_s, u"de_DE"_s, 70.5},
            {u"1,500.5"_s, u"en_US"_s, 1.0},  // group separators end the number
            {u"\u00A04\u00A0"_s, u"fr_FR"_s, 4.0},
            {u"0"_s, u"en_US"_s, 0.0},
            {u""_s, u"en_US"_s, {}},
            {u","_s, u"de_DE"_s, {}},
            {u"1e999"_s, u"en_US"_s, {}},
            {u"1e9"_s, u"en_US"_s, 1e9},
            {u"1000000000.1"_s, u"en_US"_s, {}},
            {u"-1e10"_s, u"en_US"_s, {}},
            {QString(400, u'9'), u"en_US"_s, {}},
            {u'.' + QString(400, u'0') + u'1', u"en_US"_s, 0.0},
            {u"-1E-999"_s, u"en_US"_s, 0.0},
            {QString(400, u'0') + u".5"_s, u"en_US"_s, 0.5},
            {u"\u0667\u0660\u066B\u0665"_s, u"ar_EG"_s, 70.5},
        };
        for (const auto& [text, locale, number] : rows) {
            QVERIFY2(TypedNumber(text, QLocale(locale)) == number, qPrintable(text));
            const bool isTooLarge = !number && !text.isEmpty() && text.back().isDigit();
            QVERIFY2(IsTypedTooLarge(text, QLocale(locale)) == isTooLarge, qPrintable(text));
        }
        QCOMPARE(ShownValue(u" 5000000000,5 ", QLocale(u"de_DE"_s)), 5000000000.5);
        QCOMPARE(ShownValue(u"none", QLocale::c()), 0.0);
        QCOMPARE(ShownValue(u"-1e999", QLocale::c()), -std::numeric_limits<double>::infinity());
    }

    void fixedNumbersAreRoundedExactly() {
        const std::tuple<double, int, int, QString> rows[] = {
            {1.5, 3, 9, u"    1.500"_s},  {1234.5, 2, 3, u"1234.50"_s},
            {-0.0001, 3, 1, u"-0.000"_s}, {1e22, 1, 1, u"10000000000000000000000.0"_s},
            {1.5, -1, 1, u"2"_s},         {0.5, 5000, 1, u"0.5"_s + QString(99, u'0')},
        };
        for (const auto& [number, decimals, width, text] : rows) {
            QCOMPARE(FixedNumber(number, decimals, width), text);
        }
        const double largest = std::numeric_limits<double>::max();
        QCOMPARE(FixedNumber(-largest, 100).size(), 411);  // sign, 309 digits, point, 100 digits
        QCOMPARE(LeadingNumber(ShortestNumber(-largest)), -largest);
        const double infinite = std::numeric_limits<double>::infinity();
        QCOMPARE(FixedNumber(-infinite, 2), FixedNumber(-largest, 2));
        QCOMPARE(FixedNumber(infinite - infinite, 2), u"0.00"_s);
        QCOMPARE(ShortestNumber(infinite), u"1.7976931348623157e+308"_s);
        QCOMPARE(ShownNumber(-1234.5, 1, QLocale(u"de_DE"_s)), u"-1234,5"_s);
    }

    // Numbers in units of the last decimal, near halves and at the ends of the ranges.
    void fixedNumbersAreThoseOfTheCLibrary() {
        QRandomGenerator random(100);
        for (int i = 0; i < 20'000; ++i) {
            const int decimals = i % 9;
            const double unit = std::pow(10, -decimals);
            const double start[] = {0, 10'000 * random.generateDouble(), 1e12 * unit, -2};
            const double part[] = {0, 0.5, 0.499, 0.501, random.generateDouble()};
            const double number =
                start[random.bounded(4)] + unit * (random.bounded(20) + part[random.bounded(5)]);
            std::array<char, 64> expected{};
            std::snprintf(expected.data(), expected.size(), "%.*f", decimals, number);
            QCOMPARE(FixedNumber(number, decimals), QString::fromLatin1(expected.data()));
        }
    }

    void typedAmountsKeepTheLocalesPoint() {
        const QLocale german(u"de_DE"_s);
        QCOMPARE(TypedAmount(u" 1,50 g"_s, german), u"1,5"_s);
        QCOMPARE(TypedAmount(u" "_s, german), QString());
        QCOMPARE(TypedAmount(u"0"_s, german), u"0"_s);
        QCOMPARE(TypedAmount(u"-1"_s, german), std::nullopt);
        QCOMPARE(TypedAmount(u"abc"_s, german), std::nullopt);
        QCOMPARE(TwoDigits(7) + TwoDigits(12), u"0712"_s);
    }

    void wholeNumbersAreCutAndLimited() {
        const double none = std::numeric_limits<double>::quiet_NaN();
        QCOMPARE((QList<int>{Whole(2.999), Whole(-2.999), Whole(3e9), Whole(-1e300), Whole(none)}),
                 (QList<int>{2, -2, 2147483647, -2147483647 - 1, 0}));
    }
};

QTEST_GUILESS_MAIN(TestNumberText)
#include "TestNumberText.moc"
