
#include "platform/TextCodec.h"
#include "support/DataRows.h"

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
        // Plain text comes in blocks: one letter beyond ASCII at every place of them.
        for (int place = 0; place < 40; ++place) {
            QByteArray plain(40, 'x');
            QString decoded(40, u'x');
            plain[place] = bytes[0];
            decoded[place] = text[0];
            QCOMPARE(codec.Decode(plain), decoded);
        }
    }

    void whatThePageCannotHoldBecomesAQuestionMark() {
        QCOMPARE(COemCodec(437).Encode(u"Ω≈Ж1"), QByteArray("\xEA\xF7?1"));
        QCOMPARE(COemCodec(850).Encode(u"😀ø€"), QByteArray("??\x9B?"));
    }

    void localesHaveTheirPage() {
        const std::pair<int, QString> rows[] = {
            {437, u"en_US en_HK en_IN en_MY en_PH en_SG en_ZA en_ZW ja_JP zh_CN ko_KR"_s},
            {720, u"ar fa ur"_s},
            {737, u"el"_s},
            {775, u"et lv lt"_s},
            {850, u"en_GB af eu br ca da nl fo fi fr gl de is id ga it lb ms nb nn pt rm es"_s},
            {850, u"sv gsw cy de_CH pt_BR"_s},
            {852, u"sq bs hr cs hu pl ro sr_Latn_RS sk sl"_s},
            {855, u"bs_Cyrl_BA sr_Cyrl_RS"_s},
            {857, u"az tr uz"_s},
            {862, u"he"_s},
            {866, u"az_Cyrl_AZ uz_Cyrl_UZ be bg kk ky mk mn ru tg tt uk"_s},
            {874, u"th"_s},
            {1258, u"vi"_s},
        };
        for (const auto& [codePage, locales] : rows) {
            for (const QString& locale : locales.split(u' ')) {
                const int found = COemCodec::CodePageOf(QLocale(locale));
                QVERIFY2(found == codePage, qPrintable(locale));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestTextCodec)
#include "TestTextCodec.moc"
