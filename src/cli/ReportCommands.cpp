// velmora-cli report and purge
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "diary/PurgeRules.h"
#include "platform/Messages.h"
#include "report/ReportRules.h"
#include "report/ReportWriter.h"

using namespace Qt::StringLiterals;

namespace {
constexpr COptionDescription kReportOptions[] = {
    {"--profile", true, true}, {"--from", true, true}, {"--to", true, true},
    {"--types", true, false},  {"--by", true, false},
};
/// In the order of the bits of EReportType.
const QStringList kTypeNames = {u"diet"_s, u"weight"_s, u"exercises"_s};
const QStringList kGroupingNames = {u"date"_s, u"type"_s};

bool Report(CCommandContext& context) {
    CArguments& arguments = context.arguments;
    const CReportRequest request = {
        arguments.Date("--from"), arguments.Date("--to"),
        arguments.Choices("--types", kTypeNames, kReportAll),
        static_cast<EReportGrouping>(arguments.Choice("--by", kGroupingNames))};
    if (!LoadProfileArgument(context)) {
        return false;
    }
    if (const std::optional<QString> refusal = CheckReportRequest(request)) {
        ShowMessage(*refusal);
        return false;
    }
    return WriteReport(context.doc, request, arguments.Word(0));
}

constexpr COptionDescription kPurgeOptions[] = {
    {"--profile", true, true},     {"--from", true, true},
    {"--to", true, true},          kYesOption,
    {"--diet", false, false},      {"--weights", false, false},
    {"--exercises", false, false},
};

bool Purge(CCommandContext& context) {
    CArguments& arguments = context.arguments;
    const CPurgeRequest request = {arguments.Date("--from"), arguments.Date("--to"),
                                   arguments.Has("--diet"), arguments.Has("--weights"),
                                   arguments.Has("--exercises")};
    return LoadProfileArgument(context) && PurgeDiaries(context.doc.Database(), request);
}

constexpr CCommand kCommands[] = {
    {"report", "write", 1, kReportOptions,
     "FILE --profile P --from D --to D [--types diet,weight,exercises] [--by date|type]", Report},
    {"purge", "run", 0, kPurgeOptions,
     "--profile P --from D --to D [--diet] [--weights] [--exercises] --yes", Purge},
};
}  // namespace

std::span<const CCommand> ReportCommands() {
    return kCommands;
}
