// velmora-cli exercises ...
#include <limits>

#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "exercise/ExerciseForm.h"
#include "exercise/ExerciseRules.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kAddOptions[] = {
    {"--profile", true, true},  {"--date", true, true},    {"--time", true, true},
    {"--category", true, true}, {"--name", true, true},    {"--type", true, true},
    {"--minutes", true, true},  {"--energy", true, false},
};
constexpr COptionDescription kDayOptions[] = {{"--profile", true, true}, {"--date", true, true}};
constexpr COptionDescription kDeleteOptions[] = {
    {"--profile", true, true}, {"--date", true, true}, {"--time", true, true}, kYesOption};

bool Add(CCommandContext& context) {
    CArguments& arguments = context.arguments;
    const QDate day = arguments.Date("--date");
    const QTime time = arguments.Time("--time");
    const int minutes = arguments.Index("--minutes", 0, std::numeric_limits<int>::max());
    const double energyKcal = arguments.Number("--energy");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    CExerciseForm form(context.doc, NewExercise(day, time));
    if (!PickItem(form, arguments, ECatalogueKind::Exercises)) {
        return false;
    }
    form.SetDurationTexts({}, QString::number(minutes));
    if (!form.Confirm()) {
        return false;
    }
    CExerciseEntry entry = form.GetResult();
    if (arguments.Has("--energy")) {
        entry.SetEnergyKcal(energyKcal);
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
    for (const CListedExercise& listed : ListExercises(context.doc.Database(), day, day)) {
        const CExerciseEntry& entry = listed.entry;
        PrintRow({DateOf(entry.GetMoment()).toString(Qt::ISODate),
                  TimeOf(entry.GetMoment()).toString(Qt::ISODate), entry.GetCategory(),
                  entry.GetName(), entry.GetType(), ShortestNumber(entry.GetMinutes()),
                  ShortestNumber(entry.GetEnergyKcal())});
    }
    return true;
}

/// Deletes what was done in that minute.
bool Delete(CCommandContext& context) {
    const QDate day = context.arguments.Date("--date");
    const QTime time = context.arguments.Time("--time");
    if (!LoadProfileArgument(context)) {
        return false;
    }
    ListedExercises selected = ListExercises(context.doc.Database(), day, day);
    std::erase_if(selected, [&](const CListedExercise& listed) {
        const QTime at = TimeOf(listed.entry.GetMoment());
        return at.hour() != time.hour() || at.minute() != time.minute();
    });
    return DeleteExercises(context.doc.Database(), selected) == std::ssize(selected) &&
           !selected.empty();
}

constexpr CCommand kCommands[] = {
    {"exercises", "add", 0, kAddOptions,
     "--profile P --date D --time HH:MM --category C --name N --type T\n"
     "        --minutes M [--energy KCAL]",
     Add},
    {"exercises", "list", 0, kDayOptions, "--profile P --date D", List},
    {"exercises", "delete", 0, kDeleteOptions, "--profile P --date D --time HH:MM --yes", Delete},
};
}  // namespace

std::span<const CCommand> ExerciseCommands() {
    return kCommands;
}
