#include "store/engine/Checksum.h"

#include <QtEndian>
#include <array>
#include <bit>
#include <cstring>

namespace {
constexpr int kLanes = 4;  // independent of each other, so that a processor does them at a time
constexpr qsizetype kWord = 8;
// Odd, with about half of their bits set, without a pattern.
constexpr quint64 kMultiplier = 0x9E3779B97F4A7C15U;
constexpr quint64 kFinalMultiplier = 0xD6E8FEB86659FD93U;
constexpr int kRotation = 29;
constexpr int kHalf = 32;

quint64 Turned(quint64 lane, quint64 word) {
    return std::rotl((lane ^ word) * kMultiplier, kRotation);
}

/// Spreads every bit over all others.
quint64 Spread(quint64 value) {
    value = (value ^ (value >> kHalf)) * kFinalMultiplier;
    value = (value ^ (value >> kHalf)) * kFinalMultiplier;
    return value ^ (value >> kHalf);
}
}  // namespace

quint64 ChecksumOf(QByteArrayView bytes, quint64 seed) {
    std::array<quint64, kLanes> lanes = {seed, seed + 1, seed + 2, seed + 3};
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    for (; end - from >= kLanes * kWord; from += kLanes * kWord) {
        for (int lane = 0; lane < kLanes; ++lane) {
            lanes[lane] = Turned(lanes[lane], qFromLittleEndian<quint64>(from + lane * kWord));
        }
    }
    auto sum = static_cast<quint64>(bytes.size());
    for (const quint64 lane : lanes) {
        sum = Turned(sum, lane);
    }
    for (; end - from >= kWord; from += kWord) {
        sum = Turned(sum, qFromLittleEndian<quint64>(from));
    }
    if (from != end) {
        std::array<char, kWord> last{};
        std::memcpy(last.data(), from, end - from);
        sum = Turned(sum, qFromLittleEndian<quint64>(last.data()));
    }
    return Spread(sum);
}

quint64 ChecksumWith(quint64 checksum, quint64 number) {
    return Spread(Turned(checksum, number));
}
