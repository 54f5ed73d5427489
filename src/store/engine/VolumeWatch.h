// Notices when somebody else puts a file in the open volume's place or writes into it: a sync
// client, a restored back-up.
#pragma once

#include <sqlite3.h>

#include <QByteArray>

#include "store/engine/FileStamp.h"
#include "store/engine/VolumeState.h"

/// Stands between SQLite and its file while attached. From the moment at which the file has been
/// written by somebody else, not a byte is read from it or written to it.
class CVolumeWatch {
  public:
    CVolumeWatch() = default;
    ~CVolumeWatch() { Detach(); }
    CVolumeWatch(const CVolumeWatch&) = delete;
    CVolumeWatch& operator=(const CVolumeWatch&) = delete;

    /// `file` is SQLite's own, open and locked, and was found under `path`.
    void Attach(sqlite3_file* file, const QByteArray& path);
    /// Must come before SQLite closes the file. A last look says what had become of it; Sound when
    /// nothing was attached.
    EVolumeState Detach();

    /// Looks at the path. The reads and writes of pages look for themselves whether the file was
    /// overwritten.
    EVolumeState Look();
    /// As of the last look.
    [[nodiscard]] EVolumeState GetState() const { return m_state; }
    /// For content that is not ours though nothing else shows it.
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
