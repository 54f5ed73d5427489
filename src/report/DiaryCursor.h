// Reads a diary once from front to back, a stretch of time after the other.
#pragma once

#include <limits>
#include <variant>

#include "store/Database.h"

/// The diary does not change while a cursor is on it.
template <typename Entry>
class CDiaryCursor {
  public:
    /// Stands before the first entry of `first` to `last`, both included.
    CDiaryCursor(CItemDatabase<Entry>& diary, QDate first, QDate last)
        : m_diary(diary), m_first(FirstMomentOf(first)) {
        m_position = diary.FirstPositionInRange(m_first, LastMomentOf(last));
        m_nextMoment = m_position == kNoPosition ? kEnd : m_first;
    }

    /// Hands the entries up to and including `day` to `take(const Entry&)` and stands behind them.
    /// A record with a wrong number of properties shows its message and ends the day, as in every
    /// list of a day; any other damaged one is passed over.
    template <typename Take>
    void ReadUpTo(QDate day, Take take) {
        const FileTime last = LastMomentOf(day);
        if (m_nextMoment > last) {
            return;
        }
        m_nextMoment = kEnd;
        bool isOver = false;
        m_diary.ForEachFrom(m_position, [&](int position, PropertyList& properties) {
            const auto* moment =
                properties.empty() ? nullptr : std::get_if<FileTime>(&properties.front());
            if (moment != nullptr && *moment > last) {
                m_position = position;
                m_nextMoment = *moment;
                return false;
            }
            const int expected = m_diary.GetLayout().Count();
            if (!isOver && std::ssize(properties) != expected) {
                ReportWrongPropertyCount(position, properties, expected);
                isOver = true;
            }
            if (!isOver && m_entry.SetProperties(std::move(properties)) &&
                m_entry.GetMoment() >= m_first) {
                take(m_entry);
            }
            return true;
        });
    }

  private:
    static constexpr FileTime kEnd = std::numeric_limits<FileTime>::max();

    CItemDatabase<Entry>& m_diary;
    FileTime m_first;
    int m_position;
    FileTime m_nextMoment;  ///< no entry stands before it; kEnd when there is none left
    Entry m_entry;
};
