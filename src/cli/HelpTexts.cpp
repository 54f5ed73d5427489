#include "cli/HelpTexts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

QString NameOf(const CCommand& command) {
    const QLatin1StringView group(command.group);
    const auto count = std::ranges::count_if(AllCommands(), [group](const CCommand& other) {
        return QLatin1StringView(other.group) == group;
    });
    return count == 1 ? QString(group) : group + u' ' + QLatin1StringView(command.name);
}

QString UsageItem(const COption& option, const QString& text) {
    if (option.need == ENeed::Repeatable) {
        return u'[' + text + u"]..."_s;
    }
    return option.need == ENeed::Required && option.rival == nullptr ? text : u'[' + text + u']';
}

QString HelpOf(const COption& option) {
    QString help = QLatin1StringView(option.help);
    if (option.kind == EValue::Choices) {
        return help + u"; separate several by commas"_s;
    }
    const QString limits = LimitsOf(option);
    if (limits.isEmpty()) {
        return help;
    }
    return help + (option.kind == EValue::Code ? u" (or its number, "_s : u" ("_s) + limits + u')';
}
