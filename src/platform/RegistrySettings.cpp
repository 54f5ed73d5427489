#include "platform/RegistrySettings.h"

#include <QSettings>

namespace {
constexpr auto kCompany = "Quillon";
constexpr auto kApplication = "Velmora for PPC";

QSettings OpenSettings() {
    return QSettings(QString::fromLatin1(kCompany), QString::fromLatin1(kApplication));
}

struct CPlacementValue {
    const char* name;
    int CRegistrySettings::*field;
};

constexpr CPlacementValue kPlacement[] = {
    {"PositionX", &CRegistrySettings::positionX},
    {"PositionY", &CRegistrySettings::positionY},
    {"SizeX", &CRegistrySettings::sizeX},
    {"SizeY", &CRegistrySettings::sizeY},
};
constexpr auto kUserProfileName = "UserProfileName";
}  // namespace

CRegistrySettings CRegistrySettings::Read() {
    CRegistrySettings result;
    const QSettings settings = OpenSettings();
    for (const CPlacementValue& value : kPlacement) {
        bool isNumber = false;
        const int stored = settings.value(QLatin1StringView(value.name)).toInt(&isNumber);
        if (isNumber) {
            result.*value.field = stored;
        }
    }
    result.userProfileName = settings.value(QLatin1StringView(kUserProfileName)).toString();
    return result;
}

void CRegistrySettings::Write() const {
    if (*this == Read()) {
        return;
    }
    QSettings settings = OpenSettings();
    for (const CPlacementValue& value : kPlacement) {
        settings.setValue(QLatin1StringView(value.name), this->*value.field);
    }
    settings.setValue(QLatin1StringView(kUserProfileName), userProfileName);
}
