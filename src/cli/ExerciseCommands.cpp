// velmora-cli exercises ...
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/MinuteEntries.h"
#include "cli/TableOutput.h"
#include "exercise/ExerciseForm.h"
#include "exercise/ExerciseRules.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COption kAddOptions[] = {
    Required(kProfileOption),
    Required(kDateOption),
    Required(kTimeOption),
    Required(kCategoryOption),
    Required(kNameOption),
    Required(kTypeOption),
    Required({"--minutes", EValue::Whole, "NUMBER", "how long it took", 0, 7 * 24 * 60}),
    {"--energy", EValue::Number, "KCAL", "the energy burned; default computed", 0, 100000},
};
constexpr COption kDayOptions[] = {Required(kProfileOption), Required(kDateOption)};
constexpr COption kDeleteOptions[] = {Required(kProfileOption), Required(kDateOption),
                                      Required(kTimeOption), kYesOption};

bool Add(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    CExerciseForm form(context.doc, NewExercise(day, time));
    if (!PickItem(form, arguments, ECatalogueKind::Exercises)) {
        return false;
    }
    form.SetDurationTexts({}, arguments.Text("--minutes"));
    if (!form.Confirm()) {
        return false;
    }
    CExerciseEntry entry = form.GetResult();
    if (arguments.Has("--energy")) {
        entry.SetEnergyKcal(arguments.Number("--energy"));
    }
    return AddExercise(context.doc.Database(), entry);
}

bool List(CCommandContext& context) {
    const QDate day = context.arguments.Date("--date");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    PrintRow(
        {u"date"_s, u"time"_s, u"category"_s, u"name"_s, u"type"_s, u"minutes"_s, u"energy"_s});
    const CEntryRange<CExerciseEntry> list = ListExercises(context.doc.Database(), day, day);
    for (const CListed<CExerciseEntry>& listed : list.entries) {
        const CExerciseEntry& entry = listed.entry;
        PrintRow(MomentCells(entry.GetMoment()) +
                 QStringList{entry.GetCategory(), entry.GetName(), entry.GetType(),
                             ShortestNumber(entry.GetMinutes()),
                             ShortestNumber(entry.GetEnergyKcal())});
    }
    return ReportDamage(list.leftOut, kEntryWords);
}

/// Deletes all entries of the minute.
bool Delete(CCommandContext& context) {
    if (!LoadProfileArgument(context)) {
        return false;
    }
    CDatabase& database = context.doc.Database();
    const auto selected = ReadMinute(database.Exercises(), context.arguments);
    return DeleteExercises(database, selected) == std::ssize(selected) && !selected.empty();
}

constexpr CCommand kCommands[] = {
    {"exercises", "add", "", kAddOptions, EAccess::Writes, "add an exercise to a day", Add},
    {"exercises", "list", "", kDayOptions, EAccess::Reads, "list the exercises of a day", List},
    {"exercises", "delete", "", kDeleteOptions, EAccess::Writes, "delete the exercises of a minute",
     Delete},
};
}  // namespace

std::span<const CCommand> ExerciseCommands() {
    return kCommands;
}
