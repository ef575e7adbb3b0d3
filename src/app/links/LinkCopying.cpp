#include "app/links/LinkCopying.h"

#include "app/links/ReviewLink.h"
#include "app/playlists/Library.h"
#include "platform/Desktop.h"

#include <functional>

namespace daylark {

namespace {

template<class Text>
QStringList textsOf(const Library::Movies& movies, Text text) {
    QStringList texts;
    for (const auto& movie : movies)
        texts << std::invoke(text, *movie);
    return texts;
}

} // namespace

LinkCopying::LinkCopying(Library& library, Pasteboard& pasteboard)
    : library_(library)
    , pasteboard_(pasteboard) {}

void LinkCopying::copyMovieLink() {
    const Library::Movies movies = library_.selectedMovies();
    if (movies.empty()) return;
    std::vector<Anchor> anchors;
    QStringList links;
    for (const auto& movie : movies) {
        anchors.push_back({movie->shownName(), movieAddress(movie->linkPath())});
        links << movieLink(movie->linkPath()).chopped(1); // lines of an editor end as its lines do
    }
    pasteboard_.setRichText(anchorsAsHtml(anchors), links.join(QLatin1Char('\n')));
}

void LinkCopying::copyPlaylistLink() {
    const auto playlist = library_.selectedPlaylist();
    if (!playlist) return;
    QStringList paths;
    for (const auto& movie : library_.arrangedMovies())
        paths << movie->linkPath();
    const QString link = playlistLink(playlist->name, paths);
    pasteboard_.setRichText(anchorsAsHtml({{playlist->name, link}}), link);
}

void LinkCopying::copyPath() {
    const QStringList paths = textsOf(library_.selectedMovies(), &Movie::filepathString);
    if (!paths.isEmpty()) pasteboard_.setText(paths.join(QLatin1Char('\n')));
}

void LinkCopying::copyFilename() {
    const QStringList names = textsOf(library_.selectedMovies(), &Movie::shownName);
    if (!names.isEmpty()) pasteboard_.setText(names.join(QLatin1Char('\n')));
}

} // namespace daylark
