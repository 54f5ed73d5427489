#include "report/ReportRules.h"

#include "catalogue/exchange/CsvExchange.h"
#include "platform/NumberText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

std::optional<QString> CheckReportRequest(const CReportRequest& request) {
    if (request.types == 0) {
        return u"Please select data type to export."_s;
    }
    if (request.from.daysTo(request.to) < 0) {
        return u"Please select correct From date and To date."_s;
    }
    return std::nullopt;
}

CFileChoice ReportFileChoice(const QString& profileName, QDate to) {
    CFileChoice choice = CsvFileChoice(u"Report"_s);
    choice.initialName = profileName + TwoDigits(to.year() % 100) + TwoDigits(to.month()) +
                         TwoDigits(to.day()) + choice.defaultExtension;
    // A profile's name may contain a slash, a file's cannot.
    choice.initialName.replace(u'/', u'_');
    return choice;
}

QString ReportDatePattern(const QString& shortPattern) {
    QString pattern = shortPattern;
    pattern.replace("MM/"_L1, "M/"_L1);
    pattern.replace("M/"_L1, "MM/"_L1);
    pattern.replace("/d/"_L1, "/dd/"_L1);
    pattern.replace("yy"_L1, "yyy"_L1);
    // Three letters or more all mean the full year, which QLocale writes as "yyyy".
    static const QRegularExpression wholeYear(u"y{3,}"_s);
    return pattern.replace(wholeYear, u"yyyy"_s);
}
