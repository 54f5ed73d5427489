// Both programs as the system starts them: signals, permissions of what they make, words of the
// command line.
#include "support/DataRows.h"
#include "support/Files.h"

#include <sys/stat.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestPrograms : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<QTemporaryDir> m_folder;

    [[nodiscard]] QString Path(const QString& name) const { return m_folder->filePath(name); }
    /// Octal, "600"; empty when there is no such file.
    [[nodiscard]] QString Mode(const QString& name) const {
        struct stat found {};
        return ::stat(QFile::encodeName(Path(name)).constData(), &found) == 0
                   ? QString::number(found.st_mode & 0777, 8)
                   : QString();
    }
    /// The script finds the programs as $cli and $window.
    void Start(QProcess& process, const QString& script) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"cli"_s, QStringLiteral(VELMORA_CLI));
        environment.insert(u"window"_s, QStringLiteral(VELMORA_WINDOW));
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder->path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder->path());
        process.start(u"/bin/sh"_s, {u"-c"_s, u"umask 022; "_s + script});
    }
    /// Exit status and standard error.
    QString Run(const QString& script) const {
        QProcess process;
        Start(process, script);
        if (!process.waitForFinished()) {
            process.kill();
            process.waitForFinished();
        }
        return QString::number(process.exitCode()) + u'|' +
               QString::fromUtf8(process.readAllStandardError());
    }

  private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void whatIsPrivateIsReadByItsOwnerAlone() {
        const QString ann =
            u"$cli --volume new/v.db profile create Ann --sex male --birth 1996-06-01 --height 180 "
            "--activity 0 --start 2026-06-01 --start-weight 80 --goal 2026-09-01 "
            "--goal-weight 80 --diet 3 && "_s;
        const QString report =
            u"$cli --volume new/v.db report new.csv --profile Ann --from 2026-06-01 --to "
            "2026-06-02 && touch old.csv && chmod 664 old.csv && "
            "$cli --volume new/v.db report old.csv --profile Ann --from 2026-06-01 --to "
            "2026-06-02 && "_s;
        const QString foods = u"$cli --volume new/v.db foods import "_s +
                              QStringLiteral(VELMORA_STARTER_FOODS) +
                              u" && $cli --volume new/v.db foods export shared.csv && "
                              "touch kept.csv && chmod 600 kept.csv && "
                              "$cli --volume new/v.db foods export kept.csv"_s;
        QCOMPARE(Run(ann + report + foods), u"0|"_s);
        QCOMPARE(Mode(u"new"_s), u"700"_s);
        QCOMPARE(Mode(u"new/v.db"_s), u"600"_s);
        QCOMPARE(Mode(u"new.csv"_s), u"600"_s);
        QCOMPARE(Mode(u"old.csv"_s), u"664"_s);
        QCOMPARE(Mode(u"shared.csv"_s), u"644"_s);
        QCOMPARE(Mode(u"kept.csv"_s), u"600"_s);
        QCOMPARE(Run(u"chmod 640 new/v.db && $cli --volume new/v.db profile list"_s), u"0|"_s);
        QCOMPARE(Mode(u"new/v.db"_s), u"640"_s);
    }

    void theWindowProgramKeepsItsVolumePrivateAndIgnoresTheSizeLimitSignal() {
        QProcess process;
        Start(process, u"exec $window --volume new/v.db"_s);
        QTRY_VERIFY(QFile::exists(Path(u"new/v.db"_s)));
        QCOMPARE(Mode(u"new"_s), u"700"_s);
        QCOMPARE(Mode(u"new/v.db"_s), u"600"_s);
        const QByteArray status =
            Load(u"/proc/%1/status"_s.arg(process.processId())).split('\n').join(' ');
        const qsizetype at = status.indexOf("SigIgn:") + 7;
        const quint64 ignored = status.mid(at).trimmed().first(16).toULongLong(nullptr, 16);
        QVERIFY((ignored & (quint64{1} << (SIGXFSZ - 1))) != 0);
        process.kill();
        QVERIFY(process.waitForFinished());
    }

    void aLimitOnFileSizesIsAnErrorAndNoDeath() {
        const QString told =
            Run(u"ulimit -f 4; exec $cli --volume v.db categories add Soups --kind foods"_s);
        QVERIFY2(told.startsWith(u"1|ERROR: CeMountDBVol failed (112)\n"_s), qPrintable(told));
    }

    void pathsThatAreNoUtf8AreRefusedOrWork_data() {
        AddRows<QString, QString>({
            {"volume", u"exec $cli --volume \"$(printf 'a\\377.db')\" profile list"_s,
             u"2|velmora-cli: a\\xff.db is not valid UTF-8\n"_s},
            {"export", u"exec $cli --volume v.db foods export \"$(printf '\\377.csv')\""_s,
             u"2|velmora-cli: \\xff.csv is not valid UTF-8\n"_s},
            {"window", u"exec $window --volume \"$(printf 'a\\377.db')\""_s,
             u"2|velmora: a\\xff.db is not valid UTF-8\n"_s},
            {"data folder",
             u"bad=\"$(printf '\\377')\" && mkdir \"$bad\" && cp $cli \"$bad/cli\" && "
             "XDG_DATA_HOME=\"$PWD/$bad\" \"$bad/cli\" profile list 2> told; status=$?; "
             "grep -o 'VelmoraDb.db is not valid UTF-8' told >&2; rm -r \"$bad\" told; "
             "exit $status"_s,
             u"2|VelmoraDb.db is not valid UTF-8\n"_s},
            {"folder",
             u"mkdir \"$(printf '\\377')\" && cd \"$(printf '\\377')\" && "
             "$cli --volume v.db foods import "_s +
                 QStringLiteral(VELMORA_STARTER_FOODS) +
                 u" && { $cli --volume v.db foods export out.csv; "
                 "rm v.db && cd .. && rmdir \"$(printf '\\377')\"; }"_s,
             u"0|Cannot create file.\n"_s},
        });
    }
    void pathsThatAreNoUtf8AreRefusedOrWork() {
        const auto& [script, told] = DataRow<QString, QString>();
        QCOMPARE(Run(script), told);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
    }
};

QTEST_GUILESS_MAIN(TestPrograms)
#include "TestPrograms.moc"
