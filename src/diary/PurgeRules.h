// Purge: removes diary entries between two days.
#pragma once

#include <functional>

#include "app/VelmoraDoc.h"

struct CPurgeRequest {
    QDate begin;  ///< first day to remove
    QDate end;    ///< last day to remove
    bool diet = false;
    bool weights = false;
    bool exercises = false;
};

/// Asks, removes the requested entries and shows the totals. `changed` is called between the
/// removal and the totals. False when the answer was No or an entry could not be removed; such an
/// entry shows its message and still counts in the totals.
///
/// Of adjacent entries one purge removes only every other one: the walk over a diary skips the
/// entry that moves to a removed one's position. A further purge removes more.
bool PurgeDiaries(CDatabase& database, const CPurgeRequest& request,
                  const std::function<void()>& changed = {});
