#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class QAbstractItemView;
class QListView;
class QSlider;
class QStackedWidget;
class QTableView;

namespace daylark {

class Commands;
class DropHint;
class FilterControls;
class FreeColumn;
class ItemInformation;
class Movie;
class MoviesModel;
class PlaylistController;
class ThumbnailCache;
class TileDelegate;

/// The right side of the library: the items of the selected playlist as tiles or as a table, what is shown of them, the
/// find panel, the information box, the tile size. Both views show one selection, the library's. Remembers columns and
/// tile size. Interface thread.
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

    static const QString dragType; ///< of rows dragged from here
    /// The records that these rows of a drag from here were when it began.
    [[nodiscard]] std::vector<std::shared_ptr<Movie>> draggedItems(const std::vector<qsizetype>& rows) const;
    void goToSearch(); ///< the field of the filter

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
    template<class View>
    void prepareDrags(View* view);
    [[nodiscard]] QString hintText() const;
    void followLibrary();
    [[nodiscard]] std::vector<std::shared_ptr<Movie>> visibleMovies() const;
    void followVisible(); ///< what a person looks at gets its thumbnail first, sharp, and its facts
    void showLibrarySelection(QAbstractItemView* view);
    void sortByColumn(int column);
    void showColumnsMenu(const QPoint& position);
    void restoreColumns();
    void storeColumns();
    void fitNames();

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
    FilterControls* filter_ = nullptr;
    FreeColumn* names_ = nullptr;
    DropHint* tableHint_ = nullptr;
    DropHint* tilesHint_ = nullptr;
    QTimer columnsChanged_;
    QTimer visibleChanged_;
    std::vector<std::shared_ptr<Movie>> dragged_; ///< while a drag from here lasts
    bool namesFit_ = false;
    bool following_ = false; ///< the selection is being taken over from the library
};

} // namespace daylark
