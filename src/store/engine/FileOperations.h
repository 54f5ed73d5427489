// Steps with whole files that survive a loss of power.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <functional>

#include "store/engine/PlatformError.h"

/// Called now and then during a long copy or check with what is done of how much; false cancels it,
/// which fails with kErrorOperationAborted.
using CopyProgress = std::function<bool(qint64 done, qint64 total)>;

/// The platform number of the system call that has just failed.
EPlatformError LastFileError();
/// Creates a folder with its parents. Returns the missing ones, the innermost first; whether they
/// could be created shows when they are used.
QStringList CreateFolders(const QString& path);
/// Removes those that are empty.
void RemoveFolders(const QStringList& folders);
/// Makes renames and links in the folder of `path` durable.
EPlatformError SyncFolderOf(const QByteArray& path);
/// Creates an empty file that only its owner can read; fails when there is one of that name.
EPlatformError CreatePrivateFile(const QByteArray& path);
/// Copies the bytes of a file into an empty one, and syncs it. After a failure that is removed.
EPlatformError CopyFileBytes(const QByteArray& from, const QByteArray& to,
                             const CopyProgress& progress = {});
