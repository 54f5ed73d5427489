#include "diary/DiaryFixture.h"

#include "app/ItemTexts.h"
#include "catalogue/items/ExlibRules.h"
#include "exercise/ExerciseDays.h"
#include "exercise/ExerciseForm.h"
#include "exercise/ExerciseRules.h"

namespace {
constexpr auto kKcal = EEnergyUnit::Kcal;
constexpr auto kKJ = EEnergyUnit::KJ;
}  // namespace

/// A profile of 70 kg and a library: "Sports" with running in MET and in kcal per minute.
class TestExerciseRules : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        m_doc->Settings().targets.startWeightKg = 70;
        m_doc->Settings().targets.nutrients[kEnergyIndex] = 2000;
        m_doc->Settings().targets.dailyEnergyKcal = 2500;  // a plan, no target
        const qint32 sports = AddCategory(Database(), u"Sports"_s, ECatalogueKind::Exercises);
        AddCategory(Database(), u"garden"_s, ECatalogueKind::Exercises);
        AddToLibrary(sports, u"Running"_s, u"slow"_s, 0, 8);
        AddToLibrary(sports, u"Running"_s, u"fast"_s, 12.4, 0);
        AddToLibrary(sports, u" Chess"_s, u"seated"_s, 0, 0);
    }

    void textsOfTheList() {
        QCOMPARE(ExerciseTimeText(135) + u' ' + ExerciseTimeText(6000), u"02:15 100:00"_s);
        QCOMPARE(ExerciseEnergyText(294.5, kKcal), u"294"_s);
        QCOMPARE(ExerciseEnergyText(100.2, kKJ), u"419"_s);  // 100.2 * 4.18 + 0.5 = 419.336
        QCOMPARE(ExerciseEnergyText(0, kKJ) + ExerciseEnergyText(-1, kKcal), QString());
        QCOMPARE(ExerciseListHeight(500, 301), 151);  // 150.5 + 0.5
        QCOMPARE(ExerciseListHeight(400, 301), 120);  // 120.4 + 0.5
    }

    void energyIsThatOfTheLibraryAndOfTheDaysWeight() {
        const auto energy = [this](const QString& type, const QString& minutes, EEnergyUnit unit) {
            m_doc->Settings().preferences.energyUnit = unit;
            CExerciseForm form = NewForm();
            PickRunning(form, type);
            return EnergyFor(form, u"0"_s, minutes);
        };
        QCOMPARE(energy(u"slow"_s, u"30"_s, kKcal), u"294"_s);   // 30 * 70 * 8 * 0.0175 + 0.5
        QCOMPARE(energy(u"slow"_s, u"30"_s, kKJ), u"1231"_s);    // 294.5 * 4.18 = 1231.01
        QCOMPARE(energy(u"fast"_s, u"30"_s, kKcal), u"372"_s);   // 30 * 12.4 + 0.5 = 372.5
        QCOMPARE(energy(u"fast"_s, u"9.9"_s, kKcal), u"112"_s);  // 9 * 12.4 + 0.5 = 112.1
        QCOMPARE(energy(u"fast"_s, u"0"_s, kKcal) + energy(u"fast"_s, u"ten"_s, kKcal), QString());
        for (const auto& [day, kg] : {std::pair(-3, 80.0), {1, 90.0}}) {
            CWeightEntry weight = MakeWeight(kDay.addDays(day), QTime(8, 0), kg);
            QVERIFY(Database().Weight().Write(-1, weight));
        }
        QCOMPARE(energy(u"slow"_s, u"60"_s, kKcal), u"672"_s);  // 60 * 80 * 8 * 0.0175 + 0.5
    }

    void anEntryMayHaveCutItsCategory() {
        const QString longName = QString(100, u'x');
        AddCategory(Database(), longName, ECatalogueKind::Exercises);
        auto entry = MakeEntry<CExerciseEntry>(kDay, QTime(8, 0));
        entry.SetCategory(longName);
        QVERIFY(entry.GetCategory() != longName);
        QCOMPARE(CExerciseForm(*m_doc, entry).CategoryText(), longName);
    }

    void pickingNarrowsDownAndClearsWhatDepends() {
        CExerciseForm form = NewForm();
        QCOMPARE(Shown(form), u"garden/ 0:01 "_s);  // the first, for want of the entry's own
        QCOMPARE(PickOf(form, EPicker::Category, u"Sports"_s), u"garden,Sports"_s);
        QCOMPARE(PickOf(form, EPicker::Name, u"Running"_s), u" Chess,Running"_s);
        form.SetNameText(u" Running "_s);
        QCOMPARE(PickOf(form, EPicker::Type, u"slow"_s), u"fast,slow"_s);
        QCOMPARE(Shown(form), u"Sports/slow 0:10 98"_s);  // 10 * 70 * 8 * 0.0175 + 0.5 = 98.5
        form.SetDurationTexts(u"2"_s, u"30"_s);
        form.Pick(EPicker::Name, u" Chess"_s);
        QCOMPARE(Shown(form), u"Sports/ 0:10 "_s);
        QCOMPARE(EnergyFor(form, u"1"_s, u"10"_s), QString());  // nothing is picked any more
        QCOMPARE(PickOf(form, EPicker::Type, u"seated"_s), u"seated"_s);
        QCOMPARE(form.EnergyText(), QString());  // it has no rates
    }

    void aNewDurationScalesAnEntryUntilSomethingIsPicked() {
        CExerciseForm form(*m_doc, AddDone(u"Rowing"_s, kDay, QTime(8, 0), 30, 294));
        QCOMPARE(EnergyFor(form, u"0"_s, {}), QString());
        QCOMPARE(EnergyFor(form, u"1"_s, u"30"_s), u"882"_s);  // 90 / 30 * 294
        form.Pick(EPicker::Category, u"Sports"_s);
        QCOMPARE(EnergyFor(form, u"0"_s, u"30"_s), QString());
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
    }

    void okNamesTheFirstThingThatIsMissing() {
        CExerciseForm form = NewForm();
        for (const QString& name : {u" "_s, u" Skating "_s}) {
            form.SetNameText(name);
            QVERIFY(!form.Confirm());
        }
        QCOMPARE(m_messages->Said(), u"Please enter exercise name|Please enter exercise type"_s);
        form.SetTypeText(u"on ice"_s);
        form.SetDurationTexts(u"1"_s, u"-90"_s);
        QVERIFY(form.Confirm());
        const CExerciseEntry& entry = form.GetResult();
        QCOMPARE(entry.GetCategory() + u'/' + NameAndType(entry.GetName(), entry.GetType()),
                 u"garden/Skating,on ice"_s);
        QCOMPARE(entry.GetMinutes() + entry.GetEnergyKcal(), 0.0);
    }

    void findingGoesOnAfterTheLastHit() {
        CExerciseForm form = NewForm();
        QVERIFY(!form.HasFindTexts() && form.Find({}, {u"S"_s, {}, u"FA"_s}));
        QCOMPARE(form.TypeText(), u"fast"_s);  // which holds both words
        QVERIFY(!form.HasFindTexts() && form.Find(u"RUN"_s, {}));
        QCOMPARE(Shown(form), u"Sports/slow 0:01 10"_s);  // 1 * 70 * 8 * 0.0175 + 0.5 = 10.3
        QVERIFY(form.HasFindTexts() && form.FindNext() && !form.FindNext());
        QCOMPARE(m_messages->Said(), u"Exercise not found."_s);
        QCOMPARE(form.TypeText(), u"fast"_s);
    }

    void oneIsEditedAndWhatIsGoneIsNotDeleted() {
        QVERIFY(!MayEditExercise(0) && !MayEditExercise(2) && MayEditExercise(1));
        QCOMPARE(m_messages->Said(),
                 u"Please select exercise to edit.|Please select only one exercise to edit."_s);
        for (const int hour : {23, 0, 12}) {
            AddDone(u"Row %d"_s, kDay, QTime(hour, 0), hour, 0);
        }
        const auto all = ListExercises(Database(), kDay, kDay).entries;
        QCOMPARE(DeleteExercises(Database(), {all[1]}), 1);
        QCOMPARE(DeleteExercises(Database(), {all[0], all[1], all[2]}), 1);  // the second is gone
        QCOMPARE(m_messages->asked.first(),
                 u"Are you sure you want to delete exercise 'Row %d'?"_s);
        QCOMPARE(m_messages->Said(), u"Cannot delete exercise."_s);
        QCOMPARE(Listed(), u"Row %d,slow 00:23 "_s);
    }

    void anEditedEntryTakesThePlaceOfTheOldOne() {
        AddDone(u"Row"_s, kDay, QTime(8, 0), 30, 100);
        AddDone(u"Row"_s, kDay, QTime(8, 0), 30, 100);
        const auto both = ListExercises(Database(), kDay, kDay).entries;
        CExerciseEntry later = both[0].entry;
        later.SetMoment(ToFileTime(kDay, QTime(20, 0)));
        later.SetName(u"Swim"_s);
        QVERIFY(EditExercise(Database(), both[0].record, later));
        QCOMPARE(Listed(), u"Row,slow 00:30 100|Swim,slow 00:30 100"_s);
        QCOMPARE(DeleteExercises(Database(), {both[0]}), 1);
        QVERIFY(!EditExercise(Database(), both[0].record, later));
        QCOMPARE(m_messages->Said(), u"Cannot add exercise (error# 2)."_s);
        AddDone(u"Row"_s, kDay, QTime(8, 0), 45, 150);
        later.SetMoment(both[1].entry.GetMoment());
        QVERIFY(EditExercise(Database(), both[1].record, later));
        QCOMPARE(Listed(), u"Swim,slow 00:30 100|Row,slow 00:45 150"_s);
    }

    void theWeekEndsWithTheDayAndTakesAllOfIt() {
        const QTime last(23, 59, 59);
        AddDone(u"Row"_s, kDay.addDays(-7), last, 1, 1);  // not of the week
        AddDone(u"Row"_s, kDay.addDays(-6), QTime(0, 0), 1, 10);
        AddDone(u"Row"_s, kDay, QTime(0, 0), 1, 100);
        AddDone(u"Row"_s, kDay, last, 1, 200);
        AddDone(u"Row"_s, kDay.addDays(1), QTime(0, 0), 1, 2);  // not of the week
        AddEntry(u"Feast"_s, QTime(12, 0), 2, 2600);
        const ExerciseWeek week = ExerciseWeekOf(*m_doc, kDay);
        QCOMPARE(week.front().day, kDay.addDays(-6));
        QCOMPARE(ExerciseHeadline(week.front(), kKcal), u"Total energy burned: 10/-2000/0%"_s);
        // 100 + 200 burned, 2600 - 2000 too many
        QCOMPARE(ExerciseHeadline(week.back(), kKcal), u"Total energy burned: 300/600/50%"_s);
    }

    void theHeadlineCutsOffInKcalAndRoundsInKJ() {
        const auto headline = [](double burned, double surplus, EEnergyUnit unit) {
            return ExerciseHeadline({kDay, burned, surplus}, unit).section(u' ', 3);
        };
        QCOMPARE(headline(99.9, 100.9, kKcal), u"99/100/99%"_s);
        QCOMPARE(headline(29, 100, kKJ), u"121/418/28%"_s);       // 121.22 + 0.5, 418 + 0.5, 28.9 %
        QCOMPARE(headline(29, 100, kKcal), u"29/100/29%"_s);      // no fraction is lost
        QCOMPARE(headline(300, -2000, kKJ), u"1254/-8359/0%"_s);  // -8360 + 0.5
        QCOMPARE(headline(300, 0, kKcal), u"300/0/0%"_s);
    }

    void theLibrarysDialogRefusesInOrder() {
        const auto refusal = [this](const CExlibFields& fields) {
            CExerciseItem item;
            return TakeExlibFields(Database(), {}, fields, 0, item).value_or(u"taken"_s);
        };
        const QString run = u" Running"_s;
        QCOMPARE(refusal({-1, {}, {}, {}}), u"There is no category selected."_s);
        QCOMPARE(refusal({1, u" "_s, {}, {}}), u"Please enter exercise name"_s);
        QCOMPARE(refusal({1, run, u" "_s, {}}), u"Please enter exercise type"_s);
        QCOMPARE(refusal({1, run, u"fast "_s, {}}),
                 u"Exercise 'Running, fast' already exists in category 'Sports'."_s);
        QCOMPARE(refusal({1, run, u"slow"_s, u"much"_s}), u"taken"_s);  // itself, no number
        QCOMPARE(refusal({2, run, u"slow"_s, u"1"_s}), u"taken"_s);     // another category
    }

    void oneRatingIsStoredAndTheOtherIsNone() {
        const auto stored = [this](EEnergyUnit unit, bool isMet, const QString& text) {
            CExerciseItem item;
            item.SetEnergyRateKcalPerMinute(10.0004);
            item.SetMet(3);
            CPreferences preferences;
            preferences.energyUnit = unit;
            const CExlibFields fields{1, u"Run"_s, u"fast"_s, text, isMet};
            (void)TakeExlibFields(Database(), preferences, fields, -1, item);
            return u"%1 %2 MET"_s.arg(item.GetEnergyRateKcalPerMinute()).arg(item.GetMet());
        };
        using enum EEnergyUnit;
        QCOMPARE(stored(Kcal, false, u"12.5"_s), u"12.5 0 MET"_s);
        QCOMPARE(stored(KJ, false, u"100"_s), u"23.9234 0 MET"_s);  // 100 / 4.18
        QCOMPARE(stored(Kcal, true, u"8.5 or so"_s), u"0 8.5 MET"_s);
        QCOMPARE(stored(Kcal, false, u"much"_s), u"0 0 MET"_s);
        QCOMPARE(stored(Kcal, true, u"1000000001"_s), u"10.0004 3 MET"_s);  // refused
        // As it was filled: 10.0004 x 4.18 = 41.801...
        QCOMPARE(stored(KJ, false, u"41.80"_s), u"10.0004 0 MET"_s);
        QCOMPARE(stored(KJ, true, u"41.80"_s), u"0 41.8 MET"_s);
    }

  private:
    CExerciseForm NewForm() { return {*m_doc, NewExercise(kDay, QTime(12, 0))}; }
    static void PickRunning(CExerciseForm& form, const QString& type) {
        form.Pick(EPicker::Category, u"Sports"_s);
        form.Pick(EPicker::Name, u"Running"_s);
        form.Pick(EPicker::Type, type);
    }
    /// What there was to pick from.
    static QString PickOf(CExerciseForm& form, EPicker picker, const QString& text) {
        const QStringList choices = form.Choices(picker).rows;
        form.Pick(picker, text);
        return choices.join(u',');
    }
    static QString EnergyFor(CExerciseForm& form, const QString& hours, const QString& minutes) {
        form.SetDurationTexts(hours, minutes);
        return form.EnergyText();
    }
    /// The list of the day: "Running,slow 02:15 294|...".
    QString Listed() {
        QStringList texts;
        for (const CListed<CExerciseEntry>& listed :
             ListExercises(Database(), kDay, kDay).entries) {
            const CExerciseEntry& entry = listed.entry;
            texts.append(NameAndType(entry.GetName(), entry.GetType()) + u' ' +
                         ExerciseTimeText(entry.GetMinutes()) + u' ' +
                         ExerciseEnergyText(entry.GetEnergyKcal(), kKcal));
        }
        return texts.join(u'|');
    }
    /// "Sports/slow 0:10 98"
    static QString Shown(const CExerciseForm& form) {
        return form.CategoryText() + u'/' + form.TypeText() + u' ' + form.HoursText() + u':' +
               form.MinutesText() + u' ' + form.EnergyText();
    }
};

QTEST_GUILESS_MAIN(TestExerciseRules)
#include "TestExerciseRules.moc"
