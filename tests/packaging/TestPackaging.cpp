// What is made for the package: the icons, the manual page and the completion of velmora-cli.
#include <QImage>
#include <QProcess>

#include "support/Files.h"

namespace {
const QString kMade = QStringLiteral(VELMORA_MADE);

/// What bash offers at the end of the line; "=" is a word of its own, as it is for bash.
QString Completed(const QString& line) {
    QString words = line;
    const QStringList split = words.replace(u'=', u" = "_s).split(u' ');
    QProcess bash;
    bash.start(u"bash"_s,
               QStringList{u"-c"_s,
                           u"source \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
                           "_velmora_cli 2>/dev/null; echo ${COMPREPLY[@]}"_s,
                           kMade + u"velmora-cli.bash"_s} +
                   split);
    return bash.waitForFinished() ? QString::fromUtf8(bash.readAllStandardOutput()).trimmed()
                                  : u"bash did not end"_s;
}
}  // namespace

class TestPackaging : public QObject {
    Q_OBJECT

  private slots:
    void bashCompletesWhatFits() {
        const std::pair<QString, QString> rows[] = {
            {u"foo"_s, u"foods"_s},
            {u"help ex"_s, u"exlib exercises"_s},
            {u"foods im"_s, u"import import-fdc"_s},
            {u"foods import f --ex"_s, u"--existing"_s},
            {u"foods import --existing "_s, u"overwrite skip add"_s},
            {u"--volume x foods import --existing=s"_s, u"skip"_s},
            {u"--volume=x foods import --existing s"_s, u"skip"_s},
            {u"foods --existing s im"_s, u"import import-fdc"_s},
            {u"report f --types=diet,w"_s, u"diet,weight"_s},
            {u"foods import-fdc /proc/self/fdin"_s, u"/proc/self/fdinfo"_s},
            {u"backups folder --set /proc/self/fdin"_s, u"/proc/self/fdinfo"_s},
            {u"report f --profile We --b"_s, u"--by"_s},
            {u"report f /proc/self/cmdl"_s, QString()},
            {u"foods import /proc/self/cmdl"_s, u"/proc/self/cmdline"_s},
            {u"help foods import /proc/self/cmdl"_s, QString()},
            {u"--volume /proc/self/cmdl"_s, u"/proc/self/cmdline"_s},
            {u"foods list --category /proc/self/cmdl"_s, QString()},
            {u"--vers"_s, u"--version"_s},
        };
        for (const auto& [line, offered] : rows) {
            QCOMPARE(line + u" => "_s + Completed(u"velmora-cli "_s + line),
                     line + u" => "_s + offered);
        }
    }

    void thePageNamesCommandsWithTheirOptions() {
        const QByteArray page = Load(kMade + u"velmora-cli.1"_s);
        for (const char* const part :
             {".SS foods\n",
              ".PP\n\\fBfoods import\\fR \\fIFILE\\fR [\\fB\\-\\-existing\\fR overwrite|skip|add]\n"
              ".RS 4\nadd the items of a CSV file\n"
              ".TP\n\\fB\\-\\-existing\\fR overwrite|skip|add\nwhat to do with",
              "\\fBreport\\fR \\fIFILE\\fR \\fB\\-\\-profile\\fR \\fINAME\\fR ",
              "\\fB\\-\\-yes\\fR\ndelete without asking\n",
              ".TP\n\\fB\\-\\-volume\\fR \\fIFILE\\fR\nthe data file"}) {
            QVERIFY2(page.contains(part), part);
        }
    }

    void iconsHaveTheirSizes() {
        for (const int size : {16, 48, 512}) {
            const QImage icon(kMade + u"velmora-%1.png"_s.arg(size));
            QCOMPARE(icon.size(), QSize(size, size));
            QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
            // The spine, the cover and the apple, in sixteenths of the side.
            QCOMPARE(icon.pixelColor(3 * size / 16, 8 * size / 16), QColor(27, 86, 54));
            QCOMPARE(icon.pixelColor(4 * size / 16, 2 * size / 16), QColor(46, 125, 80));
            QCOMPARE(icon.pixelColor(9 * size / 16, 8 * size / 16), QColor(200, 55, 45));
        }
    }
};

QTEST_GUILESS_MAIN(TestPackaging)
#include "TestPackaging.moc"
