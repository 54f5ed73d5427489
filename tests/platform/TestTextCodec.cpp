
#include "platform/TextCodec.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

class TestTextCodec : public QObject {
    Q_OBJECT

  private slots:
    void everyByteComesBack_data() {
        AddRows<QByteArray, QString>({
            {"437", "\x9B\x9E\xE1\xFE", u"¢₧ß■"_s},
            {"720", "\x82\x91\x98\xF9", u"é\u0651\u0621\u2219"_s},
            {"737", "\x80\xE1", u"Αά"_s},
            {"775", "\x96\xE1", u"¢ß"_s},
            {"850", "\x9B\xE1\xD5", u"øßı"_s},
            {"852", "\x9B\x86", u"Ťć"_s},
            {"855", "\xA1\xD0", u"Ал"_s},
            {"857", "\x98\xD5", u"İ\uF7D5"_s},  // D5 has no character; its number's is E5
            {"858", "\xD5\xE1", u"€ß"_s},
            {"862", "\x80\x9A", u"את"_s},
            {"866", "\x80\xEF\xF1", u"Аяё"_s},
            {"874", "\xA1\xDB", u"ก\u00DB"_s},  // DB has no character; its number's is free
            {"1258", "\xC3\xD2\xFE\x80", u"Ă\u0309₫€"_s},
            {"99999", "\x80", u"Ç"_s},  // unknown, so 437
        });
    }
    void everyByteComesBack() {
        const auto& [bytes, text] = DataRow<QByteArray, QString>();
        const COemCodec codec(QByteArray(QTest::currentDataTag()).toInt());
        QCOMPARE(codec.Decode(bytes), text);
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte) {
            all.append(static_cast<char>(byte));
        }
        QCOMPARE(codec.Encode(codec.Decode(all)), all);
        QCOMPARE(codec.Decode(all.first(128)), QString::fromLatin1(all.first(128)));
    }

    void whatThePageCannotHoldBecomesAQuestionMark() {
        QCOMPARE(COemCodec(437).Encode(u"Ω≈Ж1"), QByteArray("\xEA\xF7?1"));
        QCOMPARE(COemCodec(850).Encode(u"😀ø€"), QByteArray("??\x9B?"));
    }

    void localesHaveTheirPage() {
        const std::pair<const char*, int> rows[] = {
            {"en_US", 437},      {"en_GB", 850},      {"pl_PL", 852},
            {"sr_Cyrl_RS", 855}, {"sr_Latn_RS", 852}, {"ja_JP", 437},
        };
        for (const auto& [locale, codePage] : rows) {
            QCOMPARE(COemCodec::CodePageOf(QLocale(QLatin1StringView(locale))), codePage);
        }
    }
};

QTEST_GUILESS_MAIN(TestTextCodec)
#include "TestTextCodec.moc"
