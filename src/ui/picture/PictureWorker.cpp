#include "ui/picture/PictureWorker.h"

#include <utility>

namespace daylark {

void PictureWorker::want(Job job) {
    if (busy_)
        next_ = std::move(job);
    else
        start(std::move(job));
}

void PictureWorker::start(Job job) {
    busy_ = true;
    work_.run([this, job = std::move(job)] {
        QImage image = renderPicture(job.frame, job.request);
        WorkQueue::deliver(this, [this, serial = job.serial, at = job.at, image = std::move(image)] {
            busy_ = false;
            if (next_) start(*std::exchange(next_, std::nullopt));
            Q_EMIT made(serial, image, at);
        });
    });
}

} // namespace daylark
