#include "CommandPages.h"

#include "cli/HelpTexts.h"

using namespace Qt::StringLiterals;

namespace {
/// Text as roff prints it unchanged.
QString Roff(QString text) {
    text.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
    return text.startsWith(u'.') || text.startsWith(u'\'') ? u"\\&"_s + text : text;
}

QString Bold(const QString& text) {
    return u"\\fB"_s + Roff(text) + u"\\fR"_s;
}

QString Italic(const QString& text) {
    return u"\\fI"_s + Roff(text) + u"\\fR"_s;
}

/// The option with its value, as the page prints it: choices are typed as they stand, so they are
/// not set as placeholders.
QString OptionRoff(const COption& option) {
    QString name = Bold(QLatin1StringView(option.name));
    const QString value = QLatin1StringView(option.value);
    if (option.kind == EValue::None) {
        return name;
    }
    return name + u' ' + (ChoicesOf(option).size() > 1 ? Roff(value) : Italic(value));
}

QString OptionParagraph(const COption& option) {
    return u".TP\n"_s + OptionRoff(option) + u'\n' + Roff(HelpOf(option)) + u'\n';
}

QString CommandParagraph(const CCommand& command) {
    QString usage = Bold(NameOf(command));
    for (const QString& word : QString::fromLatin1(command.words).split(u' ', Qt::SkipEmptyParts)) {
        usage += u' ' + Italic(word);
    }
    for (const COption& option : command.options) {
        usage += u' ' + UsageItem(option, OptionRoff(option));
    }
    QString page =
        u".PP\n"_s + usage + u"\n.RS 4\n"_s + Roff(QLatin1StringView(command.help)) + u'\n';
    for (const COption& option : command.options) {
        page += OptionParagraph(option);
    }
    return page + u".RE\n"_s;
}

/// "--existing=overwrite|skip|add"
QString OptionCell(const COption& option) {
    QString name = QLatin1StringView(option.name);
    const QString several = option.kind == EValue::Choices ? u","_s : u"|"_s;
    switch (option.kind) {
        case EValue::None:
            return name;
        case EValue::Choice:
        case EValue::Code:
        case EValue::Choices:
            return name + u'=' + ChoicesOf(option).join(several);
        default:
            return name + u'=' + QLatin1StringView(option.value);
    }
}

QString OptionCells(std::span<const COption> options) {
    QStringList cells;
    for (const COption& option : options) {
        cells.append(OptionCell(option));
    }
    return cells.join(u' ');
}

QString OrDash(const QString& cell) {
    return cell.isEmpty() ? u"-"_s : cell;
}
}  // namespace

QString CommonOptionsPage() {
    QString page;
    for (const COption& option : kCommonOptions) {
        page += OptionParagraph(option);
    }
    return page;
}

QString CommandsPage() {
    QString page;
    QString group;
    for (const CCommand& command : AllCommands()) {
        if (group != QLatin1StringView(command.group)) {
            group = QLatin1StringView(command.group);
            page += u".SS "_s + Roff(group) + u'\n';
        }
        page += CommandParagraph(command);
    }
    return page;
}

QString CommonOptionsRow() {
    return OptionCells(kCommonOptions);
}

QString CommandRows() {
    QStringList rows;
    for (const CCommand& command : AllCommands()) {
        const QStringList name = NameOf(command).split(u' ');
        const QString words = QString::fromLatin1(command.words).replace(u' ', u',');
        rows.append((QStringList{name.first(), OrDash(name.value(1)), OrDash(words),
                                 OptionCells(command.options)})
                        .join(u' ')
                        .trimmed());
    }
    return rows.join(u'\n');
}
