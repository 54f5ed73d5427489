// Which volume a file holds, and how far it has come: what ties a journal to its volume.
#pragma once

#include <QByteArray>
#include <array>
#include <optional>

/// The one row of the table `identity`. Its bytes begin with a marker and have a fixed length, so
/// that the row is found in a raw page.
struct CVolumeIdentity {
    std::array<char, 16> volume{};  ///< random, for the life of the volume and of its copies
    quint64 generation = 0;         ///< counts the units of work
    quint64 nonce = 0;              ///< random, of this generation
    quint64 previousNonce = 0;      ///< of the generation before
    bool operator==(const CVolumeIdentity&) const = default;

    static CVolumeIdentity Create();
    /// What the next unit of work stores.
    [[nodiscard]] CVolumeIdentity Next() const;
    [[nodiscard]] bool IsNextOf(const CVolumeIdentity& before) const;

    static constexpr int kSize = 56;  ///< bytes of the row, marker included
    [[nodiscard]] QByteArray ToBytes() const;
    /// The first row within `bytes`.
    static std::optional<CVolumeIdentity> FindIn(QByteArrayView bytes);
    /// Where it begins; -1 when there is none.
    static qsizetype PlaceIn(QByteArrayView bytes);
};
