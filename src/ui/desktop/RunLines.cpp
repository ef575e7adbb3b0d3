#include "ui/desktop/RunLines.h"

#include "base/jobs/Patience.h"
#include "media/facts/MediaTypes.h"
#include "media/sequence/RunFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLocale>

#include <optional>
#include <utility>

namespace daylark {

namespace {

enum FileColumn { nameColumn, sizeColumn, kindColumn, timeColumn };

/// Whoever closes the dialog or enters another folder ends the wait for a share that does not answer.
constexpr std::chrono::minutes listingPatience{10};

QString nameIn(const QModelIndex& ofFiles) {
    return ofFiles.siblingAtColumn(nameColumn).data(QFileSystemModel::FileNameRole).toString();
}

/// The first of the paths that nothing can be added by; null: there is none.
QString firstWrong(const QStringList& paths) {
    for (const QString& path : paths) {
        if (QFileInfo(path).isFile()) continue;
        const Result<RunAddress> meant = runPatternOf(QFileInfo(path).fileName()) ? runMeantBy(path) : Error{};
        if (!meant || !RunFiles::look(*meant)) return path;
    }
    return {};
}

} // namespace

RunLines::Lines RunLines::Lines::in(const QString& folder) {
    Lines lines;
    const FolderNames names = picturesTakenApart(fileNamesIn(folder));
    for (const NamedRun& each : names.runs) {
        Line line{each.run.nameOf(each.numbers.front()), each.run.text(), {}, -1, {}};
        for (const qint64 number : each.numbers) {
            line.names.append(each.run.nameOf(number));
            lines.runOf.insert(line.names.back(), int(lines.runs.size()));
        }
        lines.runs.push_back(std::move(line));
    }
    for (const QString& name : names.others)
        lines.runOf.insert(name, -1);
    return lines;
}

void RunLines::Lines::measure(const QString& folder, const CancelFlag& cancelled) {
    const QDir place(folder);
    for (Line& line : runs) {
        qint64 bytes = 0;
        for (const QString& name : line.names) {
            if (cancelled) return;
            const QFileInfo file(place.filePath(name));
            bytes += file.size();
            if (const QDateTime time = file.lastModified(); !line.newest.isValid() || time > line.newest) line.newest = time;
        }
        line.bytes = bytes;
    }
}

RunLines::RunLines(QObject* parent)
    : QSortFilterProxyModel(parent) {
    lookAgain_.setSingleShot(true);
    lookAgain_.setInterval(200); // pictures come many at a time
    connect(&lookAgain_, &QTimer::timeout, this, &RunLines::look);
}

RunLines::~RunLines() {
    *cancelled_ = true;
    *ended_ = true;
}

void RunLines::setSourceModel(QAbstractItemModel* files) {
    files_ = qobject_cast<QFileSystemModel*>(files);
    QSortFilterProxyModel::setSourceModel(files);
    if (!files_) return;
    connect(files_, &QFileSystemModel::rootPathChanged, this, &RunLines::follow);
    connect(files_, &QAbstractItemModel::rowsInserted, this, &RunLines::rowsCome);
    connect(files_, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex& parent, int first, int last) {
        for (int row = first; isKnown_ && parent == shown_ && row <= last; ++row)
            if (lines_.runOf.value(nameIn(files_->index(row, nameColumn, parent)), -1) >= 0) return lookAgain_.start();
    });
    follow(files_->rootPath());
}

void RunLines::follow(const QString& folder) {
    if (folder == folder_) return;
    *cancelled_ = true;
    cancelled_ = std::make_shared<CancelFlag>(false);
    folder_ = folder;
    shown_ = files_->index(folder);
    lines_ = {};
    isKnown_ = isLooking_ = false;
    invalidateFilter();
    look();
}

void RunLines::look() {
    if (folder_.isEmpty()) return;
    if (isLooking_) return lookAgain_.start();
    isLooking_ = true;
    work_.run([this, folder = folder_, cancelled = cancelled_] {
        auto lines = askWithPatience<Lines>([folder] { return Lines::in(folder); }, listingPatience, cancelled.get());
        if (*cancelled) return;
        const auto answer = [this, cancelled](Lines known) {
            WorkQueue::deliver(this, [this, cancelled, known = std::move(known)]() mutable {
                if (!*cancelled) take(std::move(known));
            });
        };
        if (!lines) return answer({});
        answer(*lines);
        // On a share every file is a question of its own.
        const auto measured = askWithPatience<Lines>(
            [folder, cancelled, lines = std::move(*lines)]() mutable {
                lines.measure(folder, *cancelled);
                return std::move(lines);
            },
            listingPatience, cancelled.get());
        if (measured && !*cancelled) answer(*measured);
    });
}

void RunLines::take(Lines lines) {
    const bool isNew = !isKnown_ || lines.runOf != lines_.runOf;
    lines_ = std::move(lines);
    isKnown_ = true;
    isLooking_ = false;
    if (isNew) invalidateFilter();
    if (sortColumn() >= 0) invalidate(); // by sizes or times, which may have come now
    const QModelIndex folder = mapFromSource(shown_);
    if (const int rows = rowCount(folder); rows > 0)
        Q_EMIT dataChanged(index(0, 0, folder), index(rows - 1, columnCount(folder) - 1, folder), {Qt::DisplayRole});
}

/// A picture that comes while the folder is shown may belong to a run, or make one.
void RunLines::rowsCome(const QModelIndex& parent, int first, int last) {
    if (!isKnown_ || parent != shown_) return;
    for (int row = first; row <= last; ++row) {
        const QString name = nameIn(files_->index(row, nameColumn, parent));
        if (mediaTypeOfPath(name) == MediaType::image && !lines_.runOf.contains(name)) return lookAgain_.start();
    }
}

const RunLines::Line* RunLines::lineOf(const QModelIndex& ofFiles) const {
    if (!isKnown_ || ofFiles.parent() != shown_) return nullptr;
    const int run = lines_.runOf.value(nameIn(ofFiles), -1);
    return run < 0 ? nullptr : &lines_.runs[size_t(run)];
}

bool RunLines::filterAcceptsRow(int row, const QModelIndex& parent) const {
    if (parent != shown_) return true;
    const QModelIndex file = files_->index(row, nameColumn, parent);
    const QString name = nameIn(file);
    if (!isKnown_) return mediaTypeOfPath(name) != MediaType::image || files_->isDir(file);
    const int run = lines_.runOf.value(name, -1);
    return run < 0 || lines_.runs[size_t(run)].first == name;
}

QVariant RunLines::data(const QModelIndex& index, int role) const {
    const Line* line = role == Qt::DisplayRole ? lineOf(mapToSource(index)) : nullptr;
    if (!line) return QSortFilterProxyModel::data(index, role);
    switch (index.column()) {
    case nameColumn: return line->text;
    case sizeColumn: return line->bytes < 0 ? QString() : QLocale::system().formattedDataSize(line->bytes);
    case timeColumn: return QLocale::system().toString(line->newest, QLocale::ShortFormat);
    default: return QSortFilterProxyModel::data(index, role);
    }
}

/// Names and kinds stand in the files' own order, which is at hand for many files at once; sizes and times are the lines'.
void RunLines::sort(int column, Qt::SortOrder order) {
    const bool isOurs = column == sizeColumn || column == timeColumn;
    QSortFilterProxyModel::sort(isOurs ? column : -1, order);
    if (!isOurs && files_) files_->sort(column, order);
}

bool RunLines::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    if (files_->isDir(left) != files_->isDir(right)) return files_->isDir(left);
    const Line *one = lineOf(left), *other = lineOf(right);
    if (left.column() == sizeColumn)
        return (one ? one->bytes : files_->size(left)) < (other ? other->bytes : files_->size(right));
    return (one ? one->newest : files_->lastModified(left)) < (other ? other->newest : files_->lastModified(right));
}

void RunLines::askForMedia(const QStringList& paths, std::function<void(const QString& wrong)> answer) {
    work_.run([this, paths, answer = std::move(answer), number = ++question_, ended = ended_] {
        const auto wrong = askWithPatience<QString>([paths] { return firstWrong(paths); }, listingPatience, ended.get());
        if (*ended) return;
        WorkQueue::deliver(this, [this, answer, number, wrong = wrong.value_or(paths.first())] {
            if (number == question_) answer(wrong);
        });
    });
}

} // namespace daylark
