#include "ui/desktop/ProgramArguments.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>

namespace daylark {

using namespace Qt::StringLiterals;

TEST(ProgramArgumentsTest, PathsAddressesAndLinksAreOpenedAndWhatIsNotThereIsSaid) {
    const QTemporaryDir folder;
    const QDir here(folder.path());
    ASSERT_TRUE(here.mkdir(u"Day 1"_s));
    for (const QString& name : {u"a b.mov"_s, u"daylark:x.mov"_s}) {
        QFile file(here.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const auto read = ProgramArguments::read({u"a b.mov"_s, u"./Day 1/../Day 1/"_s, u"gone.mov"_s,
                                              u"file://"_s + folder.path() + u"/a%20b.mov"_s, u"Daylark://link/x.mov"_s,
                                              u"./daylark:x.mov"_s, u"https://server/a.mov"_s, QString()},
                                             here);
    EXPECT_EQ(read.toOpen, (QStringList{here.filePath(u"a b.mov"_s), here.filePath(u"Day 1"_s), here.filePath(u"a b.mov"_s),
                                        u"Daylark://link/x.mov"_s, here.filePath(u"daylark:x.mov"_s)}));
    EXPECT_EQ(read.failures,
              (QStringList{u"gone.mov: no such file or folder"_s, u"https://server/a.mov: no such file or folder"_s,
                           u": no such file or folder"_s}));
    EXPECT_FALSE(read.nothingLeft());
    QFile odd(here.filePath(u"odd.mov"_s));
    ASSERT_TRUE(odd.open(QIODevice::WriteOnly));
    const QByteArray latin = QFile::encodeName(folder.path()) + "/caf\xe9.mov";
    ASSERT_EQ(::rename(QFile::encodeName(odd.fileName()).constData(), latin.constData()), 0);
    for (const QString& given : {QFile::decodeName("caf\xe9.mov"), u"file://"_s + folder.path() + u"/caf%E9.mov"_s}) {
        const auto lost = ProgramArguments::read({given}, here);
        EXPECT_EQ(lost.failures, QStringList{u"caf\\xE9.mov: left out, not named in UTF-8"_s});
        EXPECT_EQ(lost.toOpen.size(), 1) << "the library says it where it is seen";
    }
    ASSERT_EQ(::unlink(latin.constData()), 0);
    EXPECT_TRUE(ProgramArguments::read({u"gone.mov"_s}, here).nothingLeft());
    EXPECT_FALSE(ProgramArguments::read({}, here).nothingLeft());
}

} // namespace daylark
