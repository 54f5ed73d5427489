// The rules of the exercise library's edit dialog.
#include "exercise/ExerciseFixture.h"

#include "catalogue/items/ExlibRules.h"

class TestExlib : public CExercisesTest {
    Q_OBJECT

  private slots:
    void theDialogRefusesInOrder() {
        QCOMPARE(AddCategory(Database(), u"Sport"_s, kExercises), 1);
        for (const QString& type : {u"fast"_s, u"slow"_s}) {
            AddToLibrary(Database(), 1, u"Run"_s, type, 0, 8);
        }
        const auto refusal = [this](const CExlibFields& fields) {
            CExerciseItem item;
            return TakeExlibFields(Database(), {}, fields, 0, item).value_or(u"taken"_s);
        };
        const QString run = u" Run"_s;
        QCOMPARE(refusal({-1, {}, {}, {}}), u"There is no category selected."_s);
        QCOMPARE(refusal({1, u" "_s, {}, {}}), u"Please enter exercise name"_s);
        QCOMPARE(refusal({1, run, u" "_s, {}}), u"Please enter exercise type"_s);
        QCOMPARE(refusal({1, run, u"slow "_s, {}}),
                 u"Exercise 'Run, slow' already exists in category 'Sport'."_s);
        QCOMPARE(refusal({1, run, u"fast"_s, u" "_s}), u"Please enter exercise energy value"_s);
        QCOMPARE(refusal({1, run, u"fast"_s, u"much"_s}), u"taken"_s);  // itself, no number
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
        QCOMPARE(stored(Kcal, true, u"1000000001"_s), u"0 0 MET"_s);
        // As it was filled: 10.0004 x 4.18 = 41.801...
        QCOMPARE(stored(KJ, false, u"41.80"_s), u"10.0004 0 MET"_s);
        QCOMPARE(stored(KJ, true, u"41.80"_s), u"0 41.8 MET"_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }
};

QTEST_GUILESS_MAIN(TestExlib)
#include "TestExlib.moc"
