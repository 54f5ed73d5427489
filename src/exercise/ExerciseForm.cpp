#include "exercise/ExerciseForm.h"

#include <algorithm>

#include "catalogue/CatalogueTexts.h"
#include "catalogue/FindItems.h"
#include "diary/CatalogueChoices.h"
#include "exercise/ExerciseRules.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kKind = ECatalogueKind::Exercises;
constexpr int kMinutesPerHour = 60;
constexpr int kPickedMinutes = 10;

// kcal per minute, kilogram and MET: 3.5 ml of oxygen per kilogram and minute, 5 kcal a litre.
constexpr double kKcalPerMet = 0.0175;

/// Rounded to a whole number once it is cut off; 0 for an exercise without rates.
double LibraryEnergyKcal(const CExerciseItem& exercise, double minutes, double weightKg) {
    if (exercise.GetEnergyRateKcalPerMinute() > 0) {
        return minutes * exercise.GetEnergyRateKcalPerMinute() + 0.5;
    }
    return exercise.GetMet() > 0 ? minutes * weightKg * exercise.GetMet() * kKcalPerMet + 0.5 : 0;
}

double Typed(const QString& text) {
    return TypedNumber(text).value_or(0);
}

void ShowInformation(const QString& text) {
    ShowMessage(text, EMessageIcon::Information);
}

/// The category whose name an entry keeps the beginning of, or the first one.
qint32 CategoryOf(CDatabase& database, const CExerciseEntry& entry) {
    CExerciseEntry cut;
    for (const CCategoryEntry& category : database.ListCategories(kKind)) {
        cut.SetCategory(category.name);
        if (!entry.GetCategory().isEmpty() && cut.GetCategory() == entry.GetCategory()) {
            return category.id;
        }
    }
    return database.CategoryIdOf(kKind, CategoryNames(database, kKind).value(0));
}

}  // namespace

CExerciseForm::CExerciseForm(CVelmoraDoc& doc, const CExerciseEntry& entry)
    : m_doc(doc),
      m_entry(entry),
      m_weightKg(doc.Database().WeightOnDate(DateOf(entry.GetMoment()),
                                             doc.Settings().targets.startWeightKg)),
      m_categoryId(doc.Database().CategoryIdOf(kKind, entry.GetCategory())),
      m_name(entry.GetName()),
      m_type(entry.GetType()),
      m_time(TimeOf(entry.GetMoment())) {
    if (m_categoryId < 0) {
        m_categoryId = CategoryOf(doc.Database(), entry);
    }
    if (!m_name.isEmpty() && entry.GetMinutes() > 0 && entry.GetEnergyKcal() > 0) {
        m_measured = {entry.GetMinutes(), entry.GetEnergyKcal()};
    }
    ShowDuration(Whole(entry.GetMinutes()));
    ShowEnergy(entry.GetEnergyKcal());
}

QStringList CExerciseForm::Choices(EPicker picker) {
    if (picker != EPicker::Category && m_categoryId < 0) {
        ShowInformation(u"There is no category selected."_s);
        return {};
    }
    CDatabase& database = m_doc.Database();
    QStringList choices;
    QString empty;
    switch (picker) {
        case EPicker::Category:
            choices = CategoryNames(database, kKind);
            empty = u"There are no categories to select."_s;
            break;
        case EPicker::Name:
            choices = NamesInCategory(database, kKind, m_categoryId);
            empty = u"There are no names to select."_s;
            break;
        case EPicker::Type:
            choices = TypesOfName(database, kKind, m_categoryId, m_name.trimmed());
            empty = u"There are no types to select."_s;
            break;
        case EPicker::None:
            return {};
    }
    if (choices.isEmpty()) {
        ShowInformation(empty);
    }
    return choices;
}

void CExerciseForm::Pick(EPicker picker, const QString& row) {
    CDatabase& database = m_doc.Database();
    m_measured.reset();
    switch (picker) {
        case EPicker::Category:
            m_categoryId = database.CategoryIdOf(kKind, row);
            ClearExercise({});
            break;
        case EPicker::Name:
            ClearExercise(row);
            break;
        case EPicker::Type:
            Load(database.FindItem(kKind, m_categoryId, m_name, row));
            break;
        case EPicker::None:
            break;
    }
}

bool CExerciseForm::Find(const QString& name, const QStringList& types) {
    FindState().name = name;
    FindState().types = types;
    return LoadFound(FindFirst(m_doc.Database(), kKind, FindState()));
}

bool CExerciseForm::FindNext() {
    return LoadFound(::FindNext(m_doc.Database(), kKind, FindState()));
}

bool CExerciseForm::LoadFound(int position) {
    if (position < 0) {
        ShowInformation(QString::fromLatin1(CatalogueTextsOf(kKind).notFound));
        return false;
    }
    return Load(position);
}

QString CExerciseForm::CategoryText() const {
    return m_categoryId < 0 ? QString() : m_doc.Database().CategoryNameOf(kKind, m_categoryId);
}

void CExerciseForm::SetDurationTexts(const QString& hours, const QString& minutes) {
    if (hours == m_hours && minutes == m_minutes) {
        return;
    }
    m_hours = hours;
    m_minutes = minutes;
    ComputeEnergy();
}

bool CExerciseForm::Confirm() {
    const QString name = m_name.trimmed();
    const QString type = m_type.trimmed();
    if (name.isEmpty()) {
        ShowInformation(u"Please enter exercise name"_s);
        return false;
    }
    if (type.isEmpty()) {
        ShowInformation(u"Please enter exercise type"_s);
        return false;
    }
    m_result = m_entry;
    m_result.SetMoment(ToFileTime(DateOf(m_entry.GetMoment()), m_time));
    m_result.SetCategory(CategoryText());
    m_result.SetName(name);
    m_result.SetType(type);
    m_result.SetMinutes(Minutes());
    m_result.SetEnergyKcal(EnergyStored(Typed(m_energy), Unit()));
    return true;
}

/// Keeps the category.
void CExerciseForm::ClearExercise(const QString& name) {
    m_picked.Clear();
    m_name = name;
    m_type.clear();
    m_energy.clear();
    m_hours = u"0"_s;
    m_minutes = QString::number(kPickedMinutes);
}

bool CExerciseForm::Load(int position) {
    CExerciseItem exercise;
    if (!m_doc.Database().Exlib().Read(position, exercise)) {
        ShowInformation(QString::fromLatin1(CatalogueTextsOf(kKind).cannotLoad));
        return false;
    }
    m_picked = exercise;
    m_categoryId = exercise.GetCategoryId();
    m_name = exercise.GetName();
    m_type = exercise.GetType();
    ComputeEnergy();
    return true;
}

double CExerciseForm::Minutes() const {
    const double minutes =
        double(Whole(Typed(m_hours))) * kMinutesPerHour + Whole(Typed(m_minutes));
    return std::max(0.0, minutes);
}

/// Minutes stand in two digits, as the field lists them.
void CExerciseForm::ShowDuration(int minutes) {
    m_hours = QString::number(minutes / kMinutesPerHour);
    m_minutes = TwoDigits(minutes % kMinutesPerHour);
}

/// The half that rounds a computed energy was added in kcal: what the unit adds is cut off.
void CExerciseForm::ShowEnergy(double energyKcal) {
    m_energy = energyKcal > 0 ? QString::number(Whole(EnergyShown(energyKcal, Unit()))) : QString();
}

void CExerciseForm::ComputeEnergy() {
    const double minutes = Minutes();
    double energyKcal = 0;
    if (minutes > 0 && m_measured) {
        energyKcal = minutes / m_measured->minutes * m_measured->energyKcal;
    } else if (minutes > 0 && !m_picked.GetName().isEmpty()) {
        energyKcal = LibraryEnergyKcal(m_picked, minutes, m_weightKg);
    }
    ShowEnergy(energyKcal);
}
