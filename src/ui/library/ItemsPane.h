#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

class QAbstractItemView;
class QListView;
class QSlider;
class QStackedWidget;
class QTableView;

namespace daylark {

class Commands;
class DropHint;
class ItemInformation;
class MoviesModel;
class PlaylistController;
class ThumbnailCache;
class TileDelegate;

/// The right side of the library: the items of the selected playlist as tiles or as a table, the information
/// box, the tile size. Both views show one selection, the library's. Remembers columns and tile size.
/// Interface thread.
class ItemsPane : public QWidget {
    Q_OBJECT
public:
    ItemsPane(PlaylistController& controller, const Commands& commands, QWidget* parent = nullptr);
    ~ItemsPane() override;

    void showTiles(bool tiles);
    [[nodiscard]] bool tilesShown() const;
    void setTileSize(int percent); ///< 100 to 400, of 150 points
    [[nodiscard]] int tileSize() const;
    void setInformationShown(bool shown);
    [[nodiscard]] bool informationShown() const;

    [[nodiscard]] QAbstractItemView* activeView() const;
    [[nodiscard]] QTableView* table() const { return table_; }
    [[nodiscard]] QListView* tiles() const { return tiles_; }
    [[nodiscard]] MoviesModel* model() const { return model_; }

    void refreshHints();
    void showSortIndicator(); ///< as the library sorts now

Q_SIGNALS:
    void openRequested();
    void looksChanged(); ///< tiles or table, the information box
    void menuRequested(const QPoint& globalPosition, bool onItem);

private:
    void makeTable();
    void makeTiles();
    void makeLayout(const Commands& commands);
    void prepareView(QAbstractItemView* view);
    void followLibrary();
    void prioritiseVisible(); ///< what a person looks at gets its thumbnail first
    void showLibrarySelection(QAbstractItemView* view);
    void sortByColumn(int column);
    void showColumnsMenu(const QPoint& position);
    void restoreColumns();
    void storeColumns();

    PlaylistController& controller_;
    std::unique_ptr<ThumbnailCache> thumbnails_;
    MoviesModel* model_;
    QStackedWidget* stack_ = nullptr;
    QTableView* table_ = nullptr;
    QListView* tiles_ = nullptr;
    TileDelegate* tileDelegate_ = nullptr;
    QSlider* sizeSlider_ = nullptr;
    QWidget* sizeControls_ = nullptr;
    ItemInformation* information_ = nullptr;
    DropHint* tableHint_ = nullptr;
    DropHint* tilesHint_ = nullptr;
    QTimer columnsChanged_;
    QTimer visibleChanged_;
    bool following_ = false; ///< the selection is being taken over from the library
};

} // namespace daylark
