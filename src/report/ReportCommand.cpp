#include "report/ReportCommand.h"

#include <QDir>

#include "platform/Messages.h"
#include "report/ReportOptionsDialog.h"
#include "report/ReportRules.h"
#include "report/ReportWriter.h"

using namespace Qt::StringLiterals;

void RunReport(CVelmoraDoc& doc, QWidget* parent) {
    const QDate today = QDate::currentDate();
    CReportOptionsDialog dialog({today, today}, parent);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const CReportRequest request = dialog.GetRequest();
    const QString path = ChooseFileToSave(ReportFileChoice(doc.GetActiveProfile(), request.to));
    if (!path.isEmpty() && WriteReport(doc, request, path)) {
        doc.ShowStatus(u"Report written to %1."_s.arg(QDir::toNativeSeparators(path)));
    }
}
