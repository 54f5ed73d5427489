#include "catalogue/share/ShareReader.h"

#include <QFile>
#include <algorithm>
#include <set>

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/share/SharedRecord.h"
#include "store/engine/RecordCodec.h"

namespace {
/// The whole file. A large one is refused for what it is before it is refused for its size.
EPlatformError ReadFile(const QString& path, QByteArray& bytes) {
    QFile file(path);
    if (const EPlatformError error = OpenJudged(file, kShareFileKind); error != kErrorSuccess) {
        return error;
    }
    const qint64 size = file.size();
    if (size > kMostShareBytes) {
        return kErrorInvalidParameter;
    }
    bytes = file.read(size);  // not what it may have grown by
    return file.error() == QFileDevice::NoError ? kErrorSuccess : kErrorInputOutput;
}

bool IsNumbered(const CShareStatement& row, qint64 number) {
    return row.Integer(0) == number;
}
}  // namespace

EPlatformError CShareReader::Open(const QString& path) {
    QByteArray bytes;
    EPlatformError error = ReadFile(path, bytes);
    if (error == kErrorSuccess) {
        error = m_image.Open(std::move(bytes));
    }
    if (error == kErrorSuccess) {
        error = ReadContents();
    }
    return error == kErrorSuccess ? ReadCategories() : error;
}

EPlatformError CShareReader::ReadContents() {
    CShareStatement row(m_image, "SELECT categories,items,components,checksum FROM contents");
    if (!row.Next()) {
        return kErrorCorrupt;
    }
    const std::optional<qint64> checksum = row.Integer(3);
    m_stored = {row.Integer(0).value_or(-1), row.Integer(1).value_or(-1),
                row.Integer(2).value_or(-1), static_cast<quint64>(checksum.value_or(0))};
    const bool isSound =
        checksum && std::min({m_stored.categories, m_stored.items, m_stored.components}) >= 0 &&
        !row.Next() && row.GetError() == kErrorSuccess;
    if (!isSound) {
        return kErrorCorrupt;
    }
    return IsWithinLimits(m_stored) ? kErrorSuccess : kErrorInvalidParameter;
}

EPlatformError CShareReader::ReadCategories() {
    CShareStatement row(m_image, "SELECT id,body FROM categories ORDER BY id");
    std::set<std::pair<ECatalogueKind, QString>> names;
    PropertyList properties;
    while (row.Next()) {
        const std::optional<QByteArrayView> body = row.Blob(1);
        if (!IsNumbered(row, ++m_read.categories) || m_read.categories > m_stored.categories ||
            !body || !DecodeRecord(*body, properties) || !IsShareableCategory(properties)) {
            return kErrorCorrupt;
        }
        m_categoriesChecksum.Add({}, *body);
        CCategory& category = m_categories.emplace_back();
        (void)category.SetProperties(std::move(properties));  // has been checked
        if (!names.emplace(category.GetKind(), category.GetName()).second) {
            return kErrorCorrupt;
        }
    }
    const EPlatformError error = row.GetError();
    return error == kErrorSuccess && m_read.categories != m_stored.categories ? kErrorCorrupt
                                                                              : error;
}

EPlatformError CShareReader::ReadItems(const CShareTaker& take) {
    m_read = {.categories = m_read.categories};
    m_itemsChecksum = {};
    m_kinds.clear();
    CShareStatement itemRow(m_image, "SELECT id,category,body FROM items ORDER BY id");
    CShareStatement componentRow(m_image, "SELECT id,owner,item,body FROM components ORDER BY id");
    (void)componentRow.Next();  // a failure is found at the end, here and below
    while (itemRow.Next()) {
        if (!ReadItem(itemRow)) {
            return kErrorCorrupt;
        }
        if (!take.item(m_item)) {
            return kErrorOperationAborted;
        }
        for (; componentRow.Integer(1) == m_item.number; (void)componentRow.Next()) {
            if (!ReadComponent(componentRow)) {
                return kErrorCorrupt;
            }
            if (!take.component(m_component)) {
                return kErrorOperationAborted;
            }
        }
    }
    for (const EPlatformError error : {itemRow.GetError(), componentRow.GetError()}) {
        if (error != kErrorSuccess) {
            return error;
        }
    }
    // A component that belongs to no item has not been read, so the counts differ.
    m_read.checksum = ChecksumWith(m_categoriesChecksum.Value(), m_itemsChecksum.Value());
    return m_read == m_stored ? kErrorSuccess : kErrorCorrupt;
}

bool CShareReader::ReadItem(CShareStatement& row) {
    const qint64 category = row.Integer(1).value_or(0);
    const std::optional<QByteArrayView> body = row.Blob(2);
    if (!IsNumbered(row, ++m_read.items) || m_read.items > m_stored.items || category < 1 ||
        category > m_stored.categories || !body || !DecodeRecord(*body, m_item.record)) {
        return false;
    }
    m_itemsChecksum.Add({category}, *body);
    m_item.number = static_cast<int>(m_read.items);
    m_item.category = static_cast<int>(category) - 1;
    m_item.kind = m_categories[static_cast<std::size_t>(m_item.category)].GetKind();
    m_kinds.push_back(m_item.kind);
    return IsShareableItem(m_item.kind, m_item.record);
}

bool CShareReader::ReadComponent(CShareStatement& row) {
    const qint64 item = row.Integer(2).value_or(-1);
    const std::optional<QByteArrayView> body = row.Blob(3);
    if (!IsNumbered(row, ++m_read.components) || m_read.components > m_stored.components ||
        item < 0 || item >= m_item.number || !body || !DecodeRecord(*body, m_component.record) ||
        !IsShareableComponent(m_item.kind, m_component.record)) {
        return false;
    }
    m_itemsChecksum.Add({m_item.number, item}, *body);
    m_component.item = static_cast<int>(item);
    return item == 0 || KindOf(m_kinds[static_cast<std::size_t>(item) - 1]).itemKind ==
                            KindOfComponent(m_component.record);
}
