// One command, one unit of work.
#pragma once

#include <functional>

class CRecordStore;

/// Runs all writes of a command as one unit of work: after a crash they are all there or none is.
///
/// `run` writes record by record, stops or continues at a failure as its command requires, and
/// returns whether everything succeeded; it resets its own counts at each call. When the unit
/// fails, it is undone and `run` is called again without one, so that each record that can be
/// written stays written. Only this second call shows messages. Returns what the last call
/// returned.
bool RunAsUnit(CRecordStore& store, const std::function<bool()>& run);
