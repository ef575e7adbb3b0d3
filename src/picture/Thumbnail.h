#pragma once

#include "archive/Image.h"
#include "media/decode/FrameReader.h"
#include "picture/colour/StillColours.h"

#include <QString>

#include <optional>

namespace daylark {

/// What a thumbnail is made from: values only, so a worker needs no record.
struct ThumbnailRequest {
    QString path;
    QString choice;  ///< "First Frame", "Second Frame", "Middle Frame", "Last Frame", "Recreate Missing Thumbnails", ...
    bool legacyRules = false; ///< where the choice lies by the legacy back end alone: what the viewer asks for
    StillColour colour = {};  ///< how its pictures are brought to a display
};

struct ThumbnailResult {
    Image thumbnail;                       ///< nil when no picture could be made; else 100 x 56, encoded already
    std::optional<qint64> mThumbnailFrame; ///< set by two of the choices only
    std::optional<QString> creatingThumbnailText; ///< empty, or "No QT Thumbnail"; none: the record's stays
};

/// Makes a thumbnail by the current back end's rules, falling back to the legacy ones, or by these alone. Worker threads.
/// `cancel` and `tables` may be null.
[[nodiscard]] ThumbnailResult makeThumbnail(const ThumbnailRequest& request, const CancelFlag* cancel = nullptr,
                                            SampleTables* tables = nullptr);

/// The picture that an item's thumbnail shows, larger: of those that the choices give, the request's first, the one that looks
/// like it, at most `side` pixels wide and high. One that goes through a display's view may have been made for another one: it is
/// the same if each of its colours is always one in the other. Null when none does, since a person chose another
/// one, or the file can't be read. Worker threads; `cancel` and `tables` may be null.
[[nodiscard]] QImage largerThumbnail(const Image& thumbnail, const ThumbnailRequest& request, int side,
                                     const CancelFlag* cancel = nullptr, SampleTables* tables = nullptr);

/// The picture that an item's thumbnail shows, brought to the display anew: its input space is another one now. Nil as above.
[[nodiscard]] Image sameThumbnailAnew(const Image& thumbnail, const ThumbnailRequest& request,
                                      const CancelFlag* cancel = nullptr, SampleTables* tables = nullptr);

} // namespace daylark
