#include "archive/PlistGuard.h"
#include "archive/Records.h"

#include "archive/BinaryPlistWriter.h"

#include <gmock/gmock.h>

using namespace daylark;
using namespace daylark::archivetest;
using namespace Qt::StringLiterals;

namespace {

using Ref = BinaryPlistWriter::Ref;

/// A keyed archive put together object by object, so that it can be wrong.
class RawArchive {
public:
    BinaryPlistWriter plist;
    std::vector<Ref> objects{plist.string(u"$null"_s)};

    quint32 add(Ref object) {
        objects.push_back(object);
        return quint32(objects.size() - 1);
    }
    quint32 addClass(const char* name) {
        return add(
            plist.dictionary({plist.key("$classname"), plist.key("$classes")},
                             {plist.key(name), plist.array({plist.key(name), plist.key("NSObject")})}));
    }
    Ref instance(quint32 classUid, const char* key, Ref value) {
        return plist.dictionary({plist.key("$class"), plist.key(key)}, {plist.uid(classUid), value});
    }
    Ref arrayOf(quint32 classUid, const std::vector<quint32>& uids) {
        std::vector<Ref> references;
        for (const quint32 uid : uids)
            references.push_back(plist.uid(uid));
        return instance(classUid, "NS.objects", plist.array(references));
    }
    QByteArray finish(quint32 root) {
        const Ref top = plist.dictionary({plist.key("root")}, {plist.uid(root)});
        return plist.finish(
            plist.dictionary({plist.key("$top"), plist.key("$objects")}, {top, plist.array(objects)}));
    }
};

QByteArray xmlArchive(const QByteArray& objects, const QByteArray& root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict><key>$objects</key><array>"
           "<string>$null</string>" +
           objects + "</array><key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>" + root +
           "</integer></dict></dict></dict></plist>";
}

/// How deep the first elements of nested arrays go.
int depthOf(Value value) {
    int depth = 0;
    while (value.array() && !value.array()->empty()) {
        value = Value((*value.array())[0]);
        ++depth;
    }
    return depth;
}

} // namespace

TEST(HostileArchives, ACycleIsNilAtItsInnerEnd) {
    RawArchive archive;
    const quint32 arrays = archive.addClass("NSArray");
    const quint32 outer = archive.add(0);
    const quint32 inner = archive.add(0);
    archive.objects[outer] =
        archive.arrayOf(arrays, {inner, outer, archive.add(archive.plist.string(u"kept"_s))});
    archive.objects[inner] = archive.arrayOf(arrays, {outer});
    const Result<Value> read = unarchiveRoot(archive.finish(outer), {});
    ASSERT_TRUE(read && read->array() && read->array()->size() == 3U);
    const Value first = (*read->array())[0];
    ASSERT_TRUE(first.array());
    EXPECT_TRUE((*first.array())[0].isNil());
    EXPECT_TRUE((*read->array())[1].isNil());
    EXPECT_EQ((*read->array())[2].string(), u"kept"_s);
}

TEST(HostileArchives, CyclesThroughRecordsDecode) {
    const auto note = std::make_shared<Note>();
    note->first = u"self"_s;
    note->second = Value(note);
    const QByteArray bytes = archiveRoot(note);
    note->second = {};
    const Result<Value> read = unarchiveRoot(bytes, classes());
    ASSERT_TRUE(read);
    const auto back = std::dynamic_pointer_cast<Note>(read->object());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->first.string(), u"self"_s);
    EXPECT_TRUE(back->second.isNil());
}

TEST(HostileArchives, ReferencesOutOfRangeAreNil) {
    RawArchive archive;
    const quint32 arrays = archive.addClass("NSArray");
    const quint32 root =
        archive.add(archive.arrayOf(arrays, {4'000'000, 0, archive.add(archive.plist.integer(7))}));
    const Result<Value> read = unarchiveRoot(archive.finish(root), {});
    ASSERT_TRUE(read && read->array() && read->array()->size() == 3U);
    EXPECT_TRUE((*read->array())[0].isNil());
    EXPECT_TRUE((*read->array())[1].isNil());
    EXPECT_TRUE((*read->array())[2].number());
    RawArchive empty;
    const Result<Value> nothing = unarchiveRoot(empty.finish(99), {});
    ASSERT_TRUE(nothing);
    EXPECT_TRUE(nothing->isNil());
}

TEST(HostileArchives, WrongTypesInValueClassesAreNil) {
    for (const char* name : {"NSArray", "NSDictionary", "NSURL", "NSColor", "NSAttributedString", "NSImage",
                             "NSUUID", "NSData", "NSMutableString", "NSValue", "NSOrderedSet"}) {
        for (const char* key :
             {"NS.objects", "NS.keys", "NS.relative", "NSRGB", "NSString", "NSReps", "NS.uuidbytes",
              "NS.data", "NS.string", "NS.pointval", "NSColorSpace", "NSAttributes", "NS.object.0"}) {
            RawArchive archive;
            const quint32 objects = archive.addClass(name);
            const quint32 root = archive.add(archive.instance(objects, key, archive.plist.real(1e300)));
            const Result<Value> read = unarchiveRoot(archive.finish(root), {});
            ASSERT_TRUE(read) << name << ' ' << key;
            EXPECT_FALSE(read->isString() || read->isData() || read->number()) << name << ' ' << key;
        }
    }
}

TEST(HostileArchives, ReferenceChainsAreCutNotFollowedToTheEnd) {
    Value nested = u"bottom"_s;
    for (int depth = 0; depth < 100'000; ++depth)
        nested = Value(Value::Array{nested});
    const QByteArray bytes = archiveRoot(nested);
    // Taken apart by hand: a value as deep as this one would end itself by recursion.
    while (nested.array())
        nested = Value((*nested.array())[0]);
    const Result<Value> read = unarchiveRoot(bytes, {});
    ASSERT_TRUE(read);
    EXPECT_GT(depthOf(*read), 50);
    EXPECT_LT(depthOf(*read), 1000);
}

TEST(HostileArchives, DeepNestingOfTheListItselfIsRefused) {
    BinaryPlistWriter plist;
    Ref nested = plist.array({});
    for (int depth = 0; depth < 200'000; ++depth)
        nested = plist.array({nested});
    EXPECT_FALSE(unarchiveRoot(plist.finish(nested), {}));
    for (const int levels : {100, 101}) { // the last that is read, in either form, and one more
        BinaryPlistWriter chain;
        Ref top = chain.array({});
        for (int level = 1; level < levels; ++level)
            top = chain.array({top});
        EXPECT_EQ(bool(checkPropertyList(chain.finish(top))), levels == 100) << levels;
        const QByteArray arrays = QByteArray("<array>").repeated(levels - 1);
        EXPECT_EQ(bool(checkPropertyList("<plist>" + arrays)), levels == 100) << levels;
    }

    const QByteArray opening = QByteArray("<array>").repeated(200'000);
    EXPECT_FALSE(unarchiveRoot(xmlArchive(opening + QByteArray("</array>").repeated(200'000), "1"), {}));
    EXPECT_FALSE(unarchiveRoot("<plist>" + opening, {}));
    EXPECT_TRUE(unarchiveRoot(
        xmlArchive(QByteArray("<array>").repeated(90) + QByteArray("</array>").repeated(90), "1"), {}));
    // Closing tags that only a scan would see don't make it flat.
    for (const char* hidden : {"<!-- </array> -->", "<![CDATA[</array>]]>", "<?x \" ?></array>\" ?>"})
        EXPECT_FALSE(unarchiveRoot("<plist>" + (QByteArray("<array>") + hidden).repeated(100'000), {}));
}

TEST(HostileArchives, WhatIsSharedCountsAsDeepAsWhereItIsMetAgain) {
    // Sixty levels seen first near the top are met again fifty levels down.
    const auto nested = [](int levelsBelow) {
        RawArchive archive;
        BinaryPlistWriter& plist = archive.plist;
        Ref shared = plist.array({});
        for (int level = 0; level < 60; ++level)
            shared = plist.array({shared});
        Ref deep = shared;
        for (int level = 0; level < levelsBelow; ++level)
            deep = plist.array({deep});
        archive.add(plist.array({shared, deep}));
        return archive.finish(archive.add(plist.string(u"root"_s)));
    };
    EXPECT_TRUE(unarchiveRoot(nested(20), {}));
    EXPECT_FALSE(unarchiveRoot(nested(50), {}));
}

TEST(HostileArchives, KeysThatHoldANulAreRefused) {
    BinaryPlistWriter plist;
    const Ref key = plist.string(u"a\0b"_s);
    const Ref first = plist.dictionary({key}, {plist.boolean(true)});
    EXPECT_FALSE(unarchiveTop(
        plist.finish(plist.dictionary({plist.key("$top"), plist.key("$objects")}, {first, plist.array({})})),
        {}));
    const Ref seenBefore = plist.array({key, first});
    EXPECT_FALSE(unarchiveTop(
        plist.finish(plist.dictionary({plist.key("$objects"), plist.key("$top")}, {seenBefore, first})), {}));
}

TEST(HostileArchives, SharingInTheListDoesNotMultiply) {
    BinaryPlistWriter plist;
    Ref lots = plist.string(u"lol"_s);
    for (int level = 0; level < 60; ++level)
        lots = plist.array({lots, lots, lots, lots, lots, lots, lots, lots});
    const Result<Value> read = unarchiveRoot(plist.finish(lots), {});
    ASSERT_FALSE(read);
    EXPECT_FALSE(read.error().text.isEmpty());

    const Ref big = plist.string(QString(100'000, u'x'));
    EXPECT_FALSE(unarchiveRoot(plist.finish(plist.array(std::vector<Ref>(100'000, big))), {}));
}

TEST(HostileArchives, SharingThroughReferencesIsDecodedOnceAndNotHandedToRecords) {
    RawArchive archive;
    const quint32 arrays = archive.addClass("NSArray");
    const quint32 notes = archive.addClass("Note");
    quint32 lots = archive.add(archive.plist.string(u"lol"_s));
    for (int level = 0; level < 60; ++level)
        lots = archive.add(archive.arrayOf(arrays, std::vector<quint32>(8, lots)));
    const quint32 root = archive.add(archive.instance(notes, "first", archive.plist.uid(lots)));
    const Result<Value> read = unarchiveRoot(archive.finish(root), classes());
    ASSERT_TRUE(read);
    const auto note = std::dynamic_pointer_cast<Note>(read->object());
    ASSERT_TRUE(note);
    EXPECT_TRUE(note->first.isNil());
}

TEST(HostileArchives, ManyRecordsWithOneHugeListStayWithinBounds) {
    RawArchive archive;
    const quint32 arrays = archive.addClass("NSArray");
    const quint32 notes = archive.addClass("Note");
    const quint32 shelves = archive.addClass("Shelf");
    const quint32 note = archive.add(archive.instance(notes, "first", archive.plist.uid(0)));
    const quint32 list = archive.add(archive.arrayOf(arrays, std::vector<quint32>(20'000, note)));
    std::vector<quint32> all;
    for (int i = 0; i < 20'000; ++i)
        all.push_back(archive.add(archive.instance(shelves, "notes", archive.plist.uid(list))));
    const quint32 root = archive.add(archive.arrayOf(arrays, all));
    const Result<Value> read = unarchiveRoot(archive.finish(root), classes());
    ASSERT_TRUE(read && read->array());
    size_t listed = 0;
    for (const Value& value : *read->array()) {
        const auto shelf = std::dynamic_pointer_cast<Shelf>(value.object());
        ASSERT_TRUE(shelf);
        listed += shelf->notes.size();
    }
    EXPECT_GE(listed, 20'000U);
    EXPECT_LE(listed, 2'000'000U);
}

TEST(HostileArchives, EveryTruncationIsAnError) {
    const QByteArray bytes = archiveRoot(Value::Array{u"text"_s, QByteArray("data"), 1.5, QColor(Qt::red)});
    for (qsizetype length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(unarchiveRoot(bytes.left(length), {})) << length;
}

TEST(HostileArchives, EverySingleWrongByteIsSurvived) {
    const QByteArray bytes =
        archiveRoot(Value::Dictionary{{Value(u"key"_s), Value(AttributedString(u"abc"_s))},
                                      {Value(u"image"_s), Value(Image::fromEncoded("tiff", {2, 2}))}});
    int readable = 0;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        for (const int value : {0x00, 0x0F, 0x7F, 0x80, 0xA1, 0xDF, 0xFF}) {
            QByteArray wrong = bytes;
            wrong[at] = char(value);
            readable += unarchiveRoot(wrong, classes()) ? 1 : 0;
        }
    }
    EXPECT_GT(readable, 0);
}

TEST(HostileArchives, AnotherArchiverOrVersionIsSaidSo) {
    const QByteArray bytes = archiveRoot(Value(u"take 1"_s));
    ASSERT_TRUE(unarchiveRoot(bytes, {}));
    QByteArray archiver = bytes, version = bytes;
    archiver.replace("NSKeyedArchiver", "XXKeyedArchiver"); // as long
    version.replace(QByteArray::fromHex("12000186a0"), QByteArray::fromHex("12000186a1"));
    ASSERT_NE(version, bytes);
    const auto another = unarchiveRoot(archiver, {});
    ASSERT_FALSE(another);
    EXPECT_TRUE(another.error().text.contains(u"another archiver"_s));
    const auto later = unarchiveRoot(version, {});
    ASSERT_FALSE(later);
    EXPECT_TRUE(later.error().text.contains(u"100001"_s));
}

TEST(HostileArchives, WhatIsNoArchiveIsAnError) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("bplist00"), QByteArray(4096, '\0'), QByteArray("{\"json\": 1}"),
          QByteArray("<plist><dict></dict></plist>"), QByteArray("<plist><array/></plist>")})
        EXPECT_FALSE(unarchiveRoot(bytes, {})) << bytes.left(20).toStdString();
}

TEST(XmlArchives, AreReadLikeBinaryOnes) {
    const Result<Value> read = unarchiveRoot(xmlArchive("<string>shot</string>", "1"), {});
    ASSERT_TRUE(read);
    EXPECT_EQ(read->string(), u"shot"_s);
}

TEST(Colours, OfOtherSpacesAreConverted) {
    const auto colour = [](qint64 space, const char* key, const QByteArray& text) {
        RawArchive archive;
        const quint32 colours = archive.addClass("NSColor");
        BinaryPlistWriter& plist = archive.plist;
        const quint32 root =
            archive.add(plist.dictionary({plist.key("$class"), plist.key("NSColorSpace"), plist.key(key)},
                                         {plist.uid(colours), plist.integer(space), plist.data(text)}));
        const Result<Value> read = unarchiveRoot(archive.finish(root), {});
        return read ? read->colour() : QColor();
    };
    EXPECT_EQ(colour(2, "NSRGB", QByteArray("1 0 0\0", 6)), QColor(255, 0, 0));
    EXPECT_EQ(colour(1, "NSRGB", "0 1 0 0"), QColor(0, 255, 0, 0));
    EXPECT_EQ(colour(3, "NSWhite", "1"), QColor(255, 255, 255));
    EXPECT_EQ(colour(4, "NSWhite", "1 0.4"), QColor(255, 255, 255, 102));
    EXPECT_EQ(colour(3, "NSWhite", "0.2 0.6"), QColor(51, 51, 51, 153));
    EXPECT_EQ(colour(5, "NSCMYK", "0 1 1 0 1"), QColor(255, 0, 0));
    EXPECT_EQ(colour(5, "NSCMYK", "0 1 1 0 0.4"), QColor(255, 0, 0, 102));
    EXPECT_FALSE(colour(5, "NSCMYK", "0 1 1").isValid());
    EXPECT_EQ(colour(1, "NSRGB", "7 nan -3"), QColor(255, 0, 0)); // clamped
    EXPECT_FALSE(colour(1, "NSRGB", "0.5 0.5").isValid());
    EXPECT_FALSE(colour(6, "NSRGB", "").isValid());
}

TEST(ForeignRecords, AreReadByTheirOwnRules) {
    RawArchive archive;
    BinaryPlistWriter& plist = archive.plist;
    const quint32 values = archive.addClass("NSValue");
    const auto value = [&](qint64 kind) {
        const Ref text = plist.uid(archive.add(plist.string(u"{3, 4}"_s)));
        return archive.add(
            plist.dictionary({plist.key("$class"), plist.key("NS.special"), plist.key("NS.pointval")},
                             {plist.uid(values), plist.integer(kind), text}));
    };
    const Ref word = plist.uid(archive.add(plist.string(u"word"_s)));
    const quint32 set = archive.add(plist.dictionary(
        {plist.key("$class"), plist.key("NS.object.10"), plist.key("NS.object.2"), plist.key("NS.object.x")},
        {plist.uid(archive.addClass("NSOrderedSet")), word, plist.integer(7), word}));
    const quint32 uneven = archive.add(plist.dictionary(
        {plist.key("$class"), plist.key("NS.keys"), plist.key("NS.objects")},
        {plist.uid(archive.addClass("NSDictionary")), plist.array({plist.uid(0), word, word}),
         plist.array({plist.integer(1), plist.integer(2)})}));
    const quint32 named = archive.add(plist.dictionary({plist.key("$class"), plist.key("NSColor")},
                                                       {plist.uid(archive.addClass("NSColor")), word}));
    const quint32 root = archive.add(
        archive.arrayOf(archive.addClass("NSArray"), {value(1), value(2), set, uneven, named}));
    const Result<Value> read = unarchiveRoot(archive.finish(root), {});
    ASSERT_TRUE(read && read->array() && read->array()->size() == 5U);
    const Value::Array& all = *read->array();
    ASSERT_TRUE(all[0].point());
    EXPECT_EQ(*all[0].point(), QPointF(3, 4));
    EXPECT_TRUE(all[1].isNil()) << "a size is no point";
    ASSERT_TRUE(all[2].array() && all[2].array()->size() == 2U) << "in the order of the numbers";
    EXPECT_TRUE((*all[2].array())[0].number());
    ASSERT_TRUE(all[3].dictionary() && all[3].dictionary()->size() == 1U) << "a nil key has no entry";
    EXPECT_EQ(numberToInt64(*all[3][u"word"].number()), 2);
    EXPECT_TRUE(all[4].isNil()) << "a text is no colour";
}
