// The window program as the system starts it.
#include "support/Files.h"

#include <sys/stat.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

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
    /// The script finds the program as $window.
    void Start(QProcess& process, const QString& script) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"window"_s, QStringLiteral(VELMORA_WINDOW));
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder->path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder->path());
        process.start(u"/bin/sh"_s, {u"-c"_s, u"umask 022; "_s + script});
    }

  private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

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

    void aVolumeWhosePathIsNoTextIsRefused() {
        QProcess process;
        Start(process, u"exec $window --volume \"$(printf 'a\\377.db')\""_s);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
        QCOMPARE(process.readAllStandardError(), "velmora: a\\xff.db is not valid UTF-8\n");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestPrograms)
#include "TestPrograms.moc"
