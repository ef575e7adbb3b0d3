#pragma once

#include "model/Movie.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QPixmap>

#include <memory>
#include <vector>

namespace daylark {

class Library;
class ThumbnailCache;
class Preferences;

/// The items of the selected playlist as rows, for the table and the tiles alike. Holds no state of its own;
/// pictures are decoded when a view asks for them. Interface thread.
class MoviesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column {
        thumbnailColumn,
        flagColumn,
        nameColumn,
        notesColumn,
        drawingColumn,
        bookmarkColumn,
        gradeColumn,
        instanceColumn,
        framesColumn,
        durationColumn,
        rateColumn,
        sizeColumn,
        resolutionColumn,
        pathColumn,
        columnTotal
    };
    enum Role { sortFieldRole = Qt::UserRole + 1 };

    MoviesModel(Library& library, Preferences& preferences, ThumbnailCache& thumbnails,
                QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] std::shared_ptr<Movie> movieAt(int row) const;        ///< null for rows that don't exist
    [[nodiscard]] int rowOf(const std::shared_ptr<Movie>& movie) const; ///< -1 when not shown
    [[nodiscard]] QPixmap thumbnailAt(int row) const;
    [[nodiscard]] QString factsOf(const Movie& movie) const;  ///< "96 · 24 · 00:04"
    [[nodiscard]] QString flagName(const Movie& movie) const; ///< as the user calls it; empty without a flag
    [[nodiscard]] static QString sortField(int column);
    /// The icons of a record in their fixed order: notes, drawing, bookmark, grade, instance.
    [[nodiscard]] static std::vector<QString> iconNames(const Movie& movie);

    void refreshAll(); ///< found states or flag names changed

private:
    [[nodiscard]] QString textOf(const Movie& movie, int column) const;
    [[nodiscard]] QString hintOf(const Movie& movie, int column) const;

    Library& library_;
    Preferences& preferences_;
    ThumbnailCache& thumbnails_;
    std::vector<std::shared_ptr<Movie>> rows_; ///< what the views were last told
    QHash<const Movie*, int> rowOfMovie_;
};

} // namespace daylark
