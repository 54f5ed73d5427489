// What both programs set up before anything else, and how their words arrive.
#pragma once

#include <sys/types.h>

#include <QString>
#include <optional>

/// From now on new files and folders are the user's alone, and a write past a limit on file sizes
/// fails instead of ending the program.
void PrepareProcess();

/// While it lives new files get what the user's own mask allows: for files made to be passed on.
class CUsersFileMask {
  public:
    CUsersFileMask();
    ~CUsersFileMask();
    CUsersFileMask(const CUsersFileMask&) = delete;
    CUsersFileMask& operator=(const CUsersFileMask&) = delete;

  private:
    mode_t m_before;
};

/// The first word of a command line that is no UTF-8 text, with the bytes that are not printable
/// ASCII as "\xff"; nothing when there is none. Decoded, such a word would name another file.
std::optional<QString> FirstUndecodableWord(int argc, const char* const argv[]);
/// Whether a path held bytes that are no UTF-8 text before it was decoded.
bool HasLostBytes(const QString& path);
