#include "support/CatalogueTest.h"
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

/// Start and exit, and profiles, over a real volume.
class TestVelmoraDoc : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }

    void firstRunMakesAProfileUnlessADialogIsCancelled() {
        for (const QString& cancelled : {u"preferences"_s, u"user"_s, u"targets"_s, QString()}) {
            CScriptedDialogs dialogs;
            dialogs.cancelled = cancelled;
            CVelmoraDoc doc(VolumePath());
            const bool isWhole = doc.Start(dialogs);
            QCOMPARE(isWhole, cancelled.isEmpty());
            QCOMPARE(m_messages->Said(), isWhole ? QString() : kFirstRunMessage);
            QCOMPARE(m_messages->lastIcon, EMessageIcon::Plain);
            QVERIFY(isWhole || dialogs.calls.last() == cancelled);
            QCOMPARE(doc.Database().Profiles().ReadNames(),
                     isWhole ? QStringList{u"Anna"_s} : QStringList());
            if (isWhole) {
                QCOMPARE(dialogs.calls, (QStringList{u"preferences"_s, u"user"_s, u"targets"_s}));
                QCOMPARE(CRegistrySettings::Read().userProfileName, u"Anna"_s);
                QCOMPARE(doc.Settings().targets.goalWeightKg, 65.0);
                QCOMPARE(doc.NutrientNames().front(), u"Energy (kJ)"_s);
            }
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
        Reopen();
        QVERIFY(m_doc->Start(dialogs) && CreateProfile(u"Bert"_s));
        m_doc->Settings().dietTab.splitterPerMille = 321;
        QVERIFY(m_doc->LoadProfile(u"Bert"_s) && m_doc->LoadProfile(u"Anna"_s));
        QCOMPARE(m_doc->Settings().dietTab.splitterPerMille, 321);
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
        QVERIFY(m_doc->KeepFindTexts(kFoods, u"pie"_s, {}));
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

  private:
    static void RememberProfile(const QString& name) {
        CRegistrySettings registry = CRegistrySettings::Read();
        registry.userProfileName = name;
        registry.Write();
    }
};

QTEST_GUILESS_MAIN(TestVelmoraDoc)
#include "TestVelmoraDoc.moc"
