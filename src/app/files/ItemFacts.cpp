#include "app/files/ItemFacts.h"

#include "base/jobs/WorkQueue.h"
#include "model/Movie.h"
#include "model/runs/FrameNumbers.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr size_t mostDemands = 400; // of a long list only what was looked at last
constexpr qsizetype mostEntries = 20000;

QString layoutText(const MediaFacts::Sound& sound) {
    if (!sound.layout.isEmpty()) return sound.layout;
    return sound.channels == 1 ? ItemFacts::tr("1 channel") : ItemFacts::tr("%1 channels").arg(sound.channels);
}

} // namespace

ItemFacts::ItemFacts(QObject* parent)
    : QObject(parent)
    , cancel_(std::make_shared<CancelFlag>(false))
    , work_(std::make_unique<WorkQueue>(1, WorkQueue::Pace::background)) {}

ItemFacts::~ItemFacts() {
    *cancel_ = true;
}

const ItemFacts::Entry* ItemFacts::entryOf(const Movie& movie) const {
    const auto found = entries_.constFind(movie.filepathString);
    return found != entries_.cend() && found->sizeText == movie.fileSizeText ? &*found : nullptr;
}

const MediaFacts* ItemFacts::of(const Movie& movie) const {
    const Entry* entry = entryOf(movie);
    return entry && entry->readable ? &entry->facts : nullptr;
}

void ItemFacts::want(const Movies& movies) {
    for (auto movie = movies.rbegin(); movie != movies.rend(); ++movie) {
        // What is missing has nothing to say; an item that was never probed will be, and is asked for anew then.
        if ((*movie)->frameRun || (*movie)->creatingThumbnailText == fileNotFoundText || entryOf(**movie)) continue;
        const QString& path = (*movie)->filepathString;
        std::erase_if(waiting_, [&path](const Demand& demand) { return demand.path == path; });
        waiting_.push_back({path, (*movie)->fileSizeText});
    }
    if (waiting_.size() > mostDemands) waiting_.erase(waiting_.begin(), waiting_.end() - qsizetype(mostDemands));
    if (!reading_) readNext();
}

void ItemFacts::readNext() {
    reading_ = !waiting_.empty();
    if (!reading_) return;
    const Demand demand = waiting_.back();
    waiting_.pop_back();
    work_->run([this, demand, cancel = cancel_] {
        const Result<MediaFacts> facts = readMediaFacts(demand.path, cancel.get());
        auto entry = std::make_shared<const Entry>(Entry{facts ? *facts : MediaFacts{}, bool(facts), demand.sizeText});
        WorkQueue::deliver(this, [this, demand, entry] {
            if (entries_.size() >= mostEntries) entries_.clear();
            entries_[demand.path] = *entry;
            Q_EMIT known(demand.path);
            readNext();
        });
    });
}

QString ItemFacts::soundOf(const Movie& movie) const {
    if (movie.movieHasUserAudio()) {
        const QString added = QFileInfo(movie.mUserAudioTrack).fileName();
        return added.isEmpty() ? tr("Added") : tr("Added: %1").arg(added);
    }
    if (movie.shouldRemoveAudioTracks) return tr("Muted");
    if (movie.frameRun) return tr("No sound");
    const MediaFacts* facts = of(movie);
    if (!facts) return {};
    if (facts->sounds.empty()) return tr("No sound");
    const QString first = layoutText(facts->sounds.front());
    return facts->sounds.size() == 1 ? first : tr("%1 tracks: %2").arg(facts->sounds.size()).arg(first);
}

QString ItemFacts::soundTracksOf(const MediaFacts& facts) {
    QStringList lines;
    for (const MediaFacts::Sound& sound : facts.sounds) {
        QString line = QStringLiteral("%1, %2, %3 kHz").arg(layoutText(sound), sound.codec).arg(sound.rate / 1000.0);
        if (!sound.language.isEmpty()) line += QStringLiteral(", ") + sound.language;
        lines << line;
    }
    return lines.join(QLatin1Char('\n'));
}

QString ItemFacts::startTimecodeOf(const Movie& movie) const {
    const MediaFacts* facts = of(movie);
    return facts && facts->startTimecode ? timecodeText(1, movie.mMovieFPS, facts->startTimecode) : QString();
}

QString ItemFacts::productionNumbersOf(const Movie& movie, std::optional<qint64> usualFirst) const {
    const MediaFacts* facts = of(movie);
    const FrameNumbers numbers = frameNumbersOf(movie, usualFirst, facts ? facts->startTimecode : std::nullopt);
    if (!numbers.areOwn()) return {};
    const QString first = QString::number(numbers.first);
    const qint64 frames = movie.frameRun ? movie.frameRun->run.count() : movie.mMovieDurationFrames;
    return frames > 1 ? first + QStringLiteral(" - ") + QString::number(numbers.numberOf(frames)) : first;
}

} // namespace daylark
