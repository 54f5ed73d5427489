#include "diary/DietMoveDialog.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QTimeEdit>
#include <algorithm>

#include "profile/DateEdit.h"

using namespace Qt::StringLiterals;

CDietMoveDialog::CDietMoveDialog(const CDietPlace& place, QWidget* parent, EPurpose purpose)
    : CDialog(purpose == EPurpose::Move ? u"Diet move"_s : u"Copy to"_s, parent) {
    auto* prompt =
        new QLabel(purpose == EPurpose::Move ? u"Select date, time, meal to move entry:"_s
                                             : u"Choose date, time and meal of the copies:"_s,
                   this);
    prompt->setWordWrap(true);
    Content()->addWidget(prompt);

    m_date = CreateDateEdit(DateOf(place.moment), u"date"_s, this);
    m_time = CreateTimeField(this);
    m_time->setTime(TimeOf(place.moment));
    m_meal = new QComboBox(this);
    m_meal->setObjectName(u"meal"_s);
    m_meal->setAccessibleName(u"Meal"_s);
    for (int meal = 0; meal < kMealCount; ++meal) {
        m_meal->addItem(MealName(meal));
    }
    m_meal->setCurrentIndex(std::clamp(place.meal, 0, kMealCount - 1));

    QFormLayout* form = AddForm();
    form->addRow(u"Date:"_s, m_date);
    form->addRow(u"Time:"_s, m_time);
    form->addRow(u"Meal:"_s, m_meal);
    Content()->addStretch(1);
    m_date->setFocus();
}

CDietPlace CDietMoveDialog::GetPlace() const {
    return {ToFileTime(m_date->date(), m_time->time()), m_meal->currentIndex()};
}
