// Crash journals from strangers: cut, damaged or made up, carried out on a session and written as one.
#include "review/ReviewStore.h"
#include "review/journal/SessionRecovery.h"

#include "SeedFolder.h"

#include <QtEndian>

#include <cstdint>
#include <cstdlib>

using namespace daylark;

namespace {

using Kind = JournalRecord::Kind;

SessionContents seedSession() {
    SessionContents contents;
    contents.hasPlaylists = true;
    for (int list = 0; list < 2; ++list) {
        auto playlist = std::make_shared<Playlist>();
        for (int item = 0; item < 3; ++item) {
            auto movie = std::make_shared<Movie>(QStringLiteral("/dailies/%1%2.mov").arg(list).arg(item));
            movie->bookmarkStore.push_back(std::make_shared<Bookmark>(10 * item + 1, 5, 25.0F));
            playlist->movieList.push_back(movie);
        }
        contents.playlists.push_back(playlist);
    }
    return contents;
}

JournalRecord seedBase() {
    std::vector<quint64> ids;
    for (quint64 id = 2; id < 16; ++id)
        ids.push_back(id);
    return {Kind::base, 0, journalBaseBytes({sessionFingerprint("seed"), ids})};
}

/// A review of a few steps, as a store announces it.
std::vector<QByteArray> seedSteps() {
    ReviewStore store;
    std::vector<QByteArray> steps;
    store.replaceSession(seedSession().playlists);
    QObject::connect(&store, &ReviewStore::applied,
                     [&steps](const Edit& edit) { steps.push_back(encodeChanges(edit.changes)); });
    const auto list = store.playlists().front();
    const auto movie = list->movieList.front();
    store.modify(movie, {}, [](Movie& changed) { changed.setFlag(904); });
    store.modify(movie, movie->bookmarkStore.front(), {}, [](Bookmark& changed) {
        changed.drawings.hasKeys = true;
        changed.drawings.strokes = {Stroke{{QPointF(1, 2), QPointF(3.5, -4)}}};
    });
    store.insertMovies(list, 1, {std::make_shared<Movie>(QStringLiteral("/dailies/new.mov"))}, {});
    store.setPlaylists({store.playlists().back()}, {});
    return steps;
}

void carryOut(const JournalRecords& journal) {
    const auto recovered = recoverSession(seedSession(), sessionFingerprint("seed"), journal);
    if (!recovered) return;
    if (recovered->steps > qint64(journal.records.size())) std::abort();
    // What was brought back is a session, so it can be written and read.
    if (!decodeSession(encodeSession(recovered->contents))) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    QByteArray journal = journalHeader() + journalRecordBytes(seedBase()), steps;
    quint64 sequence = 0;
    for (const QByteArray& step : seedSteps()) {
        journal += journalRecordBytes({Kind::changes, ++sequence, step});
        const quint16 length = qToLittleEndian(quint16(step.size()));
        steps += QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + step;
    }
    fuzz::seedCorpus(*argc, *argv, "journal", journal);
    fuzz::seedCorpus(*argc, *argv, "steps", steps);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QByteArray input(reinterpret_cast<const char*>(bytes), qsizetype(size));
    const JournalRecords parsed = parseJournal(input);
    if (parsed.soundBytes > input.size()) std::abort();
    carryOut(parsed);
    // Checksums would keep whatever is made up out: here it stands behind right ones.
    JournalRecords made{{seedBase()}, 0};
    for (qsizetype at = 0; at + 2 <= input.size();) {
        const auto length = qsizetype(qFromLittleEndian<quint16>(input.constData() + at));
        made.records.push_back({Kind::changes, made.records.size(), input.mid(at + 2, length)});
        at += 2 + length;
    }
    carryOut(made);
    return 0;
}
