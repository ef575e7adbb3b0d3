#include "app/AppFixture.h"

#include "app/playlists/SmartQuestion.h"
#include "model/StatusCodes.h"

namespace daylark::test {
namespace {

class SmartListsTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    std::shared_ptr<Playlist> addSmartlist(const SmartRules& rules) {
        controller->playlistEditing().addEmptySmartlist();
        const auto smartlist = library().playlists().back();
        controller->playlistEditing().setRules(smartlist, rules);
        return smartlist;
    }
    QString answer(const SmartRules& rules) {
        Playlist asked;
        asked.playlistType = playlistType::smart;
        asked.smartRules = rules;
        QString names;
        const smartQuestion::Test holds = smartQuestion::testOf(rules);
        for (const auto& playlist : library().playlists())
            for (const auto& movie : playlist->movieList)
                if (holds({*movie, {playlist->name}})) names += movie->filenameString;
        return names;
    }
    QString answer(const char* subject, const char* relation, const QString& value = {}) {
        return answer({false, {{QLatin1String(subject), QLatin1String(relation), value}}});
    }
    void settle() { QCoreApplication::processEvents(); }
    ReviewEdits& edits() { return controller->edits(); }
};

TEST_F(SmartListsTest, EverySubjectAsksWhatItSays) {
    const auto day = addPlaylist(u"Day"_s, {u"a"_s, u"b"_s});
    addPlaylist(u"Night"_s, {u"c"_s});
    const auto a = day->movieList[0];
    edits().setFlag({a}, 902);
    edits().setNotes(a, NotesField::notes, AttributedString(u"late"_s));
    library().store().modify(a, {{}, EditKind::background}, [](Movie& movie) {
        movie.mMovieFPS = 23.976f;
        movie.mMovieWidth = 2048;
        movie.mMovieHeight = 858;
        movie.fileCreationDate = Date::fromUnixSeconds(double(QDateTime::currentSecsSinceEpoch()));
        movie.creatingThumbnailText = fileNotFoundText;
    });
    EXPECT_EQ(answer("status", "is", u"902"_s), u"a"_s);
    EXPECT_EQ(answer("status", "isNot", u"902"_s), u"bc"_s);
    EXPECT_EQ(answer("status", "is", u"900"_s), u"bc"_s);
    EXPECT_EQ(answer("notes", "present"), u"a"_s);
    EXPECT_EQ(answer("notes", "absent"), u"bc"_s);
    EXPECT_EQ(answer("bookmarks", "present"), QString());
    EXPECT_EQ(answer("grade", "absent"), u"abc"_s);
    EXPECT_EQ(answer("drawings", "present"), QString());
    EXPECT_EQ(answer("missing", "present"), u"a"_s);
    EXPECT_EQ(answer("name", "contains", u"B"_s), u"b"_s);
    EXPECT_EQ(answer("name", "containsNot", u"b"_s), u"ac"_s);
    EXPECT_EQ(answer("name", "is", u"C"_s), u"c"_s);
    EXPECT_EQ(answer("path", "beginsWith", folder.path()), u"abc"_s);
    EXPECT_EQ(answer("rate", "is", u"23.976"_s), u"a"_s);
    EXPECT_EQ(answer("rate", "is", u"23.98"_s), u"a"_s) << "as people say it";
    EXPECT_EQ(answer("rate", "below", u"24"_s), u"a"_s) << "an unknown rate is below nothing";
    EXPECT_EQ(answer("resolution", "is", u"2048x858"_s), u"a"_s);
    EXPECT_EQ(answer("resolution", "wider", u"1920"_s), u"a"_s);
    EXPECT_EQ(answer("resolution", "narrower", u"1920 x 1080"_s), QString());
    EXPECT_EQ(answer("date", "on", QDate::currentDate().toString(Qt::ISODate)), u"a"_s);
    EXPECT_EQ(answer("date", "lastDays", u"1"_s), u"a"_s);
    EXPECT_EQ(answer("date", "before", u"2001-01-01"_s), QString());
    EXPECT_EQ(answer("playlist", "is", u"Night"_s), u"c"_s);
    EXPECT_EQ(answer("playlist", "contains", u"DAY"_s), u"ab"_s);

    for (const char* value : {"", "fast", "-"})
        EXPECT_EQ(answer("rate", "above", QLatin1String(value)), QString()) << "says nothing: " << value;
    EXPECT_EQ(answer("colour of the sky", "is", u"blue"_s), QString());
    EXPECT_EQ(answer({}), QString());
    const SmartRule flagged{u"status"_s, u"is"_s, u"902"_s}, named{u"name"_s, u"is"_s, u"c"_s};
    EXPECT_EQ(answer({false, {flagged, named}}), QString());
    EXPECT_EQ(answer({true, {flagged, named}}), u"ac"_s);
}

TEST_F(SmartListsTest, AnAnswerIsTheRecordsThemselvesLiveAndNoInstance) {
    const auto day = addPlaylist(u"Day"_s, {u"b"_s, u"a"_s});
    const auto night = addPlaylist(u"Night"_s, {u"c"_s});
    const auto smartlist = addSmartlist({false, {{u"status"_s, u"is"_s, u"901"_s}}});
    EXPECT_EQ(library().selectedPlaylist(), smartlist);
    EXPECT_TRUE(shownNames().isEmpty());
    edits().setFlag({day->movieList[1], night->movieList[0]}, 901);
    settle();
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"c"_s})) << "playlist by playlist";
    EXPECT_EQ(library().arrangedMovies()[0], day->movieList[1]);
    EXPECT_EQ(day->movieList[1]->iCount, 0);
    EXPECT_EQ(smartlist->count(), 0) << "stored nowhere";
    library().selectMovies({0});
    edits().setFlag(library().selectedMovies(), 904);
    settle();
    EXPECT_EQ(shownNames(), QStringList{u"c"_s});
    edits().history().undo();
    settle();
    EXPECT_EQ(shownNames().size(), 2);

    library().selectMovies({0});
    EXPECT_FALSE(controller->playlistEditing().mayRemoveSelectedMovies());
    controller->playlistEditing().moveMovies(library().selectedMovies(), nullptr);
    controller->playlistEditing().bakeCurrentSortOrder();
    EXPECT_EQ(day->movieList[1]->sortOrder, 2) << "its number is its own list's";
    alerts.answers = {Alerts::firstButton};
    controller->itemTransfer().dropOnPlaylist(library().selectedMovies(), night, false);
    EXPECT_EQ(alerts.shown.back().buttons, (QStringList{u"Copy"_s, u"Cancel"_s}));
    EXPECT_EQ(night->count(), 2);
    settle();
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"c"_s, u"a"_s})) << "the copy is approved too";
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedPlaylists();
    EXPECT_EQ(alerts.shown.back().message, u"Remove Selected Playlist?"_s);
    EXPECT_EQ(day->count(), 2);
}

TEST_F(SmartListsTest, RulesOutliveTheProgramAndOthersReadTheAnswer) {
    const auto day = addPlaylist(u"Day"_s, {u"b"_s, u"a"_s});
    const SmartRules rules{true, {{u"status"_s, u"is"_s, u"901"_s}, {u"later version"_s, u"is"_s, u"x"_s}}};
    addSmartlist(rules);
    edits().setFlag({day->movieList[0]}, 901);
    const QString file = path(u"saved.dls"_s);
    panels.saveAnswers = {file};
    sessionFiles().saveSessionAs();
    settleFiles();
    const Result<SessionContents> saved = readSessionFile(file);
    ASSERT_TRUE(saved);
    const Playlist& stored = *saved->playlists[1];
    EXPECT_EQ(stored.playlistType, u"smartlist"_s);
    EXPECT_EQ(stored.smartRules, rules) << "words of a later version are kept";
    ASSERT_EQ(stored.movieList.size(), 1u) << "for readers who know no rules";
    EXPECT_EQ(stored.movieList[0], saved->playlists[0]->movieList[0]);

    crash(); // the journal has the rules
    start();
    ASSERT_EQ(library().playlists().size(), 2u);
    EXPECT_EQ(library().playlists()[1]->smartRules, rules);
    library().selectPlaylist(1);
    EXPECT_EQ(shownNames(), QStringList{u"b"_s});

    alerts.answers = {Alerts::firstButton}; // in place of what is there
    sessionFiles().dragSessionImport(file);
    settleFiles();
    ASSERT_TRUE(waitUntil([this] { return library().playlists().size() == 2; }));
    settle();
    EXPECT_EQ(library().playlists()[1]->count(), 0) << "the answer is no list of ours";
    edits().setFlag({library().playlists()[0]->movieList[0]}, 900);
    library().selectPlaylist(1);
    EXPECT_TRUE(shownNames().isEmpty());
}

TEST_F(SmartListsTest, AListFromElsewhereWithoutRulesKeepsItsItems) {
    const auto foreign = std::make_shared<Playlist>();
    foreign->playlistType = playlistType::smart;
    library().appendPlaylist(foreign, true);
    library().addMovies(foreign, {std::make_shared<Movie>(path(u"only here"_s))});
    EXPECT_EQ(shownNames(), QStringList{u"only here"_s});
    quit();
    start();
    EXPECT_EQ(shownNames(), QStringList{u"only here"_s});
    EXPECT_TRUE(controller->playlistEditing().mayRemoveSelectedMovies());
}

} // namespace
} // namespace daylark::test
