#include "diary/weight/BmiTable.h"

#include <algorithm>
#include <array>

#include "diary/weight/WeightForm.h"
#include "diary/weight/WeightRules.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double kMetresPerCm = 0.01;
constexpr double kMarginKg = 10;
constexpr int kPoundsPerRow = 2;
/// 64.8 kg at 180 cm should give an index of 20 but give slightly less because of rounding.
constexpr double kIndexTolerance = 1e-9;

constexpr quint32 kHeaderColor = Rgb(127, 127, 127);

struct CRiskRow {
    const char* text;
    quint32 color;
};
// Indexed by EHealthRisk.
constexpr std::array<CRiskRow, 3> kRisks = {{
    {"Low", Rgb(0, 255, 0)},
    {"Moderate", Rgb(255, 255, 0)},
    {"High", Rgb(255, 75, 75)},
}};

const CRiskRow& RowOf(EHealthRisk risk) {
    return kRisks.at(static_cast<size_t>(risk));
}

/// "%6.2f"
QString IndexText(double bmi) {
    return ShownNumber(bmi, 2).rightJustified(6);
}

CBmiTableItem RowFor(int shownWeight, double weightKg, const CBmiWeights& weights,
                     double heightCm) {
    const double bmi = BodyMassIndex(weightKg, heightCm);
    const CRiskRow& risk = RowOf(RiskOf(bmi));
    const bool isCurrent = Whole(weightKg) == Whole(weights.currentKg);
    return {QString::number(shownWeight), IndexText(bmi),
            QLatin1StringView(risk.text) + (isCurrent ? " <--"_L1 : ""_L1), risk.color};
}

double Limited(double weightKg) {
    return std::clamp(weightKg, 0.0, kHighestEntryKg);
}

}  // namespace

double BodyMassIndex(double weightKg, double heightCm) {
    const double heightM = heightCm * kMetresPerCm;
    return weightKg / (heightM * heightM);
}

EHealthRisk RiskOf(double bmi) {
    if (bmi >= 20 - kIndexTolerance && bmi <= 25 + kIndexTolerance) {
        return EHealthRisk::Low;
    }
    if (bmi > 25 && bmi <= 27 + kIndexTolerance) {
        return EHealthRisk::Moderate;
    }
    return EHealthRisk::High;
}

QString RiskText(EHealthRisk risk) {
    return QLatin1StringView(RowOf(risk).text);
}

std::vector<CBmiTableItem> BmiTable(const CBmiWeights& weights, double heightCm, EWeightUnit unit) {
    const auto [lowest, highest] = std::minmax(
        {Limited(weights.currentKg), Limited(weights.startKg), Limited(weights.goalKg)});
    const double lowKg = lowest - kMarginKg;
    const double highKg = highest + kMarginKg;
    std::vector<CBmiTableItem> items = {
        {u"Weight"_s, u"BMI"_s, u"Health risk"_s, kHeaderColor},
    };
    if (unit == EWeightUnit::Pounds || unit == EWeightUnit::Stones) {
        const int low = Whole(KgToPounds(lowKg));
        const int count = (Whole(KgToPounds(highKg)) - low + 1) / kPoundsPerRow;
        for (int item = 1; item < count; ++item) {
            const int pounds = low + kPoundsPerRow * (item - 1);
            items.push_back(RowFor(pounds, PoundsToKg(pounds), weights, heightCm));
        }
        return items;
    }
    const int low = Whole(lowKg);
    const int count = Whole(highKg) - low + 1;
    for (int item = 1; item < count; ++item) {
        const int kg = low + item - 1;
        items.push_back(RowFor(kg, kg, weights, heightCm));
    }
    return items;
}

QString BmiText(double bmi) {
    return FormatText("Your BMI is %s"_L1, {IndexText(bmi)});
}

CBmiView BmiOnDay(CVelmoraDoc& doc, QDate day) {
    const CProfileSettings& settings = doc.Settings();
    const CBmiWeights weights = {WeightOnDay(doc, day), settings.targets.startWeightKg,
                                 settings.targets.goalWeightKg};
    const double heightCm = settings.user.heightCm;
    return {BmiText(BodyMassIndex(weights.currentKg, heightCm)),
            BmiTable(weights, heightCm, settings.preferences.weightUnit)};
}
