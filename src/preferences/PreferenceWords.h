#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <concepts>

namespace daylark {

/// The preferences that are one of several words: an enumeration each, and how its values are spelt where
/// they are stored and in the menus that offer them. Any other stored word stays stored and reads as
/// `otherwise`, which may be a value without a word of its own. Values only; any thread.

enum class RepeatMode { loopMovie, oneShot, pingPong, playMovieOnce, playPlaylistOnce, loopPlaylist, none };
enum class StartFrame { first, second, middle, current, lastVisited, firstBookmark, sameFrame, none };
enum class ThumbnailFrame { first, second, middle, last, other };
enum class SnapshotFormat { jpeg, png, tiff, none };
enum class SnapshotScale { sameAsWindow, half, quarter, setWidth, pictureSize };
enum class SnapshotNameSource { sameAsSource, userDefined, none };
enum class SnapshotNameFormat { frameNumberLast, snapshotNumberLast, snapshotNumberFirst };
enum class DrawingsShown { always, onlyWhenPaused, withDrawingTools, unchanged };
enum class DrawingBackground { picture, black, white };
enum class TimecodePlace { fixed, floating };
enum class RendererChoice { automatic, software, openGl };
enum class FirstFrameNumber { one, thousandAndOne, timecode, other };
enum class MissingPictures { hold, black, slate };
enum class ScopeKind { waveform, parade, vectorscope, histogram };
enum class FindInput { filepathsAndNames, filenames };
enum class FindSearch { allPlaylists };

template<class E>
struct PreferenceWords;

template<>
struct PreferenceWords<RepeatMode> {
    static constexpr std::array spelt{"Loop Movie",      "One Shot",           "Ping-Pong",
                                      "Play Movie Once", "Play Playlist Once", "Loop Playlist"};
    static constexpr RepeatMode otherwise = RepeatMode::none;
};
template<>
struct PreferenceWords<StartFrame> {
    static constexpr std::array spelt{"First Frame",   "Second Frame",       "Middle Frame",
                                      "Current Frame", "Last Visited Frame", "First Bookmark",
                                      "Same Frame"};
    static constexpr StartFrame otherwise = StartFrame::none;
};
template<>
struct PreferenceWords<ThumbnailFrame> {
    static constexpr std::array spelt{"First Frame", "Second Frame", "Middle Frame", "Last Frame"};
    static constexpr ThumbnailFrame otherwise = ThumbnailFrame::other;
};
template<>
struct PreferenceWords<SnapshotFormat> {
    static constexpr std::array spelt{"JPEG", "PNG", "TIFF"};
    static constexpr SnapshotFormat otherwise = SnapshotFormat::none;
};
template<>
struct PreferenceWords<SnapshotScale> {
    static constexpr std::array spelt{"Same As Window", "Half Window Size", "Quarter Window Size",
                                      "Set Width (maintains window ratio)", "Picture Size"};
    static constexpr SnapshotScale otherwise = SnapshotScale::sameAsWindow;
};
template<>
struct PreferenceWords<SnapshotNameSource> {
    static constexpr std::array spelt{"Same As Source", "User Defined"};
    static constexpr SnapshotNameSource otherwise = SnapshotNameSource::none;
};
template<>
struct PreferenceWords<SnapshotNameFormat> {
    static constexpr std::array spelt{"filename.frameNumber.ext", "filename.snapshotNumber.ext",
                                      "snapshotNumber.filename.ext"};
    static constexpr SnapshotNameFormat otherwise = SnapshotNameFormat::snapshotNumberFirst;
};
template<>
struct PreferenceWords<DrawingsShown> {
    static constexpr std::array spelt{"Always", "Only When Paused", "With Drawing Tools"};
    static constexpr DrawingsShown otherwise = DrawingsShown::unchanged;
};
template<>
struct PreferenceWords<DrawingBackground> {
    static constexpr std::array spelt{"Picture", "Black", "White"};
    static constexpr DrawingBackground otherwise = DrawingBackground::picture;
};
template<>
struct PreferenceWords<TimecodePlace> {
    static constexpr std::array spelt{"Fixed", "Floating"};
    static constexpr TimecodePlace otherwise = TimecodePlace::floating;
};
template<>
struct PreferenceWords<RendererChoice> {
    static constexpr std::array spelt{"Automatic", "Software", "OpenGL"};
    static constexpr RendererChoice otherwise = RendererChoice::automatic;
};
template<>
struct PreferenceWords<FirstFrameNumber> {
    static constexpr std::array spelt{"1", "1001", "Timecode", "Other"};
    static constexpr FirstFrameNumber otherwise = FirstFrameNumber::one;
};
template<>
struct PreferenceWords<MissingPictures> {
    static constexpr std::array spelt{"Held", "Black", "Slate"};
    static constexpr MissingPictures otherwise = MissingPictures::hold;
};
template<>
struct PreferenceWords<ScopeKind> {
    static constexpr std::array spelt{"Waveform", "RGB Parade", "Vectorscope", "Histogram"};
    static constexpr ScopeKind otherwise = ScopeKind::waveform;
};
template<>
struct PreferenceWords<FindInput> {
    static constexpr std::array spelt{"Search Filepaths & Names", "Search Filenames"};
    static constexpr FindInput otherwise = FindInput::filepathsAndNames;
};
template<>
struct PreferenceWords<FindSearch> {
    static constexpr std::array spelt{"All Playlists"};
    static constexpr FindSearch otherwise = FindSearch::allPlaylists;
};

template<class E>
concept PreferenceEnum = requires {
    { PreferenceWords<E>::otherwise } -> std::convertible_to<E>;
};

/// Null for a value that has no word.
template<PreferenceEnum E>
[[nodiscard]] QString wordOf(E value) {
    constexpr auto& spelt = PreferenceWords<E>::spelt;
    return size_t(value) < spelt.size() ? QString::fromLatin1(spelt[size_t(value)]) : QString();
}

template<PreferenceEnum E>
[[nodiscard]] E valueOfWord(const QString& word) {
    constexpr auto& spelt = PreferenceWords<E>::spelt;
    for (size_t at = 0; at < spelt.size(); ++at)
        if (word == QLatin1String(spelt[at])) return E(at);
    return PreferenceWords<E>::otherwise;
}

template<PreferenceEnum E>
[[nodiscard]] QStringList allWords() {
    QStringList words;
    for (const char* word : PreferenceWords<E>::spelt)
        words << QString::fromLatin1(word);
    return words;
}

} // namespace daylark
