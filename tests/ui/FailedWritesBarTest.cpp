#include "LibraryFixture.h"

#include "platform/FailedWrites.h"
#include "support/FullDisk.h"
#include "ui/common/FailedWritesBar.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/RichTextField.h"
#include "ui/common/text/PastedText.h"

#include <QMimeData>
#include <QToolButton>

#include <algorithm>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::waitUntil;

class FailedWritesBarTest : public LibraryFixture {
protected:
    [[nodiscard]] FailedWritesBar* bar() const { return window->findChild<FailedWritesBar*>(); }
    [[nodiscard]] QStringList lines() const {
        QStringList shown;
        for (const auto* label : bar()->findChildren<PlainLabel*>(u"failedWrite"_s))
            if (label->isVisible()) shown << label->text();
        return shown;
    }
    [[nodiscard]] QToolButton* button(const char* name) const {
        for (auto* one : bar()->findChildren<QToolButton*>(QLatin1String(name)))
            if (one->isVisible()) return one;
        return nullptr;
    }
};

TEST_F(FailedWritesBarTest, NamesWhatIsNotWrittenUntilItIs) {
    openWindow();
    EXPECT_FALSE(bar()->isVisible()) << "nothing is to be said";
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    sessionFiles().setCurrentSessionPath(path(u"show.dls"_s));
    {
        const test::FullDisk full;
        key(Qt::Key_S, Qt::ControlModifier);
        // The journal's line may come first.
        ASSERT_TRUE(waitUntil([this] { return lines().join(u'\n').contains(u"Session \"show.dls\" is not written: "_s); }))
            << lines().join(u'\n').toStdString();
    }
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_TRUE(button("failedWriteSaveAs") && button("failedWriteTryAgain"));
    if (const QString shots = qEnvironmentVariable("DAYLARK_PANEL_SHOTS"); !shots.isEmpty())
        window->grab().save(shots + u"/failed-writes.png"_s);
    QTest::mouseClick(button("failedWriteTryAgain"), Qt::LeftButton);
    EXPECT_TRUE(waitUntil([this] { return !bar()->isVisible(); })) << lines().join(u'\n').toStdString();
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(QFile::exists(path(u"show.dls"_s)));
}

TEST_F(FailedWritesBarTest, ManyAreCountedAndNoneIsTakenForMarkUp) {
    openWindow();
    for (int at = 0; at < 5; ++at)
        failedWrites.failed(u"Notes"_s, u"/x/<img src=\"file:///dev/zero\">%1&.csv"_s.arg(at), QString(100'000, u'r'));
    ASSERT_TRUE(waitUntil([this] { return lines().size() == 3; }));
    EXPECT_TRUE(lines().front().contains(u"zero\">0&.csv"_s)) << qPrintable(lines().front());
    EXPECT_LT(lines().front().size(), 600);
    EXPECT_FALSE(button("failedWriteTryAgain")) << "nobody offered it";
    for (int at = 0; at < 5; ++at)
        failedWrites.written(u"/x/<img src=\"file:///dev/zero\">%1&.csv"_s.arg(at));
    EXPECT_TRUE(waitUntil([this] { return !bar()->isVisible(); }));
}

TEST_F(FailedWritesBarTest, WhatAPersonCanDoSomethingAboutComesFirst) {
    openWindow();
    FailedWritesBar oneLine(failedWrites, nullptr, 1); // as the viewer has it
    const auto ofOneLine = [&oneLine] {
        const auto labels = oneLine.findChildren<PlainLabel*>(u"failedWrite"_s);
        return labels.isEmpty() ? QString() : labels.back()->text();
    };
    bool again = false;
    failedWrites.failed(u"Changes"_s, u"/x/one.journal"_s, u"full"_s); // goes on by itself
    failedWrites.failed(u"Thumbnail"_s, u"/x/picture"_s, u"full"_s);
    failedWrites.failed(u"Session"_s, u"/x/show.dls"_s, u"full"_s, [&again] { again = true; });
    failedWrites.failed(u"Notes"_s, u"/x/notes.csv"_s, u"full"_s, {}, [] {});
    ASSERT_TRUE(waitUntil([this] { return lines().size() == 3; }));
    EXPECT_TRUE(lines()[0].contains(u"show.dls"_s) && lines()[1].contains(u"notes.csv"_s) &&
                lines()[2].contains(u"one.journal"_s))
        << qPrintable(lines().join(u'\n'));
    EXPECT_TRUE(ofOneLine().contains(u"show.dls"_s)) << qPrintable(ofOneLine());
    ASSERT_TRUE(button("failedWriteTryAgain"));
    QTest::mouseClick(button("failedWriteTryAgain"), Qt::LeftButton);
    EXPECT_TRUE(again) << "a line's buttons are its own";
    failedWrites.written(u"/x/show.dls"_s);
    EXPECT_TRUE(ofOneLine().contains(u"notes.csv"_s)) << qPrintable(ofOneLine());
}

// What is pasted.

QString pastedHtml(const QString& html, PastedText* whole = nullptr) {
    QMimeData data;
    data.setHtml(html);
    const PastedText pasted = PastedText::from(data);
    if (whole) *whole = pasted;
    return pasted.text.string();
}

TEST(PastedTextTest, BringsLettersAndEmphasisAndNothingElse) {
    PastedText pasted;
    EXPECT_EQ(pastedHtml(u"<p style='color:red;font-family:Wide'>one <b>two</b></p>"_s +
                             u"<p><i>three</i> <u>f&ouml;ur</u></p>"_s,
                         &pasted),
              u"one two\nthree föur"_s);
    for (const auto& run : pasted.text.runs()) {
        EXPECT_FALSE(run.attributes.colour.isValid());
        EXPECT_TRUE(run.attributes.fontFamily.isEmpty());
    }
    EXPECT_EQ(std::count_if(pasted.text.runs().begin(), pasted.text.runs().end(),
                            [](const auto& run) {
                                return run.attributes.bold || run.attributes.italic || run.attributes.underline;
                            }),
              3);
    EXPECT_TRUE(pasted.leftOut().isEmpty());
}

TEST(PastedTextTest, PicturesStayOutWithAWordAndNothingIsOpened) {
    PastedText pasted;
    EXPECT_EQ(pastedHtml(u"a<img src='file:///dev/zero'>b<link rel=stylesheet href='file:///dev/zero'>"
                         u"<style>@import url(file:///dev/zero); body{background:url(file:///dev/zero)}</style>"_s,
                         &pasted),
              u"ab"_s);
    EXPECT_EQ(pasted.pictures, 1);
    EXPECT_FALSE(pasted.leftOut().isEmpty());
    QMimeData picture;
    picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
    EXPECT_FALSE(PastedText::from(picture).leftOut().isEmpty());
}

TEST(PastedTextTest, WhatWouldTakeForEverIsTakenByItsPlainForm) {
    EXPECT_EQ(pastedHtml(u"<table><tr><td>"_s.repeated(100) + u"x"_s), u"x"_s);
    QMimeData data;
    data.setHtml(u"<b>"_s.repeated(500'000));
    data.setText(u"plain"_s);
    EXPECT_EQ(PastedText::from(data).text.string(), u"plain"_s);
    data.setHtml({});
    data.setText(QString(1'000'000, u'x'));
    const PastedText cut = PastedText::from(data);
    EXPECT_EQ(cut.text.length(), PastedText::mostUnits);
    EXPECT_TRUE(cut.isCut && !cut.leftOut().isEmpty());
}

TEST(RichTextFieldTest, ATextThatIsTooLongIsReadOnlyAndStaysWhole) {
    RichTextField field;
    QString said;
    QObject::connect(&field, &RichTextField::said, [&said](const QString& words) { said = words; });
    const AttributedString large(u"word "_s.repeated(1'000'000));
    field.setAttributed(large);
    EXPECT_TRUE(field.isReadOnly());
    EXPECT_LT(field.toPlainText().size(), 10'000);
    EXPECT_EQ(field.attributed(), large) << "nothing of it is lost";
    EXPECT_FALSE(said.isEmpty());
    field.setAttributed(AttributedString(u"short"_s));
    EXPECT_FALSE(field.isReadOnly());
    EXPECT_EQ(field.toPlainText(), u"short"_s);
    EXPECT_TRUE(said.isEmpty());
}

TEST(PlainLabelTest, ShowsLetters) {
    PlainLabel label(u"<b>R&D</b>"_s);
    EXPECT_EQ(label.text(), u"<b>R&D</b>"_s);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(static_cast<QLabel&>(label).text(), u"<b>R&&D</b>"_s) << "no letter is a key";
}

} // namespace
} // namespace daylark
