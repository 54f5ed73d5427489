#include "frame/FindingsDialog.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/BackupRules.h"

using namespace Qt::StringLiterals;

namespace {
/// More than anybody reads; a list may have a line for each of millions of records.
constexpr int kMostLines = 2000;
}  // namespace

CFindingsDialog::CFindingsDialog(const CFindings& findings, QWidget* parent)
    : CDialog(u"Check data"_s, parent) {
    QStringList lines;
    for (const CFinding& finding : findings.List()) {
        if (lines.size() == kMostLines) {
            lines.append(u"... and %1 more"_s.arg(std::ssize(findings.List()) - kMostLines));
            break;
        }
        lines.append(FindingLine(finding));
    }
    AddText(FindingsText(findings), u"summary"_s);
    auto* list = new QPlainTextEdit(lines.join(u'\n'));
    list->setObjectName(u"findings"_s);
    list->setAccessibleName(u"Findings"_s);
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    Content()->addWidget(list, 1);
    if (findings.HasFaults()) {
        AddText(
            u"Repair takes over what can be read into a new data file. The present one is kept."_s,
            u"hint"_s);
        findChild<QPushButton*>(u"ok"_s)->setText(u"Repair"_s);
        // Return in the list must not start it.
        findChild<QPushButton*>(u"cancel"_s)->setDefault(true);
    } else {
        HideCancel();
    }
    SetPreferredSize(480, 320);
}
