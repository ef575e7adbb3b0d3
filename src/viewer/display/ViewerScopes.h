#pragma once

#include "base/jobs/WorkQueue.h"
#include "picture/scene/Scene.h"
#include "preferences/PreferenceWords.h"

#include <QImage>
#include <QObject>

#include <optional>

namespace daylark {

class Preferences;
class Transport;
class ViewerPanels;
class ViewerScene;

/// The scope of what is shown, after view and grade: made of a small picture of each new frame by a worker while its panel is
/// open, and of nothing otherwise. Of frames that wait the newest is taken; what comes back when another scope is looked at, or
/// no picture is there any more, is dropped. Owned by the viewer's controller; interface thread.
class ViewerScopes : public QObject {
    Q_OBJECT
public:
    ViewerScopes(ViewerScene& scene, Transport& transport, ViewerPanels& panels, Preferences& preferences,
                 QObject* parent = nullptr);

    [[nodiscard]] ScopeKind kind() const;
    void choose(ScopeKind kind); ///< remembered
    void chooseNext();
    [[nodiscard]] const QImage& trace() const { return trace_; } ///< of `kind`; null: there is none
    [[nodiscard]] bool isBehind() const { return busy_ || next_; } ///< a newer one is on its way

Q_SIGNALS:
    void changed();

private:
    struct Job {
        quint64 generation = 0;
        ScopeKind kind = ScopeKind::waveform;
        VideoFrame frame;
        PictureRequest request;
        [[nodiscard]] bool isLike(const Job& other) const;
    };
    void look();
    void drop();
    void start(const Job& job);
    void take(const Job& job, const QImage& trace);

    ViewerScene& scene_;
    Transport& transport_;
    ViewerPanels& panels_;
    Preferences& preferences_;
    quint64 generation_ = 0; ///< counts what makes older results worthless
    bool busy_ = false;
    std::optional<Job> asked_, next_; ///< the last one wanted; the one that waits
    QImage trace_;
    WorkQueue work_{1, WorkQueue::Pace::background}; ///< last: waits for its work
};

} // namespace daylark
