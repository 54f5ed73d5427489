#include <fcntl.h>
#include <sys/stat.h>

#include <QTemporaryDir>

#include "platform/TextFile.h"
#include "support/Files.h"

class TestTextFile : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"foods.csv"_s);
    }

    void linesEndInAnyOfThreeWays() {
        QCOMPARE(LinesOf(""), QStringList{});
        QCOMPARE(LinesOf("a\rb\nc\r\nd"), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
        QCOMPARE(LinesOf("\r\n\r\n\n\r\r"), QStringList(5, u""_s));
        QCOMPARE(LinesOf(QByteArray("a\0b\x9B\n", 5)), QStringList{u"a\0b¢"_s});
    }

    void lineEndsAreSeenAtEveryPlaceOfTheBuffer() {
        // Lines of 1,023 bytes and their CR LF: from line to line and from shift to shift the
        // pairs move over the edges of every buffer that is a power of two.
        for (int shift = 0; shift < 4; ++shift) {
            QByteArray bytes(shift, 'x');
            for (int i = 0; i < 200; ++i) {
                bytes += QByteArray(1023, 'x') + "\r\n";
            }
            QStringList expected(200, QString(1023, u'x'));
            expected[0] += QString(shift, u'x');
            QCOMPARE(LinesOf(bytes), expected);
        }
    }

    void longLinesComeInPieces() {
        const std::pair<int, QList<int>> rows[] = {
            {4095, {4095, 1}},
            {4096, {4095, 1, 1}},
            {8190, {4095, 4095, 1}},
            {4095 * 50 + 7, QList<int>(50, 4095) + QList<int>{7, 1}},
        };
        for (const auto& [length, expected] : rows) {
            QList<int> pieces;
            for (const QString& line : LinesOf(QByteArray(length, 'x') + "\r\nz")) {
                pieces.append(static_cast<int>(line.size()));
            }
            QCOMPARE(pieces, expected);
        }
    }

    void aUtf8MarkMakesTheTextUtf8() {
        const QByteArray mark = "\xEF\xBB\xBF";
        QCOMPARE(LinesOf(mark + "Br\xC3\xBBl\xC3\xA9\r\n\xE2\x82\xAC"),
                 (QStringList{u"Brûlé"_s, u"€"_s}));
        QCOMPARE(LinesOf(mark), QStringList{});
        QCOMPARE(LinesOf(mark.first(2)), QStringList{u"∩╗"_s});
        // A sign of four bytes over the end of the first piece is not cut in two.
        for (const int before : {4091, 4092, 4093, 4094}) {
            const QString sign = u"😀!"_s;
            const bool fits = before == 4091;
            QCOMPARE(LinesOf(mark + QByteArray(before, 'x') + sign.toUtf8() + '\n'),
                     (QStringList{QString(before, u'x') + (fits ? sign.first(2) : QString()),
                                  fits ? u"!"_s : sign}));
        }
    }

    void writtenTextIsInTheCodePageAndReplacesTheOldFile() {
        QCOMPARE(LinesOf("old"), QStringList{u"old"_s});
        CTextFile file;
        QVERIFY(file.Create(m_path));
        file.WriteLine(u"Crème 😀");
        file.WriteText(u"½,");
        file.WriteBytes("\xFF");
        file.WriteLine(QString(200'000, u'é'));
        QVERIFY(file.Close());
        QCOMPARE(Load(m_path), "Cr\x8Ame ??\r\n\xAB,\xFF" + QByteArray(200'000, '\x82') + "\r\n");
    }

    void theOldFileStaysUntilTheNewOneIsWhole() {
        QCOMPARE(LinesOf("old"), QStringList{u"old"_s});
        // Never closed, fails in Close, fails before it.
        for (const int length : {65'900, 66'500, 150'000}) {
            {
                CTextFile file;
                QVERIFY(file.Create(m_path));
                const CFileSizeLimit limit(66'000);
                file.WriteText(QString(length, u'n'));
                QVERIFY(length < 66'000 || !file.Close());
            }
            QCOMPARE(Load(m_path), "old");
        }
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"foods.csv"_s});
    }

    void whatCannotBeOpenedIsRefused() {
        CTextFile file;
        QVERIFY(!file.OpenForReading(m_path));
        QVERIFY(!file.OpenForReading(m_folder->path()));
        QVERIFY(!file.Create(m_folder->path()));
        QVERIFY(!file.Create(m_folder->filePath(u"missing/foods.csv"_s)));
        QVERIFY(!file.Create(m_folder->filePath(u"lost\ufffd.csv"_s)));
    }

    void aPipeIsWrittenDirectlyAndItsReaderMissed() {
        const QByteArray pipe = QFile::encodeName(m_path);
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        std::signal(SIGPIPE, SIG_IGN);
        // A reader that stays, and two that leave before a little and before much is written.
        for (const auto& [length, stays] : {std::pair{9, true}, {1, false}, {100'000, false}}) {
            QFile reader;
            QVERIFY(reader.open(open(pipe.constData(), O_RDONLY | O_NONBLOCK), QIODevice::ReadOnly,
                                QFileDevice::AutoCloseHandle));
            CTextFile file;
            QVERIFY(file.Create(m_path));
            if (!stays) {
                reader.close();
            }
            file.WriteText(QString(length, u'x'));
            QCOMPARE(file.Close(), stays);
            QCOMPARE(stays ? reader.readAll() : QByteArray(), QByteArray(stays ? length : 0, 'x'));
        }
    }

    void aStreamWithoutEndIsLeft() {
        CTextFile file;
        QVERIFY(file.OpenForReading(u"/dev/zero"_s, 500'000));
        qsizetype length = 0;
        for (QString line; length < 1'000'000 && file.ReadLine(line);) {
            length += line.size();
        }
        QCOMPARE(length, 500'000);
        QVERIFY(!file.Close() && file.IsTooLong());
        // A file may be as long as it likes.
        Save(m_path, QByteArray(9000, 'x'));
        CTextFile plain;
        QVERIFY(plain.OpenForReading(m_path, 1));
        for (QString line; plain.ReadLine(line);) {
            length -= line.size();
        }
        QCOMPARE(length, 491'000);
        QVERIFY(plain.Close());
    }

    void thePatienceWithAPipeMayEnd() {
        QCOMPARE(mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        CTextFile file;
        QVERIFY(file.OpenForReading(m_path));  // nobody is at its other end
        int asked = 0;
        QFile writer(m_path);
        file.SetKeepWaiting([&] {
            if (++asked == 2) {
                (void)(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                       writer.write("one\ntwo"));
            }
            return asked < 4;
        });
        QString line;
        QVERIFY(file.ReadLine(line));
        QCOMPARE(line, u"one"_s);
        QVERIFY(file.ReadLine(line));
        QCOMPARE(line, u"two"_s);
        QVERIFY(!file.ReadLine(line));
        QCOMPARE(asked, 4);
        QVERIFY(file.Close() && !file.IsTooLong());
    }

  private:
    QStringList LinesOf(const QByteArray& bytes) {
        Save(m_path, bytes);
        CTextFile file;
        if (!file.OpenForReading(m_path) || file.GetLength() != bytes.size()) {
            return {u"not written or not opened"_s};
        }
        QStringList lines;
        QString line;
        while (file.ReadLine(line)) {
            lines.append(line);
        }
        const bool isWhole = file.Close();
        const bool isAtEnd = !file.ReadLine(line) && file.GetLength() == 0;
        return isWhole && isAtEnd ? lines : QStringList{u"broken off"_s};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestTextFile)
#include "TestTextFile.moc"
