#include "ui/desktop/Translations.h"

#include "app/arrangement/Columns.h"
#include "app/arrangement/MovieFilter.h"
#include "app/playlists/SmartQuestion.h"
#include "commands/library/LibraryCommands.h"
#include "preferences/PreferenceWords.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(Translations, TheTablesThatAreShippedHoldWhatIsShownOfListsAndWords) {
    EXPECT_EQ(Translations::languages(), (QStringList{u"de"_s, u"fr"_s}));
    QStringList words;
    for (const Column& each : columns())
        words << QLatin1String(each.label) << QLatin1String(each.title) << QLatin1String(each.hint);
    for (const MovieFilter::Choice& choice : MovieFilter::choices())
        words << QLatin1String(choice.title) << QLatin1String(choice.button);
    for (const char* frame : libraryCommand::thumbnailFrames)
        words << QLatin1String(frame);
    words += allWords<RepeatMode>() + allWords<StartFrame>() + allWords<SnapshotScale>() + allWords<SnapshotNameSource>() +
             allWords<DrawingsShown>() + allWords<DrawingBackground>() + allWords<TimecodePlace>() + allWords<FindInput>() +
             allWords<MissingPictures>() + allWords<ScopeKind>() + allWords<ThumbnailFrame>();
    for (const auto& subject : smartQuestion::subjects()) {
        words << QLatin1String(subject.title);
        for (const auto& relation : subject.relations)
            words << QLatin1String(relation.title);
    }
    for (const QString& language : Translations::languages()) {
        Translations table;
        ASSERT_TRUE(table.read(u":/translations/daylark_%1.ts"_s.arg(language)));
        EXPECT_GT(table.count(), 700);
        for (const QString& word : words)
            EXPECT_TRUE(word.isEmpty() || !table.translate("Words", word.toUtf8().constData()).isEmpty())
                << language.toStdString() << ": " << word.toStdString();
        EXPECT_EQ(table.translate("", "%n found", nullptr, 7).contains(u"7"_s), true);
        EXPECT_TRUE(table.translate("", "What nobody ever wrote").isNull()); // stays as it is
    }
}

TEST(Translations, WhatAPersonChoseGoesBeforeTheDesktopAndEnglishIsAChoice) {
    EXPECT_EQ(Translations::languageFor(u"fr"_s), u"fr"_s);
    EXPECT_TRUE(Translations::languageFor(u"en"_s).isEmpty());
    EXPECT_TRUE(Translations::languageFor(u"tlh"_s).isEmpty());
    EXPECT_EQ(Translations::nameOf(u"de"_s), u"Deutsch"_s);
    Translations table;
    EXPECT_FALSE(table.read(u":/translations/daylark_xx.ts"_s));
    QTemporaryDir folder;
    QFile unfinished(folder.filePath(u"daylark_de.ts"_s));
    ASSERT_TRUE(unfinished.open(QIODevice::WriteOnly));
    unfinished.write("<TS><context><message><source>A</source><translation type=\"unfinished\">B</translation></message>"
                     "<message><source>C &amp; D</source><translation>E &lt; F</translation></message></context></TS>");
    unfinished.close();
    ASSERT_TRUE(table.read(unfinished.fileName()));
    EXPECT_TRUE(table.translate("", "A").isEmpty());
    EXPECT_EQ(table.translate("any", "C & D"), u"E < F"_s);
}

} // namespace
} // namespace daylark
