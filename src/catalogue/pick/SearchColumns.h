// The columns of a list of matches.
#pragma once

#include <QStringList>
#include <vector>

#include "controls/ReportList.h"

/// `titles` are those of SearchTitles. Narrow lists have little room for the category.
inline std::vector<CReportColumn> SearchColumns(const QStringList& titles) {
    constexpr int kLeastCategoryWidth = 44;
    return {{.title = titles[0], .share = 4},
            {.title = titles[1], .least = kLeastCategoryWidth},
            {.title = titles[2], .kind = CReportColumn::EKind::Number, .share = 0}};
}
