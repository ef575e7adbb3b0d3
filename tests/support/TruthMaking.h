#pragma once

#include "support/QuickTimeEdits.h"
#include "support/TruthTable.h"

#include <initializer_list>

/// The ways in which the table's clips are made: as encoded, cut by edit lists, with samples damaged or
/// missing. Each gives a function for `Clip::make` that makes the file and says what it must show.
namespace daylark::truth {

using Making = std::function<Result<Expectation>(MovieSpec)>;

[[nodiscard]] Making asEncoded();
/// Shows these parts, in this order; for mov and mp4.
[[nodiscard]] Making edited(std::vector<Edit> edits);
/// So many samples at the start, the first key frame with them, never get into the file. Groups are closed:
/// shown is what follows from the next key frame on.
[[nodiscard]] Making withoutFirstSamples(int samples);
/// Keeps this many bytes of each named frame's sample and overwrites the rest.
struct Damage {
    std::vector<int> numbers;
    int kept = 8;
    char filler = 0;
    bool referredTo = false;  ///< later pictures of the group build on it
    bool halfKept = false;    ///< at least the first half of the sample stays whole
    bool afterMuxing = false; ///< in the file itself: the muxer would look into the damaged sample
};
[[nodiscard]] Making damaged(Damage damage);
/// Some transport packets within the sample of this frame are lost.
[[nodiscard]] Making lostInTransport(int number);
/// MPEG-4 with one B-frame between two others, packed into the sample of the later one, as some old AVI files
/// are: the sample after it is a placeholder.
[[nodiscard]] Making packedBFrames();
/// The whole file is changed after muxing, in what it says of itself: it shows the same all the same. The
/// change tells whether it found what it changes.
[[nodiscard]] Making lyingFile(std::function<bool(QByteArray& file)> change);
/// So many copies of the file, one behind the other: each begins its times anew.
[[nodiscard]] Making joined(int copies);
/// For mov and mp4: the header says when samples are decoded, not when they are shown.
[[nodiscard]] Making withoutCompositionTimes();
/// 2000 frames a second in a container that counts milliseconds.
[[nodiscard]] Making onMilliseconds();
/// For mov: one track of the movie and once more the same, encoded by other parameters, of which each has its
/// own sample description.
[[nodiscard]] Making inTwoDescriptions(std::map<QString, QString> options, int bFrames);
/// The file ends within a sample, about so far on. `header`: it stands in front and names all samples.
enum class CutFile { headerInFront, readable, packed };
[[nodiscard]] Making truncated(double share, CutFile kind);

} // namespace daylark::truth
