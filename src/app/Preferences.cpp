#include "app/Preferences.h"

#include "platform/NumberText.h"

QString CPreferences::FormatNumber(double value) const {
    return ShownNumber(value, decimals);
}

QString CPreferences::FormatNutrient(int index, double value) const {
    return FormatNumber(index == kEnergyIndex ? EnergyShown(value, energyUnit) : value);
}

double CPreferences::ReadNutrient(int index, const QString& text) const {
    const double value = TypedNumber(text).value_or(0);
    return index == kEnergyIndex ? EnergyStored(value, energyUnit) : value;
}

std::vector<int> CPreferences::DisplayedNutrients() const {
    std::vector<int> indexes;
    for (int index = 0; index < kNutrientCount; ++index) {
        if (displayed.test(index)) {
            indexes.push_back(index);
        }
    }
    return indexes;
}
