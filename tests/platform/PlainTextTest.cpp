#include "base/PlainText.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

QString read(const QString& toolTip) {
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText();
}

TEST(PlainTextTest, ALineHoldsNothingThatIsNoLetter) {
    EXPECT_EQ(plain::line(u"a\nb\tc\x202E" u"d\x2028" u"e"_s), u"a b c d e"_s);
    EXPECT_EQ(plain::line(QString(QChar(0))), u" "_s);
    const QString huge(10'000'000, u'x');
    EXPECT_EQ(plain::line(huge).size(), plain::lineLength + 1);
    EXPECT_TRUE(plain::line(huge).endsWith(u'…'));
    EXPECT_EQ(plain::line(u"ab"_s + u"\U0001F3AC"_s, 3), u"ab…"_s) << "half a character is none";
}

TEST(PlainTextTest, AParagraphHasItsLinesAndNoMoreThanAPersonReads) {
    EXPECT_EQ(plain::paragraph(u"one\r\ntwo\rthree"_s), u"one\ntwo\nthree"_s);
    const QString shown = plain::paragraph(QString(5000, u'\n'));
    EXPECT_EQ(shown.count(u'\n'), plain::paragraphLines - 1);
    EXPECT_LE(plain::paragraph(QString(u"word "_s).repeated(100'000)).size(), plain::paragraphLength + 1);
}

TEST(PlainTextTest, AToolTipShowsLettersWhateverTheyLookLike) {
    for (const QString& text : {u"<img src=\"file:///dev/zero\">"_s, u"a & b"_s, u"&lt;b&gt;"_s, u"<b>fat</b>\nnext"_s,
                                u"<table>"_s.repeated(200), u"plain.mov"_s, u"wörter "_s.repeated(30).trimmed()}) {
        const QString tip = plain::toolTip(text);
        const QString shown = Qt::mightBeRichText(tip) ? read(tip) : tip;
        EXPECT_EQ(shown, plain::paragraph(text)) << tip.toStdString();
    }
    EXPECT_EQ(plain::toolTip(u"Next Frame (Right)"_s), u"Next Frame (Right)"_s) << "what is plain stays so";
}

TEST(PlainTextTest, NothingIsTakenForAKeyOrAMark) {
    EXPECT_EQ(plain::menuTitle(u"R&D\tCtrl+Q"_s), u"R&&D Ctrl+Q"_s);
    EXPECT_EQ(plain::windowTitle(u"a[*]b"_s), u"a[*][*]b"_s);
}

} // namespace
} // namespace daylark
