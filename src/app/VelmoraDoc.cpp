#include "app/VelmoraDoc.h"

#include "platform/Messages.h"
#include "store/VolumeTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int kTitleLength = 18;

bool IsSameName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool IsDiaryTab(int command) {
    return command >= kDietTabCommand && command <= kMonthTabCommand;
}

QString FindValueOf(ECatalogueKind kind) {
    return QLatin1StringView(CatalogueLayoutOf(kind).findValue);
}

void ShowSaveFailure(CRecordStore& store) {
    store.ShowFailure(
        FormatText("Cannot save user profile (error# %d)."_L1, {store.GetLastError()}));
}
/// Name of the profile's value.
constexpr auto kWeightGraphSpan = "weight graph"_L1;
}  // namespace

CVelmoraDoc::CVelmoraDoc(QString volumePath)
    : m_volumePath(std::move(volumePath)), m_registry(CRegistrySettings::Read()) {}

CVelmoraDoc::~CVelmoraDoc() {
    SaveViewState();
}

bool CVelmoraDoc::Start(CStartDialogs& dialogs) {
    if (!OpenCatalogue()) {
        return false;
    }
    if (!ChooseProfile(dialogs)) {
        ShowMessage(
            u"You have to enter user related information before using Velmora. Please run the "
            "application again and enter this information. Thank you."_s);
        return false;
    }
    if (!IsDiaryTab(m_settings.lastTabCommand)) {
        m_settings.lastTabCommand = kDietTabCommand;
    }
    dayShown = QDate::currentDate();
    selectedMeal = MealAt(QTime::currentTime());
    return true;
}

bool CVelmoraDoc::Restart(CStartDialogs& dialogs) {
    m_settingsLoaded = false;
    const QDate day = dayShown;
    const int meal = selectedMeal;
    const bool isStarted = Start(dialogs);
    dayShown = day;
    selectedMeal = meal;
    return isStarted;
}

void CVelmoraDoc::SetLossHost(CLossHost host) {
    m_lossHost = std::move(host);
    m_database->GetStore().SetLossHost(m_lossHost);
}

void CVelmoraDoc::SetStatusHost(StatusHost host) {
    m_statusHost = std::move(host);
    m_database->GetStore().SetStatusHost(m_statusHost);
}

bool CVelmoraDoc::MayClose(bool isStored) const {
    return isStored || !m_database->GetStore().IsVolumeLost();
}

bool CVelmoraDoc::OpenCatalogue() {
    if (m_database) {
        CloseVolume();  // it has one owner at a time
    }
    m_database = std::make_unique<CDatabase>(m_volumePath);
    m_database->GetStore().SetLossHost(m_lossHost);
    m_database->GetStore().SetStatusHost(m_statusHost);
    if (!m_database->OpenCatalogue()) {
        ShowCannotOpen(m_database->GetRefusal());
        return false;
    }
    return true;
}

void CVelmoraDoc::CloseVolume(EViewState state) {
    if (state == EViewState::Save) {
        SaveViewState();
    }
    m_settingsLoaded = false;
    m_nutrientNames.clear();
    m_database->CloseCatalogue();
}

bool CVelmoraDoc::OnNewDocument() {
    ShowMessage(u"Invalid command: OnNewDocument"_s, EMessageIcon::Stop);
    return false;
}

bool CVelmoraDoc::ChooseProfile(CStartDialogs& dialogs) {
    if (!m_registry.userProfileName.isEmpty() && SetActiveProfile(m_registry.userProfileName)) {
        return true;
    }
    if (m_database->Profiles().GetNumberOfUserProfiles() == 0) {
        isFirstRun = RunNewProfileSequence(dialogs);
        return isFirstRun;
    }
    const QString chosen = dialogs.SelectUserProfile();
    if (chosen.isEmpty()) {
        return false;
    }
    if (!SetActiveProfile(chosen)) {
        m_registry.userProfileName.clear();
        return false;
    }
    return true;
}

bool CVelmoraDoc::SetActiveProfile(const QString& name) {
    if (!LoadProfile(name)) {
        return false;
    }
    NameEnergy();
    m_registry.userProfileName = GetActiveProfile();
    m_registry.Write();
    return true;
}

bool CVelmoraDoc::LoadProfile(const QString& name) {
    SaveViewState();
    const QString stored = StoredProfileName(name);
    if (stored.isEmpty()) {
        return false;
    }
    if (!m_database->Profiles().Open(stored, false)) {
        ReopenActiveProfile();
        return false;
    }
    ReadSettings(stored);
    quickLine.clear();
    for (CCatalogueState& state : m_catalogueStates) {
        state.find.reset();
    }
    ForgetNutrientNames();
    return true;
}

void CVelmoraDoc::ReadSettings(const QString& name) {
    CProfileSettings defaults = CProfileSettings::ForNewProfile(QDate::currentDate());
    defaults.user.name = name;
    m_storedRecord = CProfileRecord();
    defaults.ToRecord(m_storedRecord);
    const bool isUnreadable =
        m_database->Profiles().LoadRecord(m_storedRecord) == EProfileRecord::Unreadable;
    m_settings = CProfileSettings::FromRecord(m_storedRecord);
    m_settings.user.name = name;
    m_savedSettings = m_settings;
    m_defaults = isUnreadable ? EDefaults::Unconfirmed : EDefaults::NotUsed;
    m_settingsLoaded = true;
    weightGraphSpan = m_database->Profiles().ReadValue(kWeightGraphSpan).value_or(u"3"_s).toInt();
    if (isUnreadable) {
        ShowMessage(FormatText("The settings of user profile '%s' cannot be read. Default settings "
                               "are used; the stored ones are kept until you confirm new ones."_L1,
                               {name}),
                    EMessageIcon::Warning);
    }
}

QString CVelmoraDoc::GetActiveProfile() const {
    return m_settingsLoaded ? m_settings.user.name : QString();
}

std::optional<QString> CVelmoraDoc::CheckNewProfileName(const QString& name) {
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty()) {
        return u"Please enter user name."_s;
    }
    if (trimmed.size() > kProfileNameLength) {
        return FormatText("User name is too long. Maximum is %d characters."_L1,
                          {kProfileNameLength});
    }
    if (m_database->Profiles().IsNameTaken(trimmed)) {
        return FormatText("User profile '%s' already exists."_L1, {trimmed});
    }
    return std::nullopt;
}

bool CVelmoraDoc::CreateProfile(const CProfileSettings& settings) {
    const QString name = settings.user.name.trimmed();
    if (const std::optional<QString> refusal = CheckNewProfileName(name)) {
        ShowMessage(*refusal);
        return false;
    }
    SaveViewState();
    CProfileRecord record;
    settings.ToRecord(record);
    record.SetUserName(name);
    // One group, so that a crash leaves either the whole profile or none.
    CRecordGroup group(m_database->GetStore());
    const bool written =
        m_database->Profiles().Open(name, true) && m_database->Profiles().SaveRecord(record);
    const bool created = group.Commit() && written;
    m_database->Profiles().Close();
    if (!created) {
        ShowSaveFailure(m_database->GetStore());
    }
    ReopenActiveProfile();
    return created;
}

bool CVelmoraDoc::RunNewProfileSequence(CStartDialogs& dialogs) {
    CProfileSettings settings = CProfileSettings::ForNewProfile(QDate::currentDate());
    while (dialogs.EditPreferences(settings.preferences) &&
           dialogs.EditUserInformation(settings.user, settings.preferences) &&
           dialogs.EditTargets(settings.targets, settings.user, settings.preferences)) {
        const bool isCreated = CreateProfile(settings);
        if (MayClose(isCreated)) {
            return isCreated && SetActiveProfile(settings.user.name.trimmed());
        }
    }
    return false;
}

bool CVelmoraDoc::DeleteUserProfiles(const QStringList& names) {
    if (names.size() != 1) {
        ShowMessage(u"Please select one user profile to delete."_s);
        return false;
    }
    const QString& name = names.front();
    if (m_settingsLoaded && IsSameName(name, GetActiveProfile())) {
        ShowMessage(u"Cannot delete active profile. Please select another profile first."_s);
        return false;
    }
    if (!AskYesNo(FormatText("Are you sure you want to delete user profile '%s' and all diet, "
                             "weight and exercise information associated with this profile?"_L1,
                             {name}),
                  EAnswer::No)) {
        return false;
    }
    return m_database->Profiles().Delete(name);
}

bool CVelmoraDoc::SaveSettings() {
    if (m_defaults == EDefaults::Unconfirmed) {
        m_defaults = EDefaults::Confirmed;
    }
    if (!WriteChanges()) {
        return false;
    }
    NameEnergy();
    return true;
}

bool CVelmoraDoc::SaveViewState() {
    return m_defaults != EDefaults::Unconfirmed && WriteChanges();
}

bool CVelmoraDoc::WriteChanges() {
    if (!m_database || !m_settingsLoaded) {
        return false;
    }
    CProfileRecord record = m_storedRecord;
    m_settings.ChangesToRecord(m_savedSettings, record);
    if (record == m_storedRecord && m_defaults == EDefaults::NotUsed) {
        return true;
    }
    if (!m_database->Profiles().SaveRecord(record)) {
        ShowSaveFailure(m_database->GetStore());
        return false;
    }
    m_savedSettings = m_settings;
    m_storedRecord = record;
    m_defaults = EDefaults::NotUsed;
    return true;
}

QString CVelmoraDoc::GetTitle() const {
    QString title = u"Velmora:"_s + GetActiveProfile();
    if (title.size() > kTitleLength) {
        title = title.left(kTitleLength) + u"..."_s;
    }
    return title;
}

const QStringList& CVelmoraDoc::NutrientNames() {
    if (m_nutrientNames.isEmpty()) {
        m_nutrientNames = m_database->NutrientNames().ReadNames();
        if (m_settingsLoaded) {
            m_nutrientNames[kEnergyIndex] = CStoredNutrientNames::EnergyName(
                UnitName(m_settings.preferences.energyUnit, EUnitForm::Abbreviated));
        }
    }
    return m_nutrientNames;
}

CFindState& CVelmoraDoc::FindState(ECatalogueKind kind) {
    std::optional<CFindState>& find = CatalogueState(kind).find;
    if (!find) {
        const QString stored =
            m_database->Profiles().ReadValue(FindValueOf(kind)).value_or(QString());
        QStringList types;
        for (const auto& text : QJsonDocument::fromJson(stored.toUtf8()).array()) {
            types.append(text.toString());
        }
        const QString name = types.isEmpty() ? QString() : types.takeFirst();
        find = CFindState{name, types};
    }
    return *find;
}

bool CVelmoraDoc::KeepFindTexts(ECatalogueKind kind, const QString& name,
                                const QStringList& types) {
    CFindState& find = FindState(kind);
    if (find.name == name && find.types == types) {
        return true;
    }
    find.name = name;
    find.types = types;
    const QJsonArray texts = QJsonArray::fromStringList(QStringList(name) + types);
    return m_database->Profiles().SaveValue(
        FindValueOf(kind), QString::fromUtf8(QJsonDocument(texts).toJson(QJsonDocument::Compact)));
}

void CVelmoraDoc::KeepWeightGraphSpan(int span) {
    weightGraphSpan = span;
    // When it cannot be stored it is kept until the program ends.
    (void)m_database->Profiles().SaveValue(kWeightGraphSpan, QString::number(span));
}

void CVelmoraDoc::NameEnergy() {
    m_database->NutrientNames().RenameEnergy(
        UnitName(m_settings.preferences.energyUnit, EUnitForm::Abbreviated));
    ForgetNutrientNames();
}

QString CVelmoraDoc::StoredProfileName(const QString& name) {
    for (const QString& stored : m_database->Profiles().ReadNames()) {
        if (IsSameName(stored, name)) {
            return stored;
        }
    }
    return {};
}

void CVelmoraDoc::ReopenActiveProfile() {
    m_settingsLoaded = m_settingsLoaded && m_database->Profiles().Open(GetActiveProfile(), false);
}
