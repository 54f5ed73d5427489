#include "diary/RepeatDialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>

#include "diary/CopyRules.h"
#include "platform/Messages.h"
#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kWeekdaysPerRow = 2;
constexpr int kProposedDays = 7;
constexpr int kMostYears = 2;

QString Counted(qsizetype count, const QString& one, const QString& many) {
    return count == 1 ? u"1 "_s + one : QString::number(count) + u' ' + many;
}

}  // namespace

CRepeatDialog::CRepeatDialog(CVelmoraDoc& doc, QDate first, int entries, QWidget* parent)
    : CDialog(u"Repeat"_s, parent), m_doc(doc), m_first(first), m_entries(entries) {
    auto* prompt = new QLabel(u"Choose the weekdays, and the last day:"_s, this);
    prompt->setWordWrap(true);
    Content()->addWidget(prompt);
    auto* grid = new QGridLayout;
    for (int index = 0; index < std::ssize(m_weekdays); ++index) {
        auto* box = new QCheckBox(QLocale().standaloneDayName(index + 1), this);
        box->setObjectName(u"weekday%1"_s.arg(index + 1));
        connect(box, &QCheckBox::toggled, this, &CRepeatDialog::ShowCount);
        grid->addWidget(box, index / kWeekdaysPerRow, index % kWeekdaysPerRow);
        m_weekdays.at(index) = box;
    }
    Content()->addLayout(grid);
    m_last = CreateDateEdit(first.addDays(kProposedDays), u"last"_s, this);
    m_last->setMaximumDate(first.addYears(kMostYears));
    connect(m_last, &CDateField::dateChanged, this, &CRepeatDialog::ShowCount);
    AddForm()->addRow(u"Last day:"_s, m_last);
    m_count = new QLabel(this);
    m_count->setObjectName(u"count"_s);
    m_count->setWordWrap(true);
    Content()->addWidget(m_count);
    Content()->addStretch(1);
    m_weekdays.at(first.dayOfWeek() - 1)->setChecked(true);
    m_weekdays.front()->setFocus();
}

std::vector<QDate> CRepeatDialog::GetDays() const {
    int weekdays = 0;
    for (int index = 0; index < std::ssize(m_weekdays); ++index) {
        weekdays |= m_weekdays.at(index)->isChecked() ? 1 << index : 0;
    }
    return DaysToRepeat(m_first, m_last->date(), weekdays);
}

bool CRepeatDialog::Confirm() {
    if (GetDays().empty()) {
        ShowMessage(u"Please choose a weekday, and a last day after the entries."_s,
                    EMessageIcon::Information);
        return false;
    }
    return true;
}

void CRepeatDialog::ShowCount() {
    if (m_count == nullptr) {
        return;
    }
    const std::vector<QDate> days = GetDays();
    const auto count = static_cast<qsizetype>(days.size());
    QString text = Counted(count * m_entries, u"entry"_s, u"entries"_s) + u" will be added on "_s +
                   Counted(count, u"day"_s, u"days"_s) + u'.';
    if (const int full = DaysBeyondList(m_doc, days, m_entries); full > 0) {
        text += u' ' + Counted(full, u"day"_s, u"days"_s) +
                u" will have more than %1 entries; the list shows only the first %1."_s.arg(
                    kDietListCapacity);
    }
    m_count->setText(text);
}
