#include "diary/EntryClipboard.h"

#include <QDataStream>
#include <QIODevice>

#include "store/engine/RecordCodec.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kMimeType = "application/x-velmora-diet-entries"_L1;
}

std::unique_ptr<QMimeData> MimeOfEntries(const std::vector<CDietEntry>& entries,
                                         const QString& text) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QByteArray body;
    for (const CDietEntry& entry : entries) {
        EncodeRecord(entry.GetProperties(), body);
        stream << body;
    }
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    data->setData(kMimeType, bytes);
    return data;
}

std::vector<CDietEntry> EntriesOfMime(const QMimeData& data) {
    std::vector<CDietEntry> entries;
    QDataStream stream(data.data(kMimeType));
    while (!stream.atEnd()) {
        QByteArray body;
        stream >> body;
        PropertyList properties;
        CDietEntry entry;
        if (stream.status() != QDataStream::Ok || !DecodeRecord(body, properties) ||
            !entry.SetProperties(std::move(properties))) {
            return {};
        }
        // Another program may have put infinite values there.
        entry.SetAmount(entry.GetAmount());
        entry.SetNutrientValues(entry.GetNutrientValues());
        entries.push_back(std::move(entry));
    }
    return entries;
}
