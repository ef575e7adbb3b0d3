#include "app/AppFixture.h"
#include "app/links/LinkedFiles.h"
#include "support/MovieMaker.h"
#include "app/links/ReviewLink.h"

#include <sys/stat.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::waitUntil;

/// Links opened and copied by a whole library without a window.
class LinksTest : public test::AppFixture {
protected:
    void open(const QString& link) {
        controller->openFiles({link});
        ASSERT_TRUE(waitUntil([this] { return !controller->linkOpening().isBusy(); }));
    }
    QString linkTo(const QStringList& names) const {
        QStringList paths;
        for (const QString& name : names)
            paths << path(name);
        return u"daylark://link"_s + paths.join(u',');
    }
    QStringList messages() {
        QStringList texts;
        for (const Alert& alert : alerts.shown) {
            texts << alert.message;
            EXPECT_EQ(alert.buttons, QStringList{u"Okay"_s});
        }
        alerts.shown.clear();
        return texts;
    }
    QStringList namesIn(size_t row) {
        QStringList names;
        for (const auto& movie : library().playlists()[row]->movieList)
            names << movie->filenameString;
        return names;
    }
};

TEST_F(LinksTest, ALinkAddsItsFilesToThePlaylistOfLinksEachTimeItIsOpened) {
    makeFile(u"a b.mov"_s);
    makeFile(u"still.png"_s); // an image, though the preference admits none
    makeFile(u"notes.txt"_s);
    start();
    ASSERT_FALSE(preferences->allowImageFiles());
    addPlaylist(u"Day"_s, {u"x.mov"_s});
    open(linkTo({u"a b.mov"_s, u"notes.txt"_s, u"still.png"_s}) + u',');
    EXPECT_EQ(playlistNames(), (QStringList{u"Day"_s, u"Media From Link"_s}));
    EXPECT_EQ(library().selectedPlaylist(), library().playlists()[1]);
    EXPECT_EQ(shownNames(), (QStringList{u"a b.mov"_s, u"still.png"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2}));
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{1}) << "the last one";
    library().selectPlaylist(0);
    open(linkTo({u"a b.mov"_s}));
    EXPECT_EQ(shownNames(), (QStringList{u"a b.mov"_s, u"still.png"_s, u"a b.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3}));
    EXPECT_TRUE(messages().isEmpty());
    for (const auto& movie : library().arrangedMovies())
        EXPECT_TRUE(controller->linkOpening().cameByLink(*movie));
    EXPECT_FALSE(controller->linkOpening().cameByLink(*library().playlists()[0]->movieList[0]));

    open(u"daylark://playmedia"_s + path(u"a b.mov"_s));
    EXPECT_EQ(playlistNames().back(), u"Shotgun Media"_s);
    // Each link is a step.
    auto& history = controller->edits().history();
    EXPECT_EQ(history.undoText(), u"Undo Open Link"_s);
    history.undo();
    history.undo();
    EXPECT_EQ(playlistNames(), (QStringList{u"Day"_s, u"Media From Link"_s}));
    EXPECT_EQ(namesIn(1), (QStringList{u"a b.mov"_s, u"still.png"_s}));
    history.undo();
    EXPECT_EQ(playlistNames(), QStringList{u"Day"_s});
    settleThumbnails();
}

TEST_F(LinksTest, APlaylistLinkMakesAPlaylistOfItsNameWhateverThereIs) {
    makeFile(u"v/a b.mov"_s);
    makeFile(u"v/c.mov"_s);
    start();
    addPlaylist(u"Day 1"_s, {});
    const QString link = playlistLink(u"Day 1"_s, {path(u"v/a b.mov"_s), path(u"v/c.mov"_s)});
    open(link);
    EXPECT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"Day 1"_s}));
    EXPECT_EQ(namesIn(1), (QStringList{u"a b.mov"_s, u"c.mov"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{1});
    open(u"daylark://addplaylist/Nothing at all"_s);
    EXPECT_EQ(playlistNames().back(), u"Nothing at all"_s);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(LinksTest, WhatIsMissingIsSaid) {
    makeFile(u"here.mov"_s);
    start();
    addPlaylist(u"Day"_s, {});
    struct Case {
        QString link, message;
    };
    const std::vector<Case> cases{
        {linkTo({u"gone.mov"_s}), u"Can't resolve link"_s},
        {linkTo({u"gone.mov"_s, u"x.txt"_s}) + u',', u"Can't resolve link"_s}, // of another type: not counted
        {linkTo({u"gone.mov"_s, u"away.png"_s}), u"Can't resolve linked files"_s},
        {linkTo({u"gone.mov"_s, u"here.mov"_s, u"away.mov"_s}), u"Some media files in this link weren't found"_s},
        {u"daylark://link/C:\\dailies\\a.mov"_s, u"Can't resolve link"_s},
        {u"daylark://link/v/a%00.mov"_s, u"Can't resolve link"_s},
        {u"daylark://playmedia:here.mov"_s, u"An invalid URL was passed to Daylark"_s},
        {u"daylark://open/v/a.mov"_s, u"An invalid URL was passed to Daylark"_s},
        {u"daylark://link/%C3%28.mov"_s, u"An invalid URL was passed to Daylark"_s},
    };
    for (const Case& each : cases) {
        open(each.link);
        EXPECT_EQ(messages(), QStringList{each.message}) << qPrintable(each.link);
    }
    EXPECT_EQ(playlistNames(), (QStringList{u"Day"_s, u"Media From Link"_s}));
    EXPECT_EQ(namesIn(1), QStringList{u"here.mov"_s});
    QStringList many;
    for (int number = 0; number < 3000; ++number)
        many << u"gone_%1.mov"_s.arg(number);
    open(linkTo(many));
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_LT(alerts.shown[0].informativeText.size(), 2000) << "it has to fit on a screen";
    EXPECT_TRUE(alerts.shown[0].informativeText.endsWith(u"and 2995 more"_s));
}

TEST_F(LinksTest, OnlyPlainFilesAreLookedAt) {
    const QString pipe = path(u"pipe.mov"_s); // to open it would wait for a writer
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QDir(folder.path()).mkdir(u"folder.mov"_s);
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, path(u"device.mov"_s)));
    makeFile(u"a, take 2,.mov"_s);
    makeFile(u"b.mov"_s);
    QFile::link(path(u"b.mov"_s), path(u"linked.mov"_s));
    const LinkedFiles files = lookForLinkedFiles({pipe, path(u"folder.mov"_s), path(u"device.mov"_s), u"b.mov"_s,
                                                  path(u"a"_s), u" take 2"_s, u".mov"_s, path(u"linked.mov"_s),
                                                  folder.path() + u"//b.mov"_s, u"/proc/self/exe"_s, u""_s},
                                                 {});
    QStringList found;
    for (const FoundMedia& media : files.found)
        found << QFileInfo(media.path).fileName();
    EXPECT_EQ(found, (QStringList{u"a, take 2,.mov"_s, u"linked.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(files.missing, (QStringList{pipe, path(u"folder.mov"_s), path(u"device.mov"_s), u"b.mov"_s}));
    EXPECT_EQ(files.found.back().path, path(u"b.mov"_s)) << "single slashes on the record";
}

TEST_F(LinksTest, NamesWithCodesAndCommasComeBackFromOurOwnPlaylistLink) {
    const QStringList names{u"a%2Cb.mov"_s, u"100%25 c,d.mov"_s, u"e.mov"_s};
    QStringList paths;
    for (const QString& name : names)
        paths << makeFile(name);
    const LinkedFiles own = lookForFilesOf(readReviewLink(playlistLink(u"Day"_s, paths)), {});
    QStringList found;
    for (const FoundMedia& media : own.found)
        found << QFileInfo(media.path).fileName();
    EXPECT_EQ(found, names);
    EXPECT_TRUE(own.missing.isEmpty());
    // What another program escaped as it should is what counts as long as it is there.
    makeFile(u"a,b.mov"_s);
    const LinkedFiles escaped = lookForFilesOf(readReviewLink(u"daylark://link"_s + path(u"a%2Cb.mov"_s)), {});
    ASSERT_EQ(escaped.found.size(), 1U);
    EXPECT_EQ(escaped.found[0].path, path(u"a,b.mov"_s));
    const LinkedFiles gone = lookForFilesOf(readReviewLink(u"daylark://link/no%2Dwhere.mov"_s), {});
    EXPECT_EQ(gone.missing, QStringList{u"/no-where.mov"_s});
}

TEST_F(LinksTest, LinksWaitForTheStartAndGoInTheirOrder) {
    makeFile(u"a.mov"_s);
    makeFile(u"b.mov"_s);
    preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
    player = std::make_unique<Player>(clock);
    controller = std::make_unique<PlaylistController>(PlaylistController::Surroundings{
        *preferences, alerts, panels, pasteboard, browser, {u"mia"_s, folder.path(), {}}, *player, failedWrites});
    controller->openFiles({linkTo({u"a.mov"_s}), u"daylark://what"_s, linkTo({u"b.mov"_s})});
    EXPECT_FALSE(controller->linkOpening().isBusy()) << "nothing is there to add to";
    controller->awake();
    ASSERT_TRUE(waitUntil([this] { return library().arrangedMovies().size() == 2; }));
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(messages(), QStringList{u"An invalid URL was passed to Daylark"_s});
}

TEST_F(LinksTest, TheViewerClosesBeforeMediaCome) {
    MovieSpec spec;
    spec.path = path(u"shown.mov"_s);
    spec.frames = 8;
    ASSERT_TRUE(makeMovie(spec));
    start();
    addPlaylist(u"Day"_s, {u"shown.mov"_s});
    controller->loadMovieWindow();
    ASSERT_TRUE(controller->playerWindow().isOpen());
    open(linkTo({u"gone.mov"_s}));
    EXPECT_TRUE(controller->playerWindow().isOpen()) << "nothing came";
    open(linkTo({u"shown.mov"_s}));
    EXPECT_FALSE(controller->playerWindow().isOpen());
}

TEST_F(LinksTest, CopiesGoAsRichTextThatShowsNamesAndAsLinksBesideIt) {
    start();
    addPlaylist(u"Day 1"_s, {u"a b.mov"_s, u"c.mov"_s, u"d.mov"_s});
    library().setSort(u"sortOrder"_s, false);
    LinkCopying& copying = controller->linkCopying();
    pasteboard.setText(u"before"_s);
    library().selectMovies({});
    copying.copyMovieLink();
    EXPECT_EQ(pasteboard.content, u"before"_s);
    library().selectMovies({1, 2});
    copying.copyMovieLink();
    EXPECT_EQ(pasteboard.content, u"daylark://link%1\ndaylark://link%2"_s.arg(path(u"c.mov"_s), path(u"a b.mov"_s)));
    EXPECT_TRUE(pasteboard.html.contains(u">c.mov</a><br>"_s) && pasteboard.html.contains(u"/a%20b.mov\">a b.mov</a>"_s))
        << qPrintable(pasteboard.html);
    copying.copyPlaylistLink();
    EXPECT_EQ(pasteboard.content, u"daylark://addplaylist/Day%201"_s + path(u"d.mov"_s) + u',' + path(u"c.mov"_s) + u',' +
                                      path(u"a%20b.mov"_s) + u',');
    EXPECT_TRUE(pasteboard.html.contains(u">Day 1</a>"_s));
    copying.copyPath();
    EXPECT_EQ(pasteboard.content, path(u"c.mov"_s) + u'\n' + path(u"a b.mov"_s));
    EXPECT_TRUE(pasteboard.html.isEmpty());
    copying.copyFilename();
    EXPECT_EQ(pasteboard.content, u"c.mov\na b.mov"_s);

    // What was copied is opened where it is pasted.
    makeFile(u"c.mov"_s);
    makeFile(u"a b.mov"_s);
    copying.copyMovieLink();
    controller->openLinksOfPasteboard();
    ASSERT_TRUE(waitUntil([this] { return !controller->linkOpening().isBusy(); }));
    EXPECT_EQ(playlistNames().back(), u"Media From Link"_s);
    EXPECT_EQ(namesIn(1), (QStringList{u"c.mov"_s, u"a b.mov"_s}));
    EXPECT_TRUE(messages().isEmpty());
}

} // namespace
} // namespace daylark
