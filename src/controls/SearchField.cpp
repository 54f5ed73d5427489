#include "controls/SearchField.h"

#include <utility>

using namespace Qt::StringLiterals;

CSearchField::CSearchField(std::vector<CReportColumn> columns, Search search, QWidget* over,
                           QWidget* parent)
    : COverlayField(u"search"_s, std::move(columns), over, parent), m_search(std::move(search)) {
    setAccessibleName(u"Search"_s);
    setPlaceholderText(u"Search"_s);
}

void CSearchField::Pick(int row) {
    if (row < 0) {
        return;
    }
    Close();
    clear();
    emit Picked(row);
}
