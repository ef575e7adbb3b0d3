#pragma once

#include "archive/BinaryPlistWriter.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"

#include <QHash>

#include <initializer_list>
#include <string>
#include <unordered_map>

namespace daylark {

/// Writes one object graph as a keyed archive. Records, arrays and dictionaries get their UID when they are
/// first referenced and are written from a queue, so that neither depth nor cycles matter; what is referenced
/// is kept alive to the end, because identity is told by address. One use, one thread; it cannot fail.
class KeyedWriter final : private Encoder {
public:
    explicit KeyedWriter(const NamedImageData& namedImages)
        : namedImages_(namedImages) {}
    [[nodiscard]] QByteArray write(const Value& root);

private:
    using Ref = BinaryPlistWriter::Ref;
    using Uid = quint32;
    using ClassNames = std::initializer_list<const char*>;
    using Fields = std::vector<std::pair<const char*, Ref>>;
    struct Pending {
        Uid uid = 0;
        std::shared_ptr<const Archivable> record; ///< or `value`, an array or a dictionary
        Value value;
    };
    struct WrittenIcon {
        QByteArray encoded;
        Uid uid = 0;
    };

    void encode(const char* key, const Value& value) override;
    void encodeArray(const char* key, const std::vector<std::shared_ptr<const Archivable>>& objects) override;

    Uid uidOf(const Value& value);
    Uid uidOfRecord(const std::shared_ptr<const Archivable>& record);
    Uid uidOfContainer(const void* address, const Value& value);
    Uid uidOfLeaf(Ref leaf); ///< a string or number, once per archive
    Uid uidOfNumber(const Number& number);
    Uid uidOfString(const QString& text) { return uidOfLeaf(plist_.string(text)); }
    Uid uidOfClass(ClassNames names);
    Uid uidOfData(const QByteArray& data);
    Uid uidOfUrl(const ArchivedUrl& url);
    Uid uidOfColour(const QColor& colour);
    Uid uidOfText(const AttributedString& text);
    Uid uidOfAttributes(const TextAttributes& attributes);
    Uid uidOfImage(const Image& image);
    Uid writeImage(const Image& image, const QByteArray& encoded);

    void writePending(const Pending& pending);
    Uid newUid();
    Uid addObject(Ref object);
    Uid addObject(ClassNames names, const Fields& fields);
    Uid addArray(const std::vector<Uid>& elements);
    void setArray(Uid uid, const std::vector<Uid>& elements);
    Ref arrayOfUids(const std::vector<Uid>& uids);
    Ref objectDictionary(Uid classUid, const Fields& fields);

    const NamedImageData& namedImages_;
    BinaryPlistWriter plist_;
    std::vector<Ref> objects_;  ///< $objects, by UID
    std::vector<Uid> leafUids_; ///< UID of a leaf, by its reference; 0: none yet
    std::vector<Pending> queue_;
    std::unordered_map<const void*, Uid> identities_;
    std::unordered_map<Ref, Uid> classes_; ///< by the reference of the class name
    QHash<QByteArray, Uid> colours_;
    QHash<std::pair<const char*, qsizetype>, Uid> dataUids_;
    QHash<std::pair<const char*, qsizetype>, Uid> imageUids_;
    QHash<QString, std::vector<WrittenIcon>> icons_;
    std::vector<Ref> keys_;   ///< of the record being written
    std::vector<Ref> values_; ///< likewise
};

} // namespace daylark
