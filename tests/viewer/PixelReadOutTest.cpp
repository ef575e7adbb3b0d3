#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

#include <QTest>

namespace daylark {
namespace {

/// The numbers under a pointer on an area of 512 x 288 pixels: twice the movie's size.
class PixelReadOutTest : public ViewerFixture {
protected:
    void SetUp() override {
        controller.geometry().setArea({512, 288});
        preferences.displayPixelReadOut.set(true);
    }
    void pointAt(double x, double y) { controller.pixels().pointAt({x, y}, {512, 288}); }
    PixelReadOut& pixels = controller.pixels();
    QSignalSpy changes{&pixels, &PixelReadOut::changed};
};

TEST_F(PixelReadOutTest, FollowsPointerFramesAndMirroring) {
    showFrames(24);
    EXPECT_FALSE(pixels.values());
    pointAt(257, 145);
    ASSERT_TRUE(pixels.values());
    EXPECT_EQ(pixels.values()->place, QPoint(128, 72));
    EXPECT_EQ(pixels.text().channels, QStringList({QStringLiteral("Y"), QStringLiteral("Cb"), QStringLiteral("Cr")}));
    EXPECT_EQ(pixels.text().stored.what, QStringLiteral("Picture, 8 bit"));
    EXPECT_EQ(pixels.text().shown.numbers.size(), 3);
    EXPECT_TRUE(pixels.text().place.contains(QStringLiteral("128")));
    const qsizetype before = changes.count();
    goTo(9);
    ASSERT_TRUE(settled());
    EXPECT_GT(changes.count(), before); // another frame, the pointer where it was
    const auto onScreen = pixelAt(controller.scene().scene().frame, {128, 72}, {});
    EXPECT_EQ(pixels.values()->shown, onScreen->shown);
    controller.geometry().mirrorMovie({QStringLiteral("Flop Display")});
    EXPECT_EQ(pixels.values()->place, QPoint(127, 72));
    controller.pixels().pointNowhere();
    EXPECT_FALSE(pixels.values());
    EXPECT_TRUE(pixels.text().place.isEmpty());
}

TEST_F(PixelReadOutTest, GradeAndViewAreInWhatIsShownAndNotInWhatIsStored) {
    showFrames(24);
    pointAt(257, 145);
    ASSERT_TRUE(pixels.values());
    const PixelValues plain = *pixels.values();
    controller.grade().setValue(ViewerGrade::exposure, 1);
    ASSERT_TRUE(pixels.values());
    EXPECT_NE(pixels.values()->shown, plain.shown);
    EXPECT_EQ(pixels.values()->stored[0].value, plain.stored[0].value);
    const auto graded = pixels.values()->shown;
    controller.colour().setInputSpace(QStringLiteral("ACEScct"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return controller.colour().processor() != nullptr; }, 30000));
    EXPECT_NE(pixels.values()->shown, graded);
    EXPECT_EQ(pixels.values()->stored[0].value, plain.stored[0].value);
}

TEST_F(PixelReadOutTest, OffItReadsNothingAndBesideThePictureItIsEmpty) {
    showFrames(24);
    pointAt(257, 145);
    preferences.displayPixelReadOut.set(false);
    EXPECT_FALSE(pixels.values());
    const qsizetype before = changes.count();
    goTo(5);
    ASSERT_TRUE(settled());
    pointAt(100, 100);
    EXPECT_FALSE(pixels.values());
    EXPECT_EQ(changes.count(), before);
    preferences.displayPixelReadOut.set(true); // where the pointer is
    EXPECT_TRUE(pixels.values());
    controller.geometry().setArea({512, 400}); // bars above and below
    controller.pixels().pointAt({100, 20}, {512, 400});
    EXPECT_FALSE(pixels.values());
    controller.pixels().pointAt({100, 60}, {512, 400});
    EXPECT_TRUE(pixels.values());
    controller.close();
    EXPECT_FALSE(pixels.values());
}

/// Scopes of the movie on screen, their panel open.
class ViewerScopesTest : public ViewerFixture {
protected:
    ViewerScopesTest() { controller.panels().setHost(&host); }
    ~ViewerScopesTest() override { controller.panels().setHost(nullptr); }
    void openPanel(bool open) { controller.panels().show(ViewerPanel::scopes, open); }
    [[nodiscard]] bool caughtUp() {
        return bench::waitUntil([this] { return !scopes.isBehind(); });
    }
    FakePanelHost host;
    ViewerScopes& scopes = controller.scopes();
};

TEST_F(ViewerScopesTest, AreMadeWhileTheirPanelIsOpenAndOfEachNewFrame) {
    showFrames(24);
    EXPECT_FALSE(scopes.isBehind());
    EXPECT_TRUE(scopes.trace().isNull()); // nobody looks
    openPanel(true);
    ASSERT_TRUE(caughtUp());
    const QImage first = scopes.trace();
    EXPECT_EQ(first.size(), QSize(256, 256)); // as many columns as the movie has, and levels
    goTo(13);
    ASSERT_TRUE(settled() && caughtUp());
    EXPECT_NE(scopes.trace(), first);
    const QImage ungraded = scopes.trace();
    controller.grade().setValue(ViewerGrade::exposure, 2);
    ASSERT_TRUE(caughtUp());
    EXPECT_NE(scopes.trace(), ungraded);
    openPanel(false);
    EXPECT_TRUE(scopes.trace().isNull());
    openPanel(true);
    controller.close();
    ASSERT_TRUE(caughtUp());
    EXPECT_TRUE(scopes.trace().isNull()); // what came back late was dropped
}

TEST_F(ViewerScopesTest, WhatIsChosenIsRememberedAndNeverShowsAnothersTrace) {
    showFrames(24);
    openPanel(true);
    ASSERT_TRUE(caughtUp());
    EXPECT_EQ(scopes.kind(), ScopeKind::waveform);
    for (const ScopeKind kind : {ScopeKind::parade, ScopeKind::vectorscope, ScopeKind::histogram, ScopeKind::waveform}) {
        scopes.chooseNext();
        EXPECT_EQ(scopes.kind(), kind);
        EXPECT_EQ(preferences.scopeKind(), kind);
        EXPECT_TRUE(scopes.trace().isNull());
        if (kind != ScopeKind::parade) { // the parade's comes too late
            ASSERT_TRUE(caughtUp());
        }
    }
    EXPECT_EQ(scopes.trace().size(), QSize(256, 256));
    scopes.choose(ScopeKind::histogram);
    EXPECT_EQ(preferences.store().value(QStringLiteral("scopeKind")).toString(), QStringLiteral("Histogram"));
}

} // namespace
} // namespace daylark
