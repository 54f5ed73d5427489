#include "store/search/UseKey.h"

#include <QHash>

#include "platform/CutText.h"
#include "store/records/RecordLayout.h"

namespace {
/// As a diary entry stores it: the dialog trims, the record cuts. Trimming again makes the stored
/// text and the item's give the same.
QStringView StoredText(QStringView text) {
    return CutText(text.trimmed(), kShortText).trimmed();
}
}  // namespace

ItemUseKey CategoryUseKey(ECatalogueKind kind, QStringView category) {
    return qHash(StoredText(category), static_cast<std::size_t>(kind) + 1);
}

ItemUseKey NameUseKey(QStringView name, QStringView type) {
    return qHash(StoredText(type), qHash(StoredText(name), 1));
}

ItemUseKey JoinUseKeys(ItemUseKey category, ItemUseKey name) {
    return qHashMulti(std::size_t{0}, category, name);
}

ItemUseKey UseKeyOf(ECatalogueKind kind, QStringView category, QStringView name, QStringView type) {
    return JoinUseKeys(CategoryUseKey(kind, category), NameUseKey(name, type));
}
