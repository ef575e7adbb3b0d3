#pragma once

#include <QString>

namespace daylark {

class Library;
class Pasteboard;

/// What others are given of the selected items: links, paths, names. Links go onto the pasteboard as rich text that shows
/// names, with the links themselves as plain text beside it. Nothing selected: the pasteboard stays as it is. Owned by the
/// controller; interface thread.
class LinkCopying {
public:
    LinkCopying(Library& library, Pasteboard& pasteboard);

    void copyMovieLink();    ///< of the selected items, one a line
    void copyPlaylistLink(); ///< of the selected playlist, with the items that are shown
    void copyPath();         ///< plain text, one a line
    void copyFilename();

private:
    Library& library_;
    Pasteboard& pasteboard_;
};

} // namespace daylark
