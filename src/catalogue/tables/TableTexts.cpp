#include "catalogue/tables/TableTexts.h"

#include "catalogue/exchange/CsvFields.h"
#include "platform/ControlCharacters.h"

using namespace Qt::StringLiterals;

namespace {
/// "1.0" is "1".
QString WithoutTrailingZeros(QString amount) {
    if (amount.contains(u'.')) {
        while (amount.endsWith(u'0')) {
            amount.chop(1);
        }
        amount.chop(amount.endsWith(u'.') ? 1 : 0);
    }
    return amount;
}

QString Joined(const QString& text, const QString& separator, const QString& further) {
    return text.isEmpty() || further.isEmpty() ? text + further : text + separator + further;
}
}  // namespace

QString TableText(std::string_view field) {
    QString text =
        WithoutControls(QString::fromUtf8(field.data(), static_cast<qsizetype>(field.size())));
    return text.replace(u'"', "''"_L1).trimmed();
}

CFoodTexts SplitDescription(const QString& description, qsizetype from) {
    const qsizetype comma = description.indexOf(u',', from);
    if (comma < 0) {
        return {description, u"plain"_s};
    }
    const QString type = description.sliced(comma + 1).trimmed();
    return {description.first(comma).trimmed(), type.isEmpty() ? u"plain"_s : type};
}

CFoodTexts SplitBranded(const QString& brand, const QString& description) {
    const QStringView rest = QStringView(description).mid(brand.size());
    if (description.startsWith(brand, Qt::CaseInsensitive) &&
        (rest.isEmpty() || !rest.front().isLetterOrNumber())) {
        return SplitDescription(description, brand.size());
    }
    CFoodTexts texts = SplitDescription(description);
    texts.name = Joined(brand, u" "_s, texts.name);
    return texts;
}

QString MarkedType(const QString& type, const QString& mark) {
    return CutImportedText(type, kLongestText - static_cast<int>(mark.size())) + mark;
}

QString PortionText(const CPortionFields& portion) {
    if (portion.unit.isEmpty() && portion.description.isEmpty() && portion.modifier.isEmpty()) {
        return {};
    }
    const QString amount = WithoutTrailingZeros(portion.amount);
    QString text;
    if (portion.description.isEmpty()) {
        const QString unit = Joined(amount, u" "_s, portion.unit);
        text = Joined(unit, portion.unit.isEmpty() ? u" "_s : u", "_s, portion.modifier);
    } else if (portion.description.front().isNumber()) {
        text = portion.description;  // has its amount
    } else {
        text = Joined(amount, u" "_s, portion.description);
    }
    return CutImportedText(text, kLongestServingName);
}
