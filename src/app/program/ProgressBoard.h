#pragma once

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

namespace daylark {

/// The long jobs under way, for the status line and the progress window. A job is begun, advanced and ended
/// by the part that runs it; a person may cancel it. Interface thread, except the cancel flag, which workers
/// read.
class ProgressBoard : public QObject {
    Q_OBJECT
public:
    struct Job {
        int id = 0;
        QString title;              ///< "Adding Media Files..."
        qint64 done = 0, total = 0; ///< total 0: not known
        bool window = false;        ///< shown in the progress window, not only in the status line
        std::shared_ptr<std::atomic<bool>> cancelled;
    };
    using QObject::QObject;

    int begin(const QString& title, qint64 total, bool window);
    void advance(int id, qint64 done, qint64 total);
    void end(int id);
    void cancel(int id); ///< sets the flag; the job ends itself
    [[nodiscard]] std::shared_ptr<std::atomic<bool>> cancelFlag(int id) const;
    [[nodiscard]] const std::vector<Job>& jobs() const { return jobs_; }

Q_SIGNALS:
    void changed();

private:
    std::vector<Job> jobs_;
    int nextId_ = 1;
};

} // namespace daylark
