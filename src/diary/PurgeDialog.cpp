#include "diary/PurgeDialog.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

CPurgeDialog::CPurgeDialog(QDate today, QWidget* parent) : CDialog(u"Purge"_s, parent) {
    const auto addHeading = [this](const QString& text) {
        auto* label = new QLabel(text);
        label->setWordWrap(true);
        Content()->addWidget(label);
    };
    const auto addBox = [this](const QString& text, const QString& name) {
        auto* box = new QCheckBox(text);
        box->setObjectName(name);
        Content()->addWidget(box);
        return box;
    };
    addHeading(u"Select begin and end dates to purge:"_s);
    QFormLayout* form = AddForm();
    m_begin = CreateDateEdit(today, u"begin"_s);
    m_end = CreateDateEdit(today, u"end"_s);
    form->addRow(u"Begin date:"_s, m_begin);
    form->addRow(u"End date:"_s, m_end);
    addHeading(u"Select entry types to purge:"_s);
    m_diet = addBox(u"Diet"_s, u"diet"_s);
    m_exercises = addBox(u"Exercises"_s, u"exercises"_s);
    m_weights = addBox(u"Weights"_s, u"weights"_s);
    Content()->addStretch(1);
    m_begin->setFocus();
}

CPurgeRequest CPurgeDialog::GetRequest() const {
    return {m_begin->date(), m_end->date(), m_diet->isChecked(), m_weights->isChecked(),
            m_exercises->isChecked()};
}

void RunPurge(CVelmoraDoc& doc, QWidget* parent, const std::function<void()>& changed) {
    CPurgeDialog dialog(QDate::currentDate(), parent);
    if (dialog.exec() == QDialog::Accepted) {
        (void)PurgeDiaries(doc.Database(), dialog.GetRequest(), changed);  // has shown its result
    }
}
