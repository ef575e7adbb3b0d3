#include "review/journal/JournalFormat.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace daylark {
namespace {

using Kind = JournalRecord::Kind;

class JournalFormatTest : public ::testing::Test {
protected:
    const std::vector<JournalRecord> records_{
        {Kind::base, 0, journalBaseBytes({sessionFingerprint("session"), {2, 3, 1ULL << 40}})},
        {Kind::changes, 1, "a step"},
        {Kind::changes, 2, QByteArray()},
        {Kind::numbering, 2, journalNumbersBytes({7, 8})},
        {Kind::changes, 3, QByteArray(5000, '\xFF')}};
    [[nodiscard]] QByteArray journal() const {
        QByteArray bytes = journalHeader();
        for (const JournalRecord& record : records_)
            bytes += journalRecordBytes(record);
        return bytes;
    }
    /// What is read is what was written, from the beginning to somewhere.
    [[nodiscard]] bool isPrefix(const JournalRecords& read) const {
        return read.records.size() <= records_.size() &&
               std::equal(read.records.begin(), read.records.end(), records_.begin());
    }
};

TEST_F(JournalFormatTest, RecordsComeBackWithWhatTheyHold) {
    const JournalRecords read = parseJournal(journal());
    EXPECT_EQ(read.records, records_);
    EXPECT_EQ(read.soundBytes, journal().size());
    const auto base = parseJournalBase(read.records[0].payload);
    ASSERT_TRUE(base);
    EXPECT_EQ(base->fingerprint, sessionFingerprint("session"));
    EXPECT_EQ(base->ids, (std::vector<quint64>{2, 3, 1ULL << 40}));
    EXPECT_EQ(parseJournalNumbers(read.records[3].payload), (std::vector<quint64>{7, 8}));
    EXPECT_FALSE(parseJournalNumbers("seven b"));
    EXPECT_FALSE(parseJournalBase("short"));
    EXPECT_NE(sessionFingerprint("session"), sessionFingerprint("Session"));
}

TEST_F(JournalFormatTest, ACutJournalHoldsTheWholeRecordsBeforeTheCut) {
    const QByteArray whole = journal();
    qsizetype most = 0;
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        const JournalRecords read = parseJournal(whole.left(length));
        ASSERT_TRUE(isPrefix(read)) << length;
        ASSERT_LE(read.soundBytes, length);
        ASSERT_GE(qsizetype(read.records.size()), most) << "a longer one holds no less";
        most = qsizetype(read.records.size());
        ASSERT_EQ(parseJournal(whole.left(read.soundBytes)).records, read.records);
    }
    EXPECT_EQ(most, qsizetype(records_.size()));
}

TEST_F(JournalFormatTest, ADamagedJournalHoldsNothingFromTheDamageOn) {
    const QByteArray whole = journal();
    for (qsizetype at = 0; at < whole.size(); at += at < 400 ? 1 : 97)
        for (const int flip : {0x01, 0x80, 0xFF}) {
            QByteArray damaged = whole;
            damaged[at] = char(damaged[at] ^ flip);
            const JournalRecords read = parseJournal(damaged);
            ASSERT_TRUE(isPrefix(read)) << at;
            ASSERT_LT(read.records.size(), records_.size()) << at;
            ASSERT_LE(read.soundBytes, at);
        }
    for (const QByteArray& strange : {QByteArray(), QByteArray(100, '\0'), QByteArray("bplist00"),
                                      journalHeader().left(15), journalHeader() + QByteArray(64, '\xFF')})
        EXPECT_TRUE(parseJournal(strange).records.empty());
    EXPECT_EQ(parseJournal(journalHeader() + QByteArray(64, '\0')).soundBytes, journalHeader().size());
    const QByteArray unknown = journalRecordBytes({Kind(9), 1, "later"});
    EXPECT_TRUE(parseJournal(journalHeader() + unknown).records.empty()) << "of a version to come";
}

} // namespace
} // namespace daylark
