// Plays the transcripts of this folder: real processes on real volumes, with what they print.
//
//     # a remark; it stays where it is
//     $ profile list         a line of the shell, which knows the words of words.sh
//     name                   what it printed; '|' is a tab, a lone backslash a blank line
//     ! There is no ...      what it printed on standard error
//     = 1                    its exit status, when it is not 0
//     ? foods list => [1] There is no ...       all of that on one line: the status first, and
//                            only the first line of a wrong command line's usage
//
// "$ sql ..." changes the volume itself. With VELMORA_WRITE_TRANSCRIPTS set the transcripts are
// written again: read the difference before you keep it.
#include "store/engine/SqliteFile.h"
#include "support/Files.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace {
const bool kWritesAnew = qEnvironmentVariableIsSet("VELMORA_WRITE_TRANSCRIPTS");
const QString kTranscripts = QStringLiteral(VELMORA_TRANSCRIPTS);
constexpr int kWidth = 100;

/// Broken at a blank, or where a column ends.
QString Wrapped(QString line) {
    QString shown;
    while (line.size() > kWidth) {
        const QStringView start = QStringView(line).first(kWidth);
        qsizetype end = start.lastIndexOf(u' ');
        end = end > kWidth / 2 ? end : start.lastIndexOf(u'|');
        end = end > kWidth / 2 ? end : kWidth - 1;
        shown += line.first(end + (line[end] == u' ' ? 0 : 1)) + u'\n';
        line = u"  "_s + line.sliced(end + 1);
    }
    return shown + line + u'\n';
}

struct COutcome {
    int status = 0;
    QStringList output;
    QStringList messages;
};

QStringList Lines(const QByteArray& printed, const QString& folder) {
    QString text = QString::fromUtf8(printed).replace(u'\t', u'|');
    QStringList lines = text.replace(folder, u"FOLDER"_s).split(u'\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

QString OnOneLine(const QString& command, const COutcome& outcome) {
    constexpr int kWrongUsage = 2;
    const QString text = outcome.status == kWrongUsage
                             ? outcome.messages.value(0).remove(u"velmora-cli: "_s)
                             : (outcome.output + outcome.messages).join(u" / "_s);
    const QString status = outcome.status == 0 ? QString() : u"[%1] "_s.arg(outcome.status);
    return Wrapped((command + u" => "_s + status + text).trimmed());
}

QString OnLines(const QString& command, const COutcome& outcome) {
    QString shown = command + u'\n';
    for (const QString& line : outcome.output) {
        shown += line.isEmpty() ? u"\\\n"_s : Wrapped(line);
    }
    for (const QString& line : outcome.messages) {
        shown += Wrapped(u"! "_s + line);
    }
    return shown + (outcome.status == 0 ? QString() : u"= %1\n"_s.arg(outcome.status));
}

/// Remarks and blank lines; a command with what it printed.
QStringList PartsOf(const QString& transcript) {
    QStringList parts;
    for (const QString& line : transcript.split(u'\n')) {
        const bool isOutput = !line.isEmpty() && !u"$?#"_s.contains(line[0]);
        if (isOutput && !parts.isEmpty()) {
            parts.last() += line + u'\n';
        } else {
            parts.append(line + u'\n');
        }
    }
    return parts;
}

/// Lines that begin with four blanks belong to it; so does what is wrapped on one line.
QString CommandOf(const QString& part) {
    if (part.startsWith(u'?')) {
        return QString(part).replace(u"\n  "_s, u" "_s).section(u" =>"_s, 0, 0).trimmed();
    }
    QStringList lines = part.split(u'\n');
    QString command = lines.takeFirst();
    while (!lines.isEmpty() && lines.first().startsWith(u"    "_s)) {
        command += u'\n' + lines.takeFirst();
    }
    return command;
}
}  // namespace

class TestCommandLine : public QObject {
    Q_OBJECT

  private slots:
    void transcriptsGoAsTheyWent_data() {
        QTest::addColumn<QString>("path");
        for (const QFileInfo& file : QDir(kTranscripts).entryInfoList({u"*.txt"_s})) {
            QTest::newRow(qPrintable(file.baseName())) << file.filePath();
        }
    }
    void transcriptsGoAsTheyWent() {
        QFETCH(const QString, path);
        const QTemporaryDir folder;
        QString seen;
        for (const QString& part : PartsOf(QString::fromUtf8(Load(path)).chopped(1))) {
            const bool isCommand = part.startsWith(u'$') || part.startsWith(u'?');
            const QString shown = isCommand ? Play(folder.path(), CommandOf(part)) : part;
            QVERIFY2(!shown.contains(u"Syntax error"_s), qPrintable(shown));
            QVERIFY2(kWritesAnew || shown == part, qPrintable(u"went so:\n"_s + shown));
            seen += shown;
        }
        if (kWritesAnew) {
            Save(path, seen.toUtf8());
        }
    }

  private:
    static QString Play(const QString& folder, const QString& command) {
        const bool isStatement = command.startsWith(u"$ sql "_s);
        const COutcome outcome =
            isStatement ? Change(folder, command.sliced(6)) : Run(folder, command.sliced(2));
        return command.startsWith(u'?') ? OnOneLine(command, outcome) : OnLines(command, outcome);
    }
    static COutcome Run(const QString& folder, const QString& command) {
        QProcess process;
        process.setWorkingDirectory(folder);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"en_US.UTF-8"_s);
        environment.insert(u"cli"_s, QStringLiteral(VELMORA_CLI));
        environment.insert(u"starter"_s, QStringLiteral(VELMORA_STARTER_FOODS));
        process.setProcessEnvironment(environment);
        process.start(u"/bin/sh"_s, {u"-c"_s, u". "_s + kTranscripts + u"/words.sh\n"_s + command});
        process.waitForFinished(-1);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                Lines(process.readAllStandardOutput(), folder),
                Lines(process.readAllStandardError(), folder)};
    }
    static COutcome Change(const QString& folder, const QString& statement) {
        CSqliteFile volume;
        const bool isDone = volume.Open(folder + u"/v.db"_s) == kErrorSuccess &&
                            volume.Execute(statement.toUtf8().constData()) == kErrorSuccess;
        return {isDone ? 0 : 1, {}, {}};
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
