#include "catalogue/exchange/CategoryPictures.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 kFileHeaderBytes = 14;

bool StaysInFolder(const QString& name) {
    return !name.contains(u'/') && !name.contains(u'\\') && !name.contains(QChar(u'\0')) &&
           !name.contains(u".."_s);
}

/// The picture as it is stored: without the file header, but with as many zero bytes at its end.
QByteArray ReadPicture(const QString& path) {
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > kLargestPictureBytes || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray block = file.read(kLargestPictureBytes);
    if (block.size() < kFileHeaderBytes || !block.startsWith("BM")) {
        return {};
    }
    block.remove(0, kFileHeaderBytes);
    block.append(kFileHeaderBytes, '\0');
    return block;
}
}  // namespace

void ReadCategoryPictures(const QString& folder, CCategory& category) {
    const QString name = category.GetName();
    if (!StaysInFolder(name)) {
        return;
    }
    category.SetLargePicture(ReadPicture(folder + name + u"_L.bmp"_s));
    category.SetSmallPicture(ReadPicture(folder + name + u"_S.bmp"_s));
}
