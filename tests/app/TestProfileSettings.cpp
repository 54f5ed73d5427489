#include <limits>

#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

/// The record of a profile, and what stands in for one that cannot be read.
class TestProfileSettings : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }

    void recordHoldsEverySetting() {
        CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 2, 29});
        settings.user = {u"Anna"_s, false, {1990, 12, 31}, 171.25, 4};
        settings.preferences = {EWeightUnit::StonesAndPounds, EHeightUnit::Inches, EEnergyUnit::KJ,
                                6, 0x0020'0000'8001'8001};
        settings.targets = {{2024, 3, 1}, 81.5, {2025, 2, 28}, 74.25, 0.375, 1800.5, kCustomDiet};
        settings.targets.nutrients[0] = 1801;
        settings.targets.nutrients[53] = 0.125;
        settings.lastTabCommand = kMonthTabCommand;
        settings.dietTab.splitterPerMille = 1000;
        settings.dietTab.backgroundColor = Rgb(0xFE, 0x80, 0xFF);
        auto& widths = settings.dietTab.columnWidths;
        std::tie(widths[0], widths[2], widths[3], widths[55]) = std::tuple(40000, 1, 1020, 5000);
        settings.weightTab = {0, false, Rgb(1, 2, 3), {}, 0, Rgb(255, 255, 255), {1, 2, 3}};
        settings.weightTab.columnWidths[10] = 44;
        settings.exerciseTab = {999, Rgb(9, 8, 7), 0, Rgb(0, 0, 255), 1, {5, 6, 7}};
        CProfileRecord record;
        settings.ToRecord(record);
        // Limited by their slots: 16 bits with a sign; steps of 4 up to 255.
        std::tie(widths[0], widths[2], widths[55]) = std::tuple(32767, 4, 1020);
        QVERIFY(CProfileSettings::FromRecord(record) == settings);
        for (const auto& [set, kept] : {std::pair{-1, 0}, {0, 0}, {1000, 1000}, {1001, 1000}}) {
            for (int* splitter :
                 {&settings.dietTab.splitterPerMille, &settings.weightTab.splitterPerMille,
                  &settings.exerciseTab.splitterPerMille}) {
                *splitter = set;
                settings.ToRecord(record);
                *splitter = kept;
                QVERIFY(CProfileSettings::FromRecord(record) == settings);
            }
        }
    }

    void whatNobodyChangedIsNotWrittenBack() {
        QVERIFY(CreateProfile(u"Anna"_s));
        // A code of no unit, a place that is free, and a profile older than two of the tabs.
        CProfileRecord record;
        QCOMPARE(Database().Profiles().Open(u"Anna"_s, false), true);
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Loaded);
        record.SetPreference(0, 99);
        record.SetSetting(79, 7);
        for (int slot = 36; slot < 70; ++slot) {
            record.SetSetting(slot, 0);
        }
        QVERIFY(Database().Profiles().SaveRecord(record));
        const QByteArray before = Load(VolumePath());
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));  // which names the energy
        const QByteArray active = Load(VolumePath());
        QVERIFY(active != before);
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s) && m_doc->SaveSettings());
        QVERIFY(Load(VolumePath()) == active);
        Reopen();
        QVERIFY(m_doc->LoadProfile(u"Anna"_s));
        m_doc->Settings().preferences.decimals = 5;
        m_doc->Settings().weightTab.columnWidths[1] = 44;
        Reopen();
        QVERIFY(m_doc->LoadProfile(u"Anna"_s));
        QCOMPARE(m_doc->Settings().weightTab.columnWidths[1], 44);
        QVERIFY(m_doc->Settings().weightTab.showGoalLine);
        QCOMPARE(m_doc->Settings().exerciseTab.columnWidths[0], 75);
        CProfileRecord written;
        QCOMPARE(Database().Profiles().LoadRecord(written), EProfileRecord::Loaded);
        QCOMPARE(written.GetPreference(0), 99);
        QCOMPARE(written.GetPreference(3), 5);
        QCOMPARE(written.GetSetting(79), 7);
    }

    void defaultsStandInForARecordUntilTheyAreConfirmed_data() {
        AddRows<int, qint32, QString>({
            {"of another version", 159, 2, {}},
            {"cut short", 158, 1,
             u"Database error. Wrong number of properties, record #0, props = 158 (159)|"_s},
            {"nothing but its marker", 1, 0, {}},
        });
    }
    void defaultsStandInForARecordUntilTheyAreConfirmed() {
        const auto& [count, version, error] = DataRow<int, qint32, QString>();
        QVERIFY(CreateProfile(u"Anna"_s) && m_doc->SetActiveProfile(u"Anna"_s));
        m_doc->Settings().user.heightCm = 123;
        QVERIFY(m_doc->SaveSettings());
        CProfileRecord record;
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Loaded);
        PropertyList properties = record.GetProperties();
        properties[1] = version;
        properties.resize(count);
        CDatabaseHandle raw = Database().GetStore().OpenDatabase(u"Anna"_s, 3, 4097, true);
        const ObjectId id = Database().GetStore().SeekToPosition(raw, 0);
        QVERIFY(Database().GetStore().WriteRecord(raw, id, properties));
        const QByteArray before = Load(VolumePath());
        const QString told =
            error +
            u"The settings of user profile 'Anna' cannot be read. Default settings are used; the "
            "stored ones are kept until you confirm new ones."_s;

        for (const bool isConfirmed : {false, true}) {
            Reopen();
            QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
            QCOMPARE(m_messages->Said(), told);
            QCOMPARE(m_doc->Settings().user.heightCm, 170.0);
            QVERIFY(Database().Diet().IsOpen() && Database().Weight().IsOpen() &&
                    Database().Exercises().IsOpen());
            // Where the windows were left confirms nothing.
            m_doc->Settings().lastTabCommand = kWeightTabCommand;
            m_doc->Settings().dietTab.splitterPerMille = 300;
            QVERIFY(!isConfirmed || m_doc->SaveSettings());
            QCOMPARE(Load(VolumePath()) == before, !isConfirmed);
        }
        Reopen();
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        QCOMPARE(m_messages->Said(), QString());
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Loaded);
        QCOMPARE(record.GetUserName(), u"Anna"_s);
        QCOMPARE(m_doc->Settings().dietTab.splitterPerMille, 300);
        QVERIFY(m_doc->Preferences().DisplayedNutrients() == CPreferences().DisplayedNutrients());
    }

    void damagedRecordFallsBackToDefaults() {
        constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
        CProfileRecord record;
        CProfileSettings::ForNewProfile({2024, 1, 1}).ToRecord(record);
        for (int i = 0; i < CProfileRecord::kPreferenceCount; ++i) {
            record.SetPreference(i, 99);
        }
        record.SetActivityLevel(99);
        record.SetDietType(-1);
        record.SetHeightCm(kNan);
        record.SetStartWeightKg(-1);
        record.SetGoalWeightKg(kNan);
        record.SetRateKgPerWeek(-1);
        record.SetDailyEnergyKcal(kNan);
        record.SetTarget(0, kNan);
        record.SetBirthDate({});
        for (int i = 0; i < CProfileRecord::kSettingCount; ++i) {
            record.SetSetting(i, -1);
        }
        CProfileSettings read = CProfileSettings::FromRecord(record);
        QVERIFY(read.user.birthDate.isValid());
        CProfileSettings expected = CProfileSettings::ForNewProfile({2024, 1, 1});
        expected.user.birthDate = read.user.birthDate;
        // All bits set: colours are white, nutrients' columns as wide as they can be.
        constexpr quint32 kWhite = 0xFFFFFF;
        expected.preferences.displayed.set();
        expected.dietTab.backgroundColor = kWhite;
        expected.dietTab.columnWidths.fill(1020);
        expected.dietTab.columnWidths[0] = expected.dietTab.columnWidths[1] = 0;
        expected.weightTab = {500, false, kWhite, kWhite, kWhite, kWhite, {}};
        expected.exerciseTab = {500, kWhite, kWhite, kWhite, kWhite, {}};
        QVERIFY(read == expected);
    }

    void aNewProfileHasDefaultsInTheLocalesUnits() {
        for (const auto& [locale, weight, height] :
             {std::tuple("de_DE", EWeightUnit::Kilograms, EHeightUnit::Centimetres),
              {"en_US", EWeightUnit::Pounds, EHeightUnit::Feet},
              {"en_GB", EWeightUnit::Stones, EHeightUnit::Feet}}) {
            QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
            const auto settings = CProfileSettings::ForNewProfile({2024, 1, 1});
            QCOMPARE(settings.preferences.weightUnit, weight);
            QCOMPARE(settings.preferences.heightUnit, height);
            // Thirty years old; twelve weeks without a change on the pyramid.
            QVERIFY(settings.user == (CUserInformation{{}, true, {1994, 1, 1}, 170, 0}));
            QVERIFY(settings.targets ==
                    (CTargets{{2024, 1, 1}, 70, {2024, 3, 25}, 70, 0, 0, 3, {}}));
        }
        QLocale::setDefault(QLocale::c());
    }
};

QTEST_GUILESS_MAIN(TestProfileSettings)
#include "TestProfileSettings.moc"
