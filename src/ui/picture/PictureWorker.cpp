#include "ui/picture/PictureWorker.h"

#include <utility>

namespace daylark {

PictureWorker::PictureWorker(QObject* parent)
    : QObject(parent) {
    pool_.setMaxThreadCount(1);
    pool_.setExpiryTimeout(-1);
}

PictureWorker::~PictureWorker() {
    next_.reset();
    pool_.waitForDone();
}

void PictureWorker::want(Job job) {
    if (busy_)
        next_ = std::move(job);
    else
        start(std::move(job));
}

void PictureWorker::start(Job job) {
    busy_ = true;
    pool_.start([this, job = std::move(job)] {
        QImage image = renderPicture(job.frame, job.request);
        QMetaObject::invokeMethod(
            this,
            [this, serial = job.serial, at = job.at, image = std::move(image)] {
                busy_ = false;
                if (next_) start(*std::exchange(next_, std::nullopt));
                Q_EMIT made(serial, image, at);
            },
            Qt::QueuedConnection);
    });
}

} // namespace daylark
