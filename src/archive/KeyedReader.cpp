#include "archive/KeyedReader.h"

#include "archive/PublicEncoding.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace daylark {

namespace {

constexpr int kMaxDepth = 200;
constexpr quint64 kFreeWeight = 1'000'000;   // granted to every file
constexpr quint64 kWeightLimit = 1ULL << 40; // sums stop growing here, far from overflow

struct PlistAllocated {
    void operator()(void* memory) const { std::free(memory); }
};
using PlistIterator = std::unique_ptr<void, PlistAllocated>;
using PlistText = std::unique_ptr<char, PlistAllocated>;

bool isType(plist_t node, plist_type type) {
    return node && plist_get_node_type(node) == type;
}

/// An array's nodes, gathered with the iterator: access by index is linear in the library.
std::vector<plist_t> arrayNodes(plist_t array) {
    std::vector<plist_t> nodes;
    if (!isType(array, PLIST_ARRAY)) return nodes;
    nodes.reserve(plist_array_get_size(array));
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(array, &iterator);
    const PlistIterator owner(iterator);
    plist_t node = nullptr;
    for (plist_array_next_item(array, iterator, &node); node; plist_array_next_item(array, iterator, &node))
        nodes.push_back(node);
    return nodes;
}

struct PlistField {
    PlistText key;
    plist_t node = nullptr;
};

std::vector<PlistField> dictionaryFields(plist_t dictionary) {
    std::vector<PlistField> fields;
    if (!isType(dictionary, PLIST_DICT)) return fields;
    fields.reserve(plist_dict_get_size(dictionary));
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    const PlistIterator owner(iterator);
    for (;;) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &node);
        PlistText text(key);
        if (!node) return fields;
        if (text) fields.push_back({std::move(text), node});
    }
}

plist_t member(plist_t dictionary, const char* key) {
    return isType(dictionary, PLIST_DICT) ? plist_dict_get_item(dictionary, key) : nullptr;
}

/// The UID that a node is: of its own type in binary lists, a dictionary with one well-known key in XML ones.
std::optional<quint64> uidOfNode(plist_t node) {
    uint64_t uid = 0;
    if (isType(node, PLIST_UID)) {
        plist_get_uid_val(node, &uid);
        return uid;
    }
    if (!isType(node, PLIST_DICT) || plist_dict_get_size(node) != 1) return std::nullopt;
    const plist_t number = plist_dict_get_item(node, "CF$UID");
    if (!isType(number, PLIST_UINT)) return std::nullopt;
    plist_get_uint_val(number, &uid);
    return uid;
}

Value plainInteger(plist_t node) {
    uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    if (bits <= quint64(std::numeric_limits<qint64>::max())) return Value(qint64(bits));
    // The library tells negative numbers from huge ones by the width alone; a fresh node has the signed one.
    const plist_t narrow = plist_new_uint(bits);
    const bool negative = plist_compare_node_value(node, narrow) != 0;
    plist_free(narrow);
    return negative ? Value(qint64(bits)) : Value(Number(quint64(bits)));
}

Value plainValue(plist_t node) {
    if (!node) return {};
    uint64_t length = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        const char* text = plist_get_string_ptr(node, &length);
        return Value(text ? QString::fromUtf8(text, qsizetype(length)) : QString());
    }
    case PLIST_DATA: {
        const char* bytes = plist_get_data_ptr(node, &length);
        return bytes ? Value(QByteArray(bytes, qsizetype(length))) : Value(QByteArray(""));
    }
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return Value(value != 0);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return Value(value);
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return Value(Date{seconds + microseconds / 1e6});
    }
    case PLIST_UINT:
        return plainInteger(node);
    default:
        return {};
    }
}

} // namespace

/// A record's fields, looked up in the order in which they were written: the next one asked for is nearly
/// always the next one.
class RecordDecoder final : public Decoder {
public:
    RecordDecoder(KeyedReader& reader, plist_t object)
        : reader_(reader)
        , fields_(dictionaryFields(object)) {}

    [[nodiscard]] Value decode(const char* key) const override {
        for (size_t tried = 0; tried < fields_.size(); ++tried) {
            if (next_ >= fields_.size()) next_ = 0;
            const PlistField& field = fields_[next_++];
            if (std::strcmp(field.key.get(), key) == 0) return reader_.readWithinBudget(field.node);
        }
        return {};
    }

private:
    KeyedReader& reader_;
    std::vector<PlistField> fields_;
    mutable size_t next_ = 0;
};

KeyedReader::KeyedReader(plist_t tree, const ArchiveClasses& classes, qsizetype byteCount)
    : classes_(classes)
    , tree_(tree)
    , allowance_(kFreeWeight + quint64(byteCount) / 2)
    , budget_(allowance_) {
    const std::vector<plist_t> objects = arrayNodes(member(tree, "$objects"));
    slots_.resize(objects.size());
    for (size_t uid = 0; uid < objects.size(); ++uid)
        slots_[uid].node = objects[uid];
}

Value KeyedReader::topValue(const char* key) {
    return readTop(member(member(tree_, "$top"), key));
}

Value::Dictionary KeyedReader::top() {
    Value::Dictionary values;
    for (const PlistField& field : dictionaryFields(member(tree_, "$top")))
        values.emplace_back(QString::fromUtf8(field.key.get()), readTop(field.node));
    return values;
}

bool KeyedReader::charge(quint64 weight) {
    if (weight > budget_) return false;
    budget_ -= weight;
    return true;
}

Value KeyedReader::readWithinBudget(plist_t node) {
    quint64 weight = 0;
    Value value = read(node, weight);
    return weight <= 1 || charge(weight) ? value : Value();
}

Value KeyedReader::readTop(plist_t node) {
    quint64 weight = 0;
    Value value = read(node, weight);
    return weight <= allowance_ ? value : Value();
}

Value KeyedReader::read(plist_t node, quint64& weight) {
    if (const std::optional<quint64> uid = uidOfNode(node)) return readUid(*uid, weight);
    weight += 1;
    return plainValue(node);
}

Value KeyedReader::readUid(quint64 uid, quint64& weight) {
    weight += 1;
    if (uid == 0 || uid >= slots_.size()) return {}; // 0 is "$null"
    Slot& slot = slots_[uid]; // the vector never grows, so nested reads leave it in place
    if (slot.state == State::Reading) return {};
    if (slot.state == State::Unread) {
        slot.state = State::Reading;
        if (isType(slot.node, PLIST_DICT)) {
            ++depth_;
            if (depth_ <= kMaxDepth) slot.value = readObject(slot.node, slot.weight);
            --depth_;
        } else {
            slot.value = plainValue(slot.node);
        }
        slot.weight = std::min(slot.weight, kWeightLimit);
        slot.state = State::Read;
    }
    weight = std::min(weight + slot.weight - 1, kWeightLimit);
    return slot.value;
}

plist_t KeyedReader::resolve(plist_t node) const {
    const std::optional<quint64> uid = uidOfNode(node);
    if (!uid) return node;
    return *uid > 0 && *uid < slots_.size() ? slots_[*uid].node : nullptr;
}

KeyedReader::Kind KeyedReader::kindOf(const QString& className) {
    struct Entry {
        QLatin1StringView name;
        Kind kind = Kind::Unknown;
    };
    static constexpr Entry entries[] = {
        {"NSNull"_L1, Kind::Null},
        {"NSString"_L1, Kind::String},
        {"NSMutableString"_L1, Kind::String},
        {"NSData"_L1, Kind::Data},
        {"NSMutableData"_L1, Kind::Data},
        {"NSDate"_L1, Kind::Date},
        {"NSURL"_L1, Kind::Url},
        {"NSArray"_L1, Kind::Array},
        {"NSMutableArray"_L1, Kind::Array},
        {"NSSet"_L1, Kind::Array},
        {"NSMutableSet"_L1, Kind::Array},
        {"NSOrderedSet"_L1, Kind::OrderedSet},
        {"NSMutableOrderedSet"_L1, Kind::OrderedSet},
        {"NSDictionary"_L1, Kind::Dictionary},
        {"NSMutableDictionary"_L1, Kind::Dictionary},
        {"NSColor"_L1, Kind::Colour},
        {"NSAttributedString"_L1, Kind::Text},
        {"NSMutableAttributedString"_L1, Kind::Text},
        {"NSValue"_L1, Kind::PointValue},
        {"NSUUID"_L1, Kind::Uuid},
        {"NSImage"_L1, Kind::Image},
        {"NSBitmapImageRep"_L1, Kind::Bitmap},
    };
    for (const Entry& entry : entries)
        if (className == entry.name) return entry.kind;
    return Kind::Unknown;
}

KeyedReader::ClassInfo KeyedReader::classOf(plist_t object) {
    const plist_t node = resolve(member(object, "$class"));
    if (!isType(node, PLIST_DICT)) return {};
    const auto [position, isNew] = classInfos_.try_emplace(node);
    if (isNew) {
        const QString name = plainValue(plist_dict_get_item(node, "$classname")).string();
        const auto known = classes_.find(name);
        if (known != classes_.end())
            position->second = {Kind::Record, &known->second};
        else
            position->second = {kindOf(name), nullptr};
    }
    return position->second;
}

Value KeyedReader::readObject(plist_t object, quint64& weight) {
    const ClassInfo info = classOf(object);
    return info.kind == Kind::Record ? readRecord(info, object) : readKind(info.kind, object, weight);
}

Value KeyedReader::readKind(Kind kind, plist_t object, quint64& weight) {
    switch (kind) {
    case Kind::String: {
        const Value text = field(object, "NS.string");
        return text.isString() ? text : Value();
    }
    case Kind::Data: {
        const Value data = field(object, "NS.data");
        return data.isData() ? data : Value();
    }
    case Kind::Date:
        return Value(Date{numberField(object, "NS.time")});
    case Kind::Uuid: {
        const QByteArray bytes = field(object, "NS.uuidbytes").data();
        return bytes.size() == 16 ? Value(QUuid::fromRfc4122(bytes)) : Value();
    }
    case Kind::Bitmap:
        return Value(Image::fromEncoded(field(object, "NSTIFFRepresentation").data(), {}));
    case Kind::Url:
        return readUrl(object);
    case Kind::Array:
        return readArray(object, weight);
    case Kind::OrderedSet:
        return readOrderedSet(object, weight);
    case Kind::Dictionary:
        return readDictionary(object, weight);
    case Kind::Colour:
        return readColour(object);
    case Kind::Text:
        return readText(object, weight);
    case Kind::PointValue:
        return readPoint(object);
    case Kind::Image:
        return readImage(object);
    case Kind::Record:
    case Kind::Null:
    case Kind::Unknown:
        break;
    }
    return {};
}

Value KeyedReader::readRecord(const ClassInfo& info, plist_t object) {
    std::shared_ptr<Archivable> record = (*info.make)();
    if (record) record->initWithCoder(RecordDecoder(*this, object));
    return Value(std::move(record));
}

Value KeyedReader::field(plist_t object, const char* key) {
    quint64 weight = 0;
    return read(member(object, key), weight);
}

double KeyedReader::numberField(plist_t object, const char* key, double fallback) {
    const Value value = field(object, key);
    return value.number() ? numberToDouble(*value.number()) : fallback;
}

Value KeyedReader::readArray(plist_t object, quint64& weight) {
    Value::Array values;
    const std::vector<plist_t> nodes = arrayNodes(resolve(member(object, "NS.objects")));
    values.reserve(nodes.size());
    for (const plist_t node : nodes)
        values.push_back(read(node, weight));
    return Value(std::move(values));
}

Value KeyedReader::readOrderedSet(plist_t object, quint64& weight) {
    if (member(object, "NS.objects")) return readArray(object, weight);
    constexpr auto prefix = "NS.object."_L1; // the elements stand under numbered keys, in any order
    std::vector<std::pair<quint64, plist_t>> elements;
    for (const PlistField& entry : dictionaryFields(object)) {
        const auto key = QLatin1StringView(entry.key.get());
        bool isNumber = false;
        const quint64 index = key.startsWith(prefix) ? key.mid(prefix.size()).toULongLong(&isNumber) : 0;
        if (isNumber) elements.emplace_back(index, entry.node);
    }
    std::stable_sort(elements.begin(), elements.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Value::Array values;
    for (const auto& [index, node] : elements)
        values.push_back(read(node, weight));
    return Value(std::move(values));
}

Value KeyedReader::readDictionary(plist_t object, quint64& weight) {
    const std::vector<plist_t> keys = arrayNodes(resolve(member(object, "NS.keys")));
    const std::vector<plist_t> values = arrayNodes(resolve(member(object, "NS.objects")));
    Value::Dictionary entries;
    entries.reserve(std::min(keys.size(), values.size()));
    for (size_t i = 0; i < std::min(keys.size(), values.size()); ++i) {
        Value key = read(keys[i], weight);
        Value value = read(values[i], weight);
        if (!key.isNil()) entries.emplace_back(std::move(key), std::move(value));
    }
    return Value(std::move(entries));
}

Value KeyedReader::readUrl(plist_t object) {
    const Value relative = field(object, "NS.relative");
    if (!relative.isString()) return {};
    ArchivedUrl url{relative.string(), {}};
    const Value base = field(object, "NS.base");
    if (base.url()) url.base = base.url()->relative;
    return Value(std::move(url));
}

Value KeyedReader::readColour(plist_t object) {
    const int space = int(std::clamp(numberField(object, "NSColorSpace"), 0.0, 100.0));
    const char* key = space == 5 ? "NSCMYK" : space == 3 || space == 4 ? "NSWhite" : "NSRGB";
    const QColor colour = colourFromText(field(object, key).data(), space);
    if (colour.isValid()) return Value(colour);
    // Catalogue colours carry a plain one for readers that haven't got the catalogue.
    const Value plain = field(object, "NSColor");
    return plain.colour().isValid() ? plain : Value();
}

TextAttributes KeyedReader::readAttributes(plist_t dictionary) {
    TextAttributes attributes;
    const std::vector<plist_t> keys = arrayNodes(resolve(member(dictionary, "NS.keys")));
    const std::vector<plist_t> values = arrayNodes(resolve(member(dictionary, "NS.objects")));
    for (size_t i = 0; i < std::min(keys.size(), values.size()); ++i) {
        quint64 weight = 0;
        const QString key = read(keys[i], weight).string();
        if (key == "NSFont"_L1) {
            const plist_t font = resolve(values[i]);
            applyFontName(field(font, "NSName").string(), attributes);
            const double size = numberField(font, "NSSize");
            attributes.pointSize = std::isfinite(size) ? std::clamp(size, 0.0, 10000.0) : 0;
        } else if (key == "NSColor"_L1) {
            attributes.colour = read(values[i], weight).colour();
        } else if (key == "NSUnderline"_L1) {
            const Value style = read(values[i], weight);
            attributes.underline = style.number() && numberToBool(*style.number());
        }
    }
    return attributes;
}

std::vector<TextAttributes> KeyedReader::readAttributeList(plist_t object) {
    if (classOf(object).kind != Kind::Array) return {readAttributes(object)};
    std::vector<TextAttributes> list;
    const std::vector<plist_t> nodes = arrayNodes(resolve(member(object, "NS.objects")));
    for (const plist_t node : nodes) {
        const plist_t dictionary = resolve(node);
        // Several texts may share one list, so that its length counts for each of them.
        const plist_t entries = resolve(member(dictionary, "NS.keys"));
        if (!charge(1 + (isType(entries, PLIST_ARRAY) ? plist_array_get_size(entries) : 0))) break;
        list.push_back(readAttributes(dictionary));
    }
    return list;
}

Value KeyedReader::readText(plist_t object, quint64& weight) {
    const Value string = field(object, "NSString");
    if (!string.isString()) return {};
    const QString text = string.string();
    const std::vector<TextAttributes> attributes = readAttributeList(resolve(member(object, "NSAttributes")));
    const QByteArray info = field(object, "NSAttributeInfo").data();
    std::vector<RunIndex> runs;
    if (!info.isEmpty() && charge(std::min<quint64>(quint64(info.size()), quint64(text.size()))))
        runs = runIndicesFromData(info, quint64(text.size()));
    else if (!attributes.empty())
        runs = {{quint64(text.size()), 0}};

    AttributedString result;
    qsizetype at = 0;
    for (const RunIndex& run : runs) {
        result.append(text.mid(at, qsizetype(run.length)),
                      run.attributes < attributes.size() ? attributes[run.attributes] : TextAttributes());
        at += qsizetype(run.length);
    }
    result.append(text.mid(at));
    weight += result.runs().size();
    return Value(std::move(result));
}

Value KeyedReader::readPoint(plist_t object) {
    constexpr double pointKind = 1; // other kinds are sizes, rectangles, ranges
    const Value text = field(object, "NS.pointval");
    if (!text.isString() || numberField(object, "NS.special", pointKind) != pointKind) return {};
    const std::optional<QPointF> point = pairFromText(text.string());
    return point ? Value(*point) : Value();
}

Value KeyedReader::readImage(plist_t object) {
    const QString name = field(object, "NSName").string();
    QByteArray encoded;
    const Value representations = field(object, "NSReps");
    if (const Value::Array* pairs = representations.array()) {
        for (const Value& pair : *pairs) {
            const Value::Array* parts = pair.array();
            if (encoded.isEmpty() && parts && parts->size() >= 2 && (*parts)[1].image())
                encoded = (*parts)[1].image()->encoded();
        }
    }
    return Value(Image::fromEncoded(encoded, sizeFromText(field(object, "NSSize").string()), name));
}

} // namespace daylark
