// The help page: how the program shows it, and whether it says what the program does.
#include "FrameFixture.h"

#include <QDesktopServices>
#include <QDir>
#include <QProcess>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>

#include "cli/Commands.h"
#include "cli/HelpTexts.h"
#include "frame/HelpWindow.h"
#include "support/DataRows.h"

namespace {
const QString kDocs = QStringLiteral(VELMORA_DOCS);
constexpr qint64 kMostPictureBytes = 700'000;

/// Stands in for the desktop's viewer.
class CViewer : public QObject {
    Q_OBJECT
  public:
    CViewer() { QDesktopServices::setUrlHandler(u"file"_s, this, "Take"); }
    ~CViewer() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    QStringList taken;

  public slots:
    void Take(const QUrl& url) { taken.append(url.fileName()); }
};

QString Unescaped(QString text) {
    return text.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&amp;"_L1, "&"_L1);
}

/// What `pattern` captures, in the order of the page.
QStringList Captures(const QString& text, const QString& pattern) {
    const QRegularExpression expression(pattern, QRegularExpression::DotMatchesEverythingOption);
    QStringList captures;
    for (auto match = expression.globalMatch(text); match.hasNext();) {
        captures.append(match.next().captured(1));
    }
    return captures;
}
}  // namespace

class TestHelp : public CFrameTest {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QVERIFY(QDir(m_shipped.path()).mkpath(u"bin"_s));
        QVERIFY(QFile::link(kDocs, m_shipped.filePath(u"velmora"_s)));
        qputenv("XDG_DATA_DIRS", m_shipped.path().toUtf8());
        qputenv("BROWSER", "/nowhere/browser %s");  // which does not hide that there is none
        m_page = QString::fromUtf8(Load(kDocs + u"/Velmora.htm"_s));
        QVERIFY(!m_page.isEmpty());
    }
    void init() { FillEveryView(); }

    void thePageOpensWhereItCanBeRead_data() {
        AddRows<bool, const char*, QStringList, bool>({
            {"a viewer", true, nullptr, {u"Velmora.htm"_s}, false},
            {"no viewer", false, nullptr, {}, true},
            {"an opener and a viewer", true, "echo browser.desktop", {u"Velmora.htm"_s}, false},
            {"an opener that finds none", true, "", {}, true},
            {"an opener that cannot say", true, "exit 1", {u"Velmora.htm"_s}, false},
        });
    }
    void thePageOpensWhereItCanBeRead() {
        const auto& [hasViewer, answer, taken, hasWindow] =
            DataRow<bool, const char*, QStringList, bool>();
        const QString bin = m_shipped.filePath(u"bin/"_s);
        for (const auto name : {"xdg-open"_L1, "xdg-mime"_L1}) {
            QFile::remove(bin + name);
            if (answer != nullptr) {
                Save(bin + name, QByteArray("#!/bin/sh\n") + answer + '\n');
                QVERIFY(QFile::setPermissions(bin + name, QFile::ReadOwner | QFile::ExeOwner));
            }
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.toUtf8());
        std::optional<CViewer> viewer;
        if (hasViewer) {
            viewer.emplace();
        }
        CShownFrame frame(*m_doc);
        frame.RunCommand(kCommandHelp);
        qputenv("PATH", path);
        QCOMPARE(viewer ? viewer->taken : QStringList(), taken);
        QCOMPARE(frame.findChild<CHelpWindow*>() != nullptr, hasWindow);
        QCOMPARE(m_messages->Said(), QString());
    }

    void aMissingPageIsReported() {
        qputenv("XDG_DATA_DIRS", "/nowhere");
        CDietFrame frame(*m_doc);
        frame.RunCommand(kCommandHelp);
        qputenv("XDG_DATA_DIRS", m_shipped.path().toUtf8());
        QCOMPARE(m_messages->Said(), u"Cannot show the help page Velmora.htm."_s);
        QVERIFY(frame.findChild<CHelpWindow*>() == nullptr);
    }

    void theWindowIsReadWithTheKeyboard() {
        CShownFrame frame(*m_doc);
        CHelpWindow::Open(kDocs + u"/Velmora.htm"_s, &frame);
        const QPointer<CHelpWindow> window = frame.findChild<CHelpWindow*>();
        QTRY_COMPARE(QApplication::activeWindow(), window.data());
        QVERIFY(!window->isModal());
        auto* page = Find<QTextBrowser>(*window, "page");
        auto* back = Find<QPushButton>(*window, "back");
        QVERIFY(page->hasFocus());
        QVERIFY(!back->isEnabled());

        QTest::keyClick(page, Qt::Key_Return);  // no link has the focus
        QVERIFY(window->isVisible());
        QTest::keyClick(page, Qt::Key_Tab);
        QTest::keyClick(page, Qt::Key_Tab);
        QTest::keyClick(page, Qt::Key_Return);
        QCOMPARE(page->source().fragment(), u"window"_s);  // the second line of the contents
        QVERIFY(page->verticalScrollBar()->value() > 0);
        QTest::keyClick(page, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(page->source().fragment(), QString());
        QTest::keyClick(page, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(page->source().fragment(), u"window"_s);
        Press(*window, "contents");
        QCOMPARE(page->source().fragment(), u"contents"_s);
        QVERIFY(back->isEnabled());
        Press(*window, "back");
        QCOMPARE(page->source().fragment(), u"window"_s);

        CHelpWindow::Open(kDocs + u"/Velmora.htm"_s, &frame);
        QCOMPARE(frame.findChildren<CHelpWindow*>().size(), 1);
        QTest::keyClick(page, Qt::Key_Escape);
        QTRY_VERIFY(window.isNull());

        CHelpWindow::Open(kDocs + u"/Velmora.htm"_s, &frame);
        QTimer::singleShot(0, &frame, &QWidget::close);
        constexpr int kStillRunning = 1;
        QTimer::singleShot(20'000, &frame, [] { QCoreApplication::exit(kStillRunning); });
        QCOMPARE(QCoreApplication::exec(), 0);  // an open page does not keep the program running
    }

    void aPictureIsReadFromTheDiskOnce() {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"p.png"_s);
        QVERIFY(QFile::copy(kDocs + u"/pictures/targets.png"_s, file));
        Save(folder.filePath(u"p.htm"_s), "<img src=\"p.png\">");
        CHelpPage page(nullptr);
        page.resize(300, 200);
        page.setSource(QUrl::fromLocalFile(folder.filePath(u"p.htm"_s)));
        page.show();
        QVERIFY(QFile::remove(file));
        page.resize(400, 200);
        const QVariant shown = page.document()->resource(QTextDocument::ImageResource, u"p.png"_s);
        QVERIFY(shown.value<QImage>().width() > 300);
    }

    void everyLinkAndPictureExists() {
        const QStringList places = Captures(m_page, u"id=\"([^\"]*)\""_s);
        QCOMPARE(QSet<QString>(places.begin(), places.end()).size(), places.size());
        for (const QString& link : Captures(m_page, u"href=\"([^\"]*)\""_s)) {
            QVERIFY2(link.startsWith(u'#') && places.contains(link.sliced(1)), qPrintable(link));
        }
        QStringList shown = Captures(m_page, u"<img src=\"pictures/([^\"]*)\" alt=\"[^\"]+\">"_s);
        QCOMPARE(shown.size(), m_page.count("<img"_L1));
        shown.sort();
        const QDir pictures(kDocs + u"/pictures"_s);
        QCOMPARE(pictures.entryList(QDir::Files, QDir::Name | QDir::LocaleAware), shown);
        qint64 bytes = 0;
        for (const QFileInfo& picture : pictures.entryInfoList(QDir::Files)) {
            bytes += picture.size();
        }
        QVERIFY2(bytes < kMostPictureBytes, qPrintable(QString::number(bytes)));
    }

    void everyCommandStandsBesideItsOptions() {
        QMap<QString, QString> rows;
        for (const QString& row : Captures(Section(u"cli"_s), u"<tr>(<td>.*?)</tr>"_s)) {
            for (const QString& command :
                 Captures(row, u"^<td>(.*?)</td>"_s).value(0).split(u"<br>"_s)) {
                rows.insert(command.simplified(), row);
            }
        }
        QStringList missing;
        for (const CCommand& command : AllCommands()) {
            const QString name =
                (NameOf(command) + u' ' + QString::fromLatin1(command.words)).trimmed();
            const QString row = rows.take(name);
            missing += row.isEmpty() ? QStringList{name} : QStringList();
            for (const COption& option : command.options) {
                const QRegularExpression word(QString::fromLatin1(option.name) + u"\\b(?!-)"_s);
                if (!row.contains(word)) {
                    missing.append(name + u": "_s + QString::fromLatin1(option.name));
                }
            }
        }
        QCOMPARE(missing.join(u'\n'), QString());
        rows.remove(u"--volume FILE"_s);
        rows.remove(u"--help, --version"_s);
        QCOMPARE(rows.keys(), QStringList());
    }

    void everyExampleOfTheCommandLineRuns() {
        const QTemporaryDir folder;
        SaveFilesOfExamples(folder);
        QString script = u"set -e\nvelmora-cli() { \"$VELMORA_CLI\" --volume ann.db \"$@\"; }\n"_s;
        for (const QString& example : Captures(m_page, u"<pre class=\"shell\">(.*?)</pre>"_s)) {
            script += Unescaped(example) + u'\n';
        }
        QProcess shell;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"VELMORA_CLI"_s, QStringLiteral(VELMORA_CLI));
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(folder.path());
        shell.start(u"bash"_s, {u"-xc"_s, script});
        QVERIFY(shell.waitForFinished(-1));
        QVERIFY2(shell.exitCode() == 0, shell.readAllStandardError().constData());
        QCOMPARE(Load(folder.filePath(u"week.tsv"_s)).count("date\t"), 7);
    }

    void everyKeyAndEveryCommandOfTheDiariesIsExplained() {
        const QString keys = Section(u"keys"_s);
        const QString words = QString(m_page).remove(QRegularExpression(u"<[^>]*>"_s)).simplified();
        CShownFrame frame(*m_doc);
        QStringList missing;
        const auto require = [&](const QKeySequence& key) {
            const QString text = key.toString(QKeySequence::PortableText);
            const QRegularExpression word(u"(?<![\\w+])"_s + QRegularExpression::escape(text) +
                                          u"(?![\\w+])"_s);
            if (!key.isEmpty() && !keys.contains(word)) {
                missing.append(text);
            }
        };
        for (const int view : kViews) {
            QVERIFY(frame.ShowView(view));
            for (const auto* action : frame.findChildren<QAction*>()) {
                std::ranges::for_each(action->shortcuts(), require);
                const QString command = action->text().remove(u'&');
                if (view <= kSwitchToExercises && command.endsWith("..."_L1) &&
                    !words.contains(command.chopped(3))) {
                    missing.append(command);
                }
            }
            for (const auto* shortcut : frame.findChildren<QShortcut*>()) {
                require(shortcut->key());
            }
            for (const auto* button : frame.ActiveView()->findChildren<QAbstractButton*>()) {
                require(button->shortcut());
            }
        }
        missing.removeDuplicates();
        QCOMPARE(missing.join(u", "_s), QString());
    }

  private:
    /// From the heading of that place to the next heading of its size.
    QString Section(const QString& place) const {
        return Captures(m_page, u"(<h2 id=\""_s + place + u"\">.*?)(?=<h2|$)"_s).value(0);
    }

    void SaveFilesOfExamples(const QTemporaryDir& folder) const {
        // The page's own example of a file of exercises.
        Save(folder.filePath(u"exercises.csv"_s),
             Unescaped(Captures(m_page, u"<pre>(&lt;Exercises.*?)</pre>"_s).value(0)).toUtf8());
        QVERIFY(
            QFile::copy(QStringLiteral(VELMORA_STARTER_FOODS), folder.filePath(u"foods.csv"_s)));
        const QByteArray values = QByteArray("0,").repeated(kNutrientCount + 1);
        Save(folder.filePath(u"recipes.csv"_s),
             "<Recipes>\n1,Recipe,Soups,Lentil soup,," + values + "4 portions,1,Boil.\n<End>\n");
        const QString tables = folder.filePath(u"FoodData_Central_csv/"_s);
        QVERIFY(QDir().mkpath(tables));
        Save(tables + u"food.csv"_s, "fdc_id,data_type,description\n1,foundation_food,Figs\n");
        Save(tables + u"nutrient.csv"_s, "id,unit_name,nutrient_nbr\n1008,KCAL,208\n");
        Save(tables + u"food_nutrient.csv"_s, "fdc_id,nutrient_id,amount\n1,1008,249\n");
    }

    QTemporaryDir m_shipped;
    QString m_page;
};

QTEST_MAIN(TestHelp)
#include "TestHelp.moc"
