#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

namespace daylark {

/// A review link as text and as what it asks for. Reading and writing are pure: no disk, no state, any thread; whatever
/// the text holds, reading gives a value. A link comes from a stranger, so what it asks for is to add media, no more.
///
/// Behind "daylark://" stands, percent-encoded, a path whose first component is the command; runs of slashes part
/// components as one does. Absolute paths follow, parted by commas, each with its leading slash.
struct ReviewLink {
    enum class Command {
        none,        ///< not a link, or one that says nothing known
        link,        ///< into "Media From Link"
        playMedia,   ///< into "Shotgun Media": links of a production-tracking system
        addPlaylist, ///< into a new playlist of the link's own name
    };
    Command command = Command::none;
    QString playlistName; ///< where the media go
    QStringList paths;    ///< as they stand between the commas: a last one is empty, and any may be no path at all
    /// The paths once more where a link of our own means others, since it leaves a name's per cent sign as it is ("a%2Cb.mov").
    /// Empty: the same.
    QStringList ownPaths = {};

    bool operator==(const ReviewLink&) const = default;
};

/// Whether a text that the desktop or a command line hands over is meant as a link and is no path.
[[nodiscard]] bool isReviewLink(QStringView text);
/// The links of a text that a person pasted or another program handed over, each on a line of its own; other lines are
/// passed over.
[[nodiscard]] QStringList reviewLinksIn(const QString& text);
/// What it asks for. Text that is not percent-encoded UTF-8 asks for nothing known; a "%" that begins no code is one.
[[nodiscard]] ReviewLink readReviewLink(const QString& text);

/// "daylark://link%@\r" with the item's path, nothing escaped: the carriage return ends the link.
[[nodiscard]] QString movieLink(const QString& path);
/// "daylark://addplaylist/%@", every path with a comma behind it. Blanks alone are escaped, wanted: a playlist's name with a
/// slash isn't read as it was written, and paths with a comma or a per cent sign by what is on the disk.
[[nodiscard]] QString playlistLink(const QString& name, const QStringList& paths);

/// A run of text that leads somewhere, for the rich text of a pasteboard.
struct Anchor {
    QString text, target;
};
[[nodiscard]] QString anchorsAsHtml(const std::vector<Anchor>& anchors); ///< one a line
/// The item's link as a browser takes it: everything escaped that an address may not hold. Means what `movieLink` means.
[[nodiscard]] QString movieAddress(const QString& path);

} // namespace daylark
