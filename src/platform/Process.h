// What both programs set up first, and checks of their command lines.
#pragma once

#include <sys/types.h>

#include <QString>
#include <optional>

/// Makes files and folders created from now on private to the user, and lets a write past the
/// file size limit fail instead of ending the program.
void PrepareProcess();

/// Restores the user's own umask while it lives: for files that are made to be shared.
class CUserUmask {
  public:
    CUserUmask();
    ~CUserUmask();
    CUserUmask(const CUserUmask&) = delete;
    CUserUmask& operator=(const CUserUmask&) = delete;

  private:
    mode_t m_before;
};

/// The first argument of a command line that is not valid UTF-8, with bytes that are not printable
/// ASCII shown as "\xff"; nothing when all are valid. Decoded, it would name another file.
std::optional<QString> FirstUndecodableWord(int argc, const char* const argv[]);
/// Whether a decoded path came from bytes that are not valid UTF-8.
bool HasLostBytes(const QString& path);
