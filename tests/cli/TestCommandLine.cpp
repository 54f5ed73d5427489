// The command line as a script sees it: real processes, real volumes, exit statuses and texts.
#include "store/Database.h"
#include "store/engine/SqliteFile.h"
#include "support/DataRows.h"
#include "support/Files.h"
#include "support/RecordingMessages.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
struct COutcome {
    int status = -1;
    QString output;
    QString messages;

    /// Second cell of the row that begins with `field`.
    [[nodiscard]] QString Value(const QString& field) const {
        for (const QString& line : output.split(u'\n')) {
            if (line.section(u'\t', 0, 0) == field) {
                return line.section(u'\t', 1, 1);
            }
        }
        return u"no row "_s + field;
    }
};

struct CStep {
    const char* command;  ///< "@" is Ann's day
    int status;
    const char* output;
    const char* messages;  ///< null where they do not matter
};

const auto kAnn =
    u"profile create Ann --sex male --birth 1996-06-01 --height 180 --activity 0 "
    "--start 2026-06-01 --start-weight 80 --goal 2026-09-01 --goal-weight 80 "
    "--diet 3"_s;
const auto kApple =
    u"diet add @ --time 12:30 --meal Lunch --category Fruit --name Apple "
    "--type \"raw, with skin\""_s;
const auto kAnnsDay = u"--profile Ann --date 2026-06-02"_s;
// They write nothing, and where there is no volume they make none.
const QStringList kReading =
    u"profile list|profile show Ann|foods list|foods find x|foods export x.csv|"
    "foods show --category C --name N --type T|recipes text x.txt --category C --name N|"
    "categories --kind foods list|diet list @|diet day @|weight list --profile Ann|bmi @|"
    "exercises list @|report --profile Ann --from 2026-06-02 --to 2026-06-02 --by type x.csv"_s
        .split(u'|');
const QStringList kWriting =
    u"profile set Ann --height 181|profile delete Ann --yes|weight add @ --time 07:30 --weight 81|"
    "weight delete @ --time 07:30 --yes|exercises delete @ --time 07:30 --yes|"
    "exercises add @ --time 07:30 --category C --name N --type T --minutes 5|"
    "purge --profile Ann --from 2026-06-02 --to 2026-06-02 --diet"_s.split(u'|') +
    QStringList(kApple);

// Status, command, and what is told. "from => to" creates Bea by Ann's options so changed.
constexpr auto kRefusals = R"(
2 | diet | no command given for 'diet'
2 | dite add | unknown command 'dite'; did you mean 'diet'?
2 | diet days | unknown command 'diet days'; did you mean 'day'?
2 | xyz | unknown command 'xyz'
2 | --colour foods list | unknown option --colour
2 | foods --categroy=Fruit list | unknown option --categroy; did you mean '--category'?
2 | foods list --category A --category B | --category is given twice
2 | foods list --category | --category needs a value
2 | profile delete Ann --yes=1 | --yes needs no value
2 | --height 180 =>  | --height is missing
2 | foods import --existing skip | FILE is missing
2 | foods list Fruit | unexpected argument 'Fruit'
2 | weight delete @ --time 24:00 --yes | --time needs a time such as 12:30
2 | --height 180 => --height 1e308 | --height needs a number from 1 to 300
2 | # --amount -1 | --amount needs a number from 0 to 100000
2 | diet add @ --time 12:30 --meal Lunch --category C --name N | --type is missing
2 | diet add @ --meal All | --meal needs one of Breakfast, Morning, Lunch, Afternoon, Dinner, Evening
2 | weight add @ --time 07:30 --weight 80 --calf=501 | --calf needs a number from 0 to 500
2 | exercises add @ --minutes -5 | --minutes needs a whole number from 0 to 10080
2 | --activity 0 => --activity 5 | --activity needs one of sedentary, light, moderate, very, extra, or a number from 0 to 4
2 | report --types=diet,sleep | --types needs some of diet, weight, exercises
2 | profile set --target 1=1e300 | --target needs a nutrient and a number from 0 to 1000000, such as Iron(mg)=18
2 | profile set --target 54=1 | --target needs a nutrient and a number from 0 to 1000000, such as Iron(mg)=18
2 | profile set --target -1=1 | --target needs a nutrient and a number from 0 to 1000000, such as Iron(mg)=18
2 | profile set --target 10 | --target needs a nutrient and a number from 0 to 1000000, such as Iron(mg)=18
2 | profile set --target 10=x | --target needs a nutrient and a number from 0 to 1000000, such as Iron(mg)=18
2 | --diet 3 => --diet zone --target 34=5 --target 1=5 | --target Protein(g) requires --diet custom
2 | profile set Ann --show-nutrients 0,Gold | --show-nutrients needs nutrients such as 0,1,Iron(mg)
2 | profile set Ann --goal 2026-09-01 --rate 0.5 | --goal cannot be combined with --rate
2 | --goal 2026-09-01 =>  | --goal is missing
2 | 1996-06-01 => 1996-02-30 | --birth needs a date such as 2026-05-31
2 | 1996-06-01 => 1600-12-31 | --birth needs a date such as 2026-05-31
2 | report --from 1601-01-01 --to 1600-12-31 x.csv | --to needs a date such as 2026-05-31
2 | --start-weight 80 => --start-weight 1e999 | --start-weight needs a number from 0 to 1000
1 | --start-weight 80 --goal 2026-09-01 => --start-weight 9.9 --goal 2026-05-01 | Please enter correct start weight.
1 | profile set Ann --goal-weight 251 | Please enter correct goal weight.
1 | profile set Ann --birth 2996-06-01 | Please enter correct birth date.
1 | Bea => Ann | User profile 'Ann' already exists.
1 | Bea => '' | Please enter user name.
0 | --diet 3 => --diet 3 --energy 1199 | Your daily energy intake is too low. You need at least 1200 kcal per day to support your body's basic functions.
1 | foods export out.csv | There are no foods found to export.
1 | foods import missing.csv | Cannot open file.
1 | foods find -- --fat | Food not found.
1 | foods find '' | Please enter at least one item for find.
1 | categories add '' --kind foods | Please enter category name.
1 | # | There are no categories to select.
1 | report x.csv --profile Ann --from 2026-06-02 --to 2026-06-01 | Please select correct From date and To date.
)";
}  // namespace

class TestCommandLine : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<QTemporaryDir> m_folder;

    [[nodiscard]] QString Path(const QString& name) const { return m_folder->filePath(name); }
    [[nodiscard]] QString Volume() const { return Path(u"VelmoraDb.db"_s); }

    void Start(QProcess& process, const QString& command) const {
        process.setWorkingDirectory(m_folder->path());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"en_US.UTF-8"_s);
        process.setProcessEnvironment(environment);
        process.start(
            QStringLiteral(VELMORA_CLI),
            QStringList{u"--volume"_s, Volume()}.mid(command.contains(u"--volume"_s) ? 2 : 0) +
                QProcess::splitCommand(
                    QString(command).replace(u'#', kApple).replace(u'@', kAnnsDay))
                    .replaceInStrings(u"''"_s, QString()));
    }
    COutcome Run(const QString& command) const {
        QProcess process;
        Start(process, command);
        process.waitForFinished(-1);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    void Play(std::initializer_list<CStep> steps) const {
        for (const auto& [command, status, output, messages] : steps) {
            const COutcome outcome = Run(QString::fromLatin1(command));
            QVERIFY2(outcome.status == status, command);
            QCOMPARE(outcome.output, QString::fromLatin1(output));
            QVERIFY2(messages == nullptr || outcome.messages == QLatin1StringView(messages),
                     qPrintable(outcome.messages));
        }
    }
    void Change(const char* sql, std::initializer_list<CSqlValue> values = {}) const {
        CSqliteFile volume;
        QCOMPARE(volume.Open(Volume()), int(kErrorSuccess));
        CStatement change;
        QCOMPARE(change.Prepare(volume, sql), int(kErrorSuccess));
        QCOMPARE(change.Run(values), int(kErrorSuccess));
    }

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        QCOMPARE(Run(kAnn).status, 0);
    }

    void aProfileShowsItsTargetsAndIsDeletedWithYes() {
        const QString shown = Run(u"profile show Ann"_s).output;
        // 10,957 days / 365; 66.5 + 13.75 x 80 + 5.003 x 180 - 6.775 x 30, and times 1.2
        QVERIFY(shown.contains(
            u"\nage\t30\nresting energy\t1863.79\nplanned energy\t2236.548\nweeks\t\n"_s));
        // 2237 kcal, 55 % of it as carbohydrate at 4 kcal a gram
        QVERIFY(shown.contains(u"\ntarget Carbohydrate(g)\t307.5875"_s));
        QVERIFY(shown.contains(u"\ntarget Vitamin A (IU)\t5000\n"_s));
        // kg and cm, wherever the script is run.
        QVERIFY(shown.contains(u"\nweight-unit\t1\nheight-unit\t1\n"_s));
        Play({{"profile delete Ann", 1, "", nullptr},
              {"profile list", 0, "name\nAnn\n", ""},
              {"profile delete Ann --yes", 0, "", nullptr},
              {"profile list", 0, "name\n", ""}});
        QCOMPARE(Run(kAnn).status, 0);
    }

    void readingWritesNothing() {
        // In kJ, while the volume still names the energy in kcal.
        QCOMPARE(Run(QString(kAnn) + u" --energy-unit 1 --volume=kj.db"_s).status, 0);
        const QByteArray before = Load(Path(u"kj.db"_s));
        for (const QString& command : kReading) {
            Run(command + u" --volume kj.db"_s);
            QVERIFY2(Load(Path(u"kj.db"_s)) == before, qPrintable(command));
            const bool isWritten = command.startsWith(u"report"_s);
            QCOMPARE(Load(Path(u"x.csv"_s)).contains("Serving,Energy (kJ),Protein"), isWritten);
            QFile::remove(Path(u"x.csv"_s));
            const COutcome nowhere = Run(command + u" --volume new/v.db"_s);
            QCOMPARE(nowhere.status, 1);
            QCOMPARE(nowhere.messages, u"There is no data in 'new/v.db'.\n"_s);
            QVERIFY2(!QFile::exists(Path(u"new"_s)) && !QFile::exists(Path(u"x.csv"_s)),
                     qPrintable(command));
        }
        QCOMPARE(Run(u"profile create Eve --height 0 --volume=new/v.db"_s).status, 2);
        QVERIFY(!QFile::exists(Path(u"new"_s)));
        QCOMPARE(Run(u"categories --volume=new/v.db --kind FOODS add Soups"_s).status, 0);
        QCOMPARE(Run(u"--volume new/v.db categories list --kind foods"_s).output,
                 u"category\nSoups\n"_s);
    }

    void anUnknownProfileIsRefused() {
        for (QString command : kReading + kWriting) {
            if (command.replace(u'@', kAnnsDay).contains(u"Ann"_s)) {
                const COutcome outcome = Run(command.replace(u"Ann"_s, u"Eve"_s));
                QVERIFY2(outcome.status == 1, qPrintable(command));
                QCOMPARE(outcome.messages, u"There is no user profile 'Eve'.\n"_s);
            }
        }
    }

    void fieldsOfAProfileAreSetOneByOne() {
        // 10 kg at half a kilogram a week: 140 days. 36 years: (655.1 + 9.563 x 81 + 1.85 x 165.5 -
        // 4.676 x 36) x 1.725 - 0.5 / 7 x 7777.78 kcal
        QCOMPARE(Run(u"profile create Bea --sex FEMALE --birth 1990-01-02 --height=165.5 "
                     "--activity Very --start 2026-06-02 --start-weight 81 --goal-weight 71 "
                     "--rate 0.5 --diet custom --target Protein(g)=80.5 --target=10=18 "
                     "--weight-unit st-lb --height-unit ft --energy-unit KJ --decimals 6 "
                     "--show-nutrients 53,0,iron(mg)"_s)
                     .messages,
                 QString());
        const QString bea = Run(u"profile show Bea"_s).output;
        QCOMPARE(bea.section(u"\nage"_s, 0, 0),
                 u"field\tvalue\nname\tBea\nsex\tfemale\nbirth\t1990-01-02\nheight\t165.5\n"
                 "activity\t3\nstart\t2026-06-02\nstart-weight\t81\ngoal\t2026-10-20\n"
                 "goal-weight\t71\nrate\t0.5\nenergy\t2148.4543944444445\ndiet\t6\nweight-unit\t3\n"
                 "height-unit\t2\nenergy-unit\t1\ndecimals\t6"_s);
        QCOMPARE(bea.count(u"\ntarget "_s), 54);
        for (const QString& row :
             {u"weeks\t21"_s, u"target Protein(g)\t80.5"_s, u"target Iron(mg)\t18"_s,
              u"target Food energy (kcal)\t0"_s, u"show-nutrients\t0,10,53"_s}) {
            QVERIFY2(bea.contains(u'\n' + row + u'\n'), qPrintable(row));
        }
        // What is not given stays, and what is refused changes nothing.
        for (const char* fields :
             {"--decimals 3 --show-nutrients=", "--goal-weight 251 --height 99"}) {
            Run(u"profile set Bea "_s + QLatin1StringView(fields));
            QCOMPARE(Run(u"profile show Bea"_s).output,
                     QString(bea)
                         .replace(u"decimals\t6"_s, u"decimals\t3"_s)
                         .replace(u"0,10,53"_s, u""_s));
        }
    }

    void whatFollowsFromAFieldFollowsIt() {
        const auto rateless = QString(kAnn).replace(u"--goal 2026-09-01"_s, u"--rate 0"_s);
        const std::tuple<QString, QString> steps[] = {
            // 2237 kcal need; 75 kg within 70 days are 0.5 kg a week, 555.56 kcal a day less
            {u"profile set Ann --goal-weight 75 --goal 2026-08-10"_s,
             u"rate\t0.5|energy\t1680.9924444444441|target Food energy (kcal)\t1681"_s},
            {u"profile set Ann --rate 1 --energy 1500"_s,
             u"goal\t2026-07-06|energy\t1500|target Protein(g)\t75"_s},  // 1500 x 0.2 x 0.25
            {u"profile set Ann --height 1"_s, u"height\t1|energy\t1500|diet\t3"_s},
            // Targets that the diet decides make it the custom one, where they differ.
            {u"profile set Ann --target 1=75 --target 34=2"_s,
             u"diet\t3|target User defined 1\t2"_s},
            {u"profile set Ann --target 1=99 --sex female"_s,
             u"sex\tfemale|energy\t1500|diet\t6|target Protein(g)\t99|target User defined 1\t2"_s},
            {u"profile set Ann --diet Prudent --sex male"_s,
             u"sex\tmale|diet\t1|target Protein(g)\t56.25"_s},
            {u"profile set Ann --activity 1"_s, u"activity\t1|energy\t1500"_s},
            // A rate that leads nowhere leaves twelve weeks.
            {QString(rateless).replace(u"Ann"_s, u"Bea"_s), u"goal\t2026-08-24"_s},
        };
        for (const auto& [command, rows] : steps) {
            QCOMPARE(Run(command).status, 0);
            const QString name = command.section(u' ', 2, 2);
            const QString shown = Run(u"profile show "_s + name).output;
            for (const QString& row : rows.split(u'|')) {
                QVERIFY2(shown.contains(u'\n' + row + u'\n'), qPrintable(row + u" in "_s + shown));
            }
        }
    }

    void helpExplainsCommands() {
        const QString all = Run(u"--help"_s).output;
        QVERIFY(
            all.startsWith(u"usage: velmora-cli [--volume FILE] COMMAND ...\n"
                           "Dates are ISO (2026-05-31), values in kg, cm and kcal. Commands:\n"
                           "    profile create NAME                 create a user profile\n"_s));
        QVERIFY(all.contains(u"\n    report FILE "_s));
        QVERIFY(all.endsWith(
            u"\nOptions of every command:\n"
            "    --volume FILE             the data file to use instead of the default one\n"
            "    --help                    explain the command, or list all commands\n"
            "    --version                 print the version\n"
            "\"velmora-cli help COMMAND\" explains a command, --help lists them all.\n"_s));
        QCOMPARE(Run(u"help"_s).output, all);
        const QString add = Run(u"exercises add --colour --help"_s).output;
        QCOMPARE(
            add,
            u"exercises add: add an exercise to a day\n"
            "    exercises add --profile NAME --date DATE --time HH:MM --category CATEGORY\n"
            "        --name NAME --type TYPE --minutes NUMBER [--energy KCAL]\n"
            "    --profile NAME            the user profile\n"
            "    --date DATE               the day\n"
            "    --time HH:MM              the time of day\n"
            "    --category CATEGORY       the category's name\n"
            "    --name NAME               the item's name\n"
            "    --type TYPE               the item's type\n"
            "    --minutes NUMBER          how long it took (0 to 10080)\n"
            "    --energy KCAL             the energy burned; default computed (0 to 100000)\n"_s);
        QCOMPARE(Run(u"help exercises add"_s).output, add);
        const QString group = Run(u"exercises --help"_s).output;
        QVERIFY(group.startsWith(add) && group.contains(u"\nexercises list: "_s) &&
                !group.contains(u"bmi"_s));
        const QString report = Run(u"help report"_s).output;
        QVERIFY(
            report.startsWith(u"report: write the diaries to a CSV file\n    report FILE --"_s));
        QVERIFY(report.contains(u"the diaries; default all; separate several by commas"_s));
        const QString set = Run(u"help profile set"_s).output;
        QVERIFY(set.contains(u" [--goal DATE] "_s) &&
                set.contains(u" [--target NUTRIENT=VALUE]... ["_s));
        QCOMPARE(Run(u"--version"_s).output, u"velmora-cli v2.1\n"_s);
        // A line has 79 characters at the most; this one has all of them.
        QVERIFY(Run(u"help weight add"_s).output.contains(u" [--chest CM]\n        [--waist "_s));
        QVERIFY(Run(u"help purge"_s).output.contains(u"\n        [--exercises]"_s));
        QCOMPARE(Run(u"bmi"_s).messages,
                 u"velmora-cli: --profile is missing\n"
                 "\"velmora-cli help COMMAND\" explains a command, --help lists them all.\n"
                 "    bmi --profile NAME --date DATE\n"_s);
        QCOMPARE(Run(u"help dite"_s).status, 2);
    }

    void optionsHaveTheirLimits() {
        static const QRegularExpression limits(u"--(\\S+ ).*\\D(\\d+) to (\\d+\\)\n)"_s);
        QStringList found;
        for (const QString& command : {u"profile create"_s, u"diet add"_s, u"weight add"_s}) {
            for (auto match = limits.globalMatch(Run(u"help "_s + command).output);
                 match.hasNext();) {
                const QRegularExpressionMatch option = match.next();
                found.append(option.captured(1) + option.captured(2) + u'-' +
                             option.captured(3).chopped(2));
            }
        }
        QCOMPARE(
            found.join(u", "_s),
            u"height 1-300, activity 0-4, start-weight 0-1000, goal-weight 0-1000, rate 0-1400, "
            "energy 0-100000, diet 0-6, target 0-1000000, weight-unit 0-3, height-unit 0-2, "
            "energy-unit 0-1, "
            "decimals 0-6, amount 0-100000, weight 0-1000, "
            "chest 0-500, waist 0-500, hips 0-500, bicep 0-500, forearm 0-500, thigh 0-500, calf 0-500, fat 0-100"_s);
    }

    void refusalsCarryTheSystemsTextsAndStatus() {
        QCOMPARE(Run({}).messages.section(u'\n', 0, 0), u"velmora-cli: no command given"_s);
        const QStringList rows = QString::fromLatin1(kRefusals).split(u'\n', Qt::SkipEmptyParts);
        for (const QString& row : rows) {
            const QStringList parts = row.split(u" | "_s);
            QString command = parts[1];
            if (const QStringList change = command.split(u" => "_s); change.size() > 1) {
                command = QString(kAnn).replace(u"Ann"_s, u"Bea"_s).replace(change[0], change[1]);
            }
            const COutcome outcome = Run(command);
            const int status = parts[0].toInt();
            const QString told = (status == 2 ? u"velmora-cli: "_s : QString()) + parts[2] + u'\n';
            QVERIFY2(outcome.status == status, qPrintable(row));
            // A wrong command line is followed by its usage.
            QVERIFY2(status == 2 ? outcome.messages.startsWith(told + u"\"velmora-cli help"_s)
                                 : outcome.messages == told,
                     qPrintable(row + u'\n' + outcome.messages));
        }
        QCOMPARE(Run(u"profile list"_s).output, u"name\nAnn\nBea\n"_s);
    }

    void anUnknownCategoryIsRefused() {
        for (const char* command :
             {"foods list --category No", "foods export --category No x.csv",
              "foods show --category No --name A --type B", "categories rename No X --kind foods",
              "categories delete No --yes --kind foods", "menus duplicate --category No --name A",
              "menus delete --category No --name A --yes",
              "menus move --category No --name A --to B",
              "recipes text --category No --name A x.txt"}) {
            Play({{command, 1, "", "There is no category selected.\n"}});
        }
    }

    void filesComeOutAsTheyWentIn() {
        const QString foods = QStringLiteral(VELMORA_STARTER_FOODS);
        for (const auto& [option, told] :
             {std::pair(""_L1, "Imported # foods.\n"_L1),
              {" --existing skip"_L1, "Imported 0 foods. Skipped # existing foods.\n"_L1},
              {" --existing overwrite"_L1, "Imported # foods. Replaced # existing foods.\n"_L1},
              {""_L1, "Imported # foods. Replaced # existing foods.\n"_L1}}) {
            QCOMPARE(Run(u"foods import "_s + foods + option).output,
                     QString(told).replace(u'#', u"68"_s));
            QCOMPARE(Run(u"foods export out.csv"_s).status, 0);
            QVERIFY(Load(Path(u"out.csv"_s)) == Load(foods));
        }
        QCOMPARE(Run(u"foods import --existing add "_s + foods).output, u"Imported 68 foods.\n"_s);
    }

    void lunchIsScaledAndSetAgainstTheTargets() {
        // 52 kcal and 3 mg of vitamin D, which is not displayed, per 100 g; one apple weighs 150 g.
        QByteArray line = "0000,\"Fruit\",\"Apple\",\"raw, with skin\",52.000,";
        for (int i = 1; i < 54; ++i) {
            line += i == 29 ? "3.000," : "0.000,";
        }
        line += "\"1 medium\",150.000,\"1 slice\",10.000,";
        Save(Path(u"foods.csv"_s), "<Foods>\r\n" + line + "\r\n<End>\r\n");
        QCOMPARE(Run(u"foods import foods.csv"_s).output, u"Imported 1 foods.\n"_s);

        QCOMPARE(Run(kApple + u" --amount 2"_s).status, 0);
        const COutcome day = Run(u"diet day @"_s);
        QCOMPARE(day.Value(u"Food energy (kcal)"_s), u"156"_s);  // 52 x 2 x 150 x 0.01
        QCOMPARE(day.Value(u"Vitamin D (mg)"_s), u"9"_s);
        QVERIFY(day.output.contains(u"Food energy (kcal)\t156\t2237\t7\n"_s));  // 156 / 2237
        QVERIFY(day.output.contains(u"Alcohol(g)\t0\t0\t\n"_s));

        QCOMPARE(Run(kApple + u" --serving \"1 slice\""_s).status, 0);
        const QString list = Run(u"diet list @"_s).output;
        QCOMPARE(list.count(u'\n'), 3);
        QVERIFY(list.contains(
            u"2026-06-02\t12:30:00\tLunch\tfood\tFruit\tApple\traw, with skin\t1 slice\t1\t5.2\t"_s));
        Play({
            {"diet add @ --time 12:30 --meal Lunch --category Fruit --name Apple "
             "--type \"raw, with skin\" --serving \"1 crate\"",
             1, "", "There is no serving '1 crate'.\n"},
            {"diet add @ --time 12:30 --meal Lunch --category Fruit --name Apple --type cooked", 1,
             "", "Food not found.\n"},
            {"diet add @ --time 12:30 --meal Lunch --category Nuts --name Apple --type raw", 1, "",
             "There is no category selected.\n"},
            {"foods move --category Fruit --name Apple --type \"raw, with skin\" --to Nuts", 1, "",
             "Cannot move food, there is only one category.\n"},
            {"foods duplicate --category Fruit --name Apple --type \"raw, with skin\"", 0,
             "category\tname\ttype\nFruit\tApple\traw, with skin_Copy01\n",
             "Do you want to create a copy of food 'Apple, raw, with skin'?\n"},
            {"foods find '' --type COPY", 0,
             "category\tname\ttype\nFruit\tApple\traw, with skin_Copy01\n", ""},
        });
        const COutcome apple =
            Run(u"foods show --category Fruit --name Apple --type \"raw, with skin\""_s);
        QVERIFY(apple.output.startsWith(
            u"field\tvalue\ncategory\tFruit\nname\tApple\n"
            "type\traw, with skin\nFood energy (kcal)\t52\nProtein(g)\t0\n"_s));
        QVERIFY(
            apple.output.contains(u"\nUser defined 20\t0\nServing size 1\t1 medium\n"
                                  "Serving weight 1\t150\nServing size 2\t1 slice\n"_s));
        QCOMPARE(apple.output.count(u'\n'), 78);  // 4 lines, 54 nutrients and 10 servings
        QCOMPARE(Run(u"diet list --profile Ann --date 2026-06-03"_s).output.count(u'\n'), 1);
    }

    void weightsComeAndGoByScript() {
        Play({
            {"weight add @ --time 07:30 --weight 81 --chest 0 --waist 90.5 --calf 500 --fat 100", 0,
             "", ""},
            {"weight add @ --time 07:30 --weight 0.99", 1, "", "Please enter correct weight.\n"},
            {"weight delete @ --time 07:30", 1, "", nullptr},
            {"weight delete @ --time 07:31 --yes", 1, "", "Please select weight to delete.\n"},
            {"weight delete @ --time 08:30 --yes", 1, "", "Please select weight to delete.\n"},
            {"weight delete --profile Ann --date 2026-06-03 --time 07:30 --yes", 1, "",
             "Please select weight to delete.\n"},
            {"weight list --profile Ann", 0,
             "date\ttime\tweight\tchest\twaist\thips\tbicep\tforearm\tthigh\tcalf\tfat\n"
             "2026-06-02\t07:30:00\t81\t0\t90.5\t0\t0\t0\t0\t500\t100\n",
             ""},
        });
        const QString bmi = Run(u"bmi @"_s).output;
        QCOMPARE(Run(u"bmi @"_s).status, 0);
        QVERIFY(bmi.startsWith(u"Your BMI is  25.00\n"_s));  // 81 / 3.24
        QVERIFY(bmi.endsWith(u"\n90\t27.78\tHigh\n"_s));     // 81 + 10 - 1
        const char* question = "You are about to remove data entries. Are you sure?\n";
        Play({
            {"purge --profile Ann --from 2026-06-02 --to 2026-06-02 --diet --exercises --yes", 0,
             "Total purged:\n\nDiet entries: 0\nWeight entries: 0\nExersises: 0\n\n\n", question},
            {"purge --profile Ann --from 2026-06-02 --to 2026-06-02 --weights", 1, "", question},
            {"weight delete @ --time 07:30 --yes", 0, "", nullptr},
            {"weight add @ --time 07:30 --weight 81", 0, "", ""},
            {"purge --profile Ann --from 2026-06-02 --to 2026-06-02 --weights --yes", 0,
             "Total purged:\n\nDiet entries: 0\nWeight entries: 1\nExersises: 0\n\n\n", question},
        });
        QCOMPARE(Run(u"weight list --profile Ann"_s).output.count(u'\n'), 1);
    }

    void theCatalogueIsManagedByScript() {
        // A menu of 120 kcal of one food; the column behind the values is read and not written.
        const auto line = [](const QByteArray& type, const QByteArray& food) {
            return "1," + type + ",Week,Lunch," + food + ",120.000," +
                   QByteArray("0.000,").repeated(53) + "0,1 plate,1,\r\n";
        };
        Save(Path(u"menus.csv"_s), "<Menus>\r\n" + line("Menu", "") + line("Food", "Soup"));
        Save(Path(u"exercises.csv"_s),
             "<Exercises>\r\n1,Sport,Run,fast,8.5,0\r\n1,Sport,Row,hard,0,9.25\r\n");
        Play({
            {"categories --kind menus add Feasts", 0, "", ""},
            {"categories add Feasts --kind menus", 1, "", "Category 'Feasts' already exists.\n"},
            {"menus import menus.csv", 0, "Imported 1 menus.\n", nullptr},
            {"menus duplicate --category Week --name Lunch", 0,
             "category\tname\nWeek\tLunch_Copy01\n", nullptr},
            {"menus move --category Week --name Lunch --to Nowhere", 1, "",
             "There is no category selected.\n"},
            {"menus move --category Week --name Dinner --to Feasts", 1, "", "Menu not found.\n"},
            {"menus duplicate --category Week --name Dinner", 1, "", "Menu not found.\n"},
            {"menus move --category Week --name Lunch_Copy01 --to Feasts", 0, "", nullptr},
            {"menus find unch_", 0, "category\tname\nFeasts\tLunch_Copy01\n", ""},
            {"categories rename Feasts Parties --kind menus", 0, "", ""},
            {"diet add @ --time 12:30 --meal Lunch --kind menu --category Parties "
             "--name Lunch_Copy01 --amount 2",
             0, "", ""},
            {"menus delete --category Parties --name Lunch_Copy01", 1, "",
             "Are you sure you want to delete menu 'Lunch_Copy01'?\n"},
            {"menus delete --category Parties --name Lunch_Copy01 --yes", 0, "", nullptr},
            {"menus show --category Parties --name Lunch_Copy01", 1, "", "Menu not found.\n"},
            {"categories delete Parties --kind menus --yes", 0, "", nullptr},
            {"categories add \"a\\b\tc\nd\re\" --kind menus", 0, "", ""},
            {"categories list --kind menus", 0, "category\nWeek\na\\\\b\\tc\\nd\\re\n", ""},
            {"categories list --kind drinks", 2, "", nullptr},
            {"recipes find pie", 1, "", "Recipe not found.\n"},
            {"exlib import exercises.csv", 0, "Imported 2 exercises.\n", ""},
            {"exlib list --category Sport", 0,
             "category\tname\ttype\tkcal_per_minute\tmet\nSport\tRow\thard\t9.25\t0\n"
             "Sport\tRun\tfast\t0\t8.5\n",
             ""},
            {"exlib find R --type FAST", 0,
             "category\tname\ttype\tkcal_per_minute\tmet\nSport\tRun\tfast\t0\t8.5\n", ""},
            {"exlib find swim", 1, "", "Exercise not found.\n"},
            {"exlib export --category Sport out.csv", 0, "Exported 2 exercises.\n", ""},
            {"exercises add @ --time 07:30 --category Sport --name Run --type fast --minutes 30", 0,
             "", ""},
            {"exercises add @ --time 08:30 --category Sport --name Run --type fast --minutes 30 "
             "--energy 12.5",
             0, "", ""},
            {"exercises list @", 0,
             "date\ttime\tcategory\tname\ttype\tminutes\tenergy\n"
             "2026-06-02\t07:30:00\tSport\tRun\tfast\t30\t357\n"  // 30 x 80 x 8.5 x 0.0175
             "2026-06-02\t08:30:00\tSport\tRun\tfast\t30\t12.5\n",
             ""},
            {"exercises delete @ --time 07:30", 1, "", nullptr},
            {"exercises delete @ --time 07:29 --yes", 1, "", nullptr},
            {"exercises delete @ --time 06:30 --yes", 1, "", nullptr},
            {"exercises delete @ --time 07:30 --yes", 0, "", nullptr},
        });
        const COutcome lunch = Run(u"menus show --category Week --name Lunch"_s);
        QVERIFY(
            lunch.output.startsWith(u"field\tvalue\ncategory\tWeek\nname\tLunch\nFood energy"_s));
        QVERIFY(lunch.output.endsWith(
            u"\nUser defined 20\t0\nServing size\t1 plate\nNumber of servings\t1\n"
            "Component 1 kind\tfood\nComponent 1 name\tSoup\nComponent 1 type\t\n"
            "Component 1 serving size\t1 plate\nComponent 1 number of servings\t1\n"
            "Component 1 Food energy (kcal)\t120\n"_s));
        QCOMPARE(Run(u"diet day @"_s).Value(u"Food energy (kcal)"_s), u"240"_s);
        const QString done = Run(u"exercises list @"_s).output;
        QVERIFY(done.contains(u"\t12.5\n"_s) && !done.contains(u"\t357\n"_s));
    }

    void listsAreWholeAndDamageIsToldWithStatus1() {
        const QByteArray values = QByteArray("1.000,").repeated(54);
        QByteArray foods;
        for (int i = 0; i < 1030; ++i) {
            foods += "1,Many,Soup " + QByteArray::number(i) + ",thin," + values + "cup,100,\r\n";
        }
        foods += "1,Zest,Soup,thick," + values + "cup,100,\r\n";
        Save(Path(u"many.csv"_s), "<Foods>\r\n" + foods);
        Save(Path(u"menus.csv"_s), "<Menus>\r\n1,Menu,Feast,Tea,," + values +
                                       "0,1 plate,1,\r\n1,Menu,Week,Lunch,," + values +
                                       "0,1 plate,1,\r\n" + "1,Food,Week,Lunch,Soup," + values +
                                       "0,1 plate,1,\r\n");
        QCOMPARE(Run(u"foods import many.csv"_s).status, 0);
        QCOMPARE(Run(u"menus import menus.csv"_s).status, 0);
        const auto lines = [this](const QString& command) {
            return Run(command).output.count(u'\n') - 1;
        };
        QCOMPARE(lines(u"foods list"_s), 1031);
        QCOMPARE(Run(u"foods export --category Many out.csv"_s).output,
                 u"Exported 1030 foods.\n"_s);
        // Beyond what a window's list of names holds.
        QCOMPARE(Run(u"diet add @ --time 12:30 --meal Lunch --category Many --name \"Soup 1029\" "
                     "--type thin"_s)
                     .status,
                 0);
        ObjectId damaged[6] = {};
        {
            const CRecordingMessages messages;
            CDatabase database(Volume());
            QVERIFY(database.OpenCatalogue() && database.Profiles().Open(u"Ann"_s, false));
            CDietEntry entry;
            QVERIFY(database.Diet().Read(0, entry));
            for (int i = 1; i < 130; ++i) {
                QVERIFY(database.Diet().Write(-1, entry));
            }
            damaged[0] = database.Diet().RecordAt(5);
            damaged[1] = database.Foods().RecordAt(7);
            damaged[2] = database.Menus().RecordAt(2);
            damaged[3] = database.Categories().RecordAt(2);
            CWeightEntry weight;
            QVERIFY(database.Weight().Write(-1, weight));
            damaged[4] = database.Weight().RecordAt(0);
            CExerciseEntry exercise;
            exercise.SetMoment(entry.GetMoment());
            QVERIFY(database.Exercises().Write(-1, exercise));
            damaged[5] = database.Exercises().RecordAt(0);
        }
        QCOMPARE(lines(u"diet list @"_s), 130);
        QCOMPARE(Run(u"diet day @"_s).Value(u"Food energy (kcal)"_s), u"130"_s);
        for (const ObjectId record : damaged) {
            Change("UPDATE records SET body=x'FF' WHERE id=?", {record});
        }
        const std::tuple<const char*, int, const char*> rows[] = {
            {"diet list @", 129, "1 damaged entry is left out.\n"},
            {"diet day @", 54, "1 damaged entry is left out.\n"},
            {"foods list", 1030, "1 damaged food is left out.\n"},
            {"foods list --category Many", 1029, "1 damaged food is left out.\n"},
            {"foods find \"SOUP 102\"", 11, "1 damaged food is left out.\n"},
            {"foods find nectar", -1, "Food not found.\n1 damaged food is left out.\n"},
            {"menus show --category Week --name Lunch", 58, "1 damaged component is left out.\n"},
            {"exercises list @", 0, "1 damaged entry is left out.\n"},
            {"foods export out.csv", 0, "1 damaged food is left out.\n"},
            {"foods export --category Many out.csv", 0, "1 damaged food is left out.\n"},
            {"categories list --kind menus", 1, "1 damaged category is left out.\n"},
            {"menus list", 1, "1 damaged category is left out.\n"},
            {"menus export out.csv", 0, "1 damaged component is left out.\n"},
            {"weight list --profile Ann", 0, "1 damaged entry is left out.\n"},
            {"report out.csv --profile Ann --from 2026-06-02 --to 2026-06-02 --types diet", -1,
             "The report is written. 1 damaged entry is left out.\n"},
        };
        for (const auto& [command, count, told] : rows) {
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            Start(process, QString::fromLatin1(command));
            process.waitForFinished(-1);
            const QByteArray output = process.readAll();
            QVERIFY2(process.exitCode() == 1, command);
            QVERIFY2(output.endsWith(told), output.constData());  // after the list
            QCOMPARE(output.count('\n') - QByteArray(told).count('\n') - 1, count);
        }
        QCOMPARE(Run(u"exlib list"_s).status, 0);
        Change("UPDATE databases SET name='Bob' WHERE name='Ann_Weight'");
        QCOMPARE(Run(u"diet day @"_s).messages, u"Cannot open user profile 'Ann'.\n"_s);
    }

    void outputThatIsLostFailsTheCommand() {
        QCOMPARE(Run(u"foods import "_s + QStringLiteral(VELMORA_STARTER_FOODS)).status, 0);
        for (const QString& command : {u"profile list"_s, u"foods list"_s}) {
            QProcess process;
            process.setStandardOutputFile(u"/dev/full"_s);
            Start(process, command);
            process.waitForFinished(-1);
            QCOMPARE(process.exitCode(), 1);
        }
    }

    void aSecondProcessIsRefusedAndChangesNothing() {
        const QByteArray before = Load(Volume());  // closing the file later would unlock it
        const CRecordingMessages messages;
        CDatabase first(Volume());
        QVERIFY(first.OpenCatalogue());
        const COutcome second = Run(u"profile delete Ann --yes"_s);
        QCOMPARE(second.status, 1);
        QCOMPARE(second.messages,
                 u"ERROR: CeMountDBVol failed (32)\nCannot open database.\n"
                 "The file '%1' is in use by another program.\n"_s.arg(Volume()));
        QCOMPARE(Load(Volume()), before);
    }

    // The pipe holds the command up while the volume is taken away beneath it.
    void aLostVolumeFailsTheCommand() {
        // More than a pipe and the buffer of the file before it hold.
        for (int i = 0; i < 6; ++i) {
            const QString foods = QStringLiteral(VELMORA_STARTER_FOODS);
            QCOMPARE(Run(u"foods import --existing add "_s + foods).status, 0);
        }
        const QString pipe = Path(u"pipe"_s);
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {pipe}), 0);
        QProcess import;
        Start(import, u"foods import "_s + pipe);
        QFile lines(pipe);
        QVERIFY(lines.open(QIODevice::WriteOnly));
        const QByteArray volume = Load(Volume());
        QVERIFY(QFile::remove(Volume()));
        lines.write(Load(QStringLiteral(VELMORA_STARTER_FOODS)));
        lines.close();
        QVERIFY(import.waitForFinished(-1));
        QCOMPARE(import.exitCode(), 1);
        const QByteArray said = import.readAllStandardError();
        QVERIFY2(said.contains("(error# 1006).\nThe file '" + Volume().toUtf8() +
                               "' was removed or renamed by another program."),
                 said.constData());

        Save(Volume(), volume);
        QProcess exporting;
        Start(exporting, u"foods export "_s + pipe);
        QVERIFY(lines.open(QIODevice::ReadOnly));
        Save(Volume(), volume.first(volume.size() / 2));
        lines.readAll();
        QVERIFY(exporting.waitForFinished(-1));
        QCOMPARE(exporting.exitCode(), 1);
        QVERIFY(exporting.readAllStandardError().contains("wrote into the file"));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
