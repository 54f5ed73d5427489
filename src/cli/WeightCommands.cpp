// velmora-cli weight ... and bmi
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/MinuteEntries.h"
#include "cli/TableOutput.h"
#include "diary/weight/BmiTable.h"
#include "diary/weight/WeightForm.h"
#include "diary/weight/WeightList.h"
#include "diary/weight/WeightRules.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
// Indexed by slot of the entry; all but the last are in cm.
constexpr const char* kMeasurementOptions[] = {"--chest",   "--waist", "--hips", "--bicep",
                                               "--forearm", "--thigh", "--calf", "--fat"};
static_assert(std::size(kMeasurementOptions) == kBodyFatSlot + 1);

constexpr double kLongestTapeCm = 500;
constexpr COption Tape(const char* name, const char* help) {
    return {name, EValue::Number, "CM", help, 0, kLongestTapeCm};
}

constexpr COption kAddOptions[] = {
    Required(kProfileOption),
    Required(kDateOption),
    Required(kTimeOption),
    Required({"--weight", EValue::Number, "KG", "the weight", 0, 1000}),
    Tape("--chest", "around the chest"),
    Tape("--waist", "around the waist"),
    Tape("--hips", "around the hips"),
    Tape("--bicep", "around the upper arm"),
    Tape("--forearm", "around the forearm"),
    Tape("--thigh", "around the thigh"),
    Tape("--calf", "around the calf"),
    {"--fat", EValue::Number, "PERCENT", "body fat", 0, 100},
};
constexpr COption kProfileOptions[] = {Required(kProfileOption)};
constexpr COption kDeleteOptions[] = {Required(kProfileOption), Required(kDateOption),
                                      Required(kTimeOption), kYesOption};
constexpr COption kDayOptions[] = {Required(kProfileOption), Required(kDateOption)};

bool Add(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    CWeightFields fields;
    fields.date = arguments.Date("--date");
    fields.time = arguments.Time("--time");
    fields.weight.major = arguments.Text("--weight");
    for (int slot = 0; slot < kTapeCount; ++slot) {
        fields.tape[slot] = arguments.Text(kMeasurementOptions[slot]);
    }
    fields.bodyFat = arguments.Text(kMeasurementOptions[kBodyFatSlot]);
    if (!LoadProfileArgument(context)) {
        return false;
    }
    // The default preferences are kg and cm.
    CWeightForm form(CWeightEntry(), CPreferences(), context.doc.Settings().user.isMale);
    return form.Confirm(fields) && AddWeight(context.doc, form.GetEntry());
}

bool List(CCommandContext& context) {
    if (!LoadProfileArgument(context)) {
        return false;
    }
    QStringList header = {u"date"_s, u"time"_s, u"weight"_s};
    for (const char* option : kMeasurementOptions) {
        header.append(QLatin1StringView(option).sliced(2));
    }
    PrintRow(header);
    CWeightList weights(context.doc);
    weights.Reload();
    for (int row = 0; row < weights.Count(); ++row) {
        const CWeightEntry& entry = weights.Entry(row);
        QStringList cells = MomentCells(entry.GetMoment());
        cells.append(ShortestNumber(entry.GetWeightKg()));
        for (int slot = 0; slot <= kBodyFatSlot; ++slot) {
            cells.append(ShortestNumber(entry.GetMeasurement(slot)));
        }
        PrintRow(cells);
    }
    return ReportDamage(weights.LeftOut(), kEntryWords);
}

/// Deletes all entries of the minute.
bool Delete(CCommandContext& context) {
    if (!LoadProfileArgument(context)) {
        return false;
    }
    const auto selected = ReadMinute(context.doc.Database().Weight(), context.arguments);
    return DeleteWeights(context.doc, selected) == std::ssize(selected) && !selected.empty();
}

bool ShowBmi(CCommandContext& context) {
    const QDate day = context.arguments.Date("--date");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    const CBmiView bmi = BmiOnDay(context.doc, day);
    PrintRow({bmi.text});
    for (const CBmiTableItem& item : bmi.table) {
        PrintRow({item.weight, item.bmi.trimmed(), item.risk});
    }
    return true;
}

constexpr CCommand kCommands[] = {
    {"weight", "add", "", kAddOptions, EAccess::Writes, "add a weight with its measurements", Add},
    {"weight", "list", "", kProfileOptions, EAccess::Reads, "list all weights", List},
    {"weight", "delete", "", kDeleteOptions, EAccess::Writes, "delete the weights of a minute",
     Delete},
    {"bmi", "show", "", kDayOptions, EAccess::Reads, "show the body mass index of a day", ShowBmi},
};
}  // namespace

std::span<const CCommand> WeightCommands() {
    return kCommands;
}
