// Files that tests write, read and run out of room for.
#pragma once

#include <sys/resource.h>

#include <QFile>
#include <QTest>
#include <csignal>

inline void Save(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Empty when there is no such file.
inline QByteArray Load(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// While it lives, this process writes no file past so many bytes.
class CFileSizeLimit {
  public:
    explicit CFileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{bytes, m_before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~CFileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }
    CFileSizeLimit(const CFileSizeLimit&) = delete;
    CFileSizeLimit& operator=(const CFileSizeLimit&) = delete;

  private:
    rlimit m_before{};
};
