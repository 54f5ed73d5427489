// What a quick line reads where the command line does not show it: locales.
#include "DiaryFixture.h"
#include "support/DataRows.h"

#include "diary/QuickAmount.h"
#include "diary/QuickEntry.h"

class TestQuickEntry : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        AddCatalogue();
    }

    void aNumberIsReadInItsLocale_data() {
        // Locale, text, value and length; 0 where there is no amount.
        AddRows<QString, QString, double, int>({
            {"a decimal sign", u"de_DE"_s, u"1,5 cups"_s, 1.5, 3},
            {"the point everywhere", u"de_DE"_s, u"1.25 cups"_s, 1.25, 4},
            {"a comma that is none", u"en_US"_s, u"1,5 cups"_s, 0, 0},
            {"one sign only", u"de_DE"_s, u"1.2,5"_s, 0, 0},
            {"no digit after it", u"de_DE"_s, u"2, eggs"_s, 0, 0},
            {"digits of another script", u"ar_EG"_s, u"\u0662 eggs"_s, 2, 1},
            {"a unit of two words", u"C"_s, u"8fl oz milk"_s, 8, 1},
            {"a hyphen", u"C"_s, u"-egg"_s, 0, 0},
            {"the beginning of a word", u"C"_s, u"7up"_s, 0, 0},
            {"of one that begins as a unit does", u"C"_s, u"3gingers"_s, 0, 0},
            {"a fraction before a word", u"C"_s, u"\u00bdapple"_s, 0.5, 1},
        });
    }
    void aNumberIsReadInItsLocale() {
        const auto& [locale, text, value, length] = DataRow<QString, QString, double, int>();
        const auto amount = LeadingAmount(text, QLocale(locale));
        QCOMPARE(amount ? amount->value : 0, value);
        QCOMPARE(amount ? static_cast<int>(amount->length) : 0, length);
    }

    void aCommaBetweenDigitsIsTheLocales() {
        const auto read = [this](const QString& line) {
            QStringList items;
            CQuickEntry entry(*m_doc);
            for (const CQuickItem& item : entry.Read(line)) {
                items.append(item.text + u'=' + QString::number(item.food.amount) + item.refusal);
            }
            return items.join(u'|');
        };
        QLocale::setDefault(QLocale(u"de_DE"_s));
        QCOMPARE(read(u"1,5 apple,2,5 tomato soup, 3 apple"_s),
                 u"1,5 apple=1.5|2,5 tomato soup=2.5|3 apple=3"_s);
        QLocale::setDefault(QLocale::c());
        QCOMPARE(read(u"2 apple,3 tomato soup"_s), u"2 apple=2|3 tomato soup=3"_s);
        QCOMPARE(read(u"1,5 apple"_s), u"1=1What was eaten is missing.|5 apple=5"_s);
    }
};

QTEST_GUILESS_MAIN(TestQuickEntry)
#include "TestQuickEntry.moc"
