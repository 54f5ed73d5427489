#include "catalogue/share/ShareTexts.h"

#include <QStringList>

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/share/ShareFormat.h"
#include "platform/Messages.h"
#include "store/VolumeTexts.h"

using namespace Qt::StringLiterals;

namespace {
QString LimitsText() {
    return FormatText(
        "a share file has at most %s, %s, %s and %d MB."_L1,
        {CountText(kMostSharedCategories, kCategoryWords), CountText(kMostSharedItems, kItemWords),
         CountText(kMostSharedComponents, kComponentWords), kMostShareBytes >> 20U});
}
}  // namespace

QString CountsText(const CKindCounts& counts) {
    QStringList texts;
    for (const CCatalogueKind& kind : CatalogueKinds()) {
        if (const int count = counts.at(static_cast<std::size_t>(kind.code)); count > 0) {
            texts.append(CountText(count, kind.words));
        }
    }
    if (texts.isEmpty()) {
        return u"nothing"_s;
    }
    const QString last = texts.takeLast();
    return texts.isEmpty() ? last : texts.join(u", "_s) + u" and "_s + last;
}

QString TakeInRefusalText(EPlatformError error, const QString& path) {
    switch (error) {
        case kErrorBadFormat:
            return FormatText("The file '%s' is not a share file of Velmora."_L1, {path});
        case kErrorFileNotFound:
        case kErrorAccessDenied:
            return FormatText("The file '%s' cannot be read."_L1, {path});
        case kErrorNewerVersion:
            return FormatText("The file '%s' was made by a newer version of Velmora."_L1, {path});
        case kErrorInvalidParameter:
            return FormatText("The file '%s' is too large: "_L1, {path}) + LimitsText();
        default:
            return RefusalText(error, path);
    }
}

QString ShareRefusalText(EPlatformError error, const QString& path) {
    return error == kErrorInvalidParameter ? u"This is too much to share: "_s + LimitsText()
                                           : RefusalText(error, path);
}
