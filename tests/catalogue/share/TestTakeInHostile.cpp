// Share files that somebody made by hand, or that a disk has damaged: each is refused with a reason
// and changes nothing.
#include <sqlite3.h>

#include "ShareFixture.h"
#include "app/UndoRules.h"
#include "catalogue/share/ShareFormat.h"
#include "support/DataRows.h"
#include "support/DeepTrees.h"

using namespace Qt::StringLiterals;

namespace {
/// Changes a share file by statements, and makes its checksum match again.
class CShareEditor {
  public:
    explicit CShareEditor(const QString& path) {
        sqlite3_open(QFile::encodeName(path).constData(), &m_file);
    }
    ~CShareEditor() { sqlite3_close(m_file); }

    bool Run(const QByteArray& sql) {
        return sqlite3_exec(m_file, sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    /// Makes one value of a record another.
    void Put(const QByteArray& table, int id, int property, const PropertyValue& value) {
        const QByteArray where = " WHERE id=" + QByteArray::number(id);
        QByteArray bytes;
        Each("SELECT body FROM " + table + where, [&](auto, auto body) {
            PropertyList properties;
            DecodeRecord(body(0), properties);
            properties[property] = value;
            EncodeRecord(properties, bytes);
        });
        QVERIFY(Run("UPDATE " + table + " SET body=x'" + bytes.toHex() + '\'' + where));
    }
    /// The counts stay as they are.
    void Seal() {
        CRowsChecksum categories;
        CRowsChecksum items;
        Each("SELECT body FROM categories ORDER BY id",
             [&](auto, auto body) { categories.Add({}, body(0)); });
        Each("SELECT id,category,body FROM items ORDER BY id", [&](auto item, auto body) {
            items.Add({item(1)}, body(2));
            Each("SELECT owner,item,body FROM components WHERE owner=" +
                     QByteArray::number(item(0)) + " ORDER BY id",
                 [&](auto part, auto partBody) {
                     items.Add({part(0), part(1)}, partBody(2));
                 });
        });
        QVERIFY(Run("UPDATE contents SET checksum=" +
                    QByteArray::number(
                        static_cast<qint64>(ChecksumWith(categories.Value(), items.Value())))));
    }

  private:
    template <typename Take>
    void Each(const QByteArray& sql, Take take) {
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(m_file, sql.constData(), -1, &rows, nullptr);
        while (sqlite3_step(rows) == SQLITE_ROW) {
            take([rows](int column) { return sqlite3_column_int64(rows, column); },
                 [rows](int column) {
                     const void* bytes = sqlite3_column_blob(rows, column);
                     return QByteArrayView(static_cast<const char*>(bytes),
                                           sqlite3_column_bytes(rows, column));
                 });
        }
        sqlite3_finalize(rows);
    }

    sqlite3* m_file = nullptr;
};

constexpr int kPage = 1024;    ///< bytes, in files of page trees
constexpr int kItemsRoot = 4;  ///< the page of the third table, after the list and two others
const QString kNoShare = QStringLiteral("is not a share file of Velmora");
const QString kNewer = QStringLiteral("was made by a newer version of Velmora");
const QString kDamaged = QStringLiteral("is damaged");
const QString kTooLarge = QStringLiteral(
    "is too large: a share file has at most 260 categories, 100000 items, 1000000 components and "
    "256 MB.");

/// A statement on a sound file, and why the file is refused then.
struct CHandMade {
    QByteArray sql;
    QString reason = kDamaged;
};
}  // namespace

class TestTakeInHostile : public CShareTest {
    Q_OBJECT

  private slots:
    // One sound file for all rows, and an empty volume in which nothing may ever be.
    void initTestCase() {
        MakeVolume();
        FillKitchen();
        (void)Share(kMenus);
        m_sound = Load(Shared());
        Reopen(u"other.db"_s);
        m_content = TakenIn();
        QVERIFY(!m_content.isEmpty());
    }
    void init() {
        Save(Shared(), m_sound);
        m_messages->Said();
    }
    void cleanup() {
        QCOMPARE(Everything(), QString());
        QCOMPARE(NextName(Database(), EUndo::Undo, kCatalogueScope), QString());
    }
    void cleanupTestCase() { DropVolume(); }

    /// Items: 1 milk, 2 flour, 3 dough, 4 bread, 5 breakfast. Components: dough of milk and flour,
    /// bread of dough and milk, breakfast of bread and of an egg.
    void handMadeFilesAreRefused_data() {
        AddRows<CHandMade>({
            {"other application", {"PRAGMA application_id=1447841106", kNoShare}},
            {"newer", {"PRAGMA user_version=2", kNewer}},
            {"no version", {"PRAGMA user_version=0", kNoShare}},
            {"write-ahead log", {"PRAGMA journal_mode=WAL"}},
            {"free pages", {"CREATE TABLE t(x); DROP TABLE t"}},
            {"trigger", {"CREATE TRIGGER t AFTER UPDATE ON items BEGIN DELETE FROM items; END"}},
            {"other table",
             {"PRAGMA writable_schema=1; UPDATE sqlite_schema SET sql='CREATE TABLE items(id "
              "INTEGER PRIMARY KEY,category INTEGER,body BLOB CHECK(1))' WHERE name='items'"}},
            {"table of another type",
             {"PRAGMA writable_schema=1; UPDATE sqlite_schema SET type='view' WHERE name='items'"}},
            {"page used twice",
             {"PRAGMA writable_schema=1; UPDATE sqlite_schema SET rootpage=(SELECT rootpage FROM "
              "sqlite_schema WHERE name='items') WHERE name='components'"}},
            {"no contents", {"DELETE FROM contents"}},
            {"contents twice", {"INSERT INTO contents SELECT * FROM contents"}},
            {"contents as text", {"UPDATE contents SET items='5 items'"}},
            {"checksum as text", {"UPDATE contents SET checksum='none'"}},
            {"fewer than none", {"UPDATE contents SET items=-5"}},
            {"an item too few", {"UPDATE contents SET items=6"}},
            {"a category too few", {"UPDATE contents SET categories=9"}},
            {"too many items", {"UPDATE contents SET items=100001", kTooLarge}},
            {"too many categories", {"UPDATE contents SET categories=261", kTooLarge}},
            {"too many components", {"UPDATE contents SET components=1000001", kTooLarge}},
            {"negative number", {"UPDATE items SET id=-1 WHERE id=1"}},
            {"gap in components", {"UPDATE components SET id=7 WHERE id=6"}},
            {"gap in categories", {"UPDATE categories SET id=9 WHERE id=4"}},
            {"missing category", {"UPDATE items SET category=5 WHERE id=5"}},
            {"no category", {"UPDATE items SET category=0 WHERE id=5"}},
            {"food in a category of recipes", {"UPDATE items SET category=3 WHERE id=1"}},
            {"component of a food", {"UPDATE components SET owner=2 WHERE id=1"}},
            {"component of no item", {"UPDATE components SET owner=9 WHERE id=6"}},
            {"made of itself", {"UPDATE components SET item=4 WHERE id=3"}},
            {"made of no item", {"UPDATE components SET item=99 WHERE id=6"}},
            {"made of less than none", {"UPDATE components SET item=-1 WHERE id=6"}},
            {"food for a recipe", {"UPDATE components SET item=1 WHERE id=5"}},
            {"no body", {"UPDATE items SET body=NULL WHERE id=1"}},
            {"body of many values",
             {"UPDATE items SET body=CAST(x'FFFF' || zeroblob(65535) AS BLOB) WHERE id=1"}},
            {"giant body", {"UPDATE items SET body=zeroblob(20000000) WHERE id=1"}},
        });
    }
    void handMadeFilesAreRefused() {
        const auto& [made] = DataRow<CHandMade>();
        {
            CShareEditor editor(Shared());
            QVERIFY(editor.Run(made.sql) || made.sql.contains("writable_schema"));
            if (!made.sql.contains("contents")) {
                editor.Seal();
            }
        }
        Refuses(made.reason);
    }

    void oddRecordsAreRefused_data() {
        AddRows<QByteArray, int, int, PropertyValue>({
            {"made of a menu", "components", 6, 1, 1},
            {"category of no kind", "categories", 1, 0, qint16(4)},
            {"category without a name", "categories", 1, 2, QString()},
            {"category twice", "categories", 2, 2, u"Dairy"_s},
            {"large picture", "categories", 1, 3, QByteArray(kLargestPictureBytes + 1, 'x')},
            {"no name", "items", 1, 1, QString()},
            {"no type", "items", 1, 2, QString()},
            {"no recipe's name", "items", 3, 3, QString()},
            {"long name", "items", 1, 1, QString(129, u'x')},
            {"long instructions", "items", 3, 61, QString(32'768, u'x')},
            {"NaN", "items", 1, 3, qQNaN()},
            {"infinity", "components", 1, 60, qInf()},
            {"text for a number", "items", 1, 3, u"1"_s},
        });
    }
    void oddRecordsAreRefused() {
        const auto& [table, id, property, value] = DataRow<QByteArray, int, int, PropertyValue>();
        {
            CShareEditor editor(Shared());
            editor.Put(table, id, property, value);
            editor.Seal();
        }
        Refuses(kDamaged);
    }

    /// The rows above are refused for what they change, not for how they are sealed.
    void theEditorMakesSoundFiles() {
        QVERIFY(CShareEditor(Shared()).Run("UPDATE contents SET checksum=0"));
        Refuses(kDamaged);
        CShareEditor(Shared()).Seal();
        QCOMPARE(TakenIn(), m_content);
    }

    void filesOfOtherKindsAreRefused() {
        for (const auto& [bytes, reason] : {std::pair(QByteArray(), kNoShare),
                                            {QByteArray("<Foods>\r\n"), kNoShare},
                                            {m_sound.first(99), kDamaged},
                                            {m_sound.first(m_sound.size() - 1), kDamaged},
                                            {m_sound.first(m_sound.size() - 4096), kDamaged},
                                            {m_sound + QByteArray(4096, '\0'), kDamaged},
                                            {Load(Path(u"v.db"_s)), kNoShare}}) {
            Save(Shared(), bytes);
            Refuses(reason);
        }
        QVERIFY(!TakeInFile(Database(), EDuplicatePolicy::Skip, m_folder->path()));
        QVERIFY(m_messages->Said().contains(u"cannot be read"));
    }

    /// Checking such a tree takes more stack, or more time, than there is.
    void deepAndWideTreesAreRefused() {
        constexpr int kDeep = 50'000;
        constexpr int kLevels = 4;
        for (const auto& [levels, cells] : {std::pair(kDeep, 0), {kDeep, 1}, {kLevels, 60}}) {
            Save(Shared(), m_sound);
            QVERIFY(CShareEditor(Shared()).Run("PRAGMA page_size=1024; VACUUM"));
            Save(Shared(), WithDeepTree(Load(Shared()), kPage, kItemsRoot, levels, cells));
            Refuses(kDamaged);
        }
    }

    void sizeIsJudgedByTheHeaderFirst() {
        for (const auto& [bytes, reason] :
             {std::pair(m_sound, kTooLarge), {QByteArray(100, 'x'), kNoShare}}) {
            QFile file(Shared());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
            QVERIFY(file.resize(kMostShareBytes + 4096));  // a hole
            file.close();
            Refuses(reason);
        }
    }

    /// Every field of the first pages, and samples of the rest, with one bit turned: the file is
    /// refused, or holds what it held.
    void turnedBitsAreNoticed() {
        int refused = 0;
        for (qsizetype at = 0; at < m_sound.size(); at += at < 400 ? 1 : 37) {
            QByteArray turned = m_sound;
            turned[at] = static_cast<char>(turned[at] ^ (1 << (at % 8)));
            Save(Shared(), turned);
            const QString content = TakenIn();
            refused += content.isEmpty() ? 1 : 0;
            QVERIFY2(content.isEmpty() || (content == m_content && !IsFixed(at)),
                     qPrintable(QString::number(at)));
        }
        QVERIFY(refused > 100);
    }

  private:
    void Refuses(const QString& reason) {
        const QString said = TakeIn(EDuplicatePolicy::Overwrite);
        QVERIFY2(said.startsWith(u'!') && said.contains(reason) && !said.contains(u'|'),
                 qPrintable(said));
    }
    /// Whether the byte of the file's header is the same in every share file: formats, the size of
    /// the file, free pages, cache, encoding, traces of a vacuum.
    static bool IsFixed(qsizetype at) {
        return (at >= 18 && at < 24) || (at >= 28 && at < 40) || (at >= 48 && at < 60) ||
               (at >= 64 && at < 68);
    }
    /// What a volume holds of the file; empty when it is refused.
    QString TakenIn() {
        if (TakeIn().startsWith(u'!')) {
            return {};
        }
        const QString content = Everything();
        return RevertNext(Database(), EUndo::Undo, kCatalogueScope) ? content : QString();
    }

    QByteArray m_sound;
    QString m_content;  ///< of the sound file
};

QTEST_GUILESS_MAIN(TestTakeInHostile)
#include "TestTakeInHostile.moc"
