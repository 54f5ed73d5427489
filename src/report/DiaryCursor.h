// Reads a diary once from front to back, one period after another.
#pragma once

#include <limits>
#include <utility>
#include <variant>

#include "store/Database.h"

/// The diary must not change while a cursor is in use.
template <typename Entry>
class CDiaryCursor {
  public:
    /// For the entries from `first` to `last`, both inclusive.
    CDiaryCursor(CItemDatabase<Entry>& diary, QDate first, QDate last)
        : m_diary(diary), m_from(FirstMomentOf(first)) {
        const auto range = diary.RangeBetween(m_from, LastMomentOf(last));
        m_position = range ? range->first : 0;
        m_end = range ? range->first + range->count : diary.Count();
        m_nextMoment = m_position < m_end ? m_from : kEnd;
        m_leftOut.isUnknown = !range;
    }

    /// Passes the entries up to and including `day` to `take(const Entry&)` and moves past them.
    /// A record with a wrong number of properties shows its message and ends the day, as in every
    /// list of a day; any other damaged one is skipped.
    template <typename Take>
    void ReadUpTo(QDate day, Take take) {
        const FileTime last = LastMomentOf(day);
        const FileTime from = std::exchange(m_from, last + 1);
        if (m_nextMoment > last) {
            return;
        }
        m_nextMoment = kEnd;
        bool isOver = false;
        m_diary.ForEachFrom(m_position, [&](int position, PropertyList& properties) {
            if (position >= m_end) {
                return false;
            }
            m_leftOut.damaged += position - m_position;  // skipped positions cannot be read
            m_position = position;
            const auto* moment =
                properties.empty() ? nullptr : std::get_if<FileTime>(&properties.front());
            const bool isInStretch = moment != nullptr && *moment >= from && *moment <= last;
            const FileTime key = isInStretch ? *moment : m_diary.KeyAt(position).value_or(from);
            if (key > last) {
                m_nextMoment = key;
                return false;
            }
            ++m_position;
            if (key < from) {
                return true;  // without a range, reading starts at the first record
            }
            if (isOver) {
                ++m_leftOut.beyond;
                return true;
            }
            isOver = !IsWhole(position, properties);
            if (!isOver && isInStretch && m_entry.SetProperties(std::move(properties))) {
                take(m_entry);
            } else {
                ++m_leftOut.damaged;
            }
            return true;
        });
        if (m_nextMoment == kEnd) {
            m_leftOut.damaged += m_end - m_position;
        }
    }

    /// Of the periods read so far.
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_leftOut; }

  private:
    static constexpr FileTime kEnd = std::numeric_limits<FileTime>::max();

    /// False after the message of a wrong number of properties.
    bool IsWhole(int position, const PropertyList& properties) {
        const int expected = m_diary.GetLayout().Count();
        if (std::ssize(properties) == expected) {
            return true;
        }
        ReportWrongPropertyCount(position, properties, expected);
        m_leftOut.isEnded = true;
        return false;
    }

    CItemDatabase<Entry>& m_diary;
    FileTime m_from;  ///< start of the next period
    int m_position;
    int m_end;
    FileTime m_nextMoment;  ///< no unread entry is earlier; kEnd when none is left
    Entry m_entry;
    CLeftOut m_leftOut;
};
