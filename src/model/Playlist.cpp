#include "model/Playlist.h"

#include "archive/Decoder.h"
#include "archive/Encoder.h"

namespace daylark {

Playlist::Playlist() = default;

void Playlist::updateCount() {
    itemCount = movieList.empty() ? QStringLiteral("") : QString::number(count());
}

qint64 Playlist::statusForMissing(qint64 missing) const {
    if (missing <= 0) return 0;
    return missing < count() ? 1 : 2;
}

void Playlist::encodeWithCoder(Encoder& coder) const {
    coder.encodeString("name", name);
    coder.encodeUrl("directoryPath", directoryPath);
    coder.encodeList("movieList", movieList);
    coder.encodeNumber("isDivider", isDivider);
    coder.encodeString("playlistType", playlistType);
    coder.encodeInt("status", status);
    if (!smartRules.isEmpty()) coder.encode("smartRules", smartRules.toValue());
}

void Playlist::initWithCoder(const Decoder& coder) {
    name = coder.decodeString("name");
    directoryPath = coder.decodeUrl("directoryPath");
    movieList = coder.decodeList<Movie>("movieList");
    isDivider = coder.decodeNumber("isDivider");
    playlistType = coder.decodeString("playlistType");
    status = coder.decodeInt64("status");
    smartRules = SmartRules::fromValue(coder.decode("smartRules"));
    itemCount = QString(); // shown again once the library has counted
    hasBeenVisited = false;
}

} // namespace daylark
