#include "catalogue/view/CategoryPickDialog.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "controls/ReportList.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

CCategoryPickDialog::CCategoryPickDialog(const QString& title,
                                         std::vector<CCategoryEntry> categories, QWidget* parent)
    : CDialog(title, parent),
      m_categories(std::move(categories)),
      m_list(new CReportList(u"Categories"_s)) {
    auto* label = new QLabel(title);
    label->setWordWrap(true);
    label->setBuddy(m_list);
    Content()->addWidget(label);
    m_list->setObjectName(u"targets"_s);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->SetColumn(u"Category"_s);
    m_list->SetRows({static_cast<int>(m_categories.size()),
                     [this](int row, int) { return m_categories[static_cast<size_t>(row)].name; }});
    m_list->SelectRow(0);
    connect(m_list, &QAbstractItemView::activated, this, &QDialog::accept);
    Content()->addWidget(m_list, 1);
    m_list->setFocus();
    SetPreferredSize(320, 360);
}

const CCategoryEntry& CCategoryPickDialog::GetCategory() const {
    return m_categories[static_cast<size_t>(m_list->currentIndex().row())];
}

bool CCategoryPickDialog::Confirm() {
    if (m_list->SelectedRows().empty()) {
        ShowMessage(u"Please select category."_s);
        return false;
    }
    return true;
}
