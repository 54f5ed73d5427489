#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <limits>

#include "app/VelmoraDoc.h"
#include "support/RecordingMessages.h"

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
class TestVelmoraDoc : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder->path());
        CRegistrySettings().Write();
        m_messages = std::make_unique<CRecordingMessages>();
    }
    void cleanup() { m_messages.reset(); }

    void firstRunMakesAProfileInThreeDialogs() {
        CScriptedDialogs dialogs;
        CVelmoraDoc doc(VolumePath());
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
            QCOMPARE(doc.Database().GetNumberOfUserProfiles(), 0);
        }
    }

    void staleProfileNameIsNeverCreated() {
        RememberProfile(u"Gone"_s);
        CScriptedDialogs dialogs;
        dialogs.cancelled = u"preferences"_s;
        QVERIFY(!CVelmoraDoc(VolumePath()).Start(dialogs));
        QCOMPARE(dialogs.calls, QStringList{u"preferences"_s});

        CreateProfiles({u"Bert"_s});
        dialogs.calls.clear();
        {
            CVelmoraDoc doc(VolumePath());
            QVERIFY(!doc.Start(dialogs));
            QCOMPARE(doc.Database().FillProfileNames(), QStringList{u"Bert"_s});
        }
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Gone"_s);
        dialogs.selected = u"Bert"_s;
        QVERIFY(CVelmoraDoc(VolumePath()).Start(dialogs));
        QCOMPARE(dialogs.calls, (QStringList{u"select"_s, u"select"_s}));
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Bert"_s);
        // The next start asks nothing, whatever the case of the name.
        RememberProfile(u"bERT"_s);
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.Start(dialogs));
        QCOMPARE(doc.GetActiveProfile(), u"Bert"_s);
        QCOMPARE(dialogs.calls.size(), 2);
    }

    void settingsOutliveTheDocument_data() {
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("corrected");
        QTest::newRow("month view") << 65011 << 65011;
        QTest::newRow("below the tabs") << 65007 << 65008;
        QTest::newRow("above the tabs") << 65012 << 65008;
    }

    void settingsOutliveTheDocument() {
        QFETCH(int, command);
        QFETCH(int, corrected);
        CreateProfiles({u"Anna"_s});
        RememberProfile(u"Anna"_s);
        CScriptedDialogs dialogs;
        {
            CVelmoraDoc doc(VolumePath());
            QVERIFY(doc.Start(dialogs));
            doc.Settings().lastTabCommand = command;
        }
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.Start(dialogs));
        QCOMPARE(doc.Settings().lastTabCommand, corrected);
    }

    void foreignFileStopsTheStart() {
        QFile file(VolumePath());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no volume at all, certainly") > 0);
        file.close();
        CScriptedDialogs dialogs;
        QVERIFY(!CVelmoraDoc(VolumePath()).Start(dialogs));
        QCOMPARE(m_messages->shown.last(), u"Cannot open database."_s);
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Stop);
        QVERIFY(!CVelmoraDoc::OnNewDocument());
        QCOMPARE(m_messages->shown.last(), u"Invalid command: OnNewDocument"_s);
    }

    void newNamesMustBeFree_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("refusal");
        const QString tooLong = u"User name is too long. Maximum is 21 characters."_s;
        QTest::newRow("21 characters") << u" "_s + QString(21, u'x') + u" "_s << QString();
        QTest::newRow("22 characters") << QString(22, u'x') << tooLong;
        QTest::newRow("blank") << u"  "_s << u"Please enter user name."_s;
        QTest::newRow("other case") << u"anna"_s << u"User profile 'anna' already exists."_s;
        QTest::newRow("catalogue") << u"foods"_s << u"User profile 'foods' already exists."_s;
        QTest::newRow("a diary") << u"Anna_Diet"_s << u"User profile 'Anna_Diet' already exists."_s;
    }

    void newNamesMustBeFree() {
        QFETCH(QString, name);
        QFETCH(QString, refusal);
        CreateProfiles({u"Anna"_s});
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.OpenCatalogue() && doc.LoadProfile(u"Anna"_s));
        QCOMPARE(doc.CheckNewProfileName(name).value_or(QString()), refusal);
        CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 1, 1});
        settings.user.name = name;
        QCOMPARE(doc.CreateProfile(settings), refusal.isEmpty());
        QCOMPARE(m_messages->shown, refusal.isEmpty() ? QStringList() : QStringList{refusal});
        QCOMPARE(doc.Database().GetNumberOfUserProfiles(), refusal.isEmpty() ? 2 : 1);
        QCOMPARE(doc.GetActiveProfile(), u"Anna"_s);
        doc.Settings().lastTabCommand = kWeightTabCommand;
        QVERIFY(doc.SaveSettings());  // still into Anna's record
        QVERIFY(doc.LoadProfile(u"Anna"_s));
        QCOMPARE(doc.Settings().lastTabCommand, int(kWeightTabCommand));
    }

    void profilesAreDeletedOneByOne() {
        CreateProfiles({u"Anna"_s, u"Bert"_s});
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.OpenCatalogue() && doc.LoadProfile(u"Anna"_s));
        const QString none = u"Please select one user profile to delete."_s;
        QVERIFY(!doc.DeleteUserProfiles({}) && !doc.DeleteUserProfiles({u"Anna"_s, u"Bert"_s}));
        QVERIFY(!doc.DeleteUserProfiles({u"ANNA"_s}));
        QCOMPARE(
            m_messages->TakeShown(),
            (QStringList{none, none,
                         u"Cannot delete active profile. Please select another profile first."_s}));
        m_messages->answers = {false};
        QVERIFY(!doc.DeleteUserProfiles({u"Bert"_s}));
        QVERIFY(doc.DeleteUserProfiles({u"Bert"_s}));
        QCOMPARE(m_messages->asked.first(),
                 u"Are you sure you want to delete user profile 'Bert' and all diet, weight and "
                 "exercise information associated with this profile?"_s);
        QCOMPARE(doc.Database().FillProfileNames(), QStringList{u"Anna"_s});
        QVERIFY(!doc.CheckNewProfileName(u"Bert"_s));
    }

    void failedSwitchKeepsTheActiveProfile() {
        CreateProfiles({u"Anna"_s});
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.OpenCatalogue() && doc.SetActiveProfile(u"Anna"_s));
        QVERIFY(!doc.SetActiveProfile(u"Foods"_s));
        QCOMPARE(doc.GetActiveProfile(), u"Anna"_s);
        QCOMPARE(CRegistrySettings::Read().userProfileName, u"Anna"_s);
        QVERIFY(doc.Database().Diet().IsOpen());
    }

    void titleIsCutAfter18Characters() {
        CreateProfiles({u"0123456789"_s, u"0123456789a"_s});
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.OpenCatalogue() && doc.LoadProfile(u"0123456789"_s));
        QCOMPARE(doc.GetTitle(), u"Velmora:0123456789"_s);
        QVERIFY(doc.LoadProfile(u"0123456789a"_s));
        QCOMPARE(doc.GetTitle(), u"Velmora:0123456789..."_s);
    }

    void recordHoldsEverySetting() {
        CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 2, 29});
        settings.user = {u"Anna"_s, false, {1990, 12, 31}, 171.25, 4};
        settings.preferences = {EWeightUnit::StonesAndPounds,
                                EHeightUnit::Inches,
                                EEnergyUnit::KJ,
                                6,
                                {0x0020'0000'8001'8001}};
        settings.targets.dietType = kCustomDiet;
        settings.targets.nutrients[53] = 0.125;
        settings.dietTab.splitterPerMille = 1000;
        settings.dietTab.backgroundColor = Rgb(0xFE, 0x80, 0xFF);
        settings.dietTab.columnWidths[0] = 40000;
        settings.dietTab.columnWidths[2] = 1;
        settings.dietTab.columnWidths[3] = 1020;
        settings.dietTab.columnWidths[55] = 5000;
        CProfileRecord record;
        settings.ToRecord(record);
        const CProfileSettings read = CProfileSettings::FromRecord(record);
        QVERIFY(!read.user.isMale && read.user.name == u"Anna" && read.user.heightCm == 171.25);
        QCOMPARE(read.user.birthDate, QDate(1990, 12, 31));
        QCOMPARE(read.user.activityLevel, 4);
        QCOMPARE(read.targets.startDate, QDate(2024, 2, 29));
        QCOMPARE(read.targets.nutrients, settings.targets.nutrients);
        QCOMPARE(read.targets.dietType, kCustomDiet);
        QCOMPARE(read.preferences.weightUnit, EWeightUnit::StonesAndPounds);
        QCOMPARE(read.preferences.heightUnit, EHeightUnit::Inches);
        QCOMPARE(read.preferences.decimals, 6);
        QCOMPARE(read.preferences.DisplayedNutrients(), (std::vector<int>{0, 15, 16, 31, 53}));
        QCOMPARE(read.dietTab.splitterPerMille, 1000);
        QCOMPARE(read.dietTab.backgroundColor, Rgb(0xFE, 0x80, 0xFF));
        // Limited by their slots: 16 bits with a sign; steps of 4 up to 255.
        QCOMPARE(read.dietTab.columnWidths[0], 32767);
        QCOMPARE(read.dietTab.columnWidths[2], 4);
        QCOMPARE(read.dietTab.columnWidths[3], 1020);
        QCOMPARE(read.dietTab.columnWidths[55], 1020);
        QCOMPARE(read.dietTab.columnWidths[54], 0);
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
        record.SetGoalWeightKg(kNan);
        record.SetTarget(0, kNan);
        record.SetBirthDate({});
        for (int i = 0; i < CProfileRecord::kSettingCount; ++i) {
            record.SetSetting(i, -1);
        }
        const CProfileSettings read = CProfileSettings::FromRecord(record);
        QCOMPARE(read.preferences.energyUnit, EEnergyUnit::Kcal);
        QCOMPARE(read.preferences.decimals, 2);
        QCOMPARE(read.user.activityLevel, 0);
        QCOMPARE(read.user.heightCm, 170.0);
        QVERIFY(read.user.birthDate.isValid());
        QCOMPARE(read.targets.dietType, 3);
        QCOMPARE(read.targets.goalWeightKg, 70.0);
        QCOMPARE(read.targets.nutrients[0], 0.0);
        QCOMPARE(read.dietTab.splitterPerMille, 500);
        QCOMPARE(read.dietTab.columnWidths[0], 0);
    }

    void newProfileSpeaksTheLocalesUnits() {
        const std::tuple<const char*, EWeightUnit, EHeightUnit> rows[] = {
            {"de_DE", EWeightUnit::Kilograms, EHeightUnit::Centimetres},
            {"en_US", EWeightUnit::Pounds, EHeightUnit::Feet},
            {"en_GB", EWeightUnit::Stones, EHeightUnit::Feet},
        };
        for (const auto& [locale, weight, height] : rows) {
            QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
            const CPreferences preferences =
                CProfileSettings::ForNewProfile({2024, 1, 1}).preferences;
            QCOMPARE(preferences.weightUnit, weight);
            QCOMPARE(preferences.heightUnit, height);
        }
        QLocale::setDefault(QLocale::c());
    }

  private:
    [[nodiscard]] QString VolumePath() const { return m_folder->filePath(u"VelmoraDb.db"_s); }

    static void RememberProfile(const QString& name) {
        CRegistrySettings registry = CRegistrySettings::Read();
        registry.userProfileName = name;
        registry.Write();
    }

    void CreateProfiles(const QStringList& names) const {
        CVelmoraDoc doc(VolumePath());
        QVERIFY(doc.OpenCatalogue());
        for (const QString& name : names) {
            CProfileSettings settings = CProfileSettings::ForNewProfile({2024, 1, 1});
            settings.user.name = name;
            QVERIFY(doc.CreateProfile(settings));
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRecordingMessages> m_messages;
};

QTEST_GUILESS_MAIN(TestVelmoraDoc)
#include "TestVelmoraDoc.moc"
