#include "ui/library/MoviesModel.h"

#include "app/files/ItemFacts.h"
#include "app/links/LinkOpening.h"
#include "app/playlists/Library.h"
#include "app/relinking/FileExistence.h"
#include "base/PlainText.h"
#include "preferences/Preferences.h"
#include "ui/common/Theme.h"
#include "ui/common/ThumbnailCache.h"

namespace daylark {

namespace {

Qt::AlignmentFlag sideOf(const Column& facts) {
    return facts.alignment == Column::Alignment::right ? Qt::AlignRight : Qt::AlignLeft;
}

} // namespace

MoviesModel::MoviesModel(Library& library, Preferences& preferences, ThumbnailCache& thumbnails,
                         QObject* parent)
    : QAbstractTableModel(parent)
    , library_(library)
    , preferences_(preferences)
    , thumbnails_(thumbnails) {
    const auto takeOver = [this] {
        beginResetModel();
        rows_ = library_.arrangedMovies();
        rowsOfMovie_.clear(); // made when it is asked for: not while a search is typed
        names_.reset();
        endResetModel();
    };
    takeOver();
    connect(&library_, &Library::arrangedMoviesChanged, this, takeOver);
    connect(&library_, &Library::movieUpdated, this, [this](const std::shared_ptr<Movie>& movie) {
        names_.reset(); // its file may be another now
        for (const int row : rowsOf(*movie))
            Q_EMIT dataChanged(index(row, 0), index(row, Column::tableTotal - 1));
    });
    for (const PreferenceItem* looks : {static_cast<PreferenceItem*>(&preferences_.dimCommonBeginnings),
                                        static_cast<PreferenceItem*>(&preferences_.displayFileExtensions)})
        connect(looks, &PreferenceItem::changed, this, &MoviesModel::namesChanged);
}

void MoviesModel::namesChanged() {
    names_.reset();
    refreshAll();
}

/// The beginning is common to the whole list, whatever is filtered.
ShownName MoviesModel::shownName(const Movie& movie) const {
    if (!names_) {
        QStringList names;
        for (const auto& each : library_.unfilteredMovies())
            names << each->shownName();
        names_.emplace(names, ShownNames::Looks{preferences_.displayFileExtensions(), preferences_.dimCommonBeginnings()});
    }
    return names_->shown(movie.shownName());
}

QList<int> MoviesModel::rowsOf(const Movie& movie) {
    if (rowsOfMovie_.isEmpty()) {
        rowsOfMovie_.reserve(qsizetype(rows_.size()));
        for (size_t row = 0; row < rows_.size(); ++row)
            rowsOfMovie_.insert(rows_[row].get(), int(row));
    }
    return rowsOfMovie_.values(&movie);
}

int MoviesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int MoviesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(Column::tableTotal);
}

void MoviesModel::tellFacts(const ItemFacts& facts) {
    facts_ = &facts;
    connect(&facts, &ItemFacts::known, this, [this](const QString& path) {
        for (size_t row = 0; row < rows_.size(); ++row)
            if (rows_[row]->filepathString == path)
                Q_EMIT dataChanged(index(int(row), Column::sound), index(int(row), Column::sound));
    });
}

QString MoviesModel::textOf(const Movie& movie, int section) const {
    switch (section) {
    case Column::name:
        return shownName(movie).text;
    case Column::flag:
        return flagName(movie);
    case Column::sound:
        return facts_ ? facts_->soundOf(movie) : QString();
    default:
        return column(section).textOf(movie);
    }
}

QString MoviesModel::hintOf(const Movie& movie, int section) const {
    const Column& facts = column(section);
    if (section == Column::flag) return flagName(movie);
    if (facts.image) return facts.hasIcon(movie) ? facts.hintText() : QString();
    if (section == Column::thumbnail || section == Column::name) {
        QStringList lines{plain::line(movie.shownName())};
        if (const QString flag = flagName(movie); !flag.isEmpty()) lines << flag;
        if (const QString said = factsOf(movie); !said.isEmpty()) lines << said;
        if (cameByLink(movie)) lines << tr("Came by a link");
        if (!movie.creatingThumbnailText.isEmpty()) lines << plain::line(movie.creatingThumbnailText).simplified();
        return lines.join(QLatin1Char('\n'));
    }
    if (section == Column::sound && facts_ && facts_->of(movie))
        if (const QString tracks = ItemFacts::soundTracksOf(*facts_->of(movie)); !tracks.isEmpty()) return tracks;
    return textOf(movie, section);
}

QVariant MoviesModel::data(const QModelIndex& index, int role) const {
    const auto movie = movieAt(index.row());
    if (!index.isValid() || !movie) return {};
    const Column& facts = column(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return plain::line(textOf(*movie, facts.id));
    case Qt::ToolTipRole:
        return plain::toolTip(hintOf(*movie, facts.id));
    case Qt::AccessibleTextRole:
        return plain::paragraph(hintOf(*movie, facts.id));
    case Qt::DecorationRole: {
        const QString name = facts.iconOf(*movie);
        return name.isEmpty() ? QVariant() : QVariant(theme::icon(name));
    }
    case Qt::ForegroundRole:
        if (FileExistence::isMarkedMissing(*movie)) return theme::warning;
        return facts.id == Column::name ? theme::text : QColor(0xb0, 0xb0, 0xb0);
    case Qt::TextAlignmentRole:
        return int(sideOf(facts) | Qt::AlignVCenter);
    default:
        return {};
    }
}

Qt::ItemFlags MoviesModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
}

QVariant MoviesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= Column::tableTotal) return {};
    const Column& facts = column(section);
    switch (role) {
    case Qt::DisplayRole:
        return facts.titleText();
    case Qt::DecorationRole:
        return *facts.icon ? QVariant(theme::icon(QString::fromLatin1(facts.icon))) : QVariant();
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return facts.labelText(); // ours
    case Qt::TextAlignmentRole:
        return int((*facts.icon ? Qt::AlignHCenter : sideOf(facts)) | Qt::AlignVCenter);
    default:
        return {};
    }
}

std::shared_ptr<Movie> MoviesModel::movieAt(int row) const {
    return row < 0 || size_t(row) >= rows_.size() ? nullptr : rows_[size_t(row)];
}

QPixmap MoviesModel::thumbnailAt(int row) const {
    const auto movie = movieAt(row);
    return movie ? thumbnails_.pixmap(movie->thumbnail) : QPixmap();
}

bool MoviesModel::cameByLink(const Movie& movie) const {
    return links_ && links_->cameByLink(movie);
}

QString MoviesModel::factsOf(const Movie& movie) const {
    QStringList facts;
    for (const Column::Id id : {Column::frames, Column::rate, Column::duration})
        if (const QString text = column(id).textOf(movie); !text.isEmpty()) facts << text;
    return facts.join(QStringLiteral(" · "));
}

QString MoviesModel::flagName(const Movie& movie) const {
    return flagNameOf(movie, preferences_);
}

std::vector<QString> MoviesModel::iconNames(const Movie& movie) {
    std::vector<QString> names;
    for (int id = Column::notes; id <= Column::instance; ++id)
        if (QString name = column(id).iconOf(movie); !name.isEmpty()) names.push_back(std::move(name));
    return names;
}

void MoviesModel::refreshAll() {
    if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Column::tableTotal - 1));
}

} // namespace daylark
