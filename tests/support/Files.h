// Files that tests write, read and run out of room for.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <QFile>
#include <QTest>
#include <csignal>
#include <functional>

using namespace Qt::StringLiterals;

inline void Save(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Empty when there is no such file.
inline QByteArray Load(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Without the superuser's right to read and write every file.
inline void AsNobody(const std::function<void()>& run) {
    constexpr uid_t kNobody = 65534;
    const uid_t user = ::geteuid();
    QVERIFY(user != 0 || ::seteuid(kNobody) == 0);
    run();
    QCOMPARE(::seteuid(user), 0);
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
