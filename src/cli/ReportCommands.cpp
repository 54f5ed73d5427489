// velmora-cli report and purge
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "diary/PurgeRules.h"
#include "platform/Messages.h"
#include "report/ReportRules.h"
#include "report/ReportWriter.h"

namespace {
// The choices are in the order of the report's types and groupings.
constexpr COption kReportOptions[] = {
    Required(kProfileOption),
    Required(kFromOption),
    Required(kToDateOption),
    {"--types", EValue::Choices, "diet|weight|exercises", "the diaries; default all"},
    {"--by", EValue::Choice, "date|type", "what the entries are grouped by"},
};

bool Report(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const CReportRequest request = {arguments.Date("--from"), arguments.Date("--to"),
                                    arguments.Choices("--types", kReportAll),
                                    static_cast<EReportGrouping>(arguments.Choice("--by"))};
    if (!LoadProfileArgument(context)) {
        return false;
    }
    if (const std::optional<QString> refusal = CheckReportRequest(request)) {
        ShowMessage(*refusal);
        return false;
    }
    return WriteReport(context.doc, request, arguments.Word(0));
}

constexpr COption kPurgeOptions[] = {
    Required(kProfileOption),
    Required(kFromOption),
    Required(kToDateOption),
    {"--diet", EValue::None, "", "delete from the diet diary"},
    {"--weights", EValue::None, "", "delete from the weight diary"},
    {"--exercises", EValue::None, "", "delete from the exercise diary"},
    kYesOption,
};

bool Purge(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    const CPurgeRequest request = {arguments.Date("--from"), arguments.Date("--to"),
                                   arguments.Has("--diet"), arguments.Has("--weights"),
                                   arguments.Has("--exercises")};
    return LoadProfileArgument(context) && PurgeDiaries(context.doc.Database(), request);
}

constexpr CCommand kCommands[] = {
    {"report", "write", "FILE", kReportOptions, EAccess::Reads, "write the diaries to a CSV file",
     Report},
    {"purge", "run", "", kPurgeOptions, EAccess::Writes, "delete diary entries of some days",
     Purge},
};
}  // namespace

std::span<const CCommand> ReportCommands() {
    return kCommands;
}
