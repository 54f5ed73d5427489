// Reading tables: what is a field, what is damage, and the texts that are made of fields.
#include <QTemporaryDir>
#include <optional>

#include "catalogue/tables/CsvTable.h"
#include "catalogue/tables/TableTexts.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
enum : int { kId, kText };
constexpr CTableColumn kColumns[] = {{"id"}, {"text", false}};
constexpr CTableLayout kLayout = {"t.csv", kColumns};

QString TextOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
}  // namespace

class TestCsvTable : public QObject {
    Q_OBJECT

  private slots:
    void rowsAreRead_data() {
        AddRows<QByteArray, QString>({
            {"quoted", "\"id\",\"text\"\n\"1\",\"a, \"\"b\"\"\"\n2,\"\"\"\"\n",
             u"1=a, \"b\"|2=\""_s},
            {"mark and CR LF", "\xEF\xBB\xBFid,text\r\n1,\"a\"\r\n2,b\r\n", u"1=a|2=b"_s},
            {"line ends inside", "id,text\n1,\"a\r\nb\n\"\n", u"1=a\r\nb\n"_s},
            {"other columns", "x,text,\"\",id\n9,a,8,1\n", u"1=a"_s},
            {"a column that is not there", "id\n1\n2\n", u"1=|2="_s},
            {"no last line end", "id,text\n1,\"a\"", u"1=a"_s},
            {"nor its line feed", "id,text\n1,a\r", u"1=a"_s},
            {"blank lines", "\r\nid,text\n\n\r\n1,a\n\n", u"1=a"_s},
            {"empty fields", "id,text\n,\"\"\n,\n", u"=|="_s},
            {"nothing", "", u"!t.csv: the file is empty"_s},
            {"only a mark", "\xEF\xBB\xBF", u"!t.csv: the file is empty"_s},
            {"no such column", "text\na\n", u"!t.csv: there is no column 'id'"_s},
            {"too few", "id,text\n1,\"a\nb\"\n2\n",
             u"1=a\nb!t.csv, line 4: 1 fields instead of 2"_s},
            {"too many", "id,text\n1,a,\n", u"!t.csv, line 2: 3 fields instead of 2"_s},
            {"open quote", "id,text\n1,a\n2,\"b\n3,c\n",
             u"1=a!t.csv, line 3: the file ends within a quoted field"_s},
            {"quote inside", "id,text\n1,a\"b\n", u"!t.csv, line 2: "_s + kMisplaced},
            {"text after a quote", "id,text\n1,\"a\" \n", u"!t.csv, line 2: "_s + kMisplaced},
            {"lone CR", "id,text\n1,a\r2,b\n", u"!t.csv, line 2: "_s + kMisplaced},
        });
    }
    void rowsAreRead() {
        const auto& [bytes, expected] = DataRow<QByteArray, QString>();
        QCOMPARE(Read(bytes), expected);
    }

    void rowsMayLieAcrossBlocks() {
        QByteArray bytes = "id,text\n";
        QStringList expected;
        for (int i = 0; i < 40; ++i) {
            const QByteArray text = QByteArray(90'000 + i, 'x') + "\"\"\n";
            bytes += QByteArray::number(i) + ",\"" + text + "\"\n";
            expected.append(
                u"%1=%2"_s.arg(i).arg(QString::fromLatin1(text).replace("\"\""_L1, "\""_L1)));
        }
        QVERIFY(bytes.size() > 3 * CCsvTable::kMostRowBytes);
        QCOMPARE(Read(bytes), expected.join(u'|'));
        // A quote that is missing does not read the file into memory.
        QCOMPARE(Read("id,text\n1,\"" + QByteArray(CCsvTable::kMostRowBytes, '\n')),
                 u"!t.csv, line 2: a row longer than 1 MB, or a missing quote"_s);
    }

    void numbersAreReadWholly() {
        // What a field is as a number and as an amount, if it is one.
        const std::tuple<QString, std::optional<quint32>, std::optional<double>> rows[] = {
            {u"4294967295"_s, 4294967295, 4294967295.0},
            {u"4294967296"_s, {}, 4294967296.0},
            {u"1.5e3"_s, {}, 1500.0},
            {u"1x"_s, {}, {}},
            {u"inf"_s, {}, {}},
        };
        for (const auto& [field, number, amount] : rows) {
            Save(m_path, "id,text\n" + field.toLatin1() + ",a\n3,b\n");
            CCsvTable table(m_path, kLayout);
            QVERIFY(table.NextRow());
            quint32 asNumber = 0;
            QCOMPARE(table.ReadNumber(kId, asNumber), number.has_value());
            QCOMPARE(asNumber, number.value_or(asNumber));
            QCOMPARE(table.NextRow(), number.has_value());  // damage ends the table
            QCOMPARE(table.GetError(),
                     number ? QString()
                            : u"t.csv, line 2: '%1' is not a valid number for 'id'"_s.arg(field));
            CCsvTable again(m_path, kLayout);
            QVERIFY(again.NextRow());
            double asAmount = 0;
            QCOMPARE(again.ReadAmount(kId, asAmount), amount.has_value());
            QCOMPARE(asAmount, amount.value_or(asAmount));
        }
    }

    void readingCanBeCancelled() {
        Save(m_path, "id,text\n" + QByteArray("1,a\n").repeated(600'000));
        int blocks = 0;
        CCsvTable table(m_path, kLayout, [&blocks](qsizetype bytes) {
            blocks += bytes > 0 ? 1 : 0;
            return blocks < 2;
        });
        int rows = 0;
        while (table.NextRow()) {
            ++rows;
        }
        QVERIFY(rows > 0 && rows < 600'000);
        QVERIFY(table.IsCancelled());
        QCOMPARE(table.GetError(), QString());
    }

    void descriptionsAreCut_data() {
        AddRows<QString, QString, QString>({
            {"at the first comma", {}, u"Cheese ,blue, old"_s, u"Cheese|blue, old"_s},
            {"no comma", {}, u"Honey"_s, u"Honey|plain"_s},
            {"no type", {}, u"Honey, "_s, u"Honey|plain"_s},
            {"no name", {}, u", raw"_s, u"|raw"_s},
            {"brand", u"Acme"_s, u"TEA, GREEN"_s, u"Acme TEA|GREEN"_s},
            {"brand in it", u"Acme"_s, u"ACME'S TEA"_s, u"ACME'S TEA|plain"_s},
            {"brand alone", u"Acme"_s, u"ACME"_s, u"ACME|plain"_s},
            {"letters of the brand", u"Go"_s, u"GOAT CHEESE"_s, u"Go GOAT CHEESE|plain"_s},
            {"brand with a comma", u"Acme, Inc."_s, u"ACME, INC. TEA, X"_s, u"ACME, INC. TEA|X"_s},
        });
    }
    void descriptionsAreCut() {
        const auto& [brand, description, expected] = DataRow<QString, QString, QString>();
        const CFoodTexts texts = SplitBranded(brand, description);
        QCOMPARE(texts.name + u'|' + texts.type, expected);
    }

    void portionsHaveTexts_data() {
        AddRows<CPortionFields, QString>({
            {"a pair at the cut",
             {{}, {}, QString(59, u'1') + u"\U0001F34E2345"_s, {}},
             QString(59, u'1') + u"..."_s},
            {"modifier", {u"1"_s, {}, {}, u"cup, sliced"_s}, u"1 cup, sliced"_s},
            {"unit and modifier", {u"0.50"_s, u"cup"_s, {}, u"whole"_s}, u"0.5 cup, whole"_s},
            {"description", {{}, u"cup"_s, u"1 cup"_s, u"10205"_s}, u"1 cup"_s},
            {"description without its amount", {u"10"_s, {}, u"crackers"_s, {}}, u"10 crackers"_s},
            {"amount alone", {u"1.0"_s, {}, {}, {}}, QString()},
            {"long", {u"1"_s, QString(70, u'x'), {}, {}}, u"1 "_s + QString(58, u'x') + u"..."_s},
        });
    }
    void portionsHaveTexts() {
        const auto& [fields, expected] = DataRow<CPortionFields, QString>();
        QCOMPARE(PortionText(fields), expected);
    }

  private:
    /// "ID=TEXT" of each row, and the error.
    QString Read(const QByteArray& bytes) {
        Save(m_path, bytes);
        CCsvTable table(m_path, kLayout);
        QStringList rows;
        while (table.NextRow()) {
            rows.append(TextOf(table.Field(kId)) + u'=' + TextOf(table.Field(kText)));
        }
        return rows.join(u'|') + (table.GetError().isEmpty() ? QString() : u'!' + table.GetError());
    }

    inline static const QString kMisplaced = u"unexpected quote or line end"_s;
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"t.csv"_s);
};

QTEST_GUILESS_MAIN(TestCsvTable)
#include "TestCsvTable.moc"
