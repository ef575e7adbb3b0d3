#include "LibraryFixture.h"

#include "app/links/ReviewLink.h"
#include "ui/desktop/DesktopPanels.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/MoviesModel.h"

#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QTextDocument>

namespace daylark {

using namespace Qt::StringLiterals;
using bench::waitUntil;

class LinksWindowTest : public LibraryFixture {};

TEST_F(LinksWindowTest, ItemsAreCopiedAsLinksByKeyAndThoseThatCameByOneAreMarked) {
    openWindow();
    const QString day = movieFolder(u"Day 4"_s, {u"a b.mov"_s, u"c.mov"_s});
    ASSERT_TRUE(dropFiles(playlists(), {day}));
    settleAdding();
    settleThumbnails();
    library().selectMovies({0});
    key(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(pasteboard.content, movieLink(day + u"/a b.mov"_s).chopped(1));
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_TRUE(waitUntil([this] { return playlistNames().size() == 2; }));
    EXPECT_EQ(playlistNames().back(), u"Media From Link"_s);
    settleThumbnails();
    const auto hint = [this] { return tiles()->model()->index(0, Column::name).data(Qt::ToolTipRole).toString(); };
    EXPECT_TRUE(hint().contains(u"Came by a link"_s)) << qPrintable(hint());
    trigger("view.tiles");
    const auto tile = [this] {
        const QModelIndex first = tiles()->model()->index(0, tiles()->modelColumn());
        return tiles()->viewport()->grab(tiles()->visualRect(first)).toImage();
    };
    library().selectMovies({});
    const QImage marked = tile();
    library().selectPlaylist(0);
    library().selectMovies({});
    EXPECT_FALSE(hint().contains(u"Came by a link"_s)) << "the same file, added by hand";
    EXPECT_NE(marked, tile());
    if (const QString shots = qEnvironmentVariable("DAYLARK_PANEL_SHOTS"); !shots.isEmpty()) {
        library().selectPlaylist(1);
        window->grab().save(shots + u"/links.png"_s);
    }
}

TEST(DesktopPasteboardTest, RichTextHasItsPlainTextBesideIt) {
    DesktopPasteboard pasteboard;
    pasteboard.setRichText(anchorsAsHtml({{u"é.mov"_s, u"daylark://link/%C3%A9.mov"_s}}), u"daylark://link/é.mov"_s);
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_TRUE(data && data->hasHtml() && data->hasText());
    EXPECT_TRUE(data->html().contains(u"<a href=\"daylark://link/%C3%A9.mov\">é.mov</a>"_s));
    EXPECT_EQ(pasteboard.text(), u"daylark://link/é.mov"_s);
}

TEST(DesktopAlertsTest, WhatAStrangerWroteIsShownLetterByLetter) {
    const QString path = u"/v/two  blanks/<img src=x> & <b>a</b>.mov"_s;
    QString shown, details;
    QTimer::singleShot(100, [&shown, &details] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        auto* text = box->findChild<QLabel*>(u"qt_msgbox_informativelabel"_s);
        if (text) {
            QTextDocument document;
            document.setHtml(text->text());
            shown = Qt::mightBeRichText(text->text()) ? document.toPlainText() : text->text();
        }
        details = box->detailedText();
        box->reject();
    });
    Alert alert{u"Can't resolve link"_s, u"Not found on this machine:\n"_s + path, {u"Okay"_s}};
    alert.details = path;
    DesktopAlerts().show(alert);
    EXPECT_EQ(details, path);
    EXPECT_EQ(shown, u"Not found on this machine:\n"_s + path);
}

} // namespace daylark
