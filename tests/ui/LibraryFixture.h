#pragma once

#include "app/AppFixture.h"
#include "ui/library/LibraryWindow.h"

#include <QAction>
#include <QListView>
#include <QMenu>
#include <QPoint>
#include <QTableView>
#include <QTest>

#include <functional>
#include <memory>

namespace daylark {

/// The real library window over a whole library on real files, driven by key, mouse and drop events.
class LibraryFixture : public test::AppFixture {
protected:
    LibraryFixture();
    ~LibraryFixture() override;
    void TearDown() override;

    void openWindow();  ///< starts the library and shows its window
    void closeWindow(); ///< as a person would; then ends the library

    [[nodiscard]] QTableView* playlists() const;
    [[nodiscard]] QTableView* table() const;
    [[nodiscard]] QListView* tiles() const;
    [[nodiscard]] QAction* command(const char* id) const;
    void trigger(const char* id); ///< as its menu does: only when it is enabled

    /// Where a row's cell is drawn, in the viewport.
    [[nodiscard]] static QPoint middleOf(const QAbstractItemView* view, int row, int column);
    static void click(QAbstractItemView* view, int row, int column,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void doubleClick(QAbstractItemView* view, int row, int column);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text); ///< into whatever has the focus

    /// A drag of data that enters a view at a point, moves there and is dropped. False when the view refuses
    /// it.
    static bool drop(QAbstractItemView* view, const QMimeData& data, const QPoint& position);
    static bool dropFiles(QAbstractItemView* view, const QStringList& paths);
    /// The drag that a view makes of its selected rows.
    [[nodiscard]] static std::unique_ptr<QMimeData> dragOf(QAbstractItemView* view, const char* type);

    /// Opens a context menu at a point and picks the entry with this text, in whichever submenu it stands.
    void pickInMenu(QWidget* target, const QPoint& position, const QString& text);

    /// A folder with movies made for the tests; its path.
    QString movieFolder(const QString& name, const QStringList& files) const;

    std::unique_ptr<LibraryWindow> window;
};

} // namespace daylark
