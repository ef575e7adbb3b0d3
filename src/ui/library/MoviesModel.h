#pragma once

#include "app/arrangement/Columns.h"
#include "app/arrangement/ShownNames.h"

#include <QAbstractTableModel>
#include <QMultiHash>
#include <QPixmap>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

class ItemFacts;
class Library;
class LinkOpening;
class ThumbnailCache;
class Preferences;

/// The items of the selected playlist as rows and the library's columns as columns, for the table and the
/// tiles alike. Holds no state of its own; pictures are decoded when a view asks for them. Interface thread.
class MoviesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    MoviesModel(Library& library, Preferences& preferences, ThumbnailCache& thumbnails,
                QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] std::shared_ptr<Movie> movieAt(int row) const; ///< null for rows that don't exist
    [[nodiscard]] QPixmap thumbnailAt(int row) const;
    [[nodiscard]] ShownName shownName(const Movie& movie) const; ///< of an item that is shown here
    [[nodiscard]] QString factsOf(const Movie& movie) const;  ///< "96 · 24 · 00:04"
    [[nodiscard]] QString flagName(const Movie& movie) const; ///< as the user calls it; empty without a flag
    /// The icons of a record in their fixed order: notes, drawing, bookmark, grade, instance.
    [[nodiscard]] static std::vector<QString> iconNames(const Movie& movie);

    void tellFacts(const ItemFacts& facts); ///< for what records don't say
    void markLinked(const LinkOpening& links) { links_ = &links; } ///< items that came by a link in this run
    [[nodiscard]] bool cameByLink(const Movie& movie) const;

    void refreshAll(); ///< found states or flag names changed

private:
    [[nodiscard]] QString textOf(const Movie& movie, int column) const;
    [[nodiscard]] QString hintOf(const Movie& movie, int column) const;
    void namesChanged();
    [[nodiscard]] QList<int> rowsOf(const Movie& movie);

    Library& library_;
    Preferences& preferences_;
    ThumbnailCache& thumbnails_;
    const LinkOpening* links_ = nullptr;
    const ItemFacts* facts_ = nullptr;
    mutable std::optional<ShownNames> names_;   ///< of the list; made when it is asked for
    std::vector<std::shared_ptr<Movie>> rows_;  ///< what the views were last told
    QMultiHash<const Movie*, int> rowsOfMovie_; ///< a record may stand in a playlist twice
};

} // namespace daylark
