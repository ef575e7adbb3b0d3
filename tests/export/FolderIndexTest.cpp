#include "export/relink/FolderIndex.h"
#include "export/relink/MediaSearch.h"
#include "export/relink/RelinkReport.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class FolderIndexTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return root.filePath(name); }
    QString file(const QString& name) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile made(path(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        return path(name);
    }
    void link(const QString& to, const QString& name) const {
        ASSERT_EQ(::symlink(QFile::encodeName(to).constData(), QFile::encodeName(path(name)).constData()), 0);
    }
    [[nodiscard]] FolderIndex index() const { return FolderIndex::ofFolder(folder.path() + u"/root"_s); }

    QTemporaryDir folder;
    QDir root{folder.path() + u"/root"_s};
};

TEST_F(FolderIndexTest, TheFileMetLastOfANameCountsAndHiddenOnesNever) {
    // Depth first, by name: a folder's files stand where its name does.
    file(u"b/x.mov"_s);
    file(u"b/deep/package.dlm/x.mov"_s);
    file(u"z.mov"_s);
    file(u"c/z.mov"_s);
    const QString last = file(u"c/x.mov"_s);
    file(u".hidden/h.mov"_s);
    file(u"c/.h.mov"_s);
    file(u"c/Ü/é.mov"_s);
    const FolderIndex files = index();
    EXPECT_EQ(files.path(u"x.mov"_s), last);
    EXPECT_EQ(files.allPaths(u"x.mov"_s),
              (QStringList{path(u"b/deep/package.dlm/x.mov"_s), path(u"b/x.mov"_s), last}));
    EXPECT_EQ(files.path(u"z.mov"_s), path(u"z.mov"_s)) << "behind the folder c";
    EXPECT_EQ(files.path(u"é.mov"_s), path(u"c/Ü/é.mov"_s));
    for (const QString& none : {u"h.mov"_s, u".h.mov"_s, u"X.mov"_s, u"c"_s, u""_s, u"b/x.mov"_s, u"e\u0301.mov"_s})
        EXPECT_TRUE(files.path(none).isNull()) << qPrintable(none);
    EXPECT_EQ(files.count(), 6);
    EXPECT_EQ(FolderIndex::ofFolder(folder.path() + u"/none"_s).count(), 0);
    EXPECT_EQ(FolderIndex::ofFolder(last).count(), 0) << "a file is no folder";
}

TEST_F(FolderIndexTest, LinksAreFollowedOnceAndNeverOutToWhatIsAbove) {
    file(u"v3/a.mov"_s);
    link(u"v3"_s, u"latest"_s);   // before v3 by name, but the file lies in v3
    link(u"."_s, u"v3/here"_s);   // in circles
    link(u"../.."_s, u"v3/up"_s); // out of the folder
    link(u"/"_s, u"v3/z:"_s);
    const QString other = folder.path() + u"/other"_s;
    QDir().mkpath(other + u"/sub"_s);
    QFile away(other + u"/sub/b.mov"_s), shadowed(other + u"/a.mov"_s);
    ASSERT_TRUE(away.open(QIODevice::WriteOnly) && shadowed.open(QIODevice::WriteOnly));
    link(other, u"first"_s);
    link(other + u"/sub"_s, u"second"_s);
    link(away.fileName(), u"linked.mov"_s);
    link(u"nowhere"_s, u"dangling.mov"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe.mov"_s)).constData(), 0600), 0);
    const FolderIndex files = index();
    EXPECT_EQ(files.allPaths(u"a.mov"_s), QStringList{path(u"v3/a.mov"_s)}) << "what is found without a link counts";
    EXPECT_EQ(files.allPaths(u"b.mov"_s), QStringList{path(u"first/sub/b.mov"_s)});
    EXPECT_EQ(files.path(u"linked.mov"_s), path(u"linked.mov"_s)) << "a link to a file is a file";
    EXPECT_TRUE(files.path(u"dangling.mov"_s).isNull());
    EXPECT_TRUE(files.path(u"pipe.mov"_s).isNull()) << "nothing to play, and opening it would wait";
    EXPECT_EQ(files.count(), 3);
}

TEST_F(FolderIndexTest, WhatCannotBeReadOrSpeltIsPassedOver) {
    file(u"locked/in.mov"_s);
    file(u"open/out.mov"_s);
    const QByteArray odd = QFile::encodeName(root.path()) + "/\xff\xfe.mov";
    QFile::copy(path(u"open/out.mov"_s), path(u"copy.mov"_s));
    ASSERT_EQ(::rename(QFile::encodeName(path(u"copy.mov"_s)).constData(), odd.constData()), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"locked"_s)).constData(), 0), 0);
    EXPECT_EQ(test::runWithoutRootRights([this] {
                  const FolderIndex files = index();
                  return files.count() == 1 && !files.path(u"out.mov"_s).isNull() ? 0 : 1;
              }),
              0);
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"locked"_s)).constData(), 0755), 0);
    ASSERT_EQ(::unlink(odd.constData()), 0); // the folder's remover can't spell it either

    QString deep = root.path(); // deeper than any stack of calls would like
    for (int level = 0; level < 700; ++level)
        deep += u"/d"_s;
    ASSERT_TRUE(QDir().mkpath(deep));
    QFile bottom(deep + u"/bottom.mov"_s);
    ASSERT_TRUE(bottom.open(QIODevice::WriteOnly));
    EXPECT_EQ(index().path(u"bottom.mov"_s), bottom.fileName());
}

TEST_F(FolderIndexTest, ACancelledLookGivesNothing) {
    for (int at = 0; at < 50; ++at)
        file(u"%1/x%1.mov"_s.arg(at));
    CancelFlag cancelled = false;
    int told = 0;
    const FolderIndex files =
        FolderIndex::ofFolder(root.path(), {&cancelled, [&](qint64) { cancelled = ++told == 10; }});
    EXPECT_EQ(files.count(), 0);
    EXPECT_EQ(told, 10);
    EXPECT_FALSE(searchMedia({{u"x1.mov"_s, {u"/gone/x1.mov"_s, {}, true}, 0}}, {root.path()}, {&cancelled, {}}));
}

TEST_F(FolderIndexTest, AnswersComeByItemOrByTurn) {
    const QString a = file(u"a.mov"_s), b = file(u"b.mov"_s), c = file(u"c.mov"_s);
    const auto gone = [](const char* name, qsizetype item) {
        const QString filename = QString::fromLatin1(name);
        return SoughtMedia{filename, {u"/gone/"_s + filename, {}, true}, item};
    };
    // One item stands in two lists; another is there.
    std::vector<SoughtMedia> items{gone("a.mov", 0), {u"b.mov"_s, {b, {}, true}, 1}, gone("a.mov", 0),
                                   gone("none.mov", 2), gone("c.mov", 3)};
    const auto linksOf = [](const MediaSearchResult& result) {
        QStringList links;
        for (const MediaLink& link : result.links) {
            links << u"%1 %2"_s.arg(link.item).arg(QFileInfo(link.path).fileName());
            EXPECT_FALSE(link.bookmarkData.isEmpty());
        }
        return links.join(u", "_s);
    };
    MediaSearch how{root.path()};
    auto result = searchMedia(items, how, {});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->sought, 4);
    EXPECT_EQ(linksOf(*result), u"0 a.mov, 0 a.mov, 3 c.mov"_s);
    how.answers = MediaSearch::Answers::byTurn;
    result = searchMedia(items, how, {});
    EXPECT_EQ(result->sought, 4);
    EXPECT_EQ(linksOf(*result), u"0 a.mov, 2 a.mov"_s) << "the second answer for a.mov goes to who is missing next";
    items.erase(items.begin() + 2);
    EXPECT_EQ(linksOf(*searchMedia(items, how, {})), u"0 a.mov, 3 c.mov"_s);
    how = {root.path(), MediaSearch::Sought::all};
    EXPECT_EQ(linksOf(*searchMedia(items, how, {})), u"0 a.mov, 1 b.mov, 3 c.mov"_s);
    EXPECT_EQ(searchMedia(items, how, {})->sought, 4);
}

TEST_F(FolderIndexTest, ARunIsFoundWhereMostOfItsPicturesAre) {
    const auto put = [this](const QString& place, const QList<int>& numbers) {
        for (const int number : numbers)
            file(u"%1/sh.%2.exr"_s.arg(place).arg(number));
    };
    put(u"a"_s, {1001, 1002, 1003});
    put(u"b/deep"_s, {1003, 1005, 1007}); // without the first; 1003 is the one that the run counts as well
    put(u"c"_s, {1002, 1004, 1006});      // between its steps
    put(u"z"_s, {1007});
    file(u"z/sh.01001.exr"_s);
    file(u"z/other.1001.exr"_s);
    const MovieRun run{{u"sh."_s, u".exr"_s, 4, false, 1001, 1007, 2}, {}, false, {}};
    const QString gone = u"/gone/sh.1001.exr"_s;
    const auto search = [&] {
        return *searchMedia({{u"sh.1001.exr"_s, {gone, {}, true, run}, 0}, {u"sh.1001.exr"_s, {gone, {}, true}, 1}},
                            {root.path()}, {});
    };
    MediaSearchResult result = search();
    ASSERT_EQ(result.links.size(), 2u);
    EXPECT_EQ(result.links[0].path, path(u"b/deep/sh.1001.exr"_s)) << "the first one's place, though it isn't there";
    EXPECT_EQ(result.links[1].path, path(u"a/sh.1001.exr"_s)) << "a picture by itself";
    ASSERT_EQ(result.choices.size(), 1u);
    EXPECT_EQ(result.choices[0], (QStringList{path(u"z/sh.1001-1007x2#.exr"_s), path(u"a/sh.1001-1007x2#.exr"_s),
                                              path(u"b/deep/sh.1001-1007x2#.exr"_s)}));
    put(u"d"_s, {1001, 1003, 1005}); // as many, met later
    EXPECT_EQ(search().links[0].path, path(u"d/sh.1001.exr"_s));
    QDir(path(u"d"_s)).removeRecursively();
    QDir(path(u"b"_s)).removeRecursively();
    QDir(path(u"a"_s)).removeRecursively();
    result = search();
    ASSERT_EQ(result.links.size(), 1u);
    EXPECT_EQ(result.links[0].path, path(u"z/sh.1001.exr"_s)) << "one picture is a run that lost the others";
}

TEST(RelinkReport, SaysWhatWasFoundAsItAlwaysWas) {
    struct Case {
        qint64 found, missing;
        QString title, text;
    };
    const QString none = u"No matching files were found in this location."_s;
    for (const Case& c : std::vector<Case>{
             {1, 1, u"All Files Found"_s, u"1 matching file has been relinked."_s},
             {3, 3, u"All Files Found"_s, u"3 matching files have been relinked."_s},
             {1, 3, u"Some Files Found"_s, u"1 matching file has been relinked.  2 files were not found."_s},
             {2, 3, u"Some Files Found"_s, u"2 matching files have been relinked.  1 file was not found."_s},
             {0, 3, u"No Files Found"_s, none},
             {0, 0, u"No Files Found"_s, none}}) {
        RelinkReport report;
        report.found = c.found;
        report.missing = c.missing;
        EXPECT_EQ(report.title(), c.title);
        EXPECT_EQ(report.text(), c.text);
    }
}

} // namespace
} // namespace daylark
