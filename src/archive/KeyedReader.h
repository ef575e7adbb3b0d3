#pragma once

#include "archive/Decoder.h"
#include "archive/KeyedArchive.h"

#include <plist/plist.h>

#include <unordered_map>
#include <vector>

namespace daylark {

/// Turns a parsed keyed archive into values. Every object is decoded once and shared, so that shared records
/// stay one; a reference back into an object that is still being decoded is nil, as is what lies too deep.
///
/// Sharing lets a small file describe a huge tree. Each value therefore has a weight, the number of elements
/// that somebody sees who walks all of it, and records are given no more weight in sum than a budget that
/// grows with the file; beyond it they get nil. No honest archive comes near.
///
/// One use, one thread; `tree` must outlive it. It never fails: what makes no sense is nil.
class KeyedReader {
public:
    KeyedReader(plist_t tree, const ArchiveClasses& classes, qsizetype byteCount);

    /// The value under a key of $top; nil when there is none.
    [[nodiscard]] Value topValue(const char* key);
    /// All of $top.
    [[nodiscard]] Value::Dictionary top();

private:
    friend class RecordDecoder;
    enum class Kind {
        Unknown,
        Record,
        Null,
        String,
        Data,
        Date,
        Url,
        Array,
        OrderedSet,
        Dictionary,
        Colour,
        Text,
        PointValue,
        Uuid,
        Image,
        Bitmap
    };
    struct ClassInfo {
        Kind kind = Kind::Unknown;
        const std::function<std::shared_ptr<Archivable>()>* make = nullptr;
    };
    enum class State : quint8 { Unread, Reading, Read };
    struct Slot {
        plist_t node = nullptr;
        State state = State::Unread;
        quint64 weight = 1;
        Value value;
    };

    static Kind kindOf(const QString& className);
    /// What stands under a key or in an array: a reference or a plain value. Adds the value's weight to
    /// `weight`.
    Value read(plist_t node, quint64& weight);
    Value readWithinBudget(plist_t node);
    Value readTop(plist_t node); ///< what no record takes: bounded by itself, whatever records were given
    Value readUid(quint64 uid, quint64& weight);
    Value readObject(plist_t object, quint64& weight);
    Value readKind(Kind kind, plist_t object, quint64& weight);
    Value readRecord(const ClassInfo& info, plist_t object);
    Value readArray(plist_t object, quint64& weight);
    Value readOrderedSet(plist_t object, quint64& weight);
    Value readDictionary(plist_t object, quint64& weight);
    Value readUrl(plist_t object);
    Value readColour(plist_t object);
    Value readText(plist_t object, quint64& weight);
    Value readPoint(plist_t object);
    Value readImage(plist_t object);
    TextAttributes readAttributes(plist_t dictionary);
    std::vector<TextAttributes> readAttributeList(plist_t object);
    ClassInfo classOf(plist_t object);

    /// The value under a key of an archived object, whatever its weight.
    Value field(plist_t object, const char* key);
    double numberField(plist_t object, const char* key, double fallback = 0);
    /// The property-list node that a reference leads to; the node itself when it is none.
    plist_t resolve(plist_t node) const;
    bool charge(quint64 weight);

    const ArchiveClasses& classes_;
    plist_t tree_;
    std::vector<Slot> slots_; ///< $objects, by UID
    std::unordered_map<plist_t, ClassInfo> classInfos_;
    const quint64 allowance_; ///< weight that the file's size entitles it to
    quint64 budget_;          ///< what is left of it for records
    int depth_ = 0;
};

} // namespace daylark
