// The document: the database object, the active profile with its settings, and the view state
// that outlives a view. Owned by the application; views, dialogs and rules get a reference.
#pragma once

#include <QDate>
#include <QStringList>
#include <array>
#include <memory>
#include <optional>

#include "app/ProfileSettings.h"
#include "platform/RegistrySettings.h"
#include "store/Database.h"

/// The dialogs of the start sequence, played by windows or by a test. Each returns false (or an
/// empty name) when it is cancelled.
class CStartDialogs {
  public:
    virtual ~CStartDialogs() = default;
    virtual QString SelectUserProfile() = 0;
    virtual bool EditPreferences(CPreferences& preferences) = 0;
    virtual bool EditUserInformation(CUserInformation& user, const CPreferences& preferences) = 0;
    virtual bool EditTargets(CTargets& targets, const CUserInformation& user,
                             const CPreferences& preferences) = 0;
};

/// The last find in a kind of the catalogue.
struct CFindState {
    QString name;
    QStringList types;   ///< the item's type holds them all
    ObjectId found = 0;  ///< record of the last match
    int next = 0;        ///< where "find next" goes on once that record is gone

    [[nodiscard]] bool HasTexts() const {
        return !name.isEmpty() || !types.join(QString()).isEmpty();
    }
};

/// What outlives the view of a catalogue kind.
struct CCatalogueState {
    std::optional<CFindState> find;  ///< see CVelmoraDoc::FindState
    int splitterPerMille = 400;      ///< the tree's share
};

/// Selected meal of the diet tab: 0 to 5, or all meals.
inline constexpr int kAllMeals = 6;

class CVelmoraDoc {
  public:
    explicit CVelmoraDoc(QString volumePath);
    /// Saves the profile's settings, then closes everything.
    ~CVelmoraDoc();
    CVelmoraDoc(const CVelmoraDoc&) = delete;
    CVelmoraDoc& operator=(const CVelmoraDoc&) = delete;

    /// The whole start sequence up to the last active tab. False after the message that says why;
    /// the program then ends without a main window.
    bool Start(CStartDialogs& dialogs);
    /// Start over again with the file that is at the volume's path now; what the settings hold and
    /// the lost volume does not is dropped. No view may be left.
    bool Restart(CStartDialogs& dialogs);
    /// For this and every later database object.
    void SetLossHost(CLossHost host);
    /// Whether a dialog may close: what was typed is stored, or staying open would not help.
    [[nodiscard]] bool MayClose(bool isStored) const;
    /// Opens the volume and the catalogue alone. Failure shows "Cannot open database."
    /// with the file and the reason.
    bool OpenCatalogue();
    /// Shows "Invalid command: OnNewDocument": the document is only ever opened.
    static bool OnNewDocument();

    CDatabase& Database() { return *m_database; }
    CRegistrySettings& Registry() { return m_registry; }

    /// Makes a stored profile active: loads it, names the energy after its unit and remembers the
    /// profile in the registry.
    bool SetActiveProfile(const QString& name);
    /// Opens a stored profile (never creating) and loads its settings; nothing of it is written.
    /// Defaults stand in for a record of another version or a damaged one, after a message that
    /// says so. The profile loaded before is saved first, and stays on failure.
    bool LoadProfile(const QString& name);
    [[nodiscard]] bool IsProfileActive() const { return m_settingsLoaded; }
    [[nodiscard]] QString GetActiveProfile() const;

    /// Whether databases of that profile could be created: "Please enter user name.", "User name
    /// is too long. Maximum is 21 characters.", "User profile '%s' already exists." when one of
    /// the four names is taken (without case); nothing when all is well. Outer blanks do not count.
    std::optional<QString> CheckNewProfileName(const QString& name);
    /// Creates the four databases and stores the settings; nothing is left behind on failure. A
    /// name that CheckNewProfileName refuses shows its message. The active profile stays active.
    bool CreateProfile(const CProfileSettings& settings);
    /// The three dialogs one after the other, then CreateProfile and SetActiveProfile.
    bool RunNewProfileSequence(CStartDialogs& dialogs);
    /// Asks and deletes; see the messages in the source. `names` are the selected ones.
    bool DeleteUserProfiles(const QStringList& names);

    CProfileSettings& Settings() { return m_settings; }
    [[nodiscard]] const CProfileSettings& Settings() const { return m_settings; }
    [[nodiscard]] const CPreferences& Preferences() const { return m_settings.preferences; }
    /// Writes what has changed in the settings to the profile's record, and renames the energy
    /// after its unit; to be called after every dialog that changes them. Defaults that stand in
    /// for a record are confirmed with it. Failure shows "Cannot save user profile (error# %d).".
    bool SaveSettings();
    /// The same for the state of the windows, which nobody confirms: it is lost as long as
    /// defaults stand in for a record.
    bool SaveViewState();

    /// "Velmora:" and the profile's name, cut to 18 characters and "..." when longer.
    [[nodiscard]] QString GetTitle() const;
    /// The 54 names as the user sees them, read once until they change; the energy in the unit of
    /// the profile loaded.
    const QStringList& NutrientNames();
    void ForgetNutrientNames() { m_nutrientNames.clear(); }

    // View state that outlives a view.
    QDate dayShown;
    int selectedMeal = kAllMeals;
    bool isFirstRun = false;  ///< the start made the volume's first profile
    int weightGraphSpan = 3;  ///< EGraphSpan: all weights
    CCatalogueState& CatalogueState(ECatalogueKind kind) {
        return m_catalogueStates.at(static_cast<std::size_t>(kind));
    }

    /// The last find in a kind, which begins with the texts that the active profile has kept.
    CFindState& FindState(ECatalogueKind kind);
    /// Takes the texts of a new find and keeps them with the active profile. False when they could
    /// not be stored and last no longer than the program.
    [[nodiscard]] bool KeepFindTexts(ECatalogueKind kind, const QString& name,
                                     const QStringList& types);

  private:
    /// Whether the settings are defaults in the place of a record that could not be read.
    enum class EStandIn {
        None,
        Shown,      ///< and must not be written yet
        Confirmed,  ///< by a dialog; to be written as soon as that succeeds
    };

    bool ChooseProfile(CStartDialogs& dialogs);
    void ReadSettings(const QString& name);
    bool WriteChanges();
    void NameEnergy();
    /// The name as stored, found without case; empty when no such profile exists.
    QString StoredProfileName(const QString& name);
    void ReopenActiveProfile();

    QString m_volumePath;
    CRegistrySettings m_registry;
    CLossHost m_lossHost;
    std::unique_ptr<CDatabase> m_database;
    CProfileSettings m_settings;
    CProfileSettings m_savedSettings;  ///< as they were loaded or written last
    CProfileRecord m_storedRecord;     ///< what the profile's record holds now
    bool m_settingsLoaded = false;
    EStandIn m_standIn = EStandIn::None;
    QStringList m_nutrientNames;
    std::array<CCatalogueState, 4> m_catalogueStates;
};
