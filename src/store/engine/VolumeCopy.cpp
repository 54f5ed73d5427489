#include "store/engine/VolumeCopy.h"

#include "store/engine/Statement.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
constexpr char kCounts[] =
    "SELECT count(*) FROM records UNION ALL SELECT count(*) FROM databases "
    "UNION ALL SELECT * FROM (SELECT sum(count) FROM blocks GROUP BY database ORDER BY database)";

EPlatformError ReadCounts(CSqliteFile& file, std::vector<qint64>& counts) {
    CStatement read;
    if (const EPlatformError error = read.Prepare(file, kCounts); error != kErrorSuccess) {
        return error;
    }
    read.Start({});
    while (read.Next()) {
        counts.push_back(read.GetInteger(0));
    }
    return read.Finish();
}

/// kErrorInputOutput when the copy's content differs from the volume's.
EPlatformError Compare(CSqliteFile& volume, const QString& copyPath, const CopyProgress& progress) {
    CSqliteFile copy;
    std::vector<qint64> wanted;
    std::vector<qint64> found;
    EPlatformError error = copy.Open(copyPath, volume.GetVersion());
    if (error == kErrorSuccess) {
        error = copy.CheckIntegrity(progress);  // nothing can be counted in trees without an end
    }
    if (error == kErrorSuccess) {
        error = ReadCounts(copy, found);
    }
    if (error == kErrorSuccess) {
        error = ReadCounts(volume, wanted);
    }
    return error == kErrorSuccess && found != wanted ? kErrorInputOutput : error;
}

/// The file to replace: where a link leads to, which may be another disk.
EPlatformError FindTarget(const QString& path, QString& target) {
    const QFileInfo file(path);
    if (file.exists() ? !file.isFile() : file.isSymLink()) {
        return kErrorAccessDenied;
    }
    target = file.isSymLink() ? file.canonicalFilePath() : path;
    return kErrorSuccess;
}

/// Reserves a name beside `path` that nothing has.
EPlatformError CreatePart(const QString& path, QString& part) {
    part = path + u".part"_s;
    EPlatformError error = CreatePrivateFile(QFile::encodeName(part));
    for (int n = 1; error == kErrorAlreadyExists; ++n) {
        part = path + u".part-%1"_s.arg(n);
        error = CreatePrivateFile(QFile::encodeName(part));
    }
    return error == kErrorFileNotFound ? kErrorAccessDenied : error;  // there is no such folder
}
}  // namespace

EPlatformError SaveVolumeCopy(CSqliteFile& volume, const QString& path, EDamagedCopy damaged,
                              const CopyProgress& progress) {
    QString part;
    QString targetPath;
    EPlatformError error = FindTarget(path, targetPath);
    if (error == kErrorSuccess) {
        error = CreatePart(targetPath, part);
    }
    if (error != kErrorSuccess) {
        return error;
    }
    error = volume.CopyTo(part, progress);
    if (error == kErrorSuccess) {
        error = Compare(volume, part, progress);
    }
    const bool isKept =
        error == kErrorSuccess || (error == kErrorCorrupt && damaged == EDamagedCopy::Kept);
    const QByteArray target = QFile::encodeName(targetPath);
    // A rename replaces an existing file in one step.
    if (isKept && std::rename(QFile::encodeName(part).constData(), target.constData()) != 0) {
        error = LastFileError();
    }
    if (error == kErrorSuccess && SyncFolderOf(target) != kErrorSuccess) {
        error = kErrorWriteFault;
    }
    QFile::remove(part);  // only there when something failed
    return error;
}
