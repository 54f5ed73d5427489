#include "ExerciseFixture.h"

#include "exercise/ExerciseDays.h"
#include "support/DataRows.h"

#include <QProcess>

Q_DECLARE_METATYPE(EEnergyUnit)

namespace {
constexpr auto kKcal = EEnergyUnit::Kcal;
constexpr auto kKJ = EEnergyUnit::KJ;
}  // namespace

class TestExerciseRules : public CExercisesTest {
    Q_OBJECT

  private slots:
    void init() { MakeExercises(); }

    void textsOfTheList() {
        QCOMPARE(ExerciseTimeText(135), u"02:15"_s);
        QCOMPARE(ExerciseTimeText(6000), u"100:00"_s);
        QCOMPARE(ExerciseEnergyText(294.5, kKcal), u"294"_s);
        QCOMPARE(ExerciseEnergyText(294.5, kKJ), u"1231"_s);  // 294.5 * 4.18 + 0.5 = 1231.51
        QCOMPARE(ExerciseEnergyText(100.2, kKJ), u"419"_s);   // 100.2 * 4.18 + 0.5 = 419.336
        QCOMPARE(ExerciseEnergyText(0, kKJ) + ExerciseEnergyText(-1, kKcal), QString());
        QCOMPARE(ExerciseListHeight(500, 301), 151);  // 150.5 + 0.5
        QCOMPARE(ExerciseListHeight(400, 301), 120);  // 120.4 + 0.5
    }

    void energyIsThatOfTheLibrary_data() {
        // type of the exercise, minutes
        AddRows<QString, QString, EEnergyUnit, QString>({
            {"MET", u"slow"_s, u"30"_s, kKcal, u"294"_s},  // 30 * 70 * 8 * 0.0175 + 0.5 = 294.5
            {"MET in kJ", u"slow"_s, u"30"_s, kKJ, u"1231"_s},        // 294.5 * 4.18 = 1231.01
            {"rate", u"fast"_s, u"30"_s, kKcal, u"372"_s},            // 30 * 12.4 + 0.5 = 372.5
            {"rate rounded up", u"fast"_s, u"9"_s, kKcal, u"112"_s},  // 9 * 12.4 + 0.5 = 112.1
            {"no duration", u"fast"_s, u"0"_s, kKcal, QString()},
            {"no number", u"fast"_s, u"ten"_s, kKcal, QString()},
            {"decimals do not count", u"fast"_s, u"9.9"_s, kKcal, u"112"_s},
        });
    }
    void energyIsThatOfTheLibrary() {
        const auto& [type, minutes, unit, energy] =
            DataRow<QString, QString, EEnergyUnit, QString>();
        m_doc->Settings().preferences.energyUnit = unit;
        CExerciseForm form = NewForm();
        PickRunning(form, type);
        form.SetDurationTexts(u"0"_s, minutes);
        QCOMPARE(form.EnergyText(), energy);
    }

    void theWeightIsThatOfTheDay() {
        CWeightEntry weight;
        for (const auto& [day, kg] : {std::pair(kDay.addDays(-3), 80.0), {kDay.addDays(1), 90.0}}) {
            weight.SetMoment(ToFileTime(day, QTime(8, 0)));
            weight.SetWeightKg(kg);
            QVERIFY(Database().Weight().Write(-1, weight));
        }
        CExerciseForm form = NewForm();
        PickRunning(form, u"slow"_s);
        form.SetDurationTexts(u"1"_s, u"00"_s);
        QCOMPARE(form.EnergyText(), u"672"_s);  // 60 * 80 * 8 * 0.0175 + 0.5 = 672.5
    }

    void pickingNarrowsDownAndClearsWhatDepends() {
        CExerciseForm form = NewForm();
        QCOMPARE(form.CategoryText(), u"Garden"_s);  // the first, for want of the entry's own
        QCOMPARE(form.HoursText() + u':' + form.MinutesText(), u"0:01"_s);
        QCOMPARE(form.EnergyText(), QString());
        QCOMPARE(form.Choices(EPicker::Category), (QStringList{u"Garden"_s, u"Sports"_s}));
        form.Pick(EPicker::Category, u"Sports"_s);
        QCOMPARE(form.Choices(EPicker::Name), (QStringList{u"Chess"_s, u"Running"_s}));
        form.Pick(EPicker::Name, u"Running"_s);
        QCOMPARE(form.Choices(EPicker::Type), (QStringList{u"fast"_s, u"slow"_s}));
        form.Pick(EPicker::Type, u"slow"_s);
        QCOMPARE(form.EnergyText(), u"98"_s);  // 10 * 70 * 8 * 0.0175 + 0.5 = 98.5
        form.SetDurationTexts(u"2"_s, u"30"_s);
        form.Pick(EPicker::Name, u"Chess"_s);
        QCOMPARE(form.TypeText() + form.EnergyText(), QString());
        QCOMPARE(form.HoursText() + u':' + form.MinutesText(), u"0:10"_s);
        form.SetDurationTexts(u"1"_s, u"10"_s);
        QCOMPARE(form.EnergyText(), QString());  // nothing is picked any more
        form.Pick(EPicker::Type, u"seated"_s);
        QCOMPARE(form.EnergyText(), QString());  // it has no rates
    }

    void aPickerWithNothingToListSaysWhy() {
        CExerciseForm form = NewForm();
        QVERIFY(form.Choices(EPicker::Name).isEmpty() && form.Choices(EPicker::Type).isEmpty());
        QCOMPARE(m_messages->Said(),
                 u"There are no names to select.|There are no types to select."_s);
        MakeDiary();
        CExerciseForm lost = NewForm();
        for (const EPicker picker : {EPicker::Category, EPicker::Name, EPicker::Type}) {
            QVERIFY(lost.Choices(picker).isEmpty());
        }
        QCOMPARE(m_messages->Said(),
                 u"There are no categories to select.|There is no category selected.|"
                 "There is no category selected."_s);
    }

    void aNewDurationScalesAnEntryUntilSomethingIsPicked() {
        CExerciseForm form(*m_doc, AddDone(u"Rowing"_s, kDay, QTime(8, 0), 30, 294));
        form.SetDurationTexts(u"1"_s, u"30"_s);
        QCOMPARE(form.EnergyText(), u"882"_s);  // 90 / 30 * 294
        form.SetDurationTexts(u"0"_s, QString());
        QCOMPARE(form.EnergyText(), QString());
        form.SetDurationTexts(u"0"_s, u"10"_s);
        QCOMPARE(form.EnergyText(), u"98"_s);
        form.Pick(EPicker::Category, u"Sports"_s);
        form.SetDurationTexts(u"0"_s, u"30"_s);
        QCOMPARE(form.EnergyText(), QString());
        PickRunning(form, u"fast"_s);
        QCOMPARE(form.EnergyText(), u"124"_s);  // 10 * 12.4 + 0.5
    }

    void savingAnEntryInKJKeepsItsKcal() {
        m_doc->Settings().preferences.energyUnit = kKJ;
        CExerciseForm form(*m_doc, AddDone(u"Rowing"_s, kDay, QTime(8, 1, 2), 30, 100));
        QCOMPARE(form.EnergyText() + form.EnergyUnitText(), u"418kJ"_s);
        form.SetTime(QTime(9, 3, 4));
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().GetEnergyKcal(), 100.0);  // 418 / 4.18
        QCOMPARE(form.GetResult().GetMoment(), ToFileTime(kDay, QTime(9, 3, 4)));
        form.SetEnergyText(u"836"_s);
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetResult().GetEnergyKcal(), 200.0);
    }

    void okNamesTheFirstThingThatIsMissing() {
        CExerciseForm form = NewForm();
        form.SetNameText(u" "_s);
        QVERIFY(!form.Confirm());
        form.SetNameText(u" Skating "_s);
        QVERIFY(!form.Confirm());
        QCOMPARE(m_messages->Said(), u"Please enter exercise name|Please enter exercise type"_s);
        form.SetTypeText(u"on ice"_s);
        form.SetDurationTexts(u"1"_s, u"-90"_s);
        QVERIFY(form.Confirm());
        const CExerciseEntry& entry = form.GetResult();
        QCOMPARE(entry.GetCategory() + u'/' + ExerciseNameText(entry), u"Garden/Skating,on ice"_s);
        QCOMPARE(entry.GetMinutes(), 0.0);
        QCOMPARE(entry.GetEnergyKcal(), 0.0);
    }

    void findingGoesOnAfterTheLastHit() {
        CExerciseForm form = NewForm();
        QVERIFY(!form.HasFindName());
        QVERIFY(form.Find(u"RUN"_s, {}));
        QCOMPARE(form.CategoryText() + u'/' + form.TypeText(), u"Sports/slow"_s);
        QCOMPARE(form.EnergyText(), u"10"_s);  // 1 * 70 * 8 * 0.0175 + 0.5 = 10.3
        QVERIFY(form.HasFindName() && form.FindNext());
        QCOMPARE(form.TypeText(), u"fast"_s);
        QVERIFY(!form.FindNext());
        QCOMPARE(m_messages->Said(), u"Exercise not found."_s);
        QCOMPARE(form.TypeText(), u"fast"_s);
    }

    void commandsAskAndSayWhatTheyDo() {
        QVERIFY(!MayEditExercise(0) && !MayEditExercise(2) && MayEditExercise(1));
        QCOMPARE(DeleteExercises(Database(), {}), 0);
        QCOMPARE(m_messages->Said(),
                 u"Please select exercise to edit.|Please select only one exercise to edit.|"
                 "Please select exercise to delete."_s);
        for (const int hour : {23, 0, 12}) {
            AddDone(u"Row %d"_s, kDay, QTime(hour, 0), hour, 0);
        }
        const ListedExercises all = ListExercises(Database(), kDay, kDay);
        m_messages->answers = {false, true, true};
        QCOMPARE(DeleteExercises(Database(), {all[1]}), 0);
        QCOMPARE(DeleteExercises(Database(), {all[1]}), 1);
        QCOMPARE(DeleteExercises(Database(), {all[0], all[1], all[2]}), 1);  // the second is gone
        QCOMPARE(m_messages->asked.mid(1),
                 (QStringList{u"Are you sure you want to delete exercise 'Row %d'?"_s,
                              u"Are you sure you want to delete 3 exercises?"_s}));
        QCOMPARE(m_messages->Said(), u"Cannot delete exercise."_s);
        QCOMPARE(Listed(), u"Row %d,slow 00:23 "_s);
    }

    void anEditedEntryTakesThePlaceOfTheOldOne() {
        AddDone(u"Row"_s, kDay, QTime(8, 0), 30, 100);
        AddDone(u"Row"_s, kDay, QTime(8, 0), 30, 100);
        const ListedExercises both = ListExercises(Database(), kDay, kDay);
        CExerciseEntry later = both[0].entry;
        later.SetMoment(ToFileTime(kDay, QTime(20, 0)));
        later.SetName(u"Swim"_s);
        QVERIFY(EditExercise(Database(), both[0], later));
        QCOMPARE(Listed(), u"Row,slow 00:30 100|Swim,slow 00:30 100"_s);
    }

    void theWeekEndsWithTheDayAndTakesAllOfIt() {
        AddDone(u"Out"_s, kDay.addDays(-7), QTime(23, 59, 59), 1, 1);
        AddDone(u"First"_s, kDay.addDays(-6), QTime(0, 0), 1, 10);
        AddDone(u"Last"_s, kDay, QTime(0, 0), 1, 100);
        AddDone(u"Last"_s, kDay, QTime(23, 59, 59), 1, 200);
        AddDone(u"Out"_s, kDay.addDays(1), QTime(0, 0), 1, 2);
        AddEntry(u"Feast"_s, QTime(12, 0), 2, 2600);
        const ExerciseWeek week = ExerciseWeekOf(*m_doc, kDay);
        QCOMPARE(week.front().day, kDay.addDays(-6));
        QCOMPARE(week.front().burnedKcal, 10.0);
        QCOMPARE(week.front().surplusKcal, -2000.0);
        QCOMPARE(week.back().burnedKcal, 300.0);
        QCOMPARE(week.back().surplusKcal, 600.0);  // 2600 - 2000
        QCOMPARE(ExerciseHeadline(week.back(), kKcal), u"Total energy burned: 300/600/50%"_s);
    }

    void theHeadlineCutsOffInKcalAndRoundsInKJ_data() {
        // burned, surplus
        AddRows<double, double, EEnergyUnit, QString>({
            {"kcal", 99.9, 100.9, kKcal, u"99/100/99%"_s},
            {"kJ", 29, 100, kKJ, u"121/418/28%"_s},  // 121.22 + 0.5, 418 + 0.5, 28.9 %
            {"no fraction is lost", 29, 100, kKcal, u"29/100/29%"_s},
            {"nothing eaten", 300, -2000, kKcal, u"300/-2000/0%"_s},
            {"nothing eaten in kJ", 300, -2000, kKJ, u"1254/-8359/0%"_s},  // -8360 + 0.5
            {"no surplus", 300, 0, kKcal, u"300/0/0%"_s},
        });
    }
    void theHeadlineCutsOffInKcalAndRoundsInKJ() {
        const auto& [burned, surplus, unit, text] = DataRow<double, double, EEnergyUnit, QString>();
        QCOMPARE(ExerciseHeadline({kDay, burned, surplus}, unit),
                 u"Total energy burned: "_s + text);
    }

    void theCommandLineStoresWhatTheDialogWould() {
        m_doc.reset();
        const auto run = [this](const QString& command) {
            QProcess process;
            process.start(
                QStringLiteral(VELMORA_CLI),
                QStringList{u"--volume"_s, Path(u"v.db"_s), u"exercises"_s} +
                    QProcess::splitCommand(command + u" --profile Ann --date 2026-05-31"_s));
            process.waitForFinished(-1);
            return QString::number(process.exitCode()) +
                   QString::fromUtf8(process.readAllStandardOutput()).section(u'\n', 1);
        };
        const QString add =
            u"add --category Sports --name Running --type slow --minutes 30 --time "_s;
        QCOMPARE(run(add + u"07:30"_s), u"0"_s);
        QCOMPARE(run(add + u"08:30 --energy 12.5"_s), u"0"_s);
        QCOMPARE(run(u"list"_s),
                 u"02026-05-31\t07:30:00\tSports\tRunning\tslow\t30\t294\n"
                 "2026-05-31\t08:30:00\tSports\tRunning\tslow\t30\t12.5\n"_s);
        QCOMPARE(run(u"delete --time 07:30"_s), u"1"_s);
        QCOMPARE(run(u"delete --time 07:30 --yes"_s), u"0"_s);
        QCOMPARE(run(u"delete --time 07:30 --yes"_s), u"1"_s);
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(Listed(), u"Running,slow 00:30 12"_s);
    }

  private:
    CExerciseForm NewForm() { return {*m_doc, NewExercise(kDay, QTime(12, 0))}; }
    static void PickRunning(CExerciseForm& form, const QString& type) {
        form.Pick(EPicker::Category, u"Sports"_s);
        form.Pick(EPicker::Name, u"Running"_s);
        form.Pick(EPicker::Type, type);
    }
};

QTEST_GUILESS_MAIN(TestExerciseRules)
#include "TestExerciseRules.moc"
