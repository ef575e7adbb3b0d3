#include "model/bundle/MovieBundle.h"

#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"
#include "model/Session.h"
#include "platform/NamedImages.h"

namespace daylark {

namespace {

template<class Record>
QByteArray encodeRoot(const std::shared_ptr<Record>& record) {
    Value::Dictionary root;
    if (record) root.emplace_back(QStringLiteral("movie"), std::shared_ptr<Archivable>(record));
    return archiveRoot(std::move(root), namedImageTiff);
}

} // namespace

void DLMovieBundle::encodeWithCoder(Encoder& coder) const {
    coder.encodeData("audio", mAudioData);
    coder.encode("metadata", Value(mMetaData));
    coder.encodeData("video", mQTMovieData);
}

void DLMovieBundle::initWithCoder(const Decoder& coder) {
    mAudioData = coder.decodeData("audio");
    mMetaData = std::dynamic_pointer_cast<Movie>(coder.decode("metadata").object());
    mQTMovieData = coder.decodeData("video");
}

std::shared_ptr<DLMovieBundle> exportDLM(const Movie&) {
    return nullptr;
}

std::shared_ptr<Movie> initWithDLM(std::shared_ptr<Movie> receiver, const DLMovieBundle*) {
    return receiver;
}

QByteArray encodeMovieRoot(const std::shared_ptr<Movie>& movie) {
    return encodeRoot(movie);
}

QByteArray encodeBundleRoot(const std::shared_ptr<DLMovieBundle>& bundle) {
    return encodeRoot(bundle);
}

std::shared_ptr<Movie> snapshotOf(const std::shared_ptr<Movie>& movie) {
    SessionContents contents;
    contents.playlists.push_back(std::make_shared<Playlist>());
    contents.playlists.front()->movieList.push_back(movie);
    return snapshotOf(contents).playlists.front()->movieList.front();
}

} // namespace daylark
