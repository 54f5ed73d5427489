// Notices when another program replaces the open volume or writes into it: a sync client, a
// restored backup.
#pragma once

#include <sqlite3.h>

#include <QByteArray>

#include "store/engine/FileStamp.h"
#include "store/engine/VolumeState.h"

/// While attached it sits between SQLite and its file. Once another program has written to the
/// file, nothing is read from it or written to it any more.
class CVolumeWatch {
  public:
    CVolumeWatch() = default;
    ~CVolumeWatch() { Detach(); }
    CVolumeWatch(const CVolumeWatch&) = delete;
    CVolumeWatch& operator=(const CVolumeWatch&) = delete;

    /// `file` is SQLite's own, open and locked; `path` is where it was opened.
    void Attach(sqlite3_file* file, const QByteArray& path);
    /// Call before SQLite closes the file. Returns the result of a last Look; Sound when nothing
    /// was attached.
    EVolumeState Detach();

    /// Compares the file at the path with the stamp. Reads and writes of pages do so too.
    EVolumeState Look();
    /// As of the last look.
    [[nodiscard]] EVolumeState GetState() const { return m_state; }
    /// When the content shows that the file was overwritten, though the stamp does not.
    void SetOverwritten() { m_state = EVolumeState::Overwritten; }

  private:
    struct CMethods : sqlite3_io_methods {
        const sqlite3_io_methods* original = nullptr;
        CVolumeWatch* watch = nullptr;
    };
    static const CMethods& MethodsOf(sqlite3_file* file);
    static int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset);
    static int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset);
    static int Truncate(sqlite3_file* file, sqlite3_int64 size);
    [[nodiscard]] bool IsOverwritten() { return Look() == EVolumeState::Overwritten; }
    void TakeStamp();

    sqlite3_file* m_file = nullptr;
    CMethods m_methods{};
    QByteArray m_path;
    CFileStamp m_stamp;  ///< as our last write left it
    EVolumeState m_state = EVolumeState::Sound;
};
