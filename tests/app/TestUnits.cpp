#include <QLocale>

#include "app/Preferences.h"
#include "app/UnitTexts.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

/// Conversions, unit names and the texts of fields.
class TestUnits : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void conversionsUseTheSystemsConstants_data() {
        AddRows<double, double>({
            {"70 * 2.2046 lb", KgToPounds(70), 154.322},
            {"1 lb, not the exact pound", PoundsToKg(1), 0.4535970244035199},
            {"70.866 - 5 * 12 in", CmToLeftoverInches(180), 10.866141732283465},
            {"2000 * 4.18 kJ", KcalToKJ(2000), 8360.0},
            {"0.5 rounds up", double(WholeEnergy(1999.5, EEnergyUnit::Kcal)), 2000.0},
            {"rounded in kJ: 1999.9 * 4.18 = 8359.582",
             double(WholeEnergy(1999.9, EEnergyUnit::KJ)), 8360.0},
        });
    }

    void conversionsUseTheSystemsConstants() {
        const auto& [actual, expected] = DataRow<double, double>();
        QVERIFY2(qAbs(actual - expected) < 1e-9, qPrintable(QString::number(actual, 'g', 17)));
    }

    void weightsAreTypedInTheirUnit() {
        const std::tuple<double, EWeightUnit, CUnitTexts> rows[] = {
            {70, EWeightUnit::Kilograms, {u"70"_s, {}}},
            {100.5, EWeightUnit::Kilograms, {u"100.5"_s, {}}},  // zeros before the point stay
            {250, EWeightUnit::Pounds, {u"551.15"_s, {}}},      // 250 * 2.2046
            {70, EWeightUnit::Stones, {u"11"_s, u"0.32"_s}},    // 154.322 - 11 * 14
            {StonesToKg(10, 13.999), EWeightUnit::StonesAndPounds, {u"10"_s, u"14"_s}},
        };
        for (const auto& [kg, unit, texts] : rows) {
            QCOMPARE(WeightTexts(kg, unit), texts);
            // Half of the last digit shown: 0.005 lb or kg.
            QVERIFY(qAbs(ReadWeightKg(texts, unit) - kg) <= 0.005);
        }
    }

    void heightsAreTypedInTheirUnit() {
        const auto inFeet = [](double cm) {
            const auto [feet, inches] = HeightTexts(cm, EHeightUnit::Feet);
            return feet + u' ' + inches;
        };
        QCOMPARE(inFeet(180), u"5 10.87"_s);
        QCOMPARE(inFeet(FeetToCm(5, 11.999)), u"6 0"_s);  // a full foot is carried
        // 6 x 30.48 cm are 72 in less a rounding error, 3 x 30.48 cm 36 in.
        QCOMPARE(inFeet(182.88) + u", "_s + inFeet(91.44), u"6 0, 3 0"_s);
        QCOMPARE(ReadHeightCm({u"70"_s, {}}, EHeightUnit::Inches), 177.8);
        QCOMPARE(ReadHeightCm({u"tall"_s, {}}, EHeightUnit::Centimetres), 0.0);
    }

    void numbersFollowThePreferences() {
        CPreferences preferences;
        QCOMPARE(preferences.FormatNumber(12.5), u"12.50"_s);
        preferences.decimals = 0;
        preferences.energyUnit = EEnergyUnit::KJ;
        QCOMPARE(preferences.FormatNutrient(0, 2000), u"8360"_s);
        QCOMPARE(preferences.FormatNutrient(1, 2000), u"2000"_s);
        QVERIFY(qAbs(preferences.ReadNutrient(0, u"8360"_s) - 2000) < 1e-9);
        QCOMPARE(preferences.ReadNutrient(1, u""_s), 0.0);
        QCOMPARE(preferences.DisplayedNutrients(), (std::vector<int>{0, 1, 2, 3, 4, 6}));
    }
};

QTEST_GUILESS_MAIN(TestUnits)
#include "TestUnits.moc"
