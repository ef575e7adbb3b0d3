#include "archive/KeyedWriter.h"

#include "archive/PublicEncoding.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace daylark {

namespace {

constexpr qint64 kImageFlags = 0x20C00000; // what images with a bitmap and nothing special carry
constexpr qint64 kFontFlags = 16;
constexpr qint64 kRgbSpace = 1;
constexpr qint64 kPointKind = 1;

} // namespace

QByteArray KeyedWriter::write(const Value& root) {
    objects_.push_back(plist_.string(u"$null"_s));
    const Uid rootUid = uidOf(root);
    // The queue grows while it is worked off; `Pending` is copied out because the vector moves.
    for (size_t next = 0; next < queue_.size(); ++next)
        writePending(Pending(queue_[next]));

    const Ref top = plist_.dictionary({plist_.key("root")}, {plist_.uid(rootUid)});
    const std::vector<Ref> keys{plist_.key("$version"), plist_.key("$archiver"), plist_.key("$top"),
                                plist_.key("$objects")};
    const std::vector<Ref> values{plist_.integer(kKeyedArchiveVersion), plist_.key("NSKeyedArchiver"), top,
                                  plist_.array(objects_)};
    return plist_.finish(plist_.dictionary(keys, values));
}

void KeyedWriter::encode(const char* key, const Value& value) {
    const Uid uid = uidOf(value);
    keys_.push_back(plist_.key(key));
    values_.push_back(plist_.uid(uid));
}

void KeyedWriter::encodeArray(const char* key,
                              const std::vector<std::shared_ptr<const Archivable>>& objects) {
    std::vector<Uid> uids;
    uids.reserve(objects.size());
    const Uid array = newUid();
    for (const auto& object : objects)
        uids.push_back(uidOfRecord(object));
    setArray(array, uids);
    keys_.push_back(plist_.key(key));
    values_.push_back(plist_.uid(array));
}

void KeyedWriter::writePending(const Pending& pending) {
    if (pending.record) {
        keys_ = {plist_.key("$class")};
        values_ = {plist_.uid(uidOfClass({pending.record->archiveClassName(), "NSObject"}))};
        pending.record->encodeWithCoder(*this);
        objects_[pending.uid] = plist_.dictionary(keys_, values_);
        return;
    }
    std::vector<Uid> values;
    if (const Value::Array* array = pending.value.array()) {
        for (const Value& element : *array)
            values.push_back(uidOf(element));
        setArray(pending.uid, values);
        return;
    }
    std::vector<Uid> keys;
    for (const auto& [key, value] : *pending.value.dictionary()) {
        keys.push_back(uidOf(key));
        values.push_back(uidOf(value));
    }
    objects_[pending.uid] =
        objectDictionary(uidOfClass({"NSMutableDictionary", "NSDictionary", "NSObject"}),
                         {{"NS.keys", arrayOfUids(keys)}, {"NS.objects", arrayOfUids(values)}});
}

KeyedWriter::Uid KeyedWriter::uidOf(const Value& value) {
    if (value.isNil()) return 0;
    if (value.isString()) return uidOfString(value.string());
    if (const Number* number = value.number()) return uidOfNumber(*number);
    if (const Image* image = value.image()) return uidOfImage(*image);
    if (const ArchivedUrl* url = value.url()) return uidOfUrl(*url);
    if (value.isData()) return uidOfData(value.data());
    if (const auto record = value.object()) return uidOfRecord(record);
    if (const Value::Array* array = value.array()) return uidOfContainer(array, value);
    if (const Value::Dictionary* dictionary = value.dictionary()) return uidOfContainer(dictionary, value);
    if (const AttributedString* text = value.attributedString()) return uidOfText(*text);
    if (const Date* date = value.date())
        return addObject({"NSDate", "NSObject"}, {{"NS.time", plist_.real(date->secondsSince2001)}});
    if (const QPointF* point = value.point()) {
        const Uid text = uidOfString(pairText(point->x(), point->y()));
        return addObject({"NSValue", "NSObject"},
                         {{"NS.pointval", plist_.uid(text)}, {"NS.special", plist_.integer(kPointKind)}});
    }
    if (const QUuid* uuid = value.uuid())
        return addObject({"NSUUID", "NSObject"}, {{"NS.uuidbytes", plist_.data(uuid->toRfc4122())}});
    return uidOfColour(value.colour());
}

KeyedWriter::Uid KeyedWriter::uidOfRecord(const std::shared_ptr<const Archivable>& record) {
    if (!record) return 0;
    Uid& uid = identities_[record.get()];
    if (uid == 0) {
        uid = newUid();
        queue_.push_back({uid, record, {}});
    }
    return uid;
}

KeyedWriter::Uid KeyedWriter::uidOfContainer(const void* address, const Value& value) {
    Uid& uid = identities_[address];
    if (uid == 0) {
        uid = newUid();
        queue_.push_back({uid, nullptr, value});
    }
    return uid;
}

KeyedWriter::Uid KeyedWriter::uidOfLeaf(Ref leaf) {
    if (leaf >= leafUids_.size()) leafUids_.resize(std::max<size_t>(size_t(leaf) + 1, leafUids_.size() * 2));
    if (leafUids_[leaf] == 0) leafUids_[leaf] = addObject(leaf);
    return leafUids_[leaf];
}

KeyedWriter::Uid KeyedWriter::uidOfNumber(const Number& number) {
    if (const bool* value = std::get_if<bool>(&number)) return uidOfLeaf(plist_.boolean(*value));
    if (const qint64* value = std::get_if<qint64>(&number)) return uidOfLeaf(plist_.integer(*value));
    if (const quint64* value = std::get_if<quint64>(&number))
        return uidOfLeaf(plist_.unsignedInteger(*value));
    return uidOfLeaf(plist_.real(std::get<double>(number)));
}

KeyedWriter::Uid KeyedWriter::uidOfClass(ClassNames names) {
    Uid& uid = classes_[plist_.key(*names.begin())];
    if (uid == 0) {
        std::vector<Ref> hierarchy;
        for (const char* name : names)
            hierarchy.push_back(plist_.key(name));
        uid = addObject(plist_.dictionary({plist_.key("$classname"), plist_.key("$classes")},
                                          {hierarchy.front(), plist_.array(hierarchy)}));
    }
    return uid;
}

KeyedWriter::Uid KeyedWriter::uidOfData(const QByteArray& data) {
    Uid& uid = dataUids_[{data.constData(), data.size()}];
    if (uid == 0) uid = addObject({"NSMutableData", "NSData", "NSObject"}, {{"NS.data", plist_.data(data)}});
    return uid;
}

KeyedWriter::Uid KeyedWriter::uidOfUrl(const ArchivedUrl& url) {
    const Uid base = url.base.isEmpty() ? 0 : uidOfUrl({url.base, {}});
    const Uid relative = uidOfString(url.relative);
    return addObject({"NSURL", "NSObject"},
                     {{"NS.base", plist_.uid(base)}, {"NS.relative", plist_.uid(relative)}});
}

KeyedWriter::Uid KeyedWriter::uidOfColour(const QColor& colour) {
    const QByteArray text = colourText(colour);
    Uid& uid = colours_[text];
    if (uid == 0)
        uid = addObject({"NSColor", "NSObject"},
                        {{"NSColorSpace", plist_.integer(kRgbSpace)}, {"NSRGB", plist_.data(text)}});
    return uid;
}

KeyedWriter::Uid KeyedWriter::uidOfAttributes(const TextAttributes& attributes) {
    std::vector<Uid> keys;
    std::vector<Uid> values;
    const auto add = [this, &keys, &values](const QString& key, Uid value) {
        keys.push_back(uidOfString(key));
        values.push_back(value);
    };
    if (attributes.bold || attributes.italic || !attributes.fontFamily.isEmpty() ||
        attributes.pointSize != 0) {
        const Uid name = uidOfString(fontName(attributes));
        add(u"NSFont"_s, addObject({"NSFont", "NSObject"}, {{"NSName", plist_.uid(name)},
                                                            {"NSSize", plist_.real(attributes.pointSize)},
                                                            {"NSfFlags", plist_.integer(kFontFlags)}}));
    }
    if (attributes.colour.isValid()) add(u"NSColor"_s, uidOfColour(attributes.colour));
    if (attributes.underline) add(u"NSUnderline"_s, uidOfNumber(qint64(1)));
    return addObject({"NSDictionary", "NSObject"},
                     {{"NS.keys", arrayOfUids(keys)}, {"NS.objects", arrayOfUids(values)}});
}

KeyedWriter::Uid KeyedWriter::uidOfText(const AttributedString& text) {
    const ClassNames names{"NSMutableAttributedString", "NSAttributedString", "NSObject"};
    const Uid string = uidOfString(text.string());
    if (text.runs().size() <= 1) {
        const Uid attributes =
            uidOfAttributes(text.runs().empty() ? TextAttributes() : text.runs().front().attributes);
        return addObject(names, {{"NSString", plist_.uid(string)}, {"NSAttributes", plist_.uid(attributes)}});
    }
    std::vector<const TextAttributes*> distinct;
    std::vector<Uid> dictionaries;
    std::vector<RunIndex> indices;
    for (const AttributedString::Run& run : text.runs()) {
        // Looks back a little only: texts with many styles are rare and needn't be written at their shortest.
        constexpr size_t window = 16;
        size_t index = distinct.size();
        for (size_t back = 1; back <= std::min(window, distinct.size()); ++back)
            if (*distinct[distinct.size() - back] == run.attributes) index = distinct.size() - back;
        if (index == distinct.size()) {
            distinct.push_back(&run.attributes);
            dictionaries.push_back(uidOfAttributes(run.attributes));
        }
        indices.push_back({quint64(run.length), quint64(index)});
    }
    const Uid attributes = addArray(dictionaries);
    const Uid info =
        addObject({"NSMutableData", "NSData", "NSObject"}, {{"NS.data", plist_.data(runIndexData(indices))}});
    return addObject(names, {{"NSString", plist_.uid(string)},
                             {"NSAttributes", plist_.uid(attributes)},
                             {"NSAttributeInfo", plist_.uid(info)}});
}

KeyedWriter::Uid KeyedWriter::uidOfImage(const Image& image) {
    if (image.name().isEmpty()) {
        Uid& uid = imageUids_[{image.encoded().constData(), image.encoded().size()}];
        if (uid == 0) uid = writeImage(image, image.encoded());
        return uid;
    }
    std::vector<WrittenIcon>& written = icons_[image.name()];
    for (const WrittenIcon& icon : written)
        if (image.encoded().isEmpty() || icon.encoded == image.encoded()) return icon.uid;
    QByteArray encoded = image.encoded();
    if (encoded.isEmpty() && namedImages_) encoded = namedImages_(image.name());
    const Uid uid = writeImage(image, encoded);
    written.push_back({encoded, uid});
    return uid;
}

KeyedWriter::Uid KeyedWriter::writeImage(const Image& image, const QByteArray& encoded) {
    std::vector<Uid> representations;
    if (!encoded.isEmpty()) {
        const Uid tiff = addObject(plist_.data(encoded));
        const Uid bitmap = addObject({"NSBitmapImageRep", "NSImageRep", "NSObject"},
                                     {{"NSTIFFRepresentation", plist_.uid(tiff)}});
        representations.push_back(addArray({uidOfNumber(qint64(0)), bitmap}));
    }
    const Uid background = uidOfColour(QColor(0, 0, 0, 0));
    Fields fields{{"NSImageFlags", plist_.integer(kImageFlags)},
                  {"NSReps", plist_.uid(addArray(representations))},
                  {"NSColor", plist_.uid(background)}};
    if (image.size().isValid())
        fields.push_back(
            {"NSSize", plist_.uid(uidOfString(pairText(image.size().width(), image.size().height())))});
    if (!image.name().isEmpty()) fields.push_back({"NSName", plist_.uid(uidOfString(image.name()))});
    return addObject({"NSImage", "NSObject"}, fields);
}

KeyedWriter::Uid KeyedWriter::newUid() {
    return addObject(Ref(0));
}

KeyedWriter::Uid KeyedWriter::addObject(Ref object) {
    objects_.push_back(object);
    return Uid(objects_.size() - 1);
}

KeyedWriter::Uid KeyedWriter::addObject(ClassNames names, const Fields& fields) {
    return addObject(objectDictionary(uidOfClass(names), fields));
}

KeyedWriter::Uid KeyedWriter::addArray(const std::vector<Uid>& elements) {
    const Uid uid = newUid();
    setArray(uid, elements);
    return uid;
}

void KeyedWriter::setArray(Uid uid, const std::vector<Uid>& elements) {
    objects_[uid] = objectDictionary(uidOfClass({"NSMutableArray", "NSArray", "NSObject"}),
                                     {{"NS.objects", arrayOfUids(elements)}});
}

KeyedWriter::Ref KeyedWriter::arrayOfUids(const std::vector<Uid>& uids) {
    std::vector<Ref> references;
    references.reserve(uids.size());
    for (const Uid uid : uids)
        references.push_back(plist_.uid(uid));
    return plist_.array(references);
}

KeyedWriter::Ref KeyedWriter::objectDictionary(Uid classUid, const Fields& fields) {
    std::vector<Ref> keys{plist_.key("$class")};
    std::vector<Ref> values{plist_.uid(classUid)};
    for (const auto& [key, value] : fields) {
        keys.push_back(plist_.key(key));
        values.push_back(value);
    }
    return plist_.dictionary(keys, values);
}

} // namespace daylark
