#include "store/engine/VolumeIdentity.h"

#include <QRandomGenerator>
#include <QtEndian>
#include <algorithm>

namespace {
constexpr std::array<char, 16> kMarker = {'\x9A', 'V', '\x1D', 'l', 'm', '\xE3', 'r',    'a',
                                          '\x07', 'i', '\xF0', 'd', 'n', '\x84', '\x3B', '\xC6'};
// Offsets in the row; numbers are little-endian.
constexpr int kVolumeAt = 16;
constexpr int kGenerationAt = 32;
constexpr int kNonceAt = 40;
constexpr int kPreviousNonceAt = 48;
constexpr int kSize = 56;
}  // namespace

CVolumeIdentity CVolumeIdentity::Create() {
    CVolumeIdentity identity;
    QRandomGenerator* random = QRandomGenerator::system();
    std::ranges::generate(identity.volume,
                          [random] { return static_cast<char>(random->bounded(256)); });
    identity.nonce = random->generate64();
    return identity;
}

CVolumeIdentity CVolumeIdentity::Next() const {
    CVolumeIdentity next = *this;
    ++next.generation;
    next.previousNonce = nonce;
    next.nonce = QRandomGenerator::system()->generate64();
    return next;
}

bool CVolumeIdentity::IsNextOf(const CVolumeIdentity& before) const {
    return volume == before.volume && generation == before.generation + 1 &&
           previousNonce == before.nonce;
}

QByteArray CVolumeIdentity::ToBytes() const {
    QByteArray bytes(kSize, Qt::Uninitialized);
    char* row = bytes.data();
    std::ranges::copy(kMarker, row);
    std::ranges::copy(volume, row + kVolumeAt);
    qToLittleEndian(generation, row + kGenerationAt);
    qToLittleEndian(nonce, row + kNonceAt);
    qToLittleEndian(previousNonce, row + kPreviousNonceAt);
    return bytes;
}

std::optional<CVolumeIdentity> CVolumeIdentity::FindIn(QByteArrayView bytes) {
    const qsizetype place = bytes.indexOf(QByteArrayView(kMarker));
    if (place < 0 || place + kSize > bytes.size()) {
        return std::nullopt;
    }
    const char* row = bytes.data() + place;
    CVolumeIdentity identity;
    std::copy_n(row + kVolumeAt, identity.volume.size(), identity.volume.begin());
    identity.generation = qFromLittleEndian<quint64>(row + kGenerationAt);
    identity.nonce = qFromLittleEndian<quint64>(row + kNonceAt);
    identity.previousNonce = qFromLittleEndian<quint64>(row + kPreviousNonceAt);
    return identity;
}
