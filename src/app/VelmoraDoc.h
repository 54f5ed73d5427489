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

/// The dialogs of the start sequence; windows or a test implement them. Each returns false (or an
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
    QStringList types;   ///< all of them must occur in the item's type
    ObjectId found = 0;  ///< record of the last match; 0: none
    int next = 0;        ///< position where "find next" continues if that record is deleted

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

    /// The whole start sequence up to the last active tab. A failure shows a message and returns
    /// false; the program then ends without a main window.
    bool Start(CStartDialogs& dialogs);
    /// Starts again with the file that is now at the volume's path; settings that were not saved
    /// are lost. All views must have been destroyed.
    bool Restart(CStartDialogs& dialogs);
    /// This and the next apply to every later database object, too.
    void SetLossHost(CLossHost host);
    void SetStatusHost(StatusHost host);
    /// See CRecordStore::ShowStatus.
    void ShowStatus(const QString& text) { m_database->GetStore().ShowStatus(text); }
    /// Whether a dialog may close after trying to store what was typed. It stays open only when the
    /// volume was lost, so that nothing typed is lost too.
    [[nodiscard]] bool MayClose(bool isStored) const;
    /// Opens the volume and the catalogue, without a profile. Failure shows "Cannot open database."
    /// with the file and the reason.
    bool OpenCatalogue();
    /// What becomes of changed settings that no dialog confirms.
    enum class EViewState {
        Save,
        Drop,  ///< nothing more is written into a damaged file
    };
    /// Closes the volume, so that its file can be replaced. Restart opens the one that is then at
    /// its path. All views must have been destroyed.
    void CloseVolume(EViewState state = EViewState::Save);
    [[nodiscard]] const QString& GetVolumePath() const { return m_volumePath; }
    /// Shows "Invalid command: OnNewDocument": the document is only ever opened.
    static bool OnNewDocument();

    CDatabase& Database() { return *m_database; }
    CRegistrySettings& Registry() { return m_registry; }

    /// Makes a stored profile active: loads it, renames the energy nutrient after its unit and
    /// stores the profile's name in the registry.
    bool SetActiveProfile(const QString& name);
    /// Opens a stored profile (never creating one) and loads its settings without writing any. For
    /// a damaged record or one of another version a message is shown and defaults are used. The
    /// profile loaded before is saved first, and stays loaded on failure.
    bool LoadProfile(const QString& name);
    [[nodiscard]] bool IsProfileActive() const { return m_settingsLoaded; }
    /// Whether the settings are defaults in place of a record that cannot be read.
    [[nodiscard]] bool AreSettingsDefaults() const { return m_defaults != EDefaults::NotUsed; }
    [[nodiscard]] QString GetActiveProfile() const;

    /// Why no profile of that name can be created: "Please enter user name.", "User name is too
    /// long. Maximum is 21 characters.", or "User profile '%s' already exists." when one of the
    /// four names is taken (without case); nothing when it can. Outer blanks do not count.
    std::optional<QString> CheckNewProfileName(const QString& name);
    /// Creates the four databases and stores the settings: all or nothing. A refused name shows the
    /// message of CheckNewProfileName. The active profile stays active.
    bool CreateProfile(const CProfileSettings& settings);
    /// The three dialogs one after the other, then CreateProfile and SetActiveProfile.
    bool RunNewProfileSequence(CStartDialogs& dialogs);
    /// Deletes the selected profile after a question. Refuses, with a message, unless exactly one
    /// is selected and it is not the active one.
    bool DeleteUserProfiles(const QStringList& names);

    CProfileSettings& Settings() { return m_settings; }
    [[nodiscard]] const CProfileSettings& Settings() const { return m_settings; }
    [[nodiscard]] const CPreferences& Preferences() const { return m_settings.preferences; }
    /// Writes what has changed in the settings to the profile's record, and renames the energy
    /// nutrient after its unit. Call after every dialog that changes settings: this also confirms
    /// defaults that replaced an unreadable record. Failure shows "Cannot save user profile
    /// (error# %d).".
    bool SaveSettings();
    /// Writes changed settings that no dialog confirms, such as column widths. Writes nothing, and
    /// returns false, while unconfirmed defaults replace an unreadable record.
    bool SaveViewState();

    /// "Velmora:" and the profile's name, cut to 18 characters and "..." when longer.
    [[nodiscard]] QString GetTitle() const;
    /// The 54 names as the user sees them, the energy with the unit of the loaded profile. Cached
    /// until ForgetNutrientNames.
    const QStringList& NutrientNames();
    void ForgetNutrientNames() { m_nutrientNames.clear(); }

    // View state that outlives a view.
    QDate dayShown;
    int selectedMeal = kAllMeals;
    QString shareFile;        ///< name of the file shared or taken in last
    QString quickLine;        ///< of the active profile, as far as it was not added
    bool isFirstRun = false;  ///< the start created the volume's first profile
    int weightGraphSpan = 3;  ///< EGraphSpan; all weights unless the profile has another one
    /// Changes it and stores it with the active profile.
    void KeepWeightGraphSpan(int span);
    CCatalogueState& CatalogueState(ECatalogueKind kind) {
        return m_catalogueStates.at(static_cast<std::size_t>(kind));
    }

    /// The last find in a kind; at first with the texts stored with the active profile.
    CFindState& FindState(ECatalogueKind kind);
    /// Sets the texts of a new find and stores them with the active profile. False when they could
    /// not be stored and are kept only until the program ends.
    [[nodiscard]] bool KeepFindTexts(ECatalogueKind kind, const QString& name,
                                     const QStringList& types);

  private:
    /// Whether the settings are defaults that replace an unreadable record.
    enum class EDefaults {
        NotUsed,
        Unconfirmed,  ///< must not be written yet
        Confirmed,    ///< by a dialog, and not written yet
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
    StatusHost m_statusHost;
    std::unique_ptr<CDatabase> m_database;
    CProfileSettings m_settings;
    CProfileSettings m_savedSettings;  ///< as last loaded or written
    CProfileRecord m_storedRecord;     ///< as last loaded or written
    bool m_settingsLoaded = false;
    EDefaults m_defaults = EDefaults::NotUsed;
    QStringList m_nutrientNames;
    std::array<CCatalogueState, 4> m_catalogueStates;
};
