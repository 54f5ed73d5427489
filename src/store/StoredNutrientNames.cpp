#include "store/StoredNutrientNames.h"

#include <utility>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

QStringList CStoredNutrientNames::ReadNames() {
    QStringList names;
    for (int i = 0; i < kNutrientCount; ++i) {
        names.append(QLatin1StringView(NutrientNamesOf(i).displayName));
    }
    ForEachFrom(0, [&names](int, PropertyList& properties) {
        CNutrientName name;
        if (name.SetProperties(std::move(properties)) && name.GetIndex() >= 0 &&
            name.GetIndex() < kNutrientCount) {
            names[name.GetIndex()] = name.GetName();
        }
        return true;
    });
    return names;
}

bool CStoredNutrientNames::SaveName(int position, qint32 index, const QString& name) {
    const bool exists = position < 0 || position < Count();
    if (!exists) {
        ShowMessage(u"Cannot save nutrient name."_s);
        return true;
    }
    // A failed write still counts as success: a name is no reason to stop.
    (void)Write(position, CNutrientName(index, name));
    return true;
}

QString CStoredNutrientNames::EnergyName(const QString& unitAbbreviation) {
    const QLatin1StringView energy(NutrientNamesOf(kEnergyIndex).displayName);
    return energy + u'(' + unitAbbreviation + u')';
}

void CStoredNutrientNames::RenameEnergy(const QString& unitAbbreviation) {
    const QString name = EnergyName(unitAbbreviation);
    CNutrientName stored;
    if (!ReadQuietly(kEnergyIndex, stored) || stored.GetName() != name) {
        SaveName(kEnergyIndex, kEnergyIndex, name);
    }
}

void CStoredNutrientNames::BringToDefault() {
    const int count = Count();
    if (count == kNutrientCount) {
        return;
    }
    const CRecordGroup group(GetStore());
    for (int i = 0; i < count; ++i) {
        if (!Delete(0)) {
            return;
        }
    }
    for (int i = 0; i < kNutrientCount; ++i) {
        const QLatin1StringView name(NutrientNamesOf(i).displayName);
        (void)Write(kNoPosition, CNutrientName(i, name));  // the next start tries again
    }
}
