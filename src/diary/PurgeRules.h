// Purge: removes diary entries between two days.
#pragma once

#include <functional>

#include "app/VelmoraDoc.h"

struct CPurgeRequest {
    QDate begin;  ///< first day that goes
    QDate end;    ///< last day that goes
    bool diet = false;
    bool weights = false;
    bool exercises = false;
};

/// Asks, removes what the request names and shows the totals. `changed` is called between the
/// removal and the totals. False when the answer was No or an entry could not be removed, which
/// has shown its message and counts in the totals all the same.
///
/// One purge leaves every second one of adjacent entries behind: the walk over a diary goes on
/// past the entry that moves into a removed one's place. A further purge takes those.
bool PurgeDiaries(CDatabase& database, const CPurgeRequest& request,
                  const std::function<void()>& changed = {});
