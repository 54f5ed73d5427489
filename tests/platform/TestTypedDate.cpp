#include <QLocale>

#include "platform/TypedDate.h"
#include "support/DataRows.h"

/// Sunday, 22 November 2026; the field holds 5 March 2024.
class TestTypedDate : public QObject {
    Q_OBJECT

  private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void typedTextsAreDates_data() {
        AddRows<QString, QString, QString>({
            {"today", u"de_DE"_s, u"t"_s, u"2026-11-22"_s},
            {"days after the one held", u"de_DE"_s, u"+3"_s, u"2024-03-08"_s},
            {"days before it, over the leap day", u"de_DE"_s, u"-6"_s, u"2024-02-28"_s},
            {"a weekday", u"de_DE"_s, u"Mon"_s, u"2026-11-16"_s},
            {"today's weekday", u"de_DE"_s, u"sun"_s, u"2026-11-22"_s},
            {"in the locale's language", u"de_DE"_s, u"DIE"_s, u"2026-11-17"_s},
            {"without it", u"cs_CZ"_s, u"CTV"_s, u"2026-11-19"_s},
            {"a letter and its accent apart", u"pt_PT"_s, u"sa\u0301b"_s, u"2026-11-21"_s},
            {"two letters and an accent", u"de_DE"_s, u"mo\u0301"_s, QString()},
            {"a name that begins another one", u"tr_TR"_s, u"cuma"_s, u"2026-11-20"_s},
            {"the beginning of both", u"tr_TR"_s, u"cum"_s, u"2026-11-21"_s},
            {"day first", u"de_DE"_s, u"14 3 1981"_s, u"1981-03-14"_s},
            {"19 years ahead", u"de_DE"_s, u"1.1.45"_s, u"2045-01-01"_s},
            {"80 years back", u"de_DE"_s, u"1.1.46"_s, u"1946-01-01"_s},
            {"month first", u"en_US"_s, u"3/4/2025"_s, u"2025-03-04"_s},
            {"ISO, whatever the locale", u"en_US"_s, u"2025-04-03"_s, u"2025-04-03"_s},
            {"without the year", u"de_DE"_s, u"14.5."_s, u"2024-05-14"_s},
            {"year and month of ISO", u"de_DE"_s, u"2025-02"_s, u"2025-02-05"_s},
            {"a day alone", u"de_DE"_s, u"31"_s, u"2024-03-31"_s},
            {"a year alone", u"de_DE"_s, u"1999"_s, u"1999-03-05"_s},
            {"eight digits", u"de_DE"_s, u"14031981"_s, u"1981-03-14"_s},
            {"eight digits of ISO", u"de_DE"_s, u"19810314"_s, u"1981-03-14"_s},
            {"six digits", u"en_US"_s, u"031481"_s, u"1981-03-14"_s},
            {"a month by its name", u"en_US"_s, u"Mar 14, 1981"_s, u"1981-03-14"_s},
            {"digits of another script", u"de_DE"_s, u"١٤.٣.١٩٨١"_s, u"1981-03-14"_s},
            {"four numbers", u"de_DE"_s, u"1.2.3.4"_s, QString()},
            {"nothing", u"de_DE"_s, QString(), QString()},
            {"a sign alone", u"de_DE"_s, u"+"_s, QString()},
            {"beyond all dates", u"de_DE"_s, u"99999999"_s, QString()},
        });
    }

    void typedTextsAreDates() {
        const auto& [locale, text, expected] = DataRow<QString, QString, QString>();
        QCOMPARE(Typed(locale, text, u"MMM d, yyyy"_s), expected);
    }

    void theShownDateAndPartsOfItAreRead_data() {
        // Locale, format shown, text, and what it means.
        AddRows<QString, QString, QString, QString>({
            {"British", u"en_GB"_s, u"d MMM yyyy"_s, u"9 Jan 2025"_s, u"2025-01-09"_s},
            {"British numbers", u"en_GB"_s, u"d MMM yyyy"_s, u"3/4/2025"_s, u"2025-04-03"_s},
            {"British, two parts", u"en_GB"_s, u"dd/MM/yyyy"_s, u"3/4"_s, u"2024-04-03"_s},
            {"American", u"en_US"_s, u"MMM d, yyyy"_s, u"Jan 9, 2025"_s, u"2025-01-09"_s},
            {"American, two parts", u"en_US"_s, u"d MMM yyyy"_s, u"3/4"_s, u"2024-03-04"_s},
            {"Swedish, two parts", u"sv_SE"_s, u"yyyy-MM-dd"_s, u"3-4"_s, u"2024-03-04"_s},
            {"Hungarian", u"hu_HU"_s, u"yyyy. MM. dd."_s, u"2025. 03. 04."_s, u"2025-03-04"_s},
            {"short year", u"es_ES"_s, u"d/M/yyyy"_s, u"4/3/25"_s, u"2025-03-04"_s},
        });
    }
    void theShownDateAndPartsOfItAreRead() {
        const auto& [locale, format, text, expected] =
            DataRow<QString, QString, QString, QString>();
        QCOMPARE(Typed(locale, text, format), expected);
    }

  private:
    static QString Typed(const QString& locale, const QString& text, const QString& shownFormat) {
        QLocale::setDefault(QLocale(locale));
        const auto date = TypedDate(text, QDate(2024, 3, 5), QDate(2026, 11, 22), shownFormat);
        return date ? date->toString(Qt::ISODate) : QString();
    }
};

QTEST_GUILESS_MAIN(TestTypedDate)
#include "TestTypedDate.moc"
