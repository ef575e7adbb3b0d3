#include "tool/SessionItem.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace daylark::tool {

void SessionItemArguments::addTo(CLI::App& command) {
    command.add_option("FILE", file, "the session file")->required();
    command.add_option("--playlist", playlist, "which playlist, counted from 1")->required();
    command.add_option("--item", item, "which item of it, counted from 1")->required();
}

std::shared_ptr<Playlist> findPlaylist(ToolContext& context, const SessionContents& session,
                                       const QString& path, int number) {
    if (number >= 1 && size_t(number) <= session.playlists.size())
        return session.playlists[size_t(number - 1)];
    context.fail(path,
                 QStringLiteral("has playlists 1 to %1, not %2").arg(session.playlists.size()).arg(number));
    return nullptr;
}

namespace {

std::optional<std::vector<std::shared_ptr<Movie>>> pickItems(ToolContext& context, const Playlist& playlist, const QString& path,
                                                             const std::vector<int>& numbers) {
    std::vector<std::shared_ptr<Movie>> ordered(playlist.movieList.begin(), playlist.movieList.end());
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const auto& a, const auto& b) { return a->sortOrder < b->sortOrder; });
    if (numbers.empty()) return ordered;
    std::vector<std::shared_ptr<Movie>> picked;
    for (const int number : numbers) {
        if (number < 1 || size_t(number) > ordered.size()) {
            context.fail(
                path,
                QStringLiteral("the playlist has items 1 to %1, not %2").arg(ordered.size()).arg(number));
            return std::nullopt;
        }
        picked.push_back(ordered[size_t(number - 1)]);
    }
    return picked;
}

} // namespace

std::optional<SessionItems> findItems(ToolContext& context, const QString& path, int playlistNumber,
                                      const std::vector<int>& numbers) {
    Result<SessionContents> contents = readSessionFile(path);
    if (!contents) {
        context.fail(path, contents.error().text);
        return std::nullopt;
    }
    const auto playlist = findPlaylist(context, *contents, path, playlistNumber);
    if (!playlist) return std::nullopt;
    auto movies = pickItems(context, *playlist, path, numbers);
    if (!movies) return std::nullopt;
    return SessionItems{std::move(*contents), playlist, std::move(*movies)};
}

std::optional<SessionItem> findItem(ToolContext& context, const SessionItemArguments& arguments) {
    auto found = findItems(context, QString::fromStdString(arguments.file), arguments.playlist, {arguments.item});
    if (!found) return std::nullopt;
    return SessionItem{std::move(found->session), found->movies.front()};
}

void writeSession(ToolContext& context, const QString& out, const SessionContents& session) {
    SessionContents saved;
    saved.playlists = session.playlists;
    saved.hasPlaylists = true;
    saved.colourConfiguration = session.colourConfiguration;
    const Result<void> written = writeSessionFile(out, encodeSession(saved));
    if (!written) context.fail(out, written.error().text);
}

} // namespace daylark::tool
