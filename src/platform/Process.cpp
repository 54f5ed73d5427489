#include "platform/Process.h"

#include <sys/stat.h>

#include <QFile>
#include <csignal>

namespace {
constexpr mode_t kOwnerOnly = S_IRWXG | S_IRWXO;
mode_t userUmask = kOwnerOnly;  ///< the user's own from PrepareProcess on
}  // namespace

void PrepareProcess() {
    userUmask = umask(kOwnerOnly);
    std::signal(SIGXFSZ, SIG_IGN);
}

CUserUmask::CUserUmask() : m_before(umask(userUmask)) {}

CUserUmask::~CUserUmask() {
    umask(m_before);
}

std::optional<QString> FirstUndecodableWord(int argc, const char* const argv[]) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray word(argv[i]);
        if (QFile::encodeName(QFile::decodeName(word)) == word) {
            continue;
        }
        QString shown;
        for (const char byte : word) {
            const auto code = static_cast<uchar>(byte);
            shown += code >= 0x20 && code < 0x7F
                         ? QString(QLatin1Char(byte))
                         : QStringLiteral("\\x%1").arg(int{code}, 2, 16, QLatin1Char('0'));
        }
        return shown;
    }
    return std::nullopt;
}

bool HasLostBytes(const QString& path) {
    return path.contains(QChar::ReplacementCharacter);
}
