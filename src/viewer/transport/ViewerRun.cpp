#include "viewer/transport/ViewerRun.h"

#include "media/sequence/PictureFiles.h"
#include "media/sequence/RunFacts.h"
#include "media/sequence/RunFiles.h"
#include "preferences/Preferences.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"
#include "viewer/RunPreferences.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace daylark {

namespace {

constexpr int runLookMs = 1000, longestRunLookMs = 60'000;

} // namespace

ViewerRun::ViewerRun(CurrentMovie& current, ReviewEdits& edits, const Preferences& preferences, QObject* parent)
    : QObject(parent)
    , current_(current)
    , edits_(edits)
    , preferences_(preferences) {
    current_.handTo(this, &ViewerRun::follow);
    sometimes_.setInterval(runLookMs);
    connect(&sometimes_, &QTimer::timeout, this, &ViewerRun::look);
    connect(&edits_, &ReviewEdits::movieChanged, this, &ViewerRun::recordChanged);
}

ViewerRun::~ViewerRun() {
    if (cancelled_) *cancelled_ = true;
}

bool ViewerRun::isRun() const {
    return current_.movie() && current_.movie()->frameRun;
}

QString ViewerRun::layer() const {
    return isRun() ? current_.movie()->frameRun->layer : QString();
}

RunRate ViewerRun::rate() const {
    return isRun() ? current_.movie()->frameRun->rate : RunRate{};
}

bool ViewerRun::isFixed() const {
    return isRun() && current_.movie()->frameRun->isFixed;
}

void ViewerRun::modify(const QString& what, const std::function<void(MovieRun&)>& change) {
    const std::shared_ptr<Movie> movie = current_.movie();
    if (!movie || !movie->frameRun) return;
    MovieRun run = *movie->frameRun;
    change(run);
    if (run != *movie->frameRun) edits_.store().modify(movie, {what}, [&run](Movie& edited) { edited.frameRun = run; });
}

void ViewerRun::setLayer(const QString& layer) {
    modify(tr("Layer"), [&layer](MovieRun& run) { run.layer = layer; });
}

QString ViewerRun::layerAlone() const {
    const QString whole = layer();
    const qsizetype range = whole.lastIndexOf(QLatin1Char('['));
    return range > 0 && whole.endsWith(QLatin1Char(']')) ? whole.left(range) : whole;
}

QString ViewerRun::blackAndWhite() const {
    const qsizetype from = layerAlone().size() + 1;
    return layer().mid(from, layer().size() - from - 1);
}

bool ViewerRun::setBlackAndWhite(const QString& numbers) {
    const QString ends = numbers.simplified().remove(QLatin1Char(' '));
    if (!ends.isEmpty() && !blackAndWhiteOf(ends)) return false;
    setLayer(ends.isEmpty() ? layerAlone() : QStringLiteral("%1[%2]").arg(layerAlone(), ends));
    return true;
}

void ViewerRun::setRate(const RunRate& rate) {
    modify(tr("Frame Rate"), [&rate](MovieRun& run) { run.rate = rate; });
}

void ViewerRun::setFixed(bool fixed) {
    modify(tr("Range of the Run"), [fixed](MovieRun& run) { run.isFixed = fixed; });
}

void ViewerRun::follow(const std::shared_ptr<Movie>& movie) {
    if (cancelled_) *cancelled_ = true;
    cancelled_ = std::make_shared<CancelFlag>(false);
    work_.forgetWaiting();
    isLooking_ = false;
    isFirstLook_ = true;
    const std::optional<MovieRun> before = std::exchange(shown_, movie ? movie->frameRun : std::nullopt);
    if (!shown_) {
        sometimes_.stop();
        layers_.clear();
    } else {
        if (!before || !before->run.hasNamesOf(shown_->run)) layers_.clear();
        sometimes_.start(runLookMs);
        look();
        readLayers();
    }
    Q_EMIT changed();
}

/// How far it reaches is what the pictures on screen say themselves; the rest decides how they are read.
void ViewerRun::recordChanged(const std::shared_ptr<Movie>& movie, const QString& field) {
    if (movie != current_.movie() || field != QLatin1String("frameRun") || !shown_ || !movie->frameRun) return;
    const MovieRun now = *movie->frameRun;
    const bool isOther = now.layer != shown_->layer || now.rate != shown_->rate || now.isFixed != shown_->isFixed;
    shown_ = now;
    if (!isOther) return;
    Q_EMIT changed();
    Q_EMIT shownOtherwise();
}

void ViewerRun::readLayers() {
    const QString media = current_.movie()->mediaAddress(runViewOf(preferences_));
    work_.run([this, media, cancelled = cancelled_] {
        const auto run = RunAddress::of(media);
        const QStringList layers = run ? layersOfRun(*run, cancelled.get()) : QStringList();
        WorkQueue::deliver(this, [this, layers, cancelled] {
            if (*cancelled || layers == layers_) return;
            layers_ = layers;
            Q_EMIT changed();
        });
    });
}

ViewerRun::Stamps ViewerRun::stampsOf(const QString& media, const CancelFlag& cancelled) {
    Stamps stamps;
    const auto run = RunAddress::of(media);
    const Result<RunFiles> files = run ? RunFiles::look(*run, &cancelled) : Error{};
    if (!files) return stamps;
    for (const qint64 number : files->numbers) {
        if (cancelled) return {};
        const QFileInfo file(files->address.pathOf(number));
        stamps[number] = {file.size(), file.lastModified().toMSecsSinceEpoch()};
    }
    return stamps;
}

void ViewerRun::look() {
    if (!isRun() || isLooking_) return;
    isLooking_ = true;
    const QString media = current_.movie()->mediaAddress(runViewOf(preferences_));
    work_.run([this, media, cancelled = cancelled_] {
        QElapsedTimer timer;
        timer.start();
        const Stamps stamps = stampsOf(media, *cancelled);
        WorkQueue::deliver(this, [this, stamps, cancelled, taken = timer.elapsed()] {
            if (!*cancelled) looked(stamps, taken);
        });
    });
}

void ViewerRun::looked(const Stamps& now, qint64 taken) {
    isLooking_ = false;
    constexpr qint64 share = 20; // a look takes this part of the time at most
    sometimes_.setInterval(int(std::clamp<qint64>(taken * share, runLookMs, longestRunLookMs)));
    if (now.empty()) return; // nothing is known of a share that is away
    if (std::exchange(isFirstLook_, false)) {
        seen_ = shownStamps_ = now;
        return;
    }
    // What stood still since the last look is whole; of the rest what was shown stays.
    Stamps whole = shownStamps_;
    for (const auto& [number, stamp] : now)
        if (const auto before = seen_.find(number); before != seen_.end() && before->second == stamp) whole[number] = stamp;
    for (auto at = whole.begin(); at != whole.end();)
        at = now.contains(at->first) ? std::next(at) : whole.erase(at);
    seen_ = now;
    std::vector<qint64> frames;
    const auto take = [&](const Stamps& some, const Stamps& others) {
        for (const auto& [number, stamp] : some)
            if (const auto other = others.find(number); other == others.end() || other->second != stamp)
                frames.push_back((number - shown_->run.first) / shown_->run.step + 1);
    };
    take(whole, shownStamps_);
    take(shownStamps_, whole);
    if (frames.empty()) return;
    shownStamps_ = whole;
    Q_EMIT picturesCame(frames);
}

} // namespace daylark
