#pragma once

#include <QByteArray>
#include <QString>

namespace daylark {

/// Which sound a movie is heard with. A file that isn't there or has no sound is silence.
struct MovieSound {
    enum class Kind {
        own,
        none,
        added ///< the first sound track of another file, beginning with the movie; silent after its end
    };
    Kind kind = Kind::own;
    QString addedPath; ///< of the added file, or found by its bookmark
    QByteArray addedBookmark;

    bool operator==(const MovieSound&) const = default;
};

} // namespace daylark
