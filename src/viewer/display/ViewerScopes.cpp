#include "viewer/display/ViewerScopes.h"

#include "picture/scopes/ScopeTrace.h"
#include "preferences/Preferences.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/display/ViewerScene.h"
#include "viewer/transport/Transport.h"

#include <utility>

namespace daylark {

namespace {

constexpr QSize scopedSize(480, 480); // a quarter of 1920 each way; no picture is enlarged

QImage traceOf(ScopeKind kind, const QImage& picture) {
    switch (kind) {
    case ScopeKind::parade:
        return paradeTrace(picture);
    case ScopeKind::vectorscope:
        return vectorscopeTrace(picture);
    case ScopeKind::histogram:
        return histogramTrace(picture);
    case ScopeKind::waveform:
        break;
    }
    return waveformTrace(picture);
}

} // namespace

ViewerScopes::ViewerScopes(ViewerScene& scene, Transport& transport, ViewerPanels& panels, Preferences& preferences,
                           QObject* parent)
    : QObject(parent)
    , scene_(scene)
    , transport_(transport)
    , panels_(panels)
    , preferences_(preferences) {
    connect(&scene_, &ViewerScene::changed, this, &ViewerScopes::look);
    connect(&transport_, &Transport::stateChanged, this, &ViewerScopes::look);
    connect(&panels_, &ViewerPanels::toggled, this, &ViewerScopes::look);
    connect(&panels_, &ViewerPanels::visibilityChanged, this, &ViewerScopes::look);
    connect(&preferences_.scopeKind, &PreferenceItem::changed, this, [this] {
        drop();
        Q_EMIT changed();
        look();
    });
}

ScopeKind ViewerScopes::kind() const {
    return preferences_.scopeKind();
}

void ViewerScopes::choose(ScopeKind kind) {
    preferences_.scopeKind.set(kind);
}

void ViewerScopes::chooseNext() {
    constexpr int kinds = int(PreferenceWords<ScopeKind>::spelt.size());
    choose(ScopeKind((int(kind()) + 1) % kinds));
}

bool ViewerScopes::Job::isLike(const Job& other) const {
    return frame.data() == other.frame.data() && request.size == other.request.size &&
           request.display == other.request.display && request.colour == other.request.colour &&
           request.quickly == other.request.quickly && request.mirrorLeftRight == other.request.mirrorLeftRight &&
           request.mirrorUpsideDown == other.request.mirrorUpsideDown;
}

/// Whatever is on its way is worth nothing any more.
void ViewerScopes::drop() {
    ++generation_;
    asked_.reset();
    next_.reset();
    trace_ = {};
}

void ViewerScopes::look() {
    const Scene& scene = scene_.scene();
    if (scene.frame.isNull() || !panels_.isVisible(ViewerPanel::scopes)) {
        if (!asked_) return;
        drop();
        return Q_EMIT changed();
    }
    Job job{generation_, kind(), scene.frame, {}};
    const QSize shown = scene.frame.displaySize();
    job.request.size = shown.scaled(scopedSize.boundedTo(shown), Qt::KeepAspectRatio).expandedTo({1, 1});
    job.request.mirrorLeftRight = scene.mirrorLeftRight;
    job.request.mirrorUpsideDown = scene.mirrorUpsideDown;
    job.request.colour = scene.colour;
    job.request.display = scene.display;
    job.request.quickly = transport_.isRunning();
    if (asked_ && job.isLike(*asked_)) return;
    asked_ = job;
    if (busy_)
        next_ = std::move(job);
    else
        start(job);
}

void ViewerScopes::start(const Job& job) {
    busy_ = true;
    work_.run([this, job] {
        QImage trace = traceOf(job.kind, renderPicture(job.frame, job.request));
        WorkQueue::deliver(this, [this, job, trace = std::move(trace)] { take(job, trace); });
    });
}

void ViewerScopes::take(const Job& job, const QImage& trace) {
    busy_ = false;
    if (next_) start(*std::exchange(next_, std::nullopt));
    if (job.generation != generation_) return;
    trace_ = trace;
    Q_EMIT changed();
}

} // namespace daylark
