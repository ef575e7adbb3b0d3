#include "review/journal/Journal.h"

#include "review/journal/JournalFile.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace daylark {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds retryDelay{500};
constexpr qsizetype longJournal = qsizetype(8) << 20; // bytes that a start reads without being felt

} // namespace

/// The thread and what is handed to it. Jobs are carried out in order; those that wait for one another wait in
/// `unwritten_`, the thread's own.
class Journal::Writer {
public:
    struct Opening {
        QString sessionPath;
        std::optional<JournalPlace> place;
        JournalRecord first; ///< a base to begin with, or the numbering to go on with
        bool goesOn = false;
        qsizetype soundBytes = 0;
    };
    struct Step {
        quint64 sequence = 0;
        Changes changes;
        Clock::time_point since;
    };
    struct Job {
        std::shared_ptr<Opening> opening;
        std::optional<Step> step;
        std::optional<JournalRecord> record;
        QByteArray shortenTo;
    };

    Writer(std::function<void(QString)> trouble, std::function<void()> grown)
        : trouble_(std::move(trouble))
        , grown_(std::move(grown))
        , thread_([this] { run(); }) {}

    ~Writer() {
        {
            const std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        wake_.notify_all();
        done_.notify_all();
        thread_.join();
    }

    quint64 give(Job job) {
        quint64 ticket = 0;
        {
            const std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
            ticket = ++given_;
        }
        wake_.notify_all();
        return ticket;
    }

    /// Waits until everything up to this job is on the disk, or has failed to get there.
    bool waitFor(quint64 ticket) {
        std::unique_lock lock(mutex_);
        const quint64 failuresBefore = failures_;
        done_.wait(lock, [&] { return written_ >= ticket || failures_ > failuresBefore || stopping_; });
        return written_ >= ticket;
    }
    [[nodiscard]] quint64 given() const {
        const std::lock_guard lock(mutex_);
        return given_;
    }
    [[nodiscard]] Figures figures() const {
        const std::lock_guard lock(mutex_);
        return figures_;
    }

private:
    void run();
    void take(Job& job);
    [[nodiscard]] Result<void> write();
    [[nodiscard]] Result<void> open();
    void shorten();
    void tell(const QString& trouble);

    const std::function<void(QString)> trouble_;
    const std::function<void()> grown_;

    mutable std::mutex mutex_; // guards down to the blank line
    std::condition_variable wake_, done_;
    std::deque<Job> jobs_;
    quint64 given_ = 0, written_ = 0, failures_ = 0;
    Figures figures_;
    bool stopping_ = false;

    QString sessionPath_;
    std::shared_ptr<Opening> opening_; // the thread's own, as is what follows
    std::optional<JournalFile> file_;
    std::vector<JournalRecord> unwritten_;
    std::optional<Clock::time_point> oldest_; ///< step in `unwritten_`
    quint64 latest_ = 0;                      ///< step taken
    QByteArray shortenTo_;
    QString told_;
    bool toldGrown_ = false;

    std::thread thread_;
};

void Journal::Writer::run() {
    std::unique_lock lock(mutex_);
    bool failing = false;
    for (;;) {
        const auto isDue = [this] { return stopping_ || !jobs_.empty(); };
        if (failing)
            wake_.wait_for(lock, retryDelay, isDue);
        else
            wake_.wait(lock, isDue);
        const bool last = stopping_;
        std::deque<Job> jobs = std::exchange(jobs_, {});
        const quint64 upTo = given_;
        lock.unlock();
        for (Job& job : jobs)
            take(job);
        jobs.clear();
        const std::optional<Clock::time_point> oldest = oldest_;
        const quint64 sequence = latest_;
        const Result<void> written = write();
        if (written) shorten();
        tell(written ? QString() : written.error().text);
        failing = !written;
        lock.lock();
        if (written) {
            written_ = upTo;
            figures_.sequence = sequence;
            if (file_) figures_.bytes = file_->size();
            if (oldest) {
                ++figures_.syncs;
                figures_.longestDelayNs = std::max<qint64>(
                    figures_.longestDelayNs,
                    std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - *oldest).count());
            }
        } else {
            ++failures_;
        }
        done_.notify_all();
        if (last && jobs_.empty()) return;
    }
}

void Journal::Writer::take(Job& job) {
    if (job.opening) {
        sessionPath_ = job.opening->sessionPath;
        latest_ = job.opening->first.sequence;
        opening_ = std::move(job.opening);
    }
    if (job.step) {
        if (!oldest_) oldest_ = job.step->since;
        latest_ = job.step->sequence;
        unwritten_.push_back(
            {JournalRecord::Kind::changes, job.step->sequence, encodeChanges(job.step->changes)});
    }
    if (job.record) unwritten_.push_back(*std::move(job.record));
    if (!job.shortenTo.isEmpty()) shortenTo_ = job.shortenTo;
}

Result<void> Journal::Writer::open() {
    if (!opening_) return {};
    if (!file_) {
        if (!opening_->place) {
            std::vector<JournalPlace> places = JournalPlace::claim(sessionPath_);
            if (places.empty()) return Error{QStringLiteral("no journal can be made beside %1").arg(sessionPath_)};
            opening_->place = std::move(places.front());
        }
        file_.emplace(*std::exchange(opening_->place, std::nullopt));
    }
    if (opening_->goesOn) {
        if (Result<void> opened = file_->goOn(opening_->soundBytes); !opened) return opened;
        unwritten_.insert(unwritten_.begin(), opening_->first);
    } else {
        if (Result<void> begun = file_->begin(opening_->first); !begun) return begun;
        file_->place().keepBase(sessionPath_);
    }
    opening_.reset();
    return {};
}

Result<void> Journal::Writer::write() {
    if (Result<void> opened = open(); !opened) return opened;
    if (unwritten_.empty() || !file_) return {};
    if (Result<void> appended = file_->append(unwritten_); !appended) return appended;
    unwritten_.clear();
    oldest_.reset();
    if (file_->size() > longJournal && !std::exchange(toldGrown_, true)) grown_();
    return {};
}

void Journal::Writer::shorten() {
    if (shortenTo_.isEmpty() || !file_) return;
    // One that fails leaves a journal that is longer than need be; the next session file makes it short.
    const bool isShort = bool(file_->shorten(std::exchange(shortenTo_, {})));
    if (isShort) toldGrown_ = false;
    file_->place().keepBase(sessionPath_);
}

void Journal::Writer::tell(const QString& trouble) {
    if (trouble == told_) return;
    told_ = trouble;
    trouble_(trouble);
}

Journal::Journal(const QString& sessionPath, QObject* parent)
    : QObject(parent)
    , sessionPath_(sessionPath)
    , writer_(std::make_unique<Writer>(
          [this](const QString& trouble) {
              QMetaObject::invokeMethod(
                  this, [this, trouble] { Q_EMIT troubleChanged(trouble); }, Qt::QueuedConnection);
          },
          [this] {
              QMetaObject::invokeMethod(
                  this, [this] { Q_EMIT grown(); }, Qt::QueuedConnection);
          })) {}

Journal::~Journal() {
    writer_.reset();
}

void Journal::keepBeside(const QString& sessionPath) {
    if (!begun_) sessionPath_ = sessionPath;
}

void Journal::begin(JournalStart& start, const std::vector<RecordId>& ids) {
    if (std::exchange(begun_, true)) return;
    sequence_ = start.sequence;
    auto opening = std::make_shared<Writer::Opening>();
    opening->sessionPath = sessionPath_;
    opening->place = std::exchange(start.place, std::nullopt);
    opening->goesOn = start.goesOn && opening->place.has_value();
    opening->soundBytes = start.soundBytes;
    opening->first = opening->goesOn
                         ? JournalRecord{JournalRecord::Kind::numbering, sequence_, journalNumbersBytes(ids)}
                         : JournalRecord{JournalRecord::Kind::base, sequence_,
                                         journalBaseBytes({start.fingerprint, ids})};
    writer_->give({std::move(opening), {}, {}, {}});
}

void Journal::append(Changes step) {
    if (!begun_ || step.empty()) return;
    for (Change& change : step) {
        change.keeps.clear(); // the interface thread's records
        if (!change.isWholeRecord() && change.at < 0) change.before = {}; // nothing is taken back from here
    }
    writer_->give({{}, Writer::Step{++sequence_, std::move(step), Clock::now()}, {}, {}});
}

bool Journal::flush() {
    return writer_->waitFor(writer_->given());
}

bool Journal::announceSession(const QByteArray& fingerprint, const std::vector<RecordId>& ids, quint64 sequence) {
    return writer_->waitFor(writer_->give(
        {{}, {}, JournalRecord{JournalRecord::Kind::base, sequence, journalBaseBytes({fingerprint, ids})}, {}}));
}

void Journal::sessionIsThere(const QByteArray& fingerprint) {
    writer_->give({{}, {}, {}, fingerprint});
}

Journal::Figures Journal::figures() const {
    return writer_->figures();
}

} // namespace daylark
