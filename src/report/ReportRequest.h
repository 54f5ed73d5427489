// The options of a report.
#pragma once

#include <QDate>

enum EReportType : int { kReportDiet = 1, kReportWeight = 2, kReportExercises = 4 };
inline constexpr int kReportAll = kReportDiet | kReportWeight | kReportExercises;

/// The codes are the rows of the dialog's list.
enum class EReportGrouping : int { Date = 0, Type = 1 };

struct CReportRequest {
    QDate from;              ///< first day
    QDate to;                ///< last day
    int types = kReportAll;  ///< bits of EReportType
    EReportGrouping grouping = EReportGrouping::Date;

    [[nodiscard]] bool Has(EReportType type) const { return (types & type) != 0; }
};
