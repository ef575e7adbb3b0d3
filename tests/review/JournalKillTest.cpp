#include "review/ScriptedReview.h"
#include "review/journal/Journal.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <chrono>
#include <cstdlib>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace daylark::test {
namespace {

using Clock = std::chrono::steady_clock; // the same for all processes
using std::chrono::milliseconds;

constexpr milliseconds promised{250};

/// What a review says about each step, through a pipe, when it is made: the log that stands outside.
struct Said {
    qint64 when = 0; ///< nanoseconds
    qint64 longestDelay = 0;
    quint64 sequence = 0, onDisk = 0; ///< of this step, and of the last one that the journal calls written
    char digest[32] = {};
};

qint64 nowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
}

/// A review that goes on until it is killed: it takes up what the one before left, says every step, and writes
/// the session file now and then, on another thread, as the program does.
class EndlessReview {
public:
    EndlessReview(const QString& sessionPath, unsigned seed, int pipe)
        : path_(sessionPath)
        , start_(startFromJournals(sessionPath, true))
        , journal_(sessionPath)
        , script_(store_, seed)
        , pauses_(seed)
        , pipe_(pipe) {
        store_.replaceSession(start_.contents.playlists);
        journal_.begin(start_, store_.records().idsByPosition());
        QObject::connect(&store_, &ReviewStore::applied, [this](const Edit& edit) {
            say(); // before it may be on the disk: what comes back has always been said
            journal_.append(edit.changes);
        });
    }
    int run() {
        std::uniform_int_distribution<int> pause(0, 4000);
        for (int steps = 1;; ++steps) {
            script_.step();
            if (steps % 40 == 0) writeSession();
            if (const int microseconds = pause(pauses_); microseconds > 500)
                std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
        }
    }

private:
    void say() const {
        const Journal::Figures figures = journal_.figures();
        Said said{nowNs(), figures.longestDelayNs, journal_.sequence() + 1, figures.sequence, {}};
        const QByteArray digest = digestOf(store_.playlists());
        std::copy_n(digest.constData(), sizeof said.digest, said.digest);
        if (::write(pipe_, &said, sizeof said) != sizeof said) ::_exit(1);
    }
    void writeSession() {
        if (writing_.joinable()) writing_.join();
        SessionContents contents;
        contents.playlists = store_.playlists();
        contents.hasPlaylists = true;
        writing_ = std::thread([this, contents = snapshotOf(contents), ids = store_.records().idsByPosition(),
                                sequence = journal_.sequence()] {
            const QByteArray bytes = encodeSession(contents), fingerprint = sessionFingerprint(bytes);
            static_cast<void>(journal_.announceSession(fingerprint, ids, sequence));
            if (writeSessionFile(path_, bytes)) journal_.sessionIsThere(fingerprint);
        });
    }

    const QString path_;
    JournalStart start_;
    ReviewStore store_;
    Journal journal_;
    ScriptedReview script_;
    std::mt19937 pauses_;
    const int pipe_;
    std::thread writing_;
};

struct Life {
    std::vector<Said> log;
    qint64 killed = 0; ///< when
};

/// Reviews, is killed after that long, and gives what was said until then.
Life reviewUntilKilled(const QString& sessionPath, unsigned seed, milliseconds life) {
    int pipe[2];
    if (::pipe(pipe) != 0) return {};
    ChildProcess child([&] { return EndlessReview(sessionPath, seed, pipe[1]).run(); });
    ::close(pipe[1]);
    std::vector<Said> log;
    const auto end = Clock::now() + life;
    Said said;
    for (auto left = life; left.count() > 0; left = std::chrono::duration_cast<milliseconds>(end - Clock::now())) {
        pollfd readable{pipe[0], POLLIN, 0};
        if (::poll(&readable, 1, int(left.count())) > 0 && ::read(pipe[0], &said, sizeof said) == sizeof said)
            log.push_back(said);
    }
    const qint64 killed = nowNs();
    child.kill();
    while (::read(pipe[0], &said, sizeof said) == sizeof said)
        log.push_back(said);
    ::close(pipe[0]);
    return {log, killed};
}

/// A few dozen kills in the suite. By hand DAYLARK_KILLS=1000 makes it more, and holds every step against the
/// quarter of a second that it may take, which is too much to ask of a machine that is busy with other tests.
TEST(JournalKillTest, AKillAtAnyMomentLosesNothingThatWasOnTheDisk) {
    const bool byHand = qEnvironmentVariableIsSet("DAYLARK_KILLS");
    const int kills = byHand ? qEnvironmentVariableIntValue("DAYLARK_KILLS") : 30;
    const QTemporaryDir folder;
    const QString session = folder.filePath(QStringLiteral("mia.dls"));
    std::mt19937 random(11);
    std::uniform_int_distribution<int> life(5, 700);
    QByteArray before = digestOf({});
    qint64 steps = 0, lost = 0, longestDelay = 0, oldestMissing = 0;
    const auto began = Clock::now();
    for (int kill = 0; kill < kills; ++kill) {
        const auto [log, killed] = reviewUntilKilled(session, unsigned(kill), milliseconds(life(random)));
        const QByteArray back = digestOf(startFromJournals(session, true).contents.playlists);
        // Where in the log it stands; -1: where the run before was left.
        qint64 at = qint64(log.size()) - 1;
        while (at >= 0 && QByteArray(log[size_t(at)].digest, sizeof Said::digest) != back)
            --at;
        ASSERT_TRUE(at >= 0 || back == before) << "kill " << kill << ": a state that never was";
        for (size_t later = size_t(at + 1); later < log.size(); ++later) {
            ASSERT_GT(log[later].sequence, log.back().onDisk) << "kill " << kill;
            const qint64 age = killed - log[later].when;
            oldestMissing = std::max(oldestMissing, age);
            lost += age > std::chrono::nanoseconds(promised).count();
        }
        steps += qint64(log.size());
        if (!log.empty()) longestDelay = std::max(longestDelay, log.back().longestDelay);
        before = back;
    }
    if (byHand) { EXPECT_EQ(lost, 0); }
    EXPECT_GT(steps, kills);
    const auto took = std::chrono::duration_cast<milliseconds>(Clock::now() - began);
    std::printf("%d kills, %lld steps: %lld older than 250 ms lost; the oldest missing %.1f ms old; from step to "
                "disk %.1f ms at the longest; %.0f ms a kill\n",
                kills, static_cast<long long>(steps), static_cast<long long>(lost), double(oldestMissing) / 1e6,
                double(longestDelay) / 1e6, double(took.count()) / kills);
}

} // namespace
} // namespace daylark::test
