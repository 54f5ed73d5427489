#include <limits>

#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
/// Answers the start sequence's dialogs and writes down their order.
class CScriptedDialogs : public CStartDialogs {
  public:
    QString SelectUserProfile() override {
        calls.append(u"select"_s);
        return selected;
    }
    bool EditPreferences(CPreferences& preferences) override {
        preferences.energyUnit = EEnergyUnit::KJ;
        return Answer(u"preferences"_s);
    }
    bool EditUserInformation(CUserInformation& user, const CPreferences& preferences) override {
        user.name = name;
        return Answer(u"user"_s) && preferences.energyUnit == EEnergyUnit::KJ;
    }
    bool EditTargets(CTargets& targets, const CUserInformation& user,
                     const CPreferences&) override {
        targets.goalWeightKg = 65;
        return Answer(u"targets"_s) && user.name == name;
    }

    QStringList calls;
    QString name = u"Anna"_s;
    QString selected;
    QString cancelled;

  private:
    bool Answer(const QString& dialog) {
        calls.append(dialog);
        return dialog != cancelled;
    }
};

const QString kFirstRunMessage =
    u"You have to enter user related information before using Velmora. Please run the application "
    "again and enter this information. Thank you."_s;
}  // namespace

/// Start and exit, profiles and their record, over a real volume.
class TestVelmoraDoc : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }

    void firstRunMakesAProfileInThreeDialogs() {
        CScriptedDialogs dialogs;
        CVelmoraDoc doc(Path(u"first.db"_s));
        QVERIFY(doc.Start(dialogs));
        QCOMPARE(dialogs.calls, (QStringList{u"preferences"_s, u"user"_s, u"targets"_s}));
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Anna"_s);
        QCOMPARE(doc.Settings().targets.goalWeightKg, 65.0);
        QCOMPARE(doc.NutrientNames().front(), u"Energy (kJ)"_s);
        QVERIFY(m_messages->shown.isEmpty());
    }

    void cancellingAnyDialogLeavesNoProfile() {
        for (const QString& dialog : {u"preferences"_s, u"user"_s, u"targets"_s}) {
            CScriptedDialogs dialogs;
            dialogs.cancelled = dialog;
            CVelmoraDoc doc(VolumePath());
            QVERIFY(!doc.Start(dialogs));
            QCOMPARE(dialogs.calls.last(), dialog);
            QCOMPARE(m_messages->TakeShown(), QStringList{kFirstRunMessage});
            QCOMPARE(m_messages->lastIcon, EMessageIcon::Plain);
            QCOMPARE(doc.Database().Profiles().GetNumberOfUserProfiles(), 0);
        }
    }

    void staleProfileNameIsNeverCreated() {
        RememberProfile(u"Gone"_s);
        CScriptedDialogs dialogs;
        dialogs.cancelled = u"preferences"_s;
        QVERIFY(!CVelmoraDoc(VolumePath()).Start(dialogs));
        Reopen();
        QVERIFY(CreateProfile(u"Bert"_s));
        {
            CVelmoraDoc doc(VolumePath());
            QVERIFY(!doc.Start(dialogs));
            QCOMPARE(doc.Database().Profiles().ReadNames(), QStringList{u"Bert"_s});
        }
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Gone"_s);
        dialogs.selected = u"Nobody"_s;
        QVERIFY(!CVelmoraDoc(VolumePath()).Start(dialogs));
        dialogs.selected = u"Bert"_s;
        QVERIFY(CVelmoraDoc(VolumePath()).Start(dialogs));
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Bert"_s);
        // The next start asks nothing, whatever the case of the name.
        RememberProfile(u"bERT"_s);
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.Start(dialogs));
        QCOMPARE(doc.GetActiveProfile(), u"Bert"_s);
        QCOMPARE(dialogs.calls,
                 (QStringList{u"preferences"_s, u"select"_s, u"select"_s, u"select"_s}));
    }

    void settingsOutliveTheDocument() {
        QVERIFY(CreateProfile(u"Anna"_s));
        RememberProfile(u"Anna"_s);
        CScriptedDialogs dialogs;
        // What a start finds, and what is left for the next: the month's tab, then one below and
        // one above the tabs.
        for (const auto& [found, left] :
             {std::pair{65008, 65011}, {65011, 65007}, {65008, 65012}, {65008, 65008}}) {
            CVelmoraDoc doc(VolumePath());
            QVERIFY(doc.Start(dialogs));
            QCOMPARE(doc.Settings().lastTabCommand, found);
            doc.Settings().lastTabCommand = left;
        }
        // Another profile is loaded in between.
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.Start(dialogs));
        CProfileSettings bert = CProfileSettings::ForNewProfile({2024, 1, 1});
        bert.user.name = u"Bert"_s;
        QVERIFY(doc.CreateProfile(bert));
        doc.Settings().dietTab.splitterPerMille = 321;
        QVERIFY(doc.LoadProfile(u"Bert"_s) && doc.LoadProfile(u"Anna"_s));
        QCOMPARE(doc.Settings().dietTab.splitterPerMille, 321);
    }

    void profilesAreDeletedOneByOne() {
        QVERIFY(CreateProfile(u"Anna"_s) && CreateProfile(u"Bert"_s));
        QVERIFY(m_doc->LoadProfile(u"Anna"_s));
        for (const QStringList& names : {QStringList(), QStringList{u"Anna"_s, u"Bert"_s}}) {
            QVERIFY(!m_doc->DeleteUserProfiles(names));
            QCOMPARE(m_messages->Said(), u"Please select one user profile to delete."_s);
        }
        QVERIFY(!m_doc->DeleteUserProfiles({u"ANNA"_s}));
        QCOMPARE(m_messages->Said(),
                 u"Cannot delete active profile. Please select another profile first."_s);
        QVERIFY(!CVelmoraDoc::OnNewDocument());
        QCOMPARE(m_messages->Said(), u"Invalid command: OnNewDocument"_s);
    }

    void findTextsAreKeptForTheirProfileAlone() {
        QVERIFY(CreateProfile(u"Anna"_s) && CreateProfile(u"Bert"_s));
        const auto kept = [this](const QString& profile, ECatalogueKind kind) {
            if (!m_doc->SetActiveProfile(profile)) {
                return u"no profile"_s;
            }
            const CFindState& find = m_doc->FindState(kind);
            return find.name + u'|' + find.types.join(u',');
        };
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        QVERIFY(m_doc->KeepFindTexts(kFoods, u"milk"_s, {u"a \"b, c"_s}));
        QVERIFY(m_doc->KeepFindTexts(kExercises, u"run"_s, {u"x"_s, {}, u"z"_s}));
        QCOMPARE(kept(u"Bert"_s, kFoods), u"|"_s);
        QVERIFY(m_doc->KeepFindTexts(kFoods, u"tea"_s, {u"green"_s}));
        QVERIFY(m_doc->KeepFindTexts(kMenus, u"lunch"_s, {}));
        Reopen();
        QCOMPARE(kept(u"Anna"_s, kFoods), u"milk|a \"b, c"_s);
        QCOMPARE(kept(u"Anna"_s, kExercises), u"run|x,,z"_s);
        QCOMPARE(kept(u"Anna"_s, kMenus), u"|"_s);
        QCOMPARE(kept(u"Bert"_s, kFoods), u"tea|green"_s);
        // The next profiles get the identifiers of those that are gone.
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        {
            const CFileSizeLimit limit(1);
            QVERIFY(!m_doc->DeleteUserProfiles({u"Bert"_s}));
        }
        QCOMPARE(m_messages->Said(), u"Cannot delete database."_s);
        QCOMPARE(Query("SELECT COUNT(*) FROM named_values WHERE value LIKE '%tea%'"), 1);
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        QVERIFY(m_doc->DeleteUserProfiles({u"Bert"_s}));
        QCOMPARE(Query("SELECT COUNT(*) FROM named_values WHERE value LIKE '%tea%'"), 0);
        QVERIFY(CreateProfile(u"Bert"_s));
        QCOMPARE(kept(u"Bert"_s, kFoods), u"|"_s);
        QVERIFY(m_doc->KeepFindTexts(kFoods, u"tea"_s, {}));
        QVERIFY(m_doc->KeepFindTexts(kMenus, u"lunch"_s, {}));
        // As by a program that knows no values: another profile of that identifier, then the same
        // name again.
        Change("UPDATE databases SET name='Cleo' || substr(name, 5) WHERE name LIKE 'Bert%'");
        QCOMPARE(kept(u"Cleo"_s, kFoods), u"|"_s);
        Change("DELETE FROM databases WHERE name LIKE 'Cleo%'");
        QVERIFY(CreateProfile(u"Cleo"_s));
        QCOMPARE(kept(u"Cleo"_s, kFoods), u"|"_s);
    }

    void aVolumeGetsItsTableOfValuesWithTheFirst() {
        QVERIFY(CreateProfile(u"Anna"_s) && m_doc->SetActiveProfile(u"Anna"_s));
        QVERIFY(!m_doc->FindState(kFoods).HasTexts());
        QVERIFY(m_doc->KeepFindTexts(kFoods, {}, {}));
        constexpr auto kTables = "SELECT COUNT(*) FROM sqlite_master WHERE name='named_values'";
        QCOMPARE(Query(kTables), 0);
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        {
            const CFileSizeLimit limit(1);
            QVERIFY(!m_doc->KeepFindTexts(kFoods, u"milk"_s, {}));
        }
        QCOMPARE(m_doc->FindState(kFoods).name, u"milk"_s);  // for this run
        QCOMPARE(Query(kTables), 0);
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        QVERIFY(m_doc->KeepFindTexts(kFoods, u"milk"_s, {}));
        QCOMPARE(Query(kTables), 1);
        QCOMPARE(Query("PRAGMA user_version"), 1);
        m_doc->Database().Profiles().Close();
        QVERIFY(!m_doc->Database().Profiles().SaveValue(u"find.foods"_s, u"[]"_s));
        QVERIFY(!m_doc->Database().Profiles().ReadValue(u"find.foods"_s));
    }

    void failedSwitchKeepsTheActiveProfile() {
        QVERIFY(CreateProfile(u"Bert"_s) && CreateProfile(u"Anna"_s));
        QVERIFY(m_doc->SetActiveProfile(u"Anna"_s));
        QVERIFY(Database().GetStore().DeleteDatabase(u"Bert_Weight"_s, kWeightType));
        for (const QString& name : {u"Foods"_s, u"Bert"_s}) {
            QVERIFY(!m_doc->SetActiveProfile(name));
            QCOMPARE(m_doc->GetActiveProfile(), u"Anna"_s);
            QCOMPARE(CRegistrySettings::Read().userProfileName, u"Anna"_s);
            QVERIFY(Database().Diet().IsOpen());
        }
    }

    void titleIsCutAfter18Characters() {
        QVERIFY(CreateProfile(u"0123456789"_s) && CreateProfile(u"0123456789a"_s));
        QVERIFY(m_doc->LoadProfile(u"0123456789"_s));
        QCOMPARE(m_doc->GetTitle(), u"Velmora:0123456789"_s);
        QVERIFY(m_doc->LoadProfile(u"0123456789a"_s));
        QCOMPARE(m_doc->GetTitle(), u"Velmora:0123456789..."_s);
    }

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

  private:
    /// Closed, so that another document can open it.
    QString VolumePath() {
        m_doc.reset();
        return Path(u"v.db"_s);
    }

    static void RememberProfile(const QString& name) {
        CRegistrySettings registry = CRegistrySettings::Read();
        registry.userProfileName = name;
        registry.Write();
    }

    bool CreateProfile(const QString& name) {
        CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 1, 1});
        settings.user.name = name;
        return m_doc->CreateProfile(settings);
    }
};

QTEST_GUILESS_MAIN(TestVelmoraDoc)
#include "TestVelmoraDoc.moc"
