#include <QLocale>
#include <QTest>

#include "app/ProfileSettings.h"
#include "app/UserProfile.h"
#include "profile/TargetsForm.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

namespace {
const QDate kStart(2024, 1, 1);

/// Thirty years and their leap days are 10957 days: 10957 / 365 = 30.02.
CUserInformation ThirtyYearOldMan() {
    return {u"Adam"_s, true, {1994, 1, 1}, 180, 0};
}

/// In ten weeks, with the diet of the pyramid.
CTargets FromEightyTo(double goalKg, double rateKg = 0) {
    return {.startDate = kStart,
            .startWeightKg = 80,
            .goalDate = kStart.addDays(70),
            .goalWeightKg = goalKg,
            .rateKgPerWeek = rateKg,
            .dietType = 3};
}

bool IsNear(double actual, double expected) {
    return qAbs(actual - expected) < 0.005;
}
}  // namespace

/// The rules of the user's data, of the plan and of the dialog that makes it.
class TestUserProfile : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void ageCountsYearsOf365Days() {
        QCOMPARE(AgeOn({2024, 1, 1}, {1994, 1, 9}), 29);  // 10949 days are 29.997 years
        QCOMPARE(AgeOn({2024, 1, 1}, {1994, 1, 8}), 30);  // 10950 = 30 * 365
    }

    void weeksAreShownForARealChange() {
        QVERIFY(!WeeksToGoal(FromEightyTo(79.1, 0.5)));  // the whole part of -0.9 is 0
        QVERIFY(!WeeksToGoal(FromEightyTo(75, 0.001)));
        QVERIFY(WeeksToGoal(FromEightyTo(81, 0.0015)));
    }

    void formKeepsWhatItsTextsRound() {
        CPreferences preferences;
        preferences.weightUnit = EWeightUnit::Pounds;
        preferences.energyUnit = EEnergyUnit::KJ;
        CTargets targets = FromEightyTo(70, 0.5);
        targets.dailyEnergyKcal = 1800.4;
        CTargetsForm form(targets, ThirtyYearOldMan(), preferences);
        CTargetsFields fields = form.GetFields();
        QCOMPARE(form.RateLabel(), u"lb per week:"_s);
        QCOMPARE(fields.rate, u"1.1"_s);     // 0.5 * 2.2046 = 1.1023
        QCOMPARE(fields.energy, u"7526"_s);  // 1800.4 * 4.18 + 0.5 = 7526.17
        form.SetFields(fields);
        QCOMPARE(form.GetTargets().rateKgPerWeek, 0.5);
        QCOMPARE(form.GetTargets().dailyEnergyKcal, 1800.4);
        fields.energy = u"8360"_s;
        form.SetFields(fields);
        QVERIFY(IsNear(form.GetTargets().dailyEnergyKcal, 2000));
        QCOMPARE(form.TargetText(3) + u' ' + form.CalculatedText(3), u"0.00 275.00"_s);
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetTargets().nutrients[3], 275.0);
    }

    void weightsAloneDecideNeitherRateNorDate() {
        CTargets targets = FromEightyTo(80, 1);
        targets.dailyEnergyKcal = 1500;
        CTargetsForm form(targets, ThirtyYearOldMan(), CPreferences());
        CTargetsFields fields = form.GetFields();
        fields.startWeight.major = u"81"_s;
        fields.goalWeight.major = u"75"_s;
        form.SetFields(fields);
        QCOMPARE(form.GetFields().rate, u"1"_s);
        QCOMPARE(form.GetFields().goalDate, kStart.addDays(70));
        // 2236.548 + 13.75 * 1.2 - 1111.111 = 1141.937
        QCOMPARE(form.GetFields().energy, u"1142"_s);
    }

    void typedTargetsMakeTheDietCustom() {
        CTargetsForm form(FromEightyTo(80), ThirtyYearOldMan(), CPreferences());
        form.TypeTarget(40, u"12"_s);
        form.TypeTarget(9, form.TargetText(9));
        QVERIFY(form.CanRecalculate());
        form.TypeTarget(9, u"800"_s);
        QVERIFY(!form.CanRecalculate());
        form.Recalculate();
        QVERIFY(form.Confirm());
        QCOMPARE(form.GetTargets().nutrients[9], 800.0);
        QCOMPARE(form.GetTargets().nutrients[40], 12.0);
        QCOMPARE(form.GetTargets().nutrients[0], 0.0);
    }

    void storedTargetsStayUntilTheyAreRecalculated_data() {
        AddRows<int>({{"custom", kCustomDiet}, {"of the pyramid", 3}});
    }
    void storedTargetsStayUntilTheyAreRecalculated() {
        const auto& [storedType] = DataRow<int>();
        CTargets stored = FromEightyTo(75, 0.5);
        stored.dietType = storedType;
        stored.nutrients[0] = 1900.25;
        stored.nutrients[9] = 800;
        stored.nutrients[40] = 12;
        CTargetsForm form(stored, ThirtyYearOldMan(), CPreferences());
        QVERIFY(IsNear(form.GetTargets().dailyEnergyKcal, 2236.548 - 555.556));  // was missing
        const auto shown = [&form](int nutrient) {
            return form.TargetText(nutrient) + u'|' + form.CalculatedText(nutrient);
        };
        form.SetDietType(0);
        QCOMPARE(shown(9), u"800.00|1000.00"_s);
        QCOMPARE(shown(40), u"12.00|"_s);  // no type decides it
        CTargetsFields fields = form.GetFields();
        fields.rate = u"0"_s;
        form.SetFields(fields);
        QCOMPARE(shown(0), u"1900.25|2237.00"_s);  // whole(2236.548 + 0.5)
        fields = form.GetFields();
        fields.energy = u"2000"_s;
        form.SetFields(fields);
        QCOMPARE(shown(3), u"0.00|400.00"_s);  // 2000 x 0.8 / 4
        form.SetDietType(kCustomDiet);
        QCOMPARE(shown(9), u"800.00|"_s);
        QVERIFY(form.Confirm());
        QVERIFY(form.GetTargets().nutrients == stored.nutrients);
        form.SetDietType(1);
        form.Recalculate();
        QCOMPARE(shown(3), u"350.00|350.00"_s);  // 2000 x 0.7 / 4
        QCOMPARE(shown(40), u"12.00|"_s);
        // Without an energy that of the plan counts.
        fields = form.GetFields();
        fields.energy = u"0"_s;
        form.SetFields(fields);
        QCOMPARE(shown(0), u"2000.00|2237.00"_s);
        form.Recalculate();
        QCOMPARE(shown(0) + u' ' + form.GetFields().energy, u"2237.00|2237.00 2237"_s);
    }
};

QTEST_GUILESS_MAIN(TestUserProfile)
#include "TestUserProfile.moc"
