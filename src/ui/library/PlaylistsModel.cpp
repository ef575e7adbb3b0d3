#include "ui/library/PlaylistsModel.h"

#include "app/playlists/Library.h"
#include "app/playlists/PlaylistEditing.h"
#include "base/PlainText.h"
#include "preferences/Preferences.h"
#include "ui/common/Theme.h"

#include <algorithm>

namespace daylark {

namespace {

bool isDividerRow(const Playlist& playlist) {
    return playlist.isType(playlistType::divider);
}

QString typeIconName(const Playlist& playlist) {
    if (playlist.status != 0) return QStringLiteral("dl-missing.png");
    if (playlist.isType(playlistType::smart)) return QStringLiteral("smartlist");
    if (playlist.isType(playlistType::folder)) return QStringLiteral("folderlist");
    return QStringLiteral("playlist");
}

QString playlistHint(const Playlist& playlist, size_t items) {
    QString count = plain::line(playlist.name) + u'\n' +
                    (items == 1 ? PlaylistsModel::tr("1 item") : PlaylistsModel::tr("%1 items").arg(items));
    if (playlist.isType(playlistType::smart)) count += u'\n' + PlaylistsModel::tr("Smartlist");
    if (playlist.isType(playlistType::folder))
        count += u'\n' + PlaylistsModel::tr("Shows the folder %1").arg(plain::line(playlist.directoryPath.toLocalFile()));
    switch (playlist.status) {
    case 1:
        return count + u'\n' + PlaylistsModel::tr("Some files are missing");
    case 2:
        return count + u'\n' + PlaylistsModel::tr("All files are missing");
    default:
        return isDividerRow(playlist) ? plain::line(playlist.name) : count;
    }
}

} // namespace

PlaylistsModel::PlaylistsModel(Library& library, PlaylistEditing& editing, const Preferences& preferences,
                               QObject* parent)
    : QAbstractTableModel(parent)
    , library_(library)
    , editing_(editing)
    , preferences_(preferences)
    , rows_(library.playlists()) {
    connect(&library_, &Library::playlistsChanged, this, [this] {
        beginResetModel();
        rows_ = library_.playlists();
        names_.reset();
        endResetModel();
    });
    connect(&library_, &Library::playlistUpdated, this, [this](const std::shared_ptr<Playlist>& playlist) {
        const auto found = std::find(rows_.begin(), rows_.end(), playlist);
        if (found == rows_.end()) return;
        names_.reset(); // its own may be another
        const int row = int(found - rows_.begin());
        Q_EMIT dataChanged(index(row, 0), index(row, columnTotal - 1));
    });
    connect(&preferences_.dimCommonBeginnings, &PreferenceItem::changed, this, [this] {
        names_.reset();
        refreshAll();
    });
}

/// Dividers only separate: their names say nothing of the others'.
ShownName PlaylistsModel::shownName(int row) const {
    if (row < 0 || size_t(row) >= rows_.size()) return {};
    if (!names_) {
        QStringList names;
        for (const auto& playlist : rows_)
            if (!isDividerRow(*playlist)) names << playlist->name;
        names_.emplace(names, ShownNames::Looks{true, preferences_.dimCommonBeginnings()});
    }
    return names_->shown(rows_[size_t(row)]->name);
}

int PlaylistsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int PlaylistsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(columnTotal);
}

/// Of a smartlist as many as it answers; none are not counted.
QString PlaylistsModel::countOf(const Playlist& playlist) const {
    if (!playlist.asksRules()) return playlist.itemCount;
    const size_t answers = library_.smartLists().itemsOf(playlist).size();
    return answers == 0 ? QString() : QString::number(answers);
}

QVariant PlaylistsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || size_t(index.row()) >= rows_.size()) return {};
    const Playlist& playlist = *rows_[size_t(index.row())];
    const bool divider = isDividerRow(playlist);
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == nameColumn) return plain::line(playlist.name);
        return divider ? QString() : countOf(playlist);
    case Qt::EditRole:
        return playlist.name;
    case Qt::ToolTipRole:
        return plain::toolTip(playlistHint(playlist, library_.itemsOf(playlist).size()));
    case Qt::AccessibleTextRole:
        return plain::paragraph(playlistHint(playlist, library_.itemsOf(playlist).size()));
    case Qt::DecorationRole:
        return index.column() == nameColumn && !divider ? QVariant(theme::icon(typeIconName(playlist)))
                                                        : QVariant();
    case Qt::ForegroundRole:
        if (playlist.status == 2) return theme::warning;
        return index.column() == countColumn || divider ? QVariant(theme::dimText) : QVariant(theme::text);
    case Qt::TextAlignmentRole:
        return int(index.column() == countColumn ? Qt::AlignRight | Qt::AlignVCenter
                                                 : Qt::AlignLeft | Qt::AlignVCenter);
    case dividerRole:
        return divider;
    case statusRole:
        return playlist.status;
    default:
        return {};
    }
}

Qt::ItemFlags PlaylistsModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    const Qt::ItemFlags common = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
    return index.column() == nameColumn ? common | Qt::ItemIsEditable : common;
}

bool PlaylistsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || index.column() != nameColumn || role != Qt::EditRole) return false;
    editing_.renamePlaylist(index.row(), value.toString());
    Q_EMIT dataChanged(index, index);
    return true;
}

QVariant PlaylistsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == nameColumn ? tr("Playlists") : tr("Items");
}

void PlaylistsModel::refreshAll() {
    if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnTotal - 1));
}

} // namespace daylark
