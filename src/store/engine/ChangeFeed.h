// Passes every change of a record to those who keep something derived from the records: the
// history, counts of use, an index in memory.
#pragma once

#include <QByteArrayView>
#include <vector>

#include "store/engine/PlatformError.h"

/// What a record is on one side of a change. The bytes are valid during the call.
struct CRecordState {
    bool exists = false;
    QByteArrayView body;  ///< stored form, see RecordCodec.h
    qint64 key = 0;
    int ordinal = kLast;  ///< before a change: its place among those of the same key

    static constexpr int kLast = -1;  ///< after all records of the same key
};

/// A record that is added has no state before, a deleted one none after.
struct CRecordChange {
    qint64 database = 0;
    qint64 record = 0;
    CRecordState before;
    CRecordState after;
};

/// Lives longer than the volume is mounted, or removes itself from the feed.
class CChangeListener {
  public:
    virtual ~CChangeListener() = default;
    /// Only changes of watched databases are reported.
    [[nodiscard]] virtual bool Watches(qint64 database) const = 0;
    /// Within the unit of work; a failure undoes the unit.
    virtual EPlatformError RecordChanged(const CRecordChange& change) = 0;
    /// The database is deleted with all its records, which are not reported one by one.
    virtual EPlatformError DatabaseDeleted(qint64 /*database*/) { return kErrorSuccess; }
    /// A command begins; no unit of work is under way.
    virtual void StepBegins() {}
    /// Before a unit of work begins its transaction; a failure fails the unit.
    virtual EPlatformError UnitBegins() { return kErrorSuccess; }
    /// Before the unit is committed; the last chance to write into the file.
    virtual EPlatformError UnitEnds() { return kErrorSuccess; }
    virtual void UnitCommitted() {}
    /// Everything reported since the last commit is undone. Also called when the volume is
    /// unmounted; the listener releases its statements then.
    virtual void UnitAbandoned() {}
};

/// The listeners of one engine, called in the order in which they were added.
class CChangeFeed {
  public:
    void Add(CChangeListener* listener) { m_listeners.push_back(listener); }
    void Remove(CChangeListener* listener) { std::erase(m_listeners, listener); }

    [[nodiscard]] bool IsWatched(qint64 database) const;
    EPlatformError Report(const CRecordChange& change) const;
    EPlatformError ReportDeletedDatabase(qint64 database) const;
    void NoteStep() const;
    [[nodiscard]] EPlatformError BeginUnit() const;
    EPlatformError EndUnit() const;
    void NoteCommit() const;
    void NoteAbandonment() const;

  private:
    std::vector<CChangeListener*> m_listeners;  ///< not owned
};
