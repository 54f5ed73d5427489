#include "store/engine/RecordCodec.h"

#include <QtEndian>
#include <bit>
#include <cstring>

namespace {
constexpr uchar kEmptyBit = 0x80;

bool IsEmpty(const PropertyValue& value) {
    return std::visit(
        [](const auto& held) {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, double>) {
                return std::bit_cast<quint64>(held) == 0;  // -0.0 is kept
            } else if constexpr (std::is_arithmetic_v<T>) {
                return held == 0;
            } else {
                return held.isEmpty();
            }
        },
        value);
}

qsizetype PayloadSize(const PropertyValue& value) {
    if (const auto* text = std::get_if<QString>(&value)) {
        return static_cast<qsizetype>(sizeof(quint32)) + text->size() * 2;
    }
    if (const auto* blob = std::get_if<QByteArray>(&value)) {
        return static_cast<qsizetype>(sizeof(quint32)) + blob->size();
    }
    return sizeof(quint64);  // the widest number
}

template <typename T>
void Put(char*& to, T value) {
    qToLittleEndian(value, to);
    to += sizeof(T);
}

void PutValue(char*& to, const PropertyValue& value) {
    if (const auto* number = std::get_if<double>(&value)) {
        Put(to, std::bit_cast<quint64>(*number));
    } else if (const auto* text = std::get_if<QString>(&value)) {
        Put(to, static_cast<quint32>(text->size()));
        qToLittleEndian<char16_t>(text->utf16(), text->size(), to);
        to += text->size() * 2;
    } else if (const auto* blob = std::get_if<QByteArray>(&value)) {
        Put(to, static_cast<quint32>(blob->size()));
        std::memcpy(to, blob->constData(), blob->size());
        to += blob->size();
    } else if (const auto* small = std::get_if<qint16>(&value)) {
        Put(to, *small);
    } else if (const auto* medium = std::get_if<qint32>(&value)) {
        Put(to, *medium);
    } else {
        Put(to, std::get<qint64>(value));
    }
}

// Takes values off the front of a body, never past its end.
class CBodyReader {
  public:
    explicit CBodyReader(QByteArrayView rest) : m_rest(rest) {}

    template <typename T>
    bool Take(T& value) {
        if (m_rest.size() < static_cast<qsizetype>(sizeof(T))) {
            return false;
        }
        value = qFromLittleEndian<T>(m_rest.data());
        m_rest = m_rest.sliced(sizeof(T));
        return true;
    }

    bool TakeBytes(qsizetype size, QByteArrayView& bytes) {
        if (m_rest.size() < size) {
            return false;
        }
        bytes = m_rest.first(size);
        m_rest = m_rest.sliced(size);
        return true;
    }

    template <typename T>
    bool TakeNumber(bool isEmpty, PropertyValue& value) {
        T number = 0;
        const bool ok = isEmpty || Take(number);
        value = number;
        return ok;
    }

    bool TakeDouble(bool isEmpty, PropertyValue& value) {
        quint64 bits = 0;
        const bool ok = isEmpty || Take(bits);
        value = std::bit_cast<double>(bits);
        return ok;
    }

    bool TakeText(bool isEmpty, PropertyValue& value) {
        quint32 units = 0;
        QByteArrayView bytes;
        if (!isEmpty && (!Take(units) || !TakeBytes(qsizetype{units} * 2, bytes))) {
            return false;
        }
        QString text(units, Qt::Uninitialized);
        if (units > 0) {
            qFromLittleEndian<char16_t>(bytes.data(), units, text.data());
        }
        value = std::move(text);
        return true;
    }

    bool TakeBlob(bool isEmpty, PropertyValue& value) {
        quint32 size = 0;
        QByteArrayView bytes;
        if (!isEmpty && (!Take(size) || !TakeBytes(size, bytes))) {
            return false;
        }
        value = bytes.toByteArray();
        return true;
    }

    bool TakeValue(uchar tag, PropertyValue& value) {
        const bool isEmpty = (tag & kEmptyBit) != 0;
        switch (static_cast<EPropertyType>(tag & ~kEmptyBit)) {
            case EPropertyType::Int16:
                return TakeNumber<qint16>(isEmpty, value);
            case EPropertyType::Int32:
                return TakeNumber<qint32>(isEmpty, value);
            case EPropertyType::Double:
                return TakeDouble(isEmpty, value);
            case EPropertyType::Text:
                return TakeText(isEmpty, value);
            case EPropertyType::FileTime:
                return TakeNumber<qint64>(isEmpty, value);
            case EPropertyType::Blob:
                return TakeBlob(isEmpty, value);
        }
        return false;
    }

    [[nodiscard]] bool IsAtEnd() const { return m_rest.isEmpty(); }

  private:
    QByteArrayView m_rest;
};
}  // namespace

void EncodeRecord(const PropertyList& properties, QByteArray& body) {
    qsizetype bound = sizeof(quint16);
    for (const PropertyValue& value : properties) {
        bound += 1 + PayloadSize(value);
    }
    body.resize(bound);
    char* tag = body.data();
    Put(tag, static_cast<quint16>(properties.size()));
    char* payload = tag + properties.size();
    for (const PropertyValue& value : properties) {
        const bool isEmpty = IsEmpty(value);
        Put(tag, static_cast<uchar>(static_cast<uchar>(TypeOf(value)) | (isEmpty ? kEmptyBit : 0)));
        if (!isEmpty) {
            PutValue(payload, value);
        }
    }
    body.truncate(payload - body.constData());
}

bool DecodeRecord(QByteArrayView body, PropertyList& properties, int most) {
    CBodyReader reader(body);
    quint16 count = 0;
    QByteArrayView tags;
    if (!reader.Take(count) || !reader.TakeBytes(count, tags)) {
        return false;
    }
    properties.resize(count);
    const int read = std::min<int>(count, most);
    for (int i = 0; i < read; ++i) {
        if (!reader.TakeValue(static_cast<uchar>(tags[i]), properties[i])) {
            return false;
        }
    }
    return read < count || reader.IsAtEnd();
}

std::optional<qint64> KeyOf(const PropertyList& properties) {
    if (properties.empty() || properties.size() > kMaximumProperties) {
        return std::nullopt;
    }
    const PropertyValue& value = properties.front();
    if (const auto* small = std::get_if<qint16>(&value)) {
        return *small;
    }
    if (const auto* medium = std::get_if<qint32>(&value)) {
        return *medium;
    }
    if (const auto* wide = std::get_if<qint64>(&value)) {
        return *wide;
    }
    return std::nullopt;
}
