#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace daylark {

/// What a later program tells the first one, as bytes on a socket: a length of four bytes, then so many. Read as a
/// stranger's: nothing is made room for that isn't there, and what is not whole to the last byte is none. Values; any thread.
struct HandOverMessage {
    static constexpr quint32 longest = 16 << 20; ///< bytes; nothing longer is listened to
    static constexpr qsizetype lengthSize = 4;

    QByteArray identity; ///< another one for each message
    QStringList paths;
    QByteArray activationToken; ///< a desktop's leave to come to the front; may be empty

    [[nodiscard]] QByteArray bytes() const;
    /// Of what follows the first four bytes.
    [[nodiscard]] static quint32 lengthOf(QByteArrayView head);
    [[nodiscard]] static std::optional<HandOverMessage> read(const QByteArray& body);
    bool operator==(const HandOverMessage&) const = default;
};

} // namespace daylark
