// Which volume a file is, and in which generation: this ties a journal to its volume.
#pragma once

#include <QByteArray>
#include <array>
#include <optional>

/// The only row of the table `identity`. Its bytes begin with a marker and have a fixed length, so
/// that the row can be found in a raw page.
struct CVolumeIdentity {
    std::array<char, 16> volume{};  ///< random, for the life of the volume and of its copies
    quint64 generation = 0;         ///< counts the transactions that write it
    quint64 nonce = 0;              ///< random, per generation
    quint64 previousNonce = 0;      ///< nonce of the previous generation
    bool operator==(const CVolumeIdentity&) const = default;

    static CVolumeIdentity Create();
    /// The identity that the next unit of work stores.
    [[nodiscard]] CVolumeIdentity Next() const;
    [[nodiscard]] bool IsNextOf(const CVolumeIdentity& before) const;

    [[nodiscard]] QByteArray ToBytes() const;
    /// The first row within `bytes`.
    static std::optional<CVolumeIdentity> FindIn(QByteArrayView bytes);
};
