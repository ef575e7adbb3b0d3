#include "ui/library/MoviesModel.h"

#include "app/playlists/Library.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/common/Theme.h"
#include "ui/common/ThumbnailCache.h"

namespace daylark {

namespace {

struct ColumnFacts {
    const char* title; ///< in the header; empty for icon columns
    const char* name;  ///< in menus, tooltips and for screen readers
    const char* field; ///< what the library sorts by
    const char* icon;  ///< in the header of icon columns
    const char* hint;  ///< what an icon in the column says
};

const ColumnFacts& columnFacts(int column) {
    static const ColumnFacts facts[MoviesModel::columnTotal] = {
        {"", "Thumbnail", "thumbnail", "image", ""},
        {"", "Flag", "flagString", "flag_None", ""},
        {"Name", "Name", "filenameString", "", ""},
        {"", "Notes", "notesIcon", "notes", "Has notes"},
        {"", "Drawings", "drawingIcon", "draw", "Has drawings"},
        {"", "Bookmarks", "bookmarkIcon", "bookmarks", "Has bookmarks"},
        {"", "Grade", "gradeIcon", "grade", "Has a grade"},
        {"", "Instance", "instanceIcon", "copy", "Stands in several playlists"},
        {"Frames", "Frames", "mMovieDurationFrames", "", ""},
        {"Duration", "Duration", "mMovieDurationSeconds", "", ""},
        {"Rate", "Rate", "mMovieFPS", "", ""},
        {"Size (MB)", "Size", "fileSizeText", "", ""},
        {"Resolution", "Resolution", "mMovieResolutionString", "", ""},
        {"Path", "Path", "filepathString", "", ""},
    };
    return facts[column];
}

const Image* iconOf(const Movie& movie, int column) {
    switch (column) {
    case MoviesModel::flagColumn:
        return &movie.flag;
    case MoviesModel::notesColumn:
        return &movie.notesIcon;
    case MoviesModel::drawingColumn:
        return &movie.drawingIcon;
    case MoviesModel::bookmarkColumn:
        return &movie.bookmarkIcon;
    case MoviesModel::gradeColumn:
        return &movie.gradeIcon;
    case MoviesModel::instanceColumn:
        return &movie.instanceIcon;
    default:
        return nullptr;
    }
}

/// Icons that came without a name (from sessions made elsewhere) show as ours for the column.
QString shownIconName(const Movie& movie, int column) {
    const Image* icon = iconOf(movie, column);
    if (!icon || icon->isNil()) return {};
    if (column == MoviesModel::flagColumn)
        return icon->name().isEmpty() ? status::flagImageName(movie.flagString) : icon->name();
    static const char* const ours[] = {"dl-notesActive-03.png", "dl-brushActive-01.png", "bookmark_on.png",
                                       "dl-levelsActive-01.png", "copy 03 white.png"};
    return QString::fromLatin1(ours[column - MoviesModel::notesColumn]);
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
        rowOfMovie_.clear();
        rowOfMovie_.reserve(qsizetype(rows_.size()));
        for (size_t row = 0; row < rows_.size(); ++row)
            rowOfMovie_.insert(rows_[row].get(), int(row));
        endResetModel();
    };
    takeOver();
    connect(&library_, &Library::arrangedMoviesChanged, this, takeOver);
    connect(&library_, &Library::movieUpdated, this, [this](const std::shared_ptr<Movie>& movie) {
        const int row = rowOf(movie);
        if (row >= 0) Q_EMIT dataChanged(index(row, 0), index(row, columnTotal - 1));
    });
}

int MoviesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int MoviesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(columnTotal);
}

QString MoviesModel::textOf(const Movie& movie, int column) const {
    switch (column) {
    case nameColumn:
        return movie.filenameString;
    case framesColumn:
        return movie.mMovieDurationFrames > 0 ? QString::number(movie.mMovieDurationFrames) : QString();
    case durationColumn:
        return movie.durationText;
    case rateColumn:
        return movie.frameRateText;
    case sizeColumn:
        return movie.fileSizeText;
    case resolutionColumn:
        return movie.mMovieResolutionString;
    case pathColumn:
        return movie.filepathString;
    default:
        return {};
    }
}

QString MoviesModel::hintOf(const Movie& movie, int column) const {
    if (column == flagColumn) return flagName(movie);
    if (const Image* icon = iconOf(movie, column))
        return icon->isNil() ? QString() : QString::fromLatin1(columnFacts(column).hint);
    if (column == thumbnailColumn || column == nameColumn) {
        QStringList lines{movie.filenameString};
        if (const QString flag = flagName(movie); !flag.isEmpty()) lines << flag;
        if (const QString facts = factsOf(movie); !facts.isEmpty()) lines << facts;
        if (!movie.creatingThumbnailText.isEmpty()) lines << movie.creatingThumbnailText.simplified();
        return lines.join(QLatin1Char('\n'));
    }
    return textOf(movie, column);
}

QVariant MoviesModel::data(const QModelIndex& index, int role) const {
    const auto movie = movieAt(index.row());
    if (!index.isValid() || !movie) return {};
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return textOf(*movie, column);
    case Qt::ToolTipRole:
        return hintOf(*movie, column);
    case Qt::AccessibleTextRole:
        return hintOf(*movie, column);
    case Qt::DecorationRole: {
        const QString name = shownIconName(*movie, column);
        return name.isEmpty() ? QVariant() : QVariant(theme::icon(name));
    }
    case Qt::ForegroundRole:
        if (movie->creatingThumbnailText == fileNotFoundText) return theme::warning;
        return column == nameColumn ? theme::text : QColor(0xb0, 0xb0, 0xb0);
    case Qt::TextAlignmentRole: {
        const bool number = column >= framesColumn && column <= sizeColumn;
        return int((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    default:
        return {};
    }
}

Qt::ItemFlags MoviesModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
}

QVariant MoviesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnTotal) return {};
    const ColumnFacts& facts = columnFacts(section);
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromLatin1(facts.title);
    case Qt::DecorationRole:
        return *facts.icon ? QVariant(theme::icon(QString::fromLatin1(facts.icon))) : QVariant();
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return QString::fromLatin1(facts.name);
    case Qt::TextAlignmentRole: {
        const bool number = section >= framesColumn && section <= sizeColumn;
        return int((*facts.icon ? Qt::AlignHCenter
                    : number    ? Qt::AlignRight
                                : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    }
    case sortFieldRole:
        return sortField(section);
    default:
        return {};
    }
}

std::shared_ptr<Movie> MoviesModel::movieAt(int row) const {
    return row < 0 || size_t(row) >= rows_.size() ? nullptr : rows_[size_t(row)];
}

int MoviesModel::rowOf(const std::shared_ptr<Movie>& movie) const {
    return rowOfMovie_.value(movie.get(), -1);
}

QPixmap MoviesModel::thumbnailAt(int row) const {
    const auto movie = movieAt(row);
    return movie ? thumbnails_.pixmap(movie->thumbnail) : QPixmap();
}

QString MoviesModel::factsOf(const Movie& movie) const {
    QStringList facts;
    for (const int column : {framesColumn, rateColumn, durationColumn})
        if (const QString text = textOf(movie, column); !text.isEmpty()) facts << text;
    return facts.join(QStringLiteral(" · "));
}

QString MoviesModel::flagName(const Movie& movie) const {
    if (movie.flag.isNil() || !status::codes().contains(movie.flagString)) return {};
    return preferences_.statusName(movie.flagString);
}

QString MoviesModel::sortField(int column) {
    return QString::fromLatin1(columnFacts(column).field);
}

std::vector<QString> MoviesModel::iconNames(const Movie& movie) {
    std::vector<QString> names;
    for (int column = notesColumn; column <= instanceColumn; ++column)
        if (QString name = shownIconName(movie, column); !name.isEmpty()) names.push_back(std::move(name));
    return names;
}

void MoviesModel::refreshAll() {
    if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnTotal - 1));
}

} // namespace daylark
