#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace daylark {

/// Builds one binary property list. Objects are added leaves first and named by a reference; equal strings,
/// numbers and UIDs are one object. Time and memory grow linearly with what is added; data is shared, not
/// copied, until `finish`. One owner, one thread. It cannot fail. The same calls give the same bytes.
class BinaryPlistWriter {
public:
    using Ref = quint32;

    [[nodiscard]] Ref string(const QString& text);
    [[nodiscard]] Ref key(const char* text); ///< as `string`, for the few names that come again and again
    [[nodiscard]] Ref boolean(bool value);
    [[nodiscard]] Ref integer(qint64 value);
    [[nodiscard]] Ref unsignedInteger(quint64 value);
    [[nodiscard]] Ref real(double value);
    [[nodiscard]] Ref data(const QByteArray& bytes);
    [[nodiscard]] Ref uid(quint32 value);
    [[nodiscard]] Ref array(const std::vector<Ref>& elements);
    /// `values[i]` stands under `keys[i]`; a key must not come twice.
    [[nodiscard]] Ref dictionary(const std::vector<Ref>& keys, const std::vector<Ref>& values);

    [[nodiscard]] QByteArray finish(Ref top) const;

private:
    enum class Kind : quint8 { Scalar, Data, Array, Dictionary };
    struct Object {
        Kind kind = Kind::Scalar;
        quint64 position = 0; ///< in `scalars_`, `data_` or `references_`
        quint64 count = 0;    ///< bytes, or entries of the container
    };

    struct KnownKey {
        QByteArray text;
        Ref ref = 0;
    };

    Ref addScalar(const char* bytes, qsizetype count);
    Ref addObject(Object object);
    Ref addString(const QString& text);
    [[nodiscard]] quint64 serialisedSize(const Object& object, int referenceSize) const;
    char* serialise(const Object& object, int referenceSize, char* out) const;

    std::vector<Object> objects_;
    QByteArray scalars_; ///< finished bytes of all scalar objects
    std::vector<QByteArray> data_;
    std::vector<Ref> references_;
    QHash<QString, Ref> strings_;
    QHash<const char*, KnownKey> keysByAddress_;
    QHash<qint64, Ref> integers_;
    QHash<quint64, Ref> unsigneds_;
    QHash<quint64, Ref> reals_; ///< by bit pattern
    std::vector<Ref> uids_;     ///< reference + 1, by value; 0: none yet
    Ref booleans_[2] = {};      ///< reference + 1
};

} // namespace daylark
