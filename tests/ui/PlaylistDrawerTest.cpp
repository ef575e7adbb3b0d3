#include "ViewerWindowFixture.h"

#include "ui/viewer/PlaylistDrawer.h"
#include "ui/common/ReorderView.h"
#include "ui/controls/VolumeButton.h"

#include <QDropEvent>
#include <QListView>
#include <QMimeData>
#include <QProcess>
#include <QSlider>

namespace daylark {

class PlaylistDrawerTest : public ViewerWindowFixture {
protected:
    void openFour() {
        for (const int group : {12, 24, 6, 48})
            movies.push_back(record(bench::movie({.frames = 48, .group = group})));
        show(movies);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        window->commands().action(QStringLiteral("viewer.playlistDrawer"))->trigger();
        ASSERT_TRUE(bench::waitUntil([this] { return view()->isVisible(); }));
    }
    [[nodiscard]] QListView* view() const { return window->drawer()->view(); }
    [[nodiscard]] QPoint middleOf(int row) const {
        return view()->visualRect(view()->model()->index(row, 0)).center();
    }
    void click(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, modifiers, middleOf(row));
    }
    /// Drags from a row to a point, in a display with a real hand. Without one nothing is carried from
    /// window to window: there the drop itself is made here.
    void dragTo(int row, const QPoint& target) {
        if (QGuiApplication::platformName() == QLatin1String("xcb")) return dragByHand(row, target);
        QWidget* viewport = view()->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(row));
        QMimeData data;
        data.setData(QStringLiteral("application/x-daylark-viewer-rows"),
                     RowDrag::encode(RowDrag::selectedRows(*view())));
        const QPoint begun = middleOf(row) + QPoint(0, 2 * QApplication::startDragDistance());
        QMouseEvent move(QEvent::MouseMove, begun, viewport->mapToGlobal(begun), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
        EXPECT_TRUE(accepts(data, target));
    }
    void dragByHand(int row, const QPoint& target) {
        QStringList hand;
        const auto moveTo = [&](const QPoint& place) {
            const QPoint global = view()->viewport()->mapToGlobal(place);
            hand << QStringLiteral("mousemove") << QString::number(global.x()) << QString::number(global.y())
                 << QStringLiteral("sleep") << QStringLiteral("0.05");
        };
        const QPoint from = middleOf(row);
        moveTo(from);
        hand << QStringLiteral("mousedown") << QStringLiteral("1");
        constexpr int steps = 8;
        for (int step = 1; step <= steps; ++step)
            moveTo(from + (target - from) * step / steps);
        hand << QStringLiteral("mouseup") << QStringLiteral("1");
        QProcess process;
        process.start(QStringLiteral("xdotool"), hand);
        ASSERT_TRUE(bench::waitUntil([&] { return process.state() == QProcess::NotRunning; }));
        QTest::qWait(200); // what the server still has to tell
    }
    [[nodiscard]] bool accepts(const QMimeData& data, const QPoint& position) {
        QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &enter);
        QDropEvent drop(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &drop);
        QCoreApplication::processEvents();
        return enter.isAccepted() || drop.isAccepted();
    }
    [[nodiscard]] std::vector<int> order() {
        std::vector<int> places;
        for (const auto& movie : controller.list().movies())
            places.push_back(int(std::find(movies.begin(), movies.end(), movie) - movies.begin()));
        return places;
    }
    std::vector<std::shared_ptr<Movie>> movies;
};

TEST_F(PlaylistDrawerTest, RowsAreDraggedBetweenRowsAndTheMovieOnScreenStays) {
    openFour();
    QSignalSpy loads(&controller, &MoviePlayerController::movieLoading);
    dragTo(3, middleOf(1) - QPoint(0, 20));
    EXPECT_EQ(order(), (std::vector<int>{0, 3, 1, 2}));
    click(1);
    ASSERT_TRUE(settled());
    click(3, Qt::ControlModifier);
    EXPECT_EQ(controller.list().selectionIndexes(), (ViewerList::Rows{1, 3}));
    loads.clear();
    dragTo(3, middleOf(0) - QPoint(0, 20)); // both rows go
    EXPECT_EQ(order(), (std::vector<int>{3, 2, 0, 1}));
    EXPECT_EQ(controller.list().selectionIndexes(), (ViewerList::Rows{0, 1}));
    EXPECT_EQ(loads.count(), 0) << "a drag loads no movie";
    EXPECT_EQ(controller.currentMovie(), movies[3]);
    EXPECT_EQ(library.calls.count(QStringLiteral("viewerReordered")), 2);
}

TEST_F(PlaylistDrawerTest, FilesAreRefusedEvenWithRowsBesideThem) {
    openFour();
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(movies[0]->filepathString)});
    EXPECT_FALSE(accepts(files, middleOf(1)));
    files.setData(QStringLiteral("application/x-daylark-viewer-rows"), RowDrag::encode({0}));
    EXPECT_FALSE(accepts(files, middleOf(1)));
    QMimeData others;
    others.setText(QStringLiteral("0"));
    EXPECT_FALSE(accepts(others, middleOf(1)));
    EXPECT_EQ(order(), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(PlaylistDrawerTest, SeveralMoviesAreFlaggedAtOnceAndShowTheNameOfThePreference) {
    openFour();
    preferences.statusNames[1].set(QStringLiteral("Nearly"));
    click(1);
    ASSERT_TRUE(settled());
    QSignalSpy loads(&controller, &MoviePlayerController::movieLoading);
    click(3, Qt::ShiftModifier);
    EXPECT_EQ(loads.count(), 0) << "the first of them is on screen already";
    key(Qt::Key_2, Qt::ControlModifier);
    const auto nameOf = [&](int row) {
        return view()->model()->index(row, 0).data(Qt::AccessibleDescriptionRole).toString();
    };
    EXPECT_EQ(movies[0]->flagString, QStringLiteral("900"));
    EXPECT_EQ(nameOf(0), QString());
    for (const int row : {1, 2, 3}) {
        EXPECT_EQ(movies[size_t(row)]->flagString, QStringLiteral("902"));
        EXPECT_EQ(nameOf(row), QStringLiteral("Nearly"));
    }
    window->commands().action(QStringLiteral("viewer.copyFilename"))->trigger();
    EXPECT_EQ(pasteboard.content.count(QLatin1Char('\n')), 2);
    edits.refresh(movies[2], [](Movie& movie) { movie.creatingThumbnailText = fileNotFoundText; });
    EXPECT_EQ(nameOf(2), QStringLiteral("File not found"));
    click(1, Qt::ControlModifier); // the first goes, the next of them is shown
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), movies[2]);
}

TEST_F(PlaylistDrawerTest, VolumeSliderKeepsItsOwnKeysAndGoesWithAnyOther) {
    openFour();
    auto* button = child<VolumeButton>("volume");
    auto* popUp = child<QWidget>("volumePopUp");
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_TRUE(popUp->isVisible());
    QTest::keyClick(button->slider(), Qt::Key_Down);
    EXPECT_NEAR(transport.volume(), 0.49, 1e-6);
    EXPECT_TRUE(popUp->isVisible());
    QTest::keyClick(button->slider(), Qt::Key_Shift);
    EXPECT_TRUE(bench::waitUntil([popUp] { return !popUp->isVisible(); }));
}

} // namespace daylark
