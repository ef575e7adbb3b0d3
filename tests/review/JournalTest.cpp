#include "review/ScriptedReview.h"
#include "review/journal/Journal.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace daylark::test {
namespace {

using namespace Qt::StringLiterals;

/// One running copy: a store whose edits go into a journal. Its end is that of a killed one, as far as the files
/// tell.
class RunningCopy {
public:
    explicit RunningCopy(const QString& sessionPath, bool restore = true)
        : found(startFromJournals(sessionPath, restore))
        , journal(sessionPath)
        , path_(sessionPath) {
        store.replaceSession(found.contents.playlists, found.contents.colourConfiguration);
        journal.begin(found, store.records().idsByPosition());
        QObject::connect(&store, &ReviewStore::applied, &journal,
                         [this](const Edit& edit) { journal.append(edit.changes); });
    }
    void review(int steps, unsigned seed) {
        ScriptedReview script(store, seed);
        for (int i = 0; i < steps; ++i)
            script.step();
    }
    [[nodiscard]] QByteArray sessionBytes() const {
        SessionContents contents;
        contents.playlists = store.playlists();
        contents.hasPlaylists = true;
        contents.colourConfiguration = store.records().colourConfiguration();
        return encodeSession(contents);
    }
    /// The four steps of writing the session file, for a crash after each.
    void writeSession(int steps = 4, const std::function<void()>& meanwhile = {}) {
        const QByteArray bytes = sessionBytes(), fingerprint = sessionFingerprint(bytes);
        const auto ids = store.records().idsByPosition();
        const quint64 sequence = journal.sequence();
        if (meanwhile) meanwhile(); // the snapshot is taken; the review goes on
        if (steps > 0) { EXPECT_TRUE(journal.announceSession(fingerprint, ids, sequence)); }
        if (steps > 1) { EXPECT_TRUE(writeSessionFile(path_, bytes)); }
        if (steps > 2) {
            journal.sessionIsThere(fingerprint);
            EXPECT_TRUE(journal.flush());
        }
    }
    [[nodiscard]] QByteArray digest() const { return digestOf(store.playlists()); }

    JournalStart found;
    ReviewStore store;
    Journal journal;

private:
    QString path_;
};

class JournalTest : public ::testing::Test {
protected:
    [[nodiscard]] QString at(const QString& name) const { return folder_.filePath(name); }
    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    [[nodiscard]] QStringList recoveredFiles() const {
        return QDir(folder_.path()).entryList({u"mia (recovered *.dls"_s});
    }

    QTemporaryDir folder_;
    const QString session_ = at(u"mia.dls"_s), journal_ = u"mia.journal"_s;
};

TEST_F(JournalTest, EachStartBringsBackWhatTheOneBeforeLeftAndGoesOn) {
    QByteArray left = digestOf({});
    for (unsigned run = 0; run < 6; ++run) {
        RunningCopy copy(session_);
        ASSERT_EQ(copy.digest(), left) << "run " << run;
        EXPECT_EQ(copy.found.goesOn, run > 0);
        copy.review(60, run);
        if (run % 3 == 2) { // a session file in between, and the review goes on while it is written
            copy.writeSession(4, [&] { copy.review(25, 100 + run); });
            copy.review(20, 200 + run);
        }
        ASSERT_TRUE(copy.journal.flush());
        left = copy.digest();
    }
    EXPECT_TRUE(recoveredFiles().isEmpty());
}

TEST_F(JournalTest, TheSessionsColourConfigurationComesBackWithItsSteps) {
    const auto start = [this](const QString& expected, const QString& next, int writing) {
        RunningCopy copy(session_);
        EXPECT_EQ(copy.store.records().colourConfiguration(), expected);
        copy.store.setColourConfiguration(next, {u"Colour Configuration"_s});
        copy.review(5, 7);
        if (writing > 0) copy.writeSession(writing);
        ASSERT_TRUE(copy.journal.flush());
    };
    start({}, u"/show/a.ocio"_s, 0);
    start(u"/show/a.ocio"_s, u"Daylark"_s, 4); // the file holds it, and the journal is short again
    start(u"Daylark"_s, {}, 0);                // a step takes it out
    start({}, u"/show/b.ocio"_s, 2);           // crashed before the journal knew that the file stands
    start(u"/show/b.ocio"_s, {}, 0);
}

TEST_F(JournalTest, ACrashBetweenAnyTwoStepsOfWritingTheSessionLosesNothing) {
    for (int steps = 0; steps <= 4; ++steps) {
        QByteArray left;
        {
            RunningCopy copy(session_);
            copy.review(30, unsigned(steps));
            copy.writeSession(steps, [&] { copy.review(10, 50 + unsigned(steps)); });
            copy.review(10, 70 + unsigned(steps));
            ASSERT_TRUE(copy.journal.flush());
            left = copy.digest();
        }
        EXPECT_EQ(RunningCopy(session_).digest(), left) << steps;
    }
}

TEST_F(JournalTest, WhatASessionFileHoldsLeavesTheJournal) {
    RunningCopy copy(session_);
    copy.review(300, 1);
    ASSERT_TRUE(copy.journal.flush());
    const qint64 before = copy.journal.figures().bytes;
    copy.writeSession();
    EXPECT_LT(copy.journal.figures().bytes, before / 10);
    EXPECT_EQ(content(journal_).size(), copy.journal.figures().bytes);
    EXPECT_EQ(parseJournal(content(journal_)).records.size(), 1u);
}

TEST_F(JournalTest, ACutOrDamagedJournalGivesWhatIsBeforeTheDamage) {
    std::vector<QByteArray> states;
    {
        RunningCopy copy(session_);
        ScriptedReview script(copy.store, 5);
        states.push_back(copy.digest());
        QObject::connect(&copy.store, &ReviewStore::applied, [&] { states.push_back(copy.digest()); });
        for (int i = 0; i < 40; ++i)
            script.step();
        ASSERT_TRUE(copy.journal.flush());
    }
    const QByteArray whole = content(journal_);
    size_t reached = 0;
    for (qsizetype length = journalHeader().size(); length <= whole.size(); length += 211) {
        for (const bool cut : {true, false}) {
            QByteArray damaged = cut ? whole.left(length) : whole;
            if (!cut && length < whole.size()) damaged[length] = char(damaged[length] ^ 0x10);
            const auto recovered = recoverSession({}, sessionFingerprint({}), parseJournal(damaged));
            if (!recovered) continue; // not even the base
            ASSERT_EQ(digestOf(recovered->contents.playlists), states.at(size_t(recovered->steps)));
            reached = std::max(reached, size_t(recovered->steps));
        }
    }
    EXPECT_GT(reached, states.size() / 2);
    write(journal_, whole.left(whole.size() - 3) + "rubbish behind the last whole record");
    {
        RunningCopy copy(session_);
        EXPECT_EQ(copy.digest(), states[states.size() - 2]);
        copy.review(10, 9);
        ASSERT_TRUE(copy.journal.flush());
        states.push_back(copy.digest());
    }
    EXPECT_EQ(RunningCopy(session_).digest(), states.back()) << "it went on before the damage";
}

TEST_F(JournalTest, TwoRunningCopiesHaveEachTheirOwn) {
    QByteArray left;
    {
        RunningCopy first(session_);
        first.review(20, 1);
        first.writeSession();
        first.review(20, 2);
        ASSERT_TRUE(first.journal.flush());
        {
            RunningCopy second(session_);
            EXPECT_FALSE(second.found.goesOn) << "the first one still runs";
            const QByteArray before = content(journal_);
            second.review(20, 3);
            ASSERT_TRUE(second.journal.flush());
            EXPECT_EQ(content(journal_), before);
            second.writeSession(); // in the place of the first one's
        }
        left = first.digest();
    }
    // Both are gone now. The session file is the second's; what the first held is kept beside it.
    const RunningCopy next(session_);
    ASSERT_EQ(recoveredFiles().size(), 1);
    const auto kept = readSessionFile(at(recoveredFiles().front()));
    ASSERT_TRUE(kept);
    EXPECT_EQ(digestOf(kept->playlists), left);
    EXPECT_EQ(next.found.keptAside, QStringList{at(recoveredFiles().front())});
}

TEST_F(JournalTest, TheJournalOfACopyThatWasKilledIsFreeAtOnce) {
    ChildProcess child([this] {
        RunningCopy copy(session_);
        copy.review(30, 4);
        static_cast<void>(copy.journal.flush());
        ::kill(::getpid(), SIGKILL);
        return 0;
    });
    EXPECT_EQ(child.wait(), -SIGKILL);
    const RunningCopy next(session_);
    EXPECT_TRUE(next.found.goesOn);
    EXPECT_GT(next.found.steps, 0);
}

TEST_F(JournalTest, AnUnreadableSessionFileIsReplacedByTheOneThatTheJournalBeganFrom) {
    QByteArray left;
    {
        RunningCopy copy(session_);
        copy.review(20, 1);
        copy.writeSession();
        copy.review(20, 2);
        ASSERT_TRUE(copy.journal.flush());
        left = copy.digest();
    }
    QFile::remove(session_); // a new file under that name
    write(u"mia.dls"_s, "no session");
    const RunningCopy next(session_);
    EXPECT_EQ(next.digest(), left);
    EXPECT_EQ(QDir(folder_.path()).entryList({u"mia (unreadable *.dls"_s}).size(), 1);
}

TEST_F(JournalTest, WithoutRestoringTheJournalIsKeptAsASession) {
    QByteArray left;
    {
        RunningCopy copy(session_);
        copy.review(20, 1);
        ASSERT_TRUE(copy.journal.flush());
        left = copy.digest();
    }
    {
        RunningCopy copy(session_, false);
        EXPECT_TRUE(copy.store.playlists().empty());
        ASSERT_EQ(copy.found.keptAside.size(), 1);
        EXPECT_EQ(digestOf(readSessionFile(copy.found.keptAside.front())->playlists), left);
    }
    EXPECT_TRUE(RunningCopy(session_, false).found.keptAside.isEmpty()) << "once";
}

TEST_F(JournalTest, WhatCannotBeWrittenIsSaidAndTriedAgain) {
    RunningCopy copy(session_);
    ASSERT_TRUE(copy.journal.flush());
    QSignalSpy trouble(&copy.journal, &Journal::troubleChanged);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{rlim_t(copy.journal.figures().bytes + 100), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    copy.review(20, 1);
    EXPECT_FALSE(copy.journal.flush());
    ::setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_TRUE(QTest::qWaitFor([&] { return trouble.count() == 2; }, 60000));
    EXPECT_TRUE(trouble[0][0].toString().contains(journal_)) << "which file";
    EXPECT_TRUE(trouble[1][0].toString().isEmpty());
    EXPECT_TRUE(copy.journal.flush());
    const auto read = recoverSession({}, sessionFingerprint({}), parseJournal(content(journal_)));
    ASSERT_TRUE(read);
    EXPECT_EQ(digestOf(read->contents.playlists), copy.digest());
}

TEST_F(JournalTest, AJournalBeginsAsSoonAsItsFolderIsThere) {
    const QString far = at(u"later/mia.dls"_s);
    RunningCopy copy(far);
    copy.review(10, 1);
    EXPECT_FALSE(copy.journal.flush());
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"later"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return copy.journal.flush(); }, 60000));
    const auto read = recoverSession({}, sessionFingerprint({}), parseJournal(content(u"later/mia.journal"_s)));
    ASSERT_TRUE(read);
    EXPECT_EQ(digestOf(read->contents.playlists), copy.digest());
}

} // namespace
} // namespace daylark::test
