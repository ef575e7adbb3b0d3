#include "LibraryFixture.h"

#include "ui/commands/Commands.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/common/ReorderView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTimer>

namespace daylark {

namespace {

QAction* actionNamed(const QMenu& menu, const QString& text) {
    const QList<QAction*> actions = menu.actions();
    for (QAction* action : actions) {
        if (QString(action->text()).remove(QLatin1Char('&')) == text) return action;
        if (action->menu())
            if (QAction* found = actionNamed(*action->menu(), text)) return found;
    }
    return nullptr;
}

} // namespace

LibraryFixture::LibraryFixture() = default;
LibraryFixture::~LibraryFixture() = default;

void LibraryFixture::TearDown() {
    window.reset();
    test::AppFixture::TearDown();
}

void LibraryFixture::openWindow() {
    start();
    window = std::make_unique<LibraryWindow>(*controller);
    window->resize(1280, 720);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void LibraryFixture::closeWindow() {
    window->close();
    window.reset();
    quit();
}

QTableView* LibraryFixture::playlists() const {
    return window->playlistsPane().table();
}

QTableView* LibraryFixture::table() const {
    return window->itemsPane().table();
}

QListView* LibraryFixture::tiles() const {
    return window->itemsPane().tiles();
}

QAction* LibraryFixture::command(const char* id) const {
    return window->commands().action(QLatin1String(id));
}

void LibraryFixture::trigger(const char* id) {
    ASSERT_TRUE(command(id)->isEnabled()) << id;
    command(id)->trigger();
}

QPoint LibraryFixture::middleOf(const QAbstractItemView* view, int row, int column) {
    return view->visualRect(view->model()->index(row, column)).center();
}

void LibraryFixture::click(QAbstractItemView* view, int row, int column, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, middleOf(view, row, column));
}

void LibraryFixture::doubleClick(QAbstractItemView* view, int row, int column) {
    click(view, row, column);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(view, row, column));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(view, row, column));
}

void LibraryFixture::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : window.get(), key, modifiers);
    QCoreApplication::processEvents(); // an editor takes its text over on the next turn
}

void LibraryFixture::type(const QString& text) {
    QTest::keyClicks(QApplication::focusWidget(), text);
}

bool LibraryFixture::drop(QAbstractItemView* view, const QMimeData& data, const QPoint& position) {
    QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &move);
    QDropEvent dropped(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &dropped);
    QCoreApplication::processEvents(); // what follows a drop is done when the drag is over
    return dropped.isAccepted();
}

bool LibraryFixture::dropFiles(QAbstractItemView* view, const QStringList& paths) {
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls << QUrl::fromLocalFile(path);
    QMimeData data;
    data.setUrls(urls);
    return drop(view, data, view->viewport()->rect().center());
}

std::unique_ptr<QMimeData> LibraryFixture::dragOf(QAbstractItemView* view, const char* type) {
    auto data = std::make_unique<QMimeData>();
    data->setData(QLatin1String(type), RowDrag::encode(RowDrag::selectedRows(*view)));
    return data;
}

void LibraryFixture::pickInMenu(QWidget* target, const QPoint& position, const QString& text) {
    bool picked = false;
    QTimer::singleShot(0, window.get(), [&picked, text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return;
        if (QAction* action = actionNamed(*menu, text); action && action->isEnabled()) {
            picked = true;
            action->trigger();
        }
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, target->mapToGlobal(position));
    QApplication::sendEvent(target, &event);
    EXPECT_TRUE(picked) << qPrintable(text);
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

QString LibraryFixture::movieFolder(const QString& name, const QStringList& files) const {
    const QString made = bench::movie({.frames = 24, .group = 12});
    QDir().mkpath(path(name));
    for (const QString& file : files)
        EXPECT_TRUE(QFile::copy(made, path(name) + QLatin1Char('/') + file));
    return path(name);
}

} // namespace daylark
