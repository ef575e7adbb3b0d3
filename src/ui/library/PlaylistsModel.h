#pragma once

#include "app/arrangement/ShownNames.h"
#include "model/Playlist.h"

#include <QAbstractTableModel>

#include <optional>

namespace daylark {

class Library;
class PlaylistEditing;
class Preferences;

/// The session's playlists as rows: name (editable in place) and count. Holds no state of its own; renaming
/// goes through the part that edits playlists. Interface thread.
class PlaylistsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { nameColumn, countColumn, columnTotal };
    enum Role { dividerRole = Qt::UserRole + 1, statusRole };

    PlaylistsModel(Library& library, PlaylistEditing& editing, const Preferences& preferences,
                   QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] ShownName shownName(int row) const;

    void refreshAll(); ///< found states or counts changed

private:
    [[nodiscard]] QString countOf(const Playlist& playlist) const;

    Library& library_;
    PlaylistEditing& editing_;
    const Preferences& preferences_;
    mutable std::optional<ShownNames> names_; ///< made when it is asked for
    std::vector<std::shared_ptr<Playlist>> rows_; ///< what the views were last told
};

} // namespace daylark
