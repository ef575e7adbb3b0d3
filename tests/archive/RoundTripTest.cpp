#include "archive/Records.h"

#include <QBuffer>

#include <gmock/gmock.h>

#include <plist/plist.h>

using namespace daylark;
using namespace daylark::archivetest;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<Note> noteWith(Value first, Value second = {}) {
    auto note = std::make_shared<Note>();
    note->first = std::move(first);
    note->second = std::move(second);
    return note;
}

AttributedString styledText() {
    AttributedString text;
    text.append(u"plain "_s);
    text.append(u"bold"_s, {.bold = true});
    text.append(u" both "_s,
                {.bold = true, .italic = true, .fontFamily = u"Courier New"_s, .pointSize = 18.5});
    text.append(u"red \U0001F3AC "_s, {.underline = true, .colour = QColor(Qt::red)});
    text.append(u"bold"_s, {.bold = true});
    text.append(u" slanted "_s, {.italic = true});
    text.append(u"family"_s, {.fontFamily = u"Courier New"_s});
    text.append(u"its name reads like a style"_s, {.fontFamily = u"Demi-Bold"_s});
    text.append(u"large"_s, {.pointSize = 10000});
    return text;
}

/// The library's own view of an archive's object: what stands at the end of a path of keys and indices.
plist_t rootObject(plist_t tree) {
    uint64_t uid = 0;
    plist_get_uid_val(plist_access_path(tree, 2, "$top", "root"), &uid);
    return plist_array_get_item(plist_dict_get_item(tree, "$objects"), uint32_t(uid));
}

} // namespace

TEST(Numbers, KeepTheirKind) {
    const std::vector<Number> numbers{true,
                                      false,
                                      qint64(0),
                                      qint64(1),
                                      qint64(-1),
                                      qint64(255),
                                      qint64(256),
                                      qint64(65536),
                                      qint64(1) << 32,
                                      std::numeric_limits<qint64>::min(),
                                      std::numeric_limits<qint64>::max(),
                                      std::numeric_limits<quint64>::max(),
                                      0.0,
                                      1.0,
                                      23.976,
                                      -1e300};
    Value::Array values;
    for (const Number& number : numbers)
        values.emplace_back(number);
    const Value read = roundTrip(values);
    ASSERT_TRUE(read.array());
    std::vector<Number> back;
    for (const Value& value : *read.array()) {
        ASSERT_TRUE(value.number());
        back.push_back(*value.number());
    }
    EXPECT_EQ(back, numbers);
}

TEST(Numbers, ConvertWithoutOverflow) {
    EXPECT_EQ(numberToInt64(-2.9), -2);
    EXPECT_EQ(numberToInt64(1e19), 0);
    EXPECT_EQ(numberToInt64(9223372036854775808.0), 0);
    EXPECT_EQ(numberToInt64(-9223372036854775808.0), std::numeric_limits<qint64>::min());
    EXPECT_EQ(numberToInt64(quint64(std::numeric_limits<qint64>::max())), std::numeric_limits<qint64>::max());
    EXPECT_EQ(numberToInt64(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(numberToInt64(std::numeric_limits<quint64>::max()), 0);
    EXPECT_TRUE(numberToBool(0.25));
    EXPECT_FALSE(numberToBool(qint64(0)));
}

TEST(Strings, SurviveInAnyScriptAndLength) {
    for (const QString& text :
         {u""_s, u"a"_s, u"14 characters."_s, u"fifteen letters"_s, u"Überblick"_s, u"日本語 \U0001F3AC"_s,
          QString(300, u'x'), QString(70000, u'é'), QString(QChar(0)) + u"after"_s}) {
        const Value read = roundTrip(text);
        ASSERT_TRUE(read.isString());
        EXPECT_EQ(read.string(), text);
    }
}

TEST(Strings, NilIsNotEmpty) {
    const auto read = std::dynamic_pointer_cast<Note>(roundTrip(noteWith(QString(), u""_s)).object());
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->first.isNil());
    EXPECT_TRUE(read->second.isString());
    const auto data =
        std::dynamic_pointer_cast<Note>(roundTrip(noteWith(QByteArray(), QByteArray(""))).object());
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->first.isNil());
    EXPECT_TRUE(data->second.isData());
}

TEST(ValueClasses, SurviveTheRoundTrip) {
    const QByteArray data("\0\x01\xFF tail", 8);
    EXPECT_EQ(roundTrip(data).data(), data);
    const Date date{625390557.003659};
    ASSERT_TRUE(roundTrip(date).date());
    EXPECT_EQ(*roundTrip(date).date(), date);
    const ArchivedUrl url{u"shots/a%20b.mov"_s, u"file:///Volumes/dailies/"_s};
    ASSERT_TRUE(roundTrip(url).url());
    EXPECT_EQ(*roundTrip(url).url(), url);
    const QPointF point(-0.1, 1080.25);
    ASSERT_TRUE(roundTrip(point).point());
    EXPECT_EQ(*roundTrip(point).point(), point);
    const QUuid uuid = QUuid::createUuid();
    ASSERT_TRUE(roundTrip(uuid).uuid());
    EXPECT_EQ(*roundTrip(uuid).uuid(), uuid);
    for (const QColor& colour : {QColor(1, 2, 3), QColor(255, 0, 128, 77), QColor::fromHsv(200, 120, 90)})
        EXPECT_EQ(roundTrip(colour).colour(), colour.toRgb());
}

TEST(ValueClasses, DictionariesKeepTheirOrderAndAnyKindOfKey) {
    const Value::Dictionary dictionary{
        {Value(u"z"_s), Value(1)}, {Value(40400), Value(u"number key"_s)}, {Value(u"a"_s), Value()}};
    const Value read = roundTrip(dictionary);
    ASSERT_TRUE(read.dictionary());
    ASSERT_EQ(read.dictionary()->size(), 3U);
    EXPECT_EQ((*read.dictionary())[0].first.string(), u"z"_s);
    EXPECT_EQ(numberToInt64(*(*read.dictionary())[1].first.number()), 40400);
    EXPECT_TRUE((*read.dictionary())[2].second.isNil());
    EXPECT_EQ(numberToInt64(*read[u"z"].number()), 1);
    EXPECT_TRUE(read[u"missing"].isNil());
}

TEST(AttributedStrings, KeepTheirRuns) {
    for (const AttributedString& text : {AttributedString(), AttributedString(u"one run"_s), styledText()}) {
        const Value read = roundTrip(text);
        ASSERT_TRUE(read.attributedString());
        EXPECT_EQ(*read.attributedString(), text);
    }
}

TEST(AttributedStrings, EqualNeighboursAreOneRun) {
    AttributedString text;
    text.append(u"a"_s, {.bold = true});
    text.append(u""_s, {.italic = true});
    text.append(u"b"_s, {.bold = true});
    ASSERT_EQ(text.runs().size(), 1U);
    EXPECT_EQ(text.runs()[0].length, 2);
}

TEST(Images, KeepTheirBytesSizeAndName) {
    QImage picture(100, 56, QImage::Format_RGB32);
    picture.fill(QColor(10, 200, 30));
    const Image image = Image::fromQImage(picture);
    ASSERT_TRUE(image.encoded().startsWith("II") || image.encoded().startsWith("MM"));
    const Value read = roundTrip(image);
    ASSERT_TRUE(read.image());
    EXPECT_EQ(*read.image(), image);
    EXPECT_EQ(read.image()->size(), QSize(100, 56));
    EXPECT_EQ(read.image()->decode().pixelColor(99, 55), QColor(10, 200, 30));
}

TEST(Images, TransparencySurvivesTheTiff) {
    QImage picture(3, 2, QImage::Format_ARGB32);
    picture.fill(QColor(0, 0, 255, 0));
    EXPECT_EQ(Image::fromQImage(picture).decode().pixelColor(1, 1).alpha(), 0);
}

TEST(Images, WhatIsNoPictureDecodesToNone) {
    EXPECT_TRUE(Image::fromEncoded("II*\0 not really", {1, 1}).decode().isNull());
    EXPECT_TRUE(Image::named(u"flag_Red.png"_s).decode().isNull());
    EXPECT_TRUE(Image::fromQImage({}).isNil());
}

/// Other readers follow what a picture names: a vector picture opened files, and a pipe among them hung the program.
TEST(Images, OnlyPicturesOfPixelsAreDecodedWhateverTheyAreCalled) {
    const QByteArray vector =
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8"><rect width="8" height="8"/></svg>)";
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const auto as = [&picture](const char* format) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(picture.save(&buffer, format)) << format;
        return buffer.data();
    };
    for (const QByteArray& other : {vector, QByteArray("<?xml version='1.0'?>" + vector), as("bmp"), as("ppm"), as("xpm")})
        EXPECT_TRUE(Image::fromEncoded(other, {8, 8}, u"thumbnail.png"_s).decode().isNull()) << other.left(8).toStdString();
    for (const char* format : {"tiff", "png", "jpeg"})
        EXPECT_EQ(Image::fromEncoded(as(format), {4, 4}).decode().size(), picture.size()) << format;
}

TEST(Images, OneNameWithTwoPicturesStaysTwo) {
    const Image old = Image::fromEncoded("old picture", {2, 2}, u"flag_Red.png"_s),
                redrawn = Image::fromEncoded("new picture", {2, 2}, u"flag_Red.png"_s);
    const Value read = roundTrip(Value::Array{old, redrawn});
    ASSERT_TRUE(read.array() && read.array()->size() == 2U);
    EXPECT_EQ(*(*read.array())[0].image(), old);
    EXPECT_EQ(*(*read.array())[1].image(), redrawn);
}

TEST(Images, ANamedIconIsWrittenOnceWithItsPicture) {
    Value::Array icons(50, Value(Image::named(u"flag_Green.png"_s)));
    int asked = 0;
    const QByteArray tiff(20000, 't');
    const QByteArray bytes = archiveRoot(icons, [&](const QString& name) {
        ++asked;
        EXPECT_EQ(name, u"flag_Green.png"_s);
        return tiff;
    });
    EXPECT_EQ(asked, 1);
    EXPECT_LT(bytes.size(), 2 * tiff.size());
    const Result<Value> read = unarchiveRoot(bytes, {});
    ASSERT_TRUE(read && read->array() && read->array()->size() == 50U);
    const Image* last = read->array()->back().image();
    ASSERT_TRUE(last);
    EXPECT_EQ(last->name(), u"flag_Green.png"_s);
    EXPECT_EQ(last->encoded(), tiff);
}

TEST(Records, SharedOnesStayOne) {
    const auto shared = noteWith(u"shared"_s);
    auto left = std::make_shared<Shelf>();
    auto right = std::make_shared<Shelf>();
    left->notes = {shared, noteWith(u"left"_s)};
    right->notes = {shared};
    const Value read = roundTrip(Value::Array{left, right});
    ASSERT_TRUE(read.array());
    const auto leftRead = std::dynamic_pointer_cast<Shelf>((*read.array())[0].object());
    const auto rightRead = std::dynamic_pointer_cast<Shelf>((*read.array())[1].object());
    ASSERT_TRUE(leftRead && rightRead);
    ASSERT_EQ(leftRead->notes.size(), 2U);
    EXPECT_EQ(leftRead->notes[0], rightRead->notes[0]);
    EXPECT_NE(leftRead->notes[0], shared);
    EXPECT_EQ(leftRead->notes[1]->first.string(), u"left"_s);
}

TEST(Records, ANilListIsToldFromAnEmptyOne) {
    auto shelf = std::make_shared<Shelf>();
    shelf->notes.isNil = true;
    const auto nil = std::dynamic_pointer_cast<Shelf>(deepCopy(shelf, classes()).object());
    shelf->notes.isNil = false;
    const auto empty = std::dynamic_pointer_cast<Shelf>(deepCopy(shelf, classes()).object());
    ASSERT_TRUE(nil && empty);
    EXPECT_TRUE(nil->notes.isNil);
    EXPECT_FALSE(empty->notes.isNil);
}

TEST(Records, UnknownClassesAreNilAndTheRestIsIntact) {
    const QByteArray bytes = archiveRoot(Value::Array{noteWith(u"gone"_s), u"stays"_s});
    const Result<Value> read = unarchiveRoot(bytes, {});
    ASSERT_TRUE(read && read->array());
    EXPECT_TRUE((*read->array())[0].isNil());
    EXPECT_EQ((*read->array())[1].string(), u"stays"_s);
}

TEST(Records, AFieldOfAnotherKindReadsAsNothing) {
    struct Probe : Archivable {
        [[nodiscard]] const char* archiveClassName() const override { return "Note"; }
        void encodeWithCoder(Encoder&) const override {}
        void initWithCoder(const Decoder& coder) override {
            EXPECT_TRUE(coder.decodeString("first").isNull());
            EXPECT_TRUE(coder.decodeImage("first").isNil());
            EXPECT_TRUE(coder.decodeUrl("second").isEmpty());
            EXPECT_FALSE(coder.decodeBool("second"));
            EXPECT_TRUE(coder.decodeList<Note>("second").isNil);
            EXPECT_EQ(coder.decodeIntegerValue("second"), -12);
            EXPECT_EQ(coder.decodeInt64("first"), qint64(1) << 32);
            EXPECT_EQ(coder.decodeInt32("first"), 0); // the low half, as it stands in the archive
            EXPECT_EQ(coder.decodeDouble("absent"), 0);
            EXPECT_FALSE(coder.decodeDate("first") || coder.decodeText("first") ||
                         coder.decodeNumber("second"));
            finished = true;
        }
        bool finished = false;
    };
    const auto probe = std::make_shared<Probe>();
    const ArchiveClasses probing{{u"Note"_s, [&] { return probe; }}};
    ASSERT_TRUE(unarchiveRoot(archiveRoot(noteWith(qint64(1) << 32, u" -12 frames"_s)), probing));
    EXPECT_TRUE(probe->finished);
}

TEST(Records, FieldsConvertAsTheyAreAskedFor) {
    struct Probe : Archivable {
        [[nodiscard]] const char* archiveClassName() const override { return "Note"; }
        void encodeWithCoder(Encoder&) const override {}
        void initWithCoder(const Decoder& coder) override {
            url = coder.decodeUrl("first");
            real = coder.decodeFloat("second");
            integer = coder.decodeIntegerValue("second");
        }
        QUrl url;
        float real = 0;
        qint32 integer = 0;
    };
    const auto probed = [](const Value& first, const Value& second) {
        const auto probe = std::make_shared<Probe>();
        EXPECT_TRUE(unarchiveRoot(archiveRoot(noteWith(first, second)), {{u"Note"_s, [&] { return probe; }}}));
        return probe;
    };
    EXPECT_EQ(probed(ArchivedUrl{u"day%202/a.mov"_s, u"file:///Volumes/dailies/day%201/"_s}, {})->url,
              QUrl(u"file:///Volumes/dailies/day%201/day%202/a.mov"_s));
    EXPECT_EQ(probed(ArchivedUrl{u"file:///a.mov"_s, {}}, {})->url, QUrl(u"file:///a.mov"_s));
    constexpr float infinite = std::numeric_limits<float>::infinity();
    EXPECT_EQ(probed({}, 1e300)->real, infinite);
    EXPECT_EQ(probed({}, -1e300)->real, -infinite);
    EXPECT_EQ(probed({}, u"+99999999999999"_s)->integer, std::numeric_limits<qint32>::max());
    EXPECT_EQ(probed({}, u"-99999999999999"_s)->integer, std::numeric_limits<qint32>::min());
    EXPECT_EQ(probed({}, u"12x34"_s)->integer, 12);
    EXPECT_EQ(probed({}, 41)->integer, 41);
}

TEST(Archives, AreTheSameBytesForTheSameGraph) {
    const auto build = [] {
        return Value(Value::Dictionary{{Value(u"a"_s), Value(noteWith(styledText(), 0.5))},
                                       {Value(u"b"_s), Value(QColor(Qt::blue))}});
    };
    EXPECT_EQ(archiveRoot(build()), archiveRoot(build()));
    EXPECT_EQ(archiveRoot(roundTrip(build())), archiveRoot(build()));
}

TEST(Archives, AreReadableByAnotherReader) {
    const QByteArray bytes = archiveRoot(noteWith(u"take 1"_s, Date{12.5}));
    plist_t tree = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &tree);
    ASSERT_TRUE(tree);
    EXPECT_TRUE(plist_string_val_compare(plist_dict_get_item(tree, "$archiver"), "NSKeyedArchiver") == 0);
    EXPECT_EQ(plist_uint_val_compare(plist_dict_get_item(tree, "$version"), 100000), 0);
    const plist_t objects = plist_dict_get_item(tree, "$objects");
    EXPECT_EQ(plist_string_val_compare(plist_array_get_item(objects, 0), "$null"), 0);
    const auto follow = [objects](plist_t object, const char* key) {
        uint64_t uid = 0;
        plist_get_uid_val(plist_dict_get_item(object, key), &uid);
        return plist_array_get_item(objects, uint32_t(uid));
    };
    const plist_t note = rootObject(tree);
    EXPECT_EQ(plist_string_val_compare(follow(note, "first"), "take 1"), 0);
    EXPECT_EQ(plist_real_val_compare(plist_dict_get_item(follow(note, "second"), "NS.time"), 12.5), 0);
    EXPECT_EQ(plist_string_val_compare(plist_dict_get_item(follow(note, "$class"), "$classname"), "Note"), 0);
    plist_free(tree);
}
