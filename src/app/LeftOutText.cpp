#include "app/LeftOutText.h"

#include <QLocale>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
QString Number(int count) {
    return QLocale().toString(count);
}
}  // namespace

QString JoinSentences(QStringList sentences) {
    sentences.removeAll(QString());
    return sentences.join(u' ');
}

QString CountText(int count, const CListWords& words) {
    return Number(count) + u' ' + QLatin1StringView(count == 1 ? words.one : words.many);
}

QString DamageText(const CLeftOut& leftOut, const CListWords& words) {
    if (leftOut.isUnknown) {
        return FormatText("Part of the database is damaged: %s may be missing."_L1,
                          {QString(QLatin1StringView(words.many))});
    }
    if (leftOut.damaged == 0) {
        return {};
    }
    const bool isOne = leftOut.damaged == 1;
    QString text =
        FormatText("%s damaged %s left out"_L1,
                   {Number(leftOut.damaged), QLatin1StringView(isOne ? words.one : words.many) +
                                                 (isOne ? u" is"_s : u" are"_s)});
    if (leftOut.isEnded && leftOut.beyond > 0) {
        text += FormatText(isOne ? ", and %s after it"_L1 : ", and %s after one of them"_L1,
                           {CountText(leftOut.beyond, words)});
    }
    return text + u'.';
}

QString LeftOutText(const CLeftOut& leftOut, const CListWords& words, int shown,
                    const char* fullText) {
    QString damage = DamageText(leftOut, words);
    if (leftOut.beyond == 0 || leftOut.isEnded || leftOut.isUnknown) {
        return damage;
    }
    const int all = shown + leftOut.beyond + leftOut.damaged;
    const QString full =
        FormatText(QLatin1StringView(fullText),
                   {Number(shown), Number(all), QString(QLatin1StringView(words.many))});
    return JoinSentences({full, damage});
}
