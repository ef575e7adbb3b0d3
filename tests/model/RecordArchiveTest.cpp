#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"
#include "model/Session.h"

#include "support/RecordSamples.h"

#include <gtest/gtest.h>

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using test::sampleDrawing;
using test::sampleMovie;
using test::samplePlaylist;
using test::sessionOf;

/// The keys of the first object of a class (or of the root dictionary), as another reader of property lists
/// meets them.
class ArchiveKeys {
public:
    explicit ArchiveKeys(const QByteArray& bytes) {
        plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root_);
        objects_ = plist_dict_get_item(root_, "$objects");
    }
    ~ArchiveKeys() { plist_free(root_); }
    ArchiveKeys(const ArchiveKeys&) = delete;
    ArchiveKeys& operator=(const ArchiveKeys&) = delete;

    [[nodiscard]] QStringList ofClass(const char* name) const {
        for (uint32_t i = 0; i < plist_array_get_size(objects_); ++i)
            if (plist_t object = plist_array_get_item(objects_, i); classOf(object) == QLatin1String(name))
                return keysOf(object);
        return {};
    }
    [[nodiscard]] QStringList ofRoot() const {
        const plist_t root = target(plist_dict_get_item(plist_dict_get_item(root_, "$top"), "root"));
        const plist_t keys = plist_dict_get_item(root, "NS.keys");
        QStringList names;
        for (uint32_t i = 0; i < plist_array_get_size(keys); ++i)
            names << QString::fromUtf8(plist_get_string_ptr(target(plist_array_get_item(keys, i)), nullptr));
        return names;
    }
    [[nodiscard]] int count(const char* name) const {
        int found = 0;
        for (uint32_t i = 0; i < plist_array_get_size(objects_); ++i)
            found += classOf(plist_array_get_item(objects_, i)) == QLatin1String(name);
        return found;
    }

private:
    [[nodiscard]] plist_t target(plist_t reference) const {
        uint64_t uid = 0;
        plist_get_uid_val(reference, &uid);
        return plist_array_get_item(objects_, uint32_t(uid));
    }
    [[nodiscard]] QString classOf(plist_t object) const {
        if (plist_get_node_type(object) != PLIST_DICT) return {};
        const plist_t reference = plist_dict_get_item(object, "$class");
        if (!reference) return {};
        const plist_t name = plist_dict_get_item(target(reference), "$classname");
        return QString::fromUtf8(plist_get_string_ptr(name, nullptr));
    }
    static QStringList keysOf(plist_t object) {
        QStringList keys;
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(object, &iterator);
        for (;;) {
            char* key = nullptr;
            plist_t value = nullptr;
            plist_dict_next_item(object, iterator, &key, &value);
            if (!value) break;
            if (qstrcmp(key, "$class") != 0) keys << QString::fromUtf8(key);
            std::free(key);
        }
        std::free(iterator);
        return keys;
    }

    plist_t root_ = nullptr;
    plist_t objects_ = nullptr;
};

std::shared_ptr<Movie> roundTrip(const std::shared_ptr<Movie>& movie) {
    return copyMovies({movie}).at(0);
}

const char* const movieKeys =
    "filenameString filepathString filepathURL filepathBookmarkData mUserAudioTrackBookmarkData filenameURL "
    "thumbnail "
    "gradeIcon instanceIcon notesIcon drawingIcon bookmarkIcon grabIcon notes notes2 flag "
    "mMovieHasBeenVisited flagString "
    "fileSizeText frameRate frameRateText duration durationText mMovieAspectRatio mMovieHeight mMovieWidth "
    "mMovieDurationFrames mMovieDurationSeconds mMovieFPS mMovieTimeValuePerStep "
    "mMovieAdjustedDurationTimeValue "
    "creatingThumbnailText movieAspectRatio movieAspectRatioString mMovieResolutionString sortOrder iCount "
    "exposure "
    "contrast saturation gamma brightness redChannel greenChannel blueChannel applyGrade "
    "lastFrameVisitedTimeValue "
    "lastFrameVisitedTimeScale mMovieDrawings mMovieBookmarkArray bookmarkStore shouldRemoveAudioTracks "
    "removeVideoTracks "
    "mUserAudioTrack fileCreationDate statusColour isOneFrame thumbnailFrame";

TEST(RecordArchiveTest, RecordsStandInTheFileWithTheirKeysInOrder) {
    SessionContents contents = sessionOf({samplePlaylist({sampleMovie()})});
    {
        const ArchiveKeys keys(encodeSession(contents));
        const QStringList movie = keys.ofClass("Movie");
        EXPECT_EQ(movie.size(), 58);
        EXPECT_EQ(movie.join(u' '), QLatin1String(movieKeys));
        EXPECT_EQ(
            keys.ofClass("Bookmark").join(u' '),
            u"firstFrame mute lastFrame duration fps overlayString overlayString2 firstTC lastTC uniqueKey "
            "activeImage activeStrip drawings"_s);
        EXPECT_EQ(keys.ofClass("MovieBookmark").join(u' '),
                  u"mTimecode mFrameNumber mFrameString mDescription mNotes"_s);
        EXPECT_EQ(keys.ofClass("Playlist").join(u' '),
                  u"name directoryPath movieList isDivider playlistType status"_s);
        EXPECT_EQ(keys.ofRoot(), QStringList{u"playlists"_s});
    }
    {
        const auto movie = sampleMovie(); // what a person gave beyond them stands after all that every reader knows
        movie->inputColourSpace = u"ACEScg"_s;
        movie->firstFrameNumber = Number(qint64(1001));
        const QByteArray bytes = encodeSession(sessionOf({samplePlaylist({movie})}));
        EXPECT_EQ(ArchiveKeys(bytes).ofClass("Movie").join(u' '),
                  QLatin1String(movieKeys) + u" inputColourSpace firstFrameNumber"_s);
    }
    contents.playlists = {std::make_shared<Playlist>()};
    contents.playlists.front()->movieList.push_back(
        std::make_shared<Movie>()); // nil everywhere: the keys stay
    contents.version = SessionContents::Version();
    EXPECT_EQ(ArchiveKeys(encodeSession(contents)).ofClass("Movie").join(u' '), QLatin1String(movieKeys));
    EXPECT_EQ(ArchiveKeys(encodeSession(contents)).ofRoot().size(), 5);
    contents.lastSelectedPlaylistIndex = 3;
    EXPECT_EQ(ArchiveKeys(encodeSession(contents)).ofRoot().join(u' '),
              u"playlists lastSelectedPlaylistIndex majorVersion minorVersion patchVersion build"_s);
    EXPECT_EQ(decodeSession(encodeSession(contents))->lastSelectedPlaylistIndex, 3);
}

TEST(RecordArchiveTest, EveryFieldOfAMovieSurvives) {
    const auto written = sampleMovie();
    written->isModified = true;
    written->hasAdjustments = 4;
    const auto read = roundTrip(written);
    const Movie &w = *written, &r = *read;
    ASSERT_NE(read, written);
    EXPECT_EQ(r.filenameString, u"A001 ü.mov"_s);
    EXPECT_EQ(r.filepathString, w.filepathString);
    EXPECT_EQ(r.filepathURL, w.filepathURL);
    EXPECT_EQ(r.filenameURL, w.filenameURL);
    EXPECT_EQ(r.filepathBookmarkData, w.filepathBookmarkData);
    EXPECT_EQ(r.mUserAudioTrackBookmarkData, w.mUserAudioTrackBookmarkData);
    EXPECT_EQ(r.fileCreationDate, w.fileCreationDate);
    EXPECT_EQ(r.thumbnail.encoded(), w.thumbnail.encoded()) << "the picture's bytes are never made anew";
    EXPECT_EQ(r.thumbnail.size(), QSize(12, 8));
    const auto icons = [](const Movie& m) {
        return QStringList{m.instanceIcon.name(), m.gradeIcon.name(),    m.notesIcon.name(),
                           m.drawingIcon.name(),  m.bookmarkIcon.name(), m.flag.name(),
                           m.grabIcon.name()};
    };
    EXPECT_EQ(icons(r), icons(w));
    EXPECT_EQ(r.flagString, u"904"_s);
    EXPECT_EQ(r.creatingThumbnailText, w.creatingThumbnailText);
    EXPECT_EQ(r.statusColour.name(QColor::HexArgb), w.statusColour.name(QColor::HexArgb));
    EXPECT_EQ(r.notes->string(), w.notes->string());
    ASSERT_EQ(r.notes->runs().size(), 2U);
    EXPECT_TRUE(r.notes->runs().at(1).attributes.bold);
    EXPECT_EQ(r.notes->runs().at(1).attributes.colour.rgb(), QColor(Qt::red).rgb());
    EXPECT_EQ(r.notes2->string(), u"second"_s);
    EXPECT_EQ(r.sortOrder, 17);
    EXPECT_EQ(r.iCount, 2);
    EXPECT_TRUE(r.mMovieHasBeenVisited);
    EXPECT_EQ(r.mLastFrameVisited, w.mLastFrameVisited) << "flags in the scale's high half are kept";
    EXPECT_EQ(r.mThumbnailFrame, 48);
    EXPECT_EQ(QSize(r.mMovieWidth, r.mMovieHeight), QSize(1920, 1080));
    EXPECT_EQ(r.mMovieAspectRatio, w.mMovieAspectRatio);
    EXPECT_EQ(r.mMovieResolutionString, w.mMovieResolutionString);
    EXPECT_EQ(r.mMovieDurationSeconds, w.mMovieDurationSeconds);
    EXPECT_EQ(r.mMovieDurationFrames, w.mMovieDurationFrames);
    EXPECT_EQ(r.mMovieAdjustedDurationTimeValue, w.mMovieAdjustedDurationTimeValue);
    EXPECT_EQ(r.mMovieFPS, w.mMovieFPS);
    EXPECT_EQ(r.mMovieTimeValuePerStep, w.mMovieTimeValuePerStep);
    EXPECT_EQ(r.movieAspectRatio, w.movieAspectRatio);
    EXPECT_EQ(r.frameRate, w.frameRate);
    EXPECT_EQ(r.duration, w.duration);
    EXPECT_EQ((QStringList{r.movieAspectRatioString, r.fileSizeText, r.frameRateText, r.durationText}),
              (QStringList{u"1.78"_s, u"12.3"_s, u"24"_s, u"00:04"_s}));
    EXPECT_EQ(r.grade(), w.grade());
    EXPECT_TRUE(r.applyGrade && r.shouldRemoveAudioTracks && r.removeVideoTracks && r.isOneFrame);
    EXPECT_EQ(r.mUserAudioTrack, w.mUserAudioTrack);
    EXPECT_EQ(r.mMovieDrawings.at(u"12"_s), w.mMovieDrawings.at(u"12"_s));
    EXPECT_FALSE(r.isModified) << "memory only";
    EXPECT_EQ(r.hasAdjustments, 0);
}

TEST(RecordArchiveTest, BookmarksSurviveWithoutTheirLoop) {
    const auto movie = sampleMovie();
    const auto& written = movie->bookmarkStore.front();
    written->mute = true;
    written->loopStatus = true;
    written->loopImage = Image::named(u"loop_ON.png"_s);
    const auto copy = roundTrip(movie);
    const Bookmark &w = *written, &r = *copy->bookmarkStore.at(0);
    EXPECT_EQ((std::vector<qint64>{r.firstFrame, r.lastFrame, r.duration}),
              (std::vector<qint64>{10, 33, 24}));
    EXPECT_EQ(r.fps, 23.976F);
    EXPECT_EQ((QStringList{r.firstTC, r.lastTC, r.uniqueKey}),
              (QStringList{w.firstTC, w.lastTC, w.uniqueKey}));
    EXPECT_EQ(r.overlayString, u"text"_s);
    EXPECT_FALSE(r.overlayString2.isNull()) << "an empty text is no missing text";
    EXPECT_EQ(r.activeImage.name(), u"NSStatusNone"_s);
    EXPECT_TRUE(r.activeStrip.isNil());
    EXPECT_EQ(r.drawings, w.drawings);
    EXPECT_TRUE(r.mute);
    EXPECT_FALSE(r.loopStatus);
    EXPECT_EQ(r.loopImage.name(), u"loop_OFF.png"_s);
    const MovieBookmark& old = *copy->mMovieBookmarkArray.at(0);
    EXPECT_EQ(old.mFrameNumber, Number(qint64(25)));
    EXPECT_EQ((QStringList{old.mTimecode, old.mFrameString, old.mDescription}),
              (QStringList{u"01:00:00:00"_s, u"25"_s, u"old"_s}));
    EXPECT_TRUE(old.mNotes.isNull());
}

/// What stands in an archive under chosen keys only.
class LooseRecord : public Archivable {
public:
    LooseRecord(const char* className, std::map<std::string, Value> fields)
        : className_(className)
        , fields_(std::move(fields)) {}
    [[nodiscard]] const char* archiveClassName() const override { return className_; }
    void encodeWithCoder(Encoder& coder) const override {
        for (const auto& [key, value] : fields_)
            coder.encode(key.c_str(), value);
    }
    void initWithCoder(const Decoder&) override {}

private:
    const char* className_;
    std::map<std::string, Value> fields_;
};

template<class Record>
std::shared_ptr<Record> decoded(const char* className, std::map<std::string, Value> fields) {
    const auto loose = std::make_shared<LooseRecord>(className, std::move(fields));
    const auto root = unarchiveRoot(archiveRoot(Value(std::shared_ptr<Archivable>(loose))), recordClasses());
    return std::dynamic_pointer_cast<Record>((*root).object());
}

TEST(RecordArchiveTest, MissingKeysGiveNilAndZero) {
    const auto movie = decoded<Movie>("Movie", {});
    ASSERT_TRUE(movie);
    EXPECT_TRUE(movie->flagString.isNull());
    EXPECT_FALSE(movie->notes.has_value());
    EXPECT_TRUE(movie->bookmarkStore.isNil && movie->mMovieBookmarkArray.isNil);
    EXPECT_EQ(movie->contrast, 0.0);
    EXPECT_EQ(movie->mLastFrameVisited, (MediaTime{0, 0, 0}));
    EXPECT_EQ(movie->mThumbnailFrame, 0);
    EXPECT_FALSE(movie->applyGrade);
    const auto playlist = decoded<Playlist>("Playlist", {{"name", u"Day 1"_s}});
    ASSERT_TRUE(playlist);
    EXPECT_EQ(playlist->name, u"Day 1"_s);
    EXPECT_TRUE(playlist->playlistType.isNull());
    EXPECT_TRUE(playlist->itemCount.isNull());
    EXPECT_FALSE(playlist->isDivider.has_value());
    EXPECT_TRUE(playlist->movieList.isNil);
    EXPECT_FALSE(decoded<Bookmark>("Bookmark", {})->drawings.hasKeys);
}

/// With numbers that a stranger's file may hold, whatever is computed from a record stays defined (the suite runs with
/// undefined-behaviour checks) and says something.
TEST(RecordArchiveTest, NumbersThatNoMovieHasAreBoundedWhereTheyAreRead) {
    using Limits = std::numeric_limits<double>;
    const std::vector<Number> strange{Number(qint64(-1)),
                                      Number(std::numeric_limits<qint64>::min()),
                                      Number(std::numeric_limits<qint64>::max()),
                                      Number(std::numeric_limits<qint64>::min() + 1),
                                      Number(0.0),
                                      Number(-0.49),
                                      Number(1e-300),
                                      Number(1e300),
                                      Number(-Limits::infinity()),
                                      Number(Limits::infinity()),
                                      Number(Limits::quiet_NaN())};
    for (const Number& number : strange) {
        std::map<std::string, Value> fields, marks;
        for (const QByteArray& key : QByteArray(movieKeys).split(' '))
            fields[key.toStdString()] = Value(number);
        for (const char* key : {"firstFrame", "lastFrame", "duration", "fps"})
            marks[key] = Value(number);
        const auto movie = decoded<Movie>("Movie", fields);
        const auto bookmark = decoded<Bookmark>("Bookmark", marks);
        ASSERT_TRUE(movie && bookmark);
        EXPECT_GE(bookmark->fps, 0);
        EXPECT_LE(bookmark->fps, 100'000);
        EXPECT_GE(movie->mMovieFPS, 0);
        EXPECT_TRUE(std::isfinite(movie->mMovieDurationSeconds) && std::isfinite(movie->mMovieAspectRatio));
        for (const double graded : {movie->exposure, movie->contrast, movie->gamma, movie->redChannel})
            EXPECT_TRUE(std::isfinite(graded));
        movie->addICount();
        EXPECT_TRUE(std::isfinite(movie->mLastFrameVisited.seconds()));
        EXPECT_FALSE(durationTextOf(movie->mMovieDurationSeconds).isEmpty());
        bookmark->updateDuration();
        bookmark->updateFirstFrame();
        bookmark->updateLastFrame();
        bookmark->computeTimecodeWithOffset();
        EXPECT_FALSE(bookmark->firstTC.isEmpty() || bookmark->lastTC.isEmpty());
        movie->bookmarkStore.push_back(bookmark);
        EXPECT_LE(movie->bookmarksForFrame(1).size(), 1U);
        EXPECT_LE(std::abs(bookmark->firstFrame), qint64(1) << 60) << "there is room to add";
    }
}

TEST(RecordArchiveTest, WrongTypesGiveNilAndZero) {
    std::map<std::string, Value> wrong, numbers;
    for (const QByteArray& key : QByteArray(movieKeys).split(' ')) {
        wrong[key.toStdString()] =
            Value(Value::Array{Value(1), Value(u"x"_s), Value(Value::Dictionary{{1, 2}})});
        numbers[key.toStdString()] = Value(Number(std::numeric_limits<double>::quiet_NaN()));
    }
    const auto movie = decoded<Movie>("Movie", wrong);
    ASSERT_TRUE(movie);
    EXPECT_TRUE(movie->filenameString.isNull());
    EXPECT_TRUE(movie->thumbnail.isNil());
    EXPECT_EQ(movie->sortOrder, 0);
    EXPECT_TRUE(movie->bookmarkStore.empty() && !movie->bookmarkStore.isNil);
    EXPECT_EQ(decoded<Movie>("Movie", numbers)->mMovieWidth, 0);
    const auto drawing = Value(Value::Dictionary{
        {u"strokesArray"_s, Value::Array{Value(1), Value(Value::Array{Value(QPointF(1, 2)), Value(u"p"_s),
                                                                      Value(QPointF(qInf(), 0))})}},
        {u"brushTypeArray"_s, Value::Array{Value(u"a"_s), Value(0)}},
        {u"widthArray"_s, Value(5)}});
    const Drawing read = decoded<Bookmark>("Bookmark", {{"drawings", drawing}})->drawings;
    const Stroke unreadable{.brushType = 1}, eraser{.points = {QPointF(1, 2)}, .brushType = 0};
    EXPECT_EQ(read.strokes, (std::vector{unreadable, eraser})) << "what a list lacks is the default";
    // A list beyond the strokes is left out, and five of one length are written.
    auto longer = *drawing.dictionary();
    longer.push_back({u"opacityArray"_s, Value::Array{Value(0.5), Value(0.25), Value(0.125)}});
    const Value written = Drawing::fromValue(Value(longer)).toValue();
    for (const char* list : {"strokesArray", "brushTypeArray", "colourArray", "widthArray", "opacityArray"})
        EXPECT_EQ(written[QString::fromLatin1(list)].array()->size(), 2U) << list;
    const auto reals = Value(
        Value::Dictionary{{u"strokesArray"_s, Value::Array{Value(1), Value(1), Value(1)}},
                          {u"widthArray"_s, Value::Array{Value(u"wide"_s), Value(qInf()), Value(3)}},
                          {u"opacityArray"_s, Value::Array{Value(0.25), Value(u"thin"_s), Value(qQNaN())}}});
    const Drawing damaged = decoded<Bookmark>("Bookmark", {{"drawings", reals}})->drawings;
    EXPECT_EQ(damaged.strokes,
              (std::vector<Stroke>{
                  {.width = 10, .opacity = 0.25}, {.width = 10, .opacity = 1}, {.width = 3, .opacity = 1}}));
}

TEST(RecordArchiveTest, HeightOfARecordWithoutOneIsItsPathsNumber) {
    EXPECT_EQ(decoded<Movie>("Movie", {{"filepathString", u"/a/b.mov"_s}})->mMovieHeight, 0);
    EXPECT_EQ(decoded<Movie>("Movie", {{"filepathString", u"720/b.mov"_s}})->mMovieHeight, 720);
    EXPECT_EQ(decoded<Movie>("Movie", {{"filepathString", u"720/b.mov"_s}, {"mMovieHeight", Value(5)}})
                  ->mMovieHeight,
              5);
}

TEST(RecordArchiveTest, SortOrderIsWrittenWholeAndReadWith32Bits) {
    auto movie = std::make_shared<Movie>(u"/a.mov"_s);
    for (const auto& [written, read] : std::vector<std::pair<qint64, qint64>>{
             {Q_INT64_C(1) << 32, 0}, {(Q_INT64_C(1) << 32) + 5, 5}, {99999, 99999}, {-1, -1}}) {
        movie->sortOrder = written;
        EXPECT_EQ(roundTrip(movie)->sortOrder, read);
    }
}

TEST(RecordArchiveTest, FrameKeysOfOlderDrawingsMayBeNumbers) {
    const Value byFrame(Value::Dictionary{{Value(12), sampleDrawing(1).toValue()},
                                          {u"13"_s, sampleDrawing(2).toValue()},
                                          {Value(QPointF()), sampleDrawing(2).toValue()}});
    const auto movie = decoded<Movie>("Movie", {{"mMovieDrawings", byFrame}});
    ASSERT_EQ(movie->mMovieDrawings.size(), 2U);
    EXPECT_EQ(movie->mMovieDrawings.at(u"12"_s), sampleDrawing(1));
    EXPECT_EQ(roundTrip(movie)->mMovieDrawings, movie->mMovieDrawings);
}

TEST(RecordArchiveTest, MovieInTwoPlaylistsStaysOneObject) {
    const auto shared = sampleMovie();
    const auto first = samplePlaylist({shared, std::make_shared<Movie>(u"/b.mov"_s)});
    const auto second = samplePlaylist({shared, shared});
    const auto bytes = encodeSession(sessionOf({first, second}));
    EXPECT_EQ(ArchiveKeys(bytes).count("Movie"), 2);
    const auto read = decodeSession(bytes);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->playlists.size(), 2U);
    const auto &one = read->playlists[0]->movieList, &two = read->playlists[1]->movieList;
    EXPECT_EQ(one.at(0), two.at(0));
    EXPECT_EQ(two.at(0), two.at(1));
    EXPECT_NE(one.at(0), one.at(1));
    EXPECT_EQ(encodeSession(*read), bytes) << "read and saved again, nothing has changed";
}

TEST(RecordArchiveTest, RootsThatAreNoSessionHoldNoPlaylists) {
    for (const Value& root : {Value(u"text"_s), Value(Value::Dictionary{{u"playlists"_s, Value(1)}}),
                              Value(Value::Dictionary{{u"lastSelectedPlaylistIndex"_s, Value(2)}})}) {
        const auto read = decodeSession(archiveRoot(root));
        ASSERT_TRUE(read);
        EXPECT_FALSE(read->hasPlaylists);
        EXPECT_TRUE(read->playlists.empty());
    }
    EXPECT_FALSE(decodeSession("no archive"));
    EXPECT_FALSE(decodeSession({}));
}

TEST(RecordArchiveTest, SnapshotIsIndependentAndKeepsIdentity) {
    const auto shared = sampleMovie();
    SessionContents contents = sessionOf({samplePlaylist({shared}), samplePlaylist({shared})});
    contents.lastSelectedPlaylistIndex = 1;
    const QByteArray before = encodeSession(contents);
    const SessionContents snapshot = snapshotOf(contents);
    shared->setFlag(901);
    shared->bookmarkStore.front()->drawings.removeLastStroke();
    shared->mMovieBookmarkArray.front()->mNotes = u"later"_s;
    contents.playlists.front()->movieList.clear();
    EXPECT_EQ(snapshot.playlists[0]->movieList.at(0), snapshot.playlists[1]->movieList.at(0));
    EXPECT_EQ(encodeSession(snapshot), before);
}

TEST(RecordArchiveTest, SnapshotKeepsIdentityOfWhatOnlyTheListsHold) {
    SessionContents contents = sessionOf({samplePlaylist({sampleMovie()}), samplePlaylist({})});
    contents.playlists[1]->movieList.push_back(contents.playlists[0]->movieList[0]);
    contents.playlists[0]->movieList.push_back(sampleMovie());
    contents.playlists[0]->movieList[1]->bookmarkStore.push_back(
        contents.playlists[0]->movieList[0]->bookmarkStore.front());
    contents.playlists.push_back(contents.playlists[0]);
    const SessionContents snapshot = snapshotOf(contents);
    const auto& movies = snapshot.playlists[0]->movieList;
    EXPECT_EQ(movies[0], snapshot.playlists[1]->movieList[0]);
    EXPECT_EQ(movies[1]->bookmarkStore.back(), movies[0]->bookmarkStore.front());
    EXPECT_EQ(snapshot.playlists[2], snapshot.playlists[0]);
    EXPECT_EQ(encodeSession(snapshot), encodeSession(contents));
}

} // namespace
} // namespace daylark
