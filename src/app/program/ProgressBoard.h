#pragma once

#include "base/jobs/CancelFlag.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

/// The long jobs under way, for the status line and the progress window. A job is begun, advanced and ended
/// by the part that runs it, which also says what is told of it; a person may cancel it. Interface thread,
/// except the cancel flag, which workers read.
class ProgressBoard : public QObject {
    Q_OBJECT
public:
    enum class Count {
        told,    ///< "... 3 of 10" follows the title
        untold   ///< the title says it itself, or it says nothing to a person; a bar still shows it
    };
    struct Texts {
        QString title = {}; ///< "Adding Media Files..."
        QString text = {};  ///< a second line: what more there is to say; may be empty
        Count count = Count::told;
    };
    struct Job {
        int id = 0;
        Texts texts;
        qint64 done = 0, total = 0; ///< total 0: not known
        bool window = false;        ///< shown in the progress window, not only in the status line
        std::shared_ptr<CancelFlag> cancelled;
        [[nodiscard]] QString line() const; ///< the title, with the count where it is told
        /// `done` and `total` in numbers that a progress bar takes: bytes would be too many.
        struct Bar {
            int value = 0, maximum = 0;
        };
        [[nodiscard]] Bar bar() const;
    };
    using QObject::QObject;

    /// "1.5 GB of 20 GB", for a second line.
    [[nodiscard]] static QString bytesText(qint64 done, qint64 total);

    int begin(const Texts& texts, qint64 total, bool window);
    void say(int id, const Texts& texts); ///< other texts from now on
    void advance(int id, qint64 done, qint64 total);
    void end(int id);
    void cancel(int id); ///< sets the flag; the job ends itself
    [[nodiscard]] std::shared_ptr<CancelFlag> cancelFlag(int id) const;
    [[nodiscard]] const std::vector<Job>& jobs() const { return jobs_; }

Q_SIGNALS:
    void changed();

private:
    std::vector<Job> jobs_;
    int nextId_ = 1;
};

} // namespace daylark
