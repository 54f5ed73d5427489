#include "report/ReportCommand.h"

#include "platform/Messages.h"
#include "report/ReportOptionsDialog.h"
#include "report/ReportRules.h"
#include "report/ReportWriter.h"

void RunReport(CVelmoraDoc& doc, QWidget* parent) {
    const QDate today = QDate::currentDate();
    CReportOptionsDialog dialog({today, today}, parent);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const CReportRequest request = dialog.GetRequest();
    const QString path = ChooseFileToSave(ReportFileChoice(doc.GetActiveProfile(), request.to));
    if (!path.isEmpty()) {
        // A failure has shown its message.
        (void)WriteReport(doc, request, path);
    }
}
