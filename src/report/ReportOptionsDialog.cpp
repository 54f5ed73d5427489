#include "report/ReportOptionsDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include "platform/Messages.h"
#include "profile/DateEdit.h"
#include "report/ReportRules.h"

using namespace Qt::StringLiterals;

namespace {
QDateEdit* AddDate(QFormLayout* form, const QString& label, QDate date, const QString& name) {
    QDateEdit* field = CreateDateEdit(date, name);
    field->setDisplayFormat(ReportDatePattern(QLocale().dateFormat(QLocale::ShortFormat)));
    form->addRow(label, field);
    return field;
}

QCheckBox* AddType(QFormLayout* form, const QString& label, bool checked, const QString& name) {
    auto* box = new QCheckBox;
    box->setObjectName(name);
    box->setAccessibleName(label);
    box->setChecked(checked);
    form->addRow(label, box);
    return box;
}
}  // namespace

CReportOptionsDialog::CReportOptionsDialog(const CReportRequest& request, QWidget* parent)
    : CDialog(u"Report options"_s, parent) {
    Content()->addWidget(new QLabel(u"Report options:"_s));
    QFormLayout* form = AddForm();
    m_from = AddDate(form, u"From date:"_s, request.from, u"from"_s);
    m_to = AddDate(form, u"To date:"_s, request.to, u"to"_s);
    m_grouping = new QComboBox;
    m_grouping->setObjectName(u"grouping"_s);
    m_grouping->addItems({u"Date"_s, u"Type"_s});
    m_grouping->setCurrentIndex(static_cast<int>(request.grouping));
    form->addRow(u"Combine by:"_s, m_grouping);
    m_diet = AddType(form, u"Report Diet:"_s, request.Has(kReportDiet), u"diet"_s);
    m_weight = AddType(form, u"Report Weight:"_s, request.Has(kReportWeight), u"weight"_s);
    m_exercises =
        AddType(form, u"Report Exercises:"_s, request.Has(kReportExercises), u"exercises"_s);
    Content()->addStretch(1);
    m_from->setFocus();
}

CReportRequest CReportOptionsDialog::GetRequest() const {
    const int types = (m_diet->isChecked() ? kReportDiet : 0) |
                      (m_weight->isChecked() ? kReportWeight : 0) |
                      (m_exercises->isChecked() ? kReportExercises : 0);
    return {m_from->date(), m_to->date(), types,
            static_cast<EReportGrouping>(m_grouping->currentIndex())};
}

bool CReportOptionsDialog::Confirm() {
    const std::optional<QString> refusal = CheckReportRequest(GetRequest());
    if (refusal) {
        ShowMessage(*refusal);
    }
    return !refusal;
}
