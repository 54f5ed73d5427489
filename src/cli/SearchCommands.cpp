// velmora-cli search
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/FoundItem.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kUsualLimit = 20;
constexpr double kMostRows = 1'000'000;
// The choices of --kind are in the order of the kinds.
constexpr COption kSearchOptions[] = {
    {"--kind", EValue::Choice, "food|menu|recipe|exercise", "what to look for; default all"},
    {"--profile", EValue::Text, "NAME", "put first what this user profile eats"},
    {"--limit", EValue::Whole, "N", "the most items to print; default 20", 1, kMostRows},
};

/// Energy, and what it is of.
QStringList EnergyCells(const CFoundItem& item) {
    if (item.kind != ECatalogueKind::Exercises) {
        return {ShortestNumber(item.energyKcal), u"kcal per "_s + item.serving};
    }
    return item.met > 0 ? QStringList{ShortestNumber(item.met), u"MET"_s}
                        : QStringList{ShortestNumber(item.energyKcal), u"kcal per minute"_s};
}

bool Search(CCommandContext& context) {
    const CArguments& arguments = context.arguments;
    CDatabase& database = context.doc.Database();
    CSearchQuery query{.text = arguments.Word(0), .limit = arguments.Whole("--limit", kUsualLimit)};
    if (arguments.Has("--kind")) {
        query.kinds = KindBit(static_cast<ECatalogueKind>(arguments.Choice("--kind")));
    }
    if (arguments.Has("--profile")) {
        if (!LoadProfileArgument(context)) {
            return false;
        }
        query.profile = database.Profiles().GetId();
    }
    const CSearchMatches matches = database.Search().Find(query);
    if (matches.total == 0) {
        ShowMessage(u"Nothing found."_s);
        return false;
    }
    PrintRow({u"kind"_s, u"category"_s, u"name"_s, u"type"_s, u"energy"_s, u"unit"_s});
    for (const CSearchMatch& match : matches.best) {
        if (const auto item = ReadFoundItem(database, match)) {
            PrintRow(QStringList{QString::fromLatin1(KindOf(item->kind).words.one), item->category,
                                 item->name, item->type} +
                     EnergyCells(*item));
        }
    }
    return true;
}

constexpr CCommand kCommands[] = {
    {"search", "", "TEXT", kSearchOptions, EAccess::Reads,
     "find items by words of name, type and category", Search},
};
}  // namespace

std::span<const CCommand> SearchCommands() {
    return kCommands;
}
