#include "exercise/ExerciseForm.h"

#include <algorithm>

#include "app/UnitTexts.h"
#include "catalogue/items/CatalogueKinds.h"
#include "diary/weight/WeightRules.h"
#include "exercise/ExerciseRules.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kKind = ECatalogueKind::Exercises;
constexpr int kPickedMinutes = 10;

// kcal per minute, kilogram and MET: 3.5 ml of oxygen per kilogram and minute, 5 kcal per litre.
constexpr double kKcalPerMet = 0.0175;

/// With 0.5 added, so that truncation rounds it; 0 for an exercise without rates.
double LibraryEnergyKcal(const CExerciseItem& exercise, double minutes, double weightKg) {
    if (exercise.GetEnergyRateKcalPerMinute() > 0) {
        return minutes * exercise.GetEnergyRateKcalPerMinute() + 0.5;
    }
    return exercise.GetMet() > 0 ? minutes * weightKg * exercise.GetMet() * kKcalPerMet + 0.5 : 0;
}

double Typed(const QString& text) {
    return TypedNumber(text).value_or(0);
}

/// The category whose name, cut to the entry's capacity, is the entry's; otherwise the first one.
qint32 CategoryOf(CDatabase& database, const CExerciseEntry& entry) {
    CExerciseEntry cut;
    for (const CCategoryEntry& category : database.Categories().List(kKind)) {
        cut.SetCategory(category.name);
        if (!entry.GetCategory().isEmpty() && cut.GetCategory() == entry.GetCategory()) {
            return category.id;
        }
    }
    return database.Categories().IdOf(kKind, CategoryNames(database, kKind).value(0));
}

}  // namespace

CExerciseForm::CExerciseForm(CVelmoraDoc& doc, const CExerciseEntry& entry)
    : CPickForm(doc),
      m_entry(entry),
      m_weightKg(WeightOnDay(doc, DateOf(entry.GetMoment()))),
      m_categoryId(doc.Database().Categories().IdOf(kKind, entry.GetCategory())) {
    SetNameText(entry.GetName());
    SetTypeText(entry.GetType());
    SetTime(TimeOf(entry.GetMoment()));
    if (m_categoryId < 0) {
        m_categoryId = CategoryOf(doc.Database(), entry);
    }
    if (!entry.GetName().isEmpty() && entry.GetMinutes() > 0 && entry.GetEnergyKcal() > 0) {
        m_measured = {entry.GetMinutes(), entry.GetEnergyKcal()};
    }
    ShowDuration(Whole(entry.GetMinutes()));
    ShowEnergy(entry.GetEnergyKcal());
}

EPicker CExerciseForm::Pick(EPicker picker, const QString& row) {
    m_measured.reset();
    switch (picker) {
        case EPicker::Category:
            m_categoryId = Doc().Database().Categories().IdOf(kKind, row);
            ClearExercise({});
            return EPicker::Name;
        case EPicker::Name:
            ClearExercise(row);
            return EPicker::Type;
        case EPicker::Type:
            LoadOfType(row);
            break;
        case EPicker::None:
            break;
    }
    return EPicker::None;
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
    const QString name = NameText().trimmed();
    const QString type = TypeText().trimmed();
    if (name.isEmpty()) {
        ShowInformation(u"Please enter exercise name"_s);
        return false;
    }
    if (type.isEmpty()) {
        ShowInformation(u"Please enter exercise type"_s);
        return false;
    }
    if (RefuseTooLarge({m_hours, m_minutes}) ||
        (m_energy != m_shownEnergy && RefuseTooLarge({m_energy}))) {
        return false;
    }
    m_result = m_entry;
    m_result.SetMoment(ToFileTime(DateOf(m_entry.GetMoment()), GetTime()));
    m_result.SetCategory(CategoryText());
    m_result.SetName(name);
    m_result.SetType(type);
    m_result.SetMinutes(Minutes());
    m_result.SetEnergyKcal(EnergyStored(ShownValue(m_energy), Unit()));
    return true;
}

bool CExerciseForm::TakeFound(ECatalogueKind /*kind*/, int position) {
    m_measured.reset();
    ClearExercise({});
    return Load(position);
}

/// Keeps the category.
void CExerciseForm::ClearExercise(const QString& name) {
    m_picked.Clear();
    SetNameText(name);
    SetTypeText({});
    m_energy.clear();
    m_hours = u"0"_s;
    m_minutes = QString::number(kPickedMinutes);
}

bool CExerciseForm::Load(int position) {
    CExerciseItem exercise;
    if (!Doc().Database().Exlib().Read(position, exercise)) {
        ShowInformation(QString::fromLatin1(KindOf(kKind).item.cannotLoad));
        return false;
    }
    m_picked = exercise;
    m_categoryId = exercise.GetCategoryId();
    SetNameText(exercise.GetName());
    SetTypeText(exercise.GetType());
    ComputeEnergy();
    return true;
}

double CExerciseForm::Minutes() const {
    const double minutes =
        double(Whole(Typed(m_hours))) * kMinutesPerHour + Whole(Typed(m_minutes));
    return std::max(0.0, minutes);
}

/// Minutes have two digits, as in the field's list.
void CExerciseForm::ShowDuration(int minutes) {
    m_hours = QString::number(minutes / kMinutesPerHour);
    m_minutes = TwoDigits(minutes % kMinutesPerHour);
}

/// LibraryEnergyKcal has added the 0.5 for rounding already, in kcal; here the value is truncated.
void CExerciseForm::ShowEnergy(double energyKcal) {
    m_energy = energyKcal > 0 ? QString::number(Whole(EnergyShown(energyKcal, Unit()))) : QString();
    m_shownEnergy = m_energy;
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
