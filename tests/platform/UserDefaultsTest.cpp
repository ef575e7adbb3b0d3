#include "platform/UserDefaults.h"
#include "platform/PreferencesFile.h"

#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <unistd.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class UserDefaultsTest : public ::testing::Test {
protected:
    QTemporaryDir folder_;
    const QString file_ = folder_.filePath(u"Daylark/preferences.ini"_s);
};

TEST_F(UserDefaultsTest, OverrideStandsOverStoredValueAndStoredValueOverRegisteredDefault) {
    UserDefaults defaults(file_);
    QSignalSpy changed(&defaults, &UserDefaults::changed);
    EXPECT_FALSE(defaults.value(u"volume"_s).isValid());
    EXPECT_TRUE(defaults.value(u"901"_s).isNull());
    defaults.registerDefaults({{u"volume"_s, 0.5}, {u"901"_s, u"Approved"_s}});
    EXPECT_EQ(defaults.value(u"volume"_s).toDouble(), 0.5);
    EXPECT_FALSE(defaults.hasStoredValue(u"volume"_s));

    defaults.set(u"volume"_s, 0.5); // stored, yet nothing changes
    EXPECT_TRUE(defaults.hasStoredValue(u"volume"_s));
    EXPECT_EQ(changed.count(), 0);
    defaults.set(u"volume"_s, 0.25);
    EXPECT_EQ(changed.count(), 1);
    defaults.overrideForThisRun(u"volume"_s, 1.0);
    EXPECT_EQ(defaults.value(u"volume"_s).toDouble(), 1.0);
    defaults.remove(u"volume"_s);
    EXPECT_EQ(defaults.value(u"volume"_s).toDouble(), 1.0);
    EXPECT_EQ(changed.count(), 2);

    defaults.set(u"901"_s, u"Final"_s);
    defaults.remove(u"901"_s);
    EXPECT_EQ(defaults.value(u"901"_s).toString(), u"Approved"_s);
    defaults.synchronise();
    EXPECT_TRUE(UserDefaults(file_).storedKeys().isEmpty()) << "defaults and overrides are never written";
}

TEST_F(UserDefaultsTest, ValuesKeepTheirTypesAndKeysTheirSpelling) {
    const std::vector<std::pair<QString, QVariant>> values{
        {u"a"_s, true},
        {u"b"_s, -7},
        {u"c"_s, Q_INT64_C(1) << 40},
        {u"d"_s, 1.0},
        {u"e"_s, 0.1},
        {u"f"_s, 1e300},
        {u"Session Path"_s, u"/Ä b/\"c\" = d\\\n#!"_s},
        {u"g"_s, u"true"_s},
        {u"h"_s, u"9"_s},
        {u"i"_s, u""_s},
        {u"brushColour"_s, QColor(255, 255, 0, 128)},
        {u"j"_s, QByteArray("\0\1\xff", 3)},
        {u"k"_s, QStringList{u"x"_s, u"y, z"_s}},
        {u"odd=key%\nwith [line]"_s, 3},
        {u"größe"_s, 4},
    };
    {
        UserDefaults defaults(file_);
        for (const auto& [key, value] : values)
            defaults.set(key, value);
    }
    const UserDefaults read(file_);
    EXPECT_EQ(read.storedKeys().size(), qsizetype(values.size()));
    for (const auto& [key, value] : values) {
        EXPECT_EQ(read.value(key).typeName(), value.typeName()) << qPrintable(key);
        EXPECT_EQ(read.value(key), value) << qPrintable(key);
    }
    EXPECT_EQ(read.value(u"brushColour"_s).value<QColor>().alpha(), 128);
}

TEST_F(UserDefaultsTest, TwoRunningCopiesKeepEachOthersValues) {
    UserDefaults first(file_), second(file_);
    first.set(u"first"_s, 1);
    second.set(u"second"_s, 2);
    second.set(u"both"_s, 2);
    first.synchronise();
    second.synchronise();
    first.set(u"both"_s, 1);
    first.remove(u"first"_s);
    first.synchronise();
    second.set(u"later"_s, 3);
    second.synchronise();
    const UserDefaults read(file_);
    EXPECT_EQ(read.storedKeys(), (QStringList{u"both"_s, u"later"_s, u"second"_s}));
    EXPECT_EQ(read.value(u"both"_s).toInt(), 1);
}

TEST_F(UserDefaultsTest, TwoProcessesWritingAtOnceLoseNothing) {
    constexpr int count = 60;
    const auto writer = [this](const QString& prefix) {
        return [this, prefix] {
            UserDefaults defaults(file_);
            for (int i = 0; i < count; ++i) {
                defaults.set(prefix + QString::number(i), i);
                defaults.synchronise();
            }
            return 0;
        };
    };
    test::ChildProcess a(writer(u"a"_s)), b(writer(u"b"_s));
    EXPECT_EQ(a.wait(), 0);
    EXPECT_EQ(b.wait(), 0);
    EXPECT_EQ(UserDefaults(file_).storedKeys().size(), 2 * count);
}

/// The child says through a pipe which number it has synchronised; whatever the moment of its death, the file
/// holds that.
TEST_F(UserDefaultsTest, KilledWhileWritingHoldsEverySynchronisedValue) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> microseconds(500, 12000);
    int synchronised = 0;
    for (int round = 0; round < 60; ++round) {
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        test::ChildProcess child([&] {
            UserDefaults defaults(file_);
            for (int i = synchronised + 1;; ++i) {
                defaults.set(u"key%1"_s.arg(i % 10), i);
                defaults.set(u"last"_s, i);
                defaults.synchronise();
                if (::write(pipe[1], &i, sizeof i) != sizeof i) return 1;
            }
        });
        ::close(pipe[1]);
        int said = 0;
        if (::read(pipe[0], &said, sizeof said) == sizeof said) // at least one, then death at any moment
            synchronised = said;
        ::usleep(useconds_t(microseconds(random)));
        child.kill();
        while (::read(pipe[0], &said, sizeof said) == sizeof said)
            synchronised = said;
        ::close(pipe[0]);

        const Result<PreferenceValues> values = readPreferencesFile(file_);
        ASSERT_TRUE(values);
        const int last = values->value(u"last"_s).toInt();
        ASSERT_GE(last, synchronised) << "round " << round;
        for (int i = std::max(1, synchronised - 9); i <= synchronised; ++i)
            ASSERT_GE(values->value(u"key%1"_s.arg(i % 10)).toInt(), i);
        synchronised = last;
    }
    EXPECT_GT(synchronised, 60);
    UserDefaults(file_).set(u"end"_s, true);
    const QStringList left = QFileInfo(file_).dir().entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(left, (QStringList{u"preferences.ini"_s, u"preferences.ini.lock"_s}))
        << "half-written files are cleared away";
}

TEST_F(UserDefaultsTest, DamagedLinesAreDroppedAndTheRestIsKept) {
    const PreferenceValues values =
        parsePreferences("\xff\xfe\n=1\nno equals\nx=\ny=\"open\nz=nan\nc=#12\ngood=5\nalso=\"a\"");
    EXPECT_EQ(values, (PreferenceValues{{u"good"_s, 5}, {u"also"_s, u"a"_s}}));
}

TEST_F(UserDefaultsTest, StoreThatCannotBeWrittenKeepsValuesForThisRunAndTheOldFile) {
    { UserDefaults(file_).set(u"kept"_s, 1); }
    const QString folder = QFileInfo(file_).path();
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFile::Permissions(0x5555)));
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::Permissions(0x5555)));
    const int status = test::runWithoutRootRights([this] {
        UserDefaults defaults(file_);
        defaults.set(u"new"_s, 2);
        defaults.synchronise();
        return defaults.value(u"new"_s).toInt();
    });
    EXPECT_EQ(status, 2);
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
    QFile::setPermissions(folder, QFile::Permissions(0x7755));
    EXPECT_EQ(UserDefaults(file_).storedKeys(), QStringList{u"kept"_s});
}

TEST_F(UserDefaultsTest, WhatChangesWhileAWriteFailsStandsOverWhatThatWriteHeld) {
    UserDefaults(file_).set(u"there"_s, 1); // makes folder and lock
    const int lock = ::open(qPrintable(file_ + u".lock"_s), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    UserDefaults defaults(file_);
    defaults.set(u"volume"_s, 1);
    defaults.set(u"first"_s, 1);
    defaults.set(u"gone"_s, 1);
    ::usleep(700'000); // its write waits for the lock by now, and gives up after a second
    defaults.set(u"volume"_s, 2);
    defaults.remove(u"gone"_s);
    ::usleep(1'100'000);
    ::close(lock);
    defaults.synchronise();
    const UserDefaults read(file_);
    EXPECT_EQ(read.value(u"volume"_s).toInt(), 2);
    EXPECT_EQ(read.storedKeys(), (QStringList{u"first"_s, u"there"_s, u"volume"_s}));
}

TEST_F(UserDefaultsTest, AnEqualValueIsStoredAgainSinceAnotherCopyMayHaveChangedIt) {
    UserDefaults first(file_), second(file_);
    first.set(u"volume"_s, 1);
    first.synchronise();
    second.set(u"volume"_s, 2);
    second.synchronise();
    first.set(u"volume"_s, 1);
    first.synchronise();
    EXPECT_EQ(UserDefaults(file_).value(u"volume"_s).toInt(), 1);
}

} // namespace
} // namespace daylark
