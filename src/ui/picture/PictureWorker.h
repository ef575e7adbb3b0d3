#pragma once

#include "base/jobs/WorkQueue.h"
#include "media/decode/VideoFrame.h"
#include "picture/PictureRenderer.h"

#include <QImage>
#include <QObject>
#include <QPoint>

#include <optional>

namespace daylark {

/// Makes the pictures of a run away from the interface thread, one at a time. Of several that wait the newest
/// is made, and pictures come back in the order in which they were asked for. Owned by the picture view,
/// called and answering on the interface thread; ending waits for the picture that is being made.
class PictureWorker : public QObject {
    Q_OBJECT
public:
    struct Job {
        quint64 serial = 0;
        VideoFrame frame;
        PictureRequest request;
        QPoint at; ///< handed back
    };
    using QObject::QObject;

    void want(Job job);
    void forget() { next_.reset(); } ///< what waits is not needed any more

Q_SIGNALS:
    void made(quint64 serial, const QImage& image, QPoint at);

private:
    void start(Job job);

    bool busy_ = false;
    std::optional<Job> next_;
    WorkQueue work_; ///< last: waits for its work
};

} // namespace daylark
