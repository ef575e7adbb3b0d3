#include "ui/panels/BookmarkRows.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"
#include "viewer/review/ViewerBookmarks.h"

#include <QColor>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace daylark {

namespace {

/// More than these coming or going at once are another list.
constexpr size_t mostRowsOneByOne = 16;
const QColor activeRowColour(0x2c, 0x38, 0x2d);

bool isProd(int column) {
    return column == BookmarkRows::firstProdColumn || column == BookmarkRows::lastProdColumn;
}

bool isNumber(int column) {
    return (column >= BookmarkRows::firstFrameColumn && column <= BookmarkRows::durationColumn) || isProd(column);
}

Qt::Alignment alignmentOf(int column) {
    return Qt::AlignVCenter | (column == BookmarkRows::activeColumn ? Qt::AlignHCenter
                               : isNumber(column)                   ? Qt::AlignRight
                                                                    : Qt::AlignLeft);
}

QString textOf(const Bookmark& bookmark, int column) {
    switch (column) {
    case BookmarkRows::firstTCColumn:
        return bookmark.firstTC;
    case BookmarkRows::lastTCColumn:
        return bookmark.lastTC;
    case BookmarkRows::firstFrameColumn:
        return QString::number(bookmark.firstFrame);
    case BookmarkRows::lastFrameColumn:
        return QString::number(bookmark.lastFrame);
    case BookmarkRows::durationColumn:
        return QString::number(bookmark.duration);
    case BookmarkRows::descriptionColumn:
        return bookmark.overlayString;
    case BookmarkRows::noteColumn:
        return bookmark.overlayString2;
    default:
        return {};
    }
}

} // namespace

BookmarkRows::BookmarkRows(ViewerBookmarks& bookmarks, QObject* parent)
    : QAbstractTableModel(parent)
    , source_(bookmarks)
    , bookmarks_(bookmarks.bookmarks())
    , numbers_(numberFont())
    , words_(theme::smallFont()) {}

QFont BookmarkRows::numberFont() {
    QFont font = theme::numberFont();
    font.setPointSizeF(theme::smallFont().pointSizeF());
    return font;
}

int BookmarkRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(bookmarks_.size());
}

int BookmarkRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(columnsInAll);
}

Qt::ItemFlags BookmarkRows::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return isText(index.column()) || index.column() == durationColumn ? flags | Qt::ItemIsEditable : flags;
}

QVariant BookmarkRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::TextAlignmentRole) return int(alignmentOf(section));
    if (role == Qt::ToolTipRole && isProd(section)) return tr("By the production's numbers");
    if (role == Qt::AccessibleTextRole && isProd(section)) return section == firstProdColumn ? tr("Prod First") : tr("Prod Last");
    if (role == Qt::ToolTipRole && (section == firstFrameColumn || section == lastFrameColumn))
        return tr("Frame, counted from 1");
    if (role != Qt::DisplayRole) return {};
    switch (section) {
    case firstTCColumn:
        return tr("First TC");
    case lastTCColumn:
        return tr("Last TC");
    case firstFrameColumn:
        return tr("First");
    case lastFrameColumn:
        return tr("Last");
    case durationColumn:
        return tr("Frames");
    case descriptionColumn:
        return tr("Description");
    case noteColumn:
        return tr("Note");
    case firstProdColumn:
    case lastProdColumn:
        return tr("Prod"); // beside the frame that it is of
    default:
        return QString();
    }
}

QVariant BookmarkRows::data(const QModelIndex& index, int role) const {
    const auto bookmark = at(index.row());
    if (!bookmark) return {};
    switch (role) {
    case Qt::DisplayRole:
        if (isProd(index.column())) return prodOf(*bookmark, index.column());
        return plain::line(textOf(*bookmark, index.column()));
    case Qt::EditRole:
        return textOf(*bookmark, index.column());
    case Qt::ToolTipRole:
        return isText(index.column()) ? plain::toolTip(textOf(*bookmark, index.column())) : QString();
    case Qt::DecorationRole:
        return index.column() == activeColumn ? QVariant(theme::icon(imageName(bookmark))) : QVariant();
    case Qt::AccessibleDescriptionRole:
        return bookmark->mute ? tr("muted") : isActive(bookmark) ? tr("active") : QString();
    case Qt::BackgroundRole:
        return isActive(bookmark) ? QVariant(activeRowColour) : QVariant();
    case Qt::ForegroundRole:
        return bookmark->mute ? QVariant(theme::dimText) : QVariant();
    case Qt::FontRole:
        return isText(index.column()) ? words_ : numbers_;
    case Qt::TextAlignmentRole:
        return int(alignmentOf(index.column()));
    default:
        return {};
    }
}

QString BookmarkRows::prodOf(const Bookmark& bookmark, int column) const {
    const FrameNumbers numbers = source_.frameNumbers();
    if (!numbers.areOwn()) return {};
    return QString::number(numbers.numberOf(column == firstProdColumn ? bookmark.firstFrame : bookmark.lastFrame));
}

bool BookmarkRows::setData(const QModelIndex& index, const QVariant& value, int role) {
    const auto bookmark = at(index.row());
    if (!bookmark || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
    // An untouched empty text stays "none".
    if (value.toString() == textOf(*bookmark, index.column())) return true;
    if (index.column() == descriptionColumn)
        source_.setOverlayString(bookmark, value.toString());
    else if (index.column() == noteColumn)
        source_.setOverlayString2(bookmark, value.toString());
    else
        source_.setDuration(bookmark, value.toLongLong());
    return true;
}

std::shared_ptr<Bookmark> BookmarkRows::at(int row) const {
    return row >= 0 && row < int(bookmarks_.size()) ? bookmarks_[size_t(row)] : nullptr;
}

int BookmarkRows::rowOf(const std::shared_ptr<Bookmark>& bookmark) const {
    const auto found = std::find(bookmarks_.begin(), bookmarks_.end(), bookmark);
    return found == bookmarks_.end() ? -1 : int(found - bookmarks_.begin());
}

// The records' own images say it: a muted bookmark is no active one, whatever strip it was left with.
bool BookmarkRows::isActive(const std::shared_ptr<Bookmark>& bookmark) const {
    return !bookmark->mute && !bookmark->activeStrip.isNil();
}

QString BookmarkRows::imageName(const std::shared_ptr<Bookmark>& bookmark) const {
    if (bookmark->mute) return QStringLiteral("NSStatusUnavailable");
    return isActive(bookmark) ? QStringLiteral("NSStatusAvailable") : QStringLiteral("NSStatusNone");
}

bool BookmarkRows::isUpToDate() const {
    return bookmarks_ == source_.bookmarks();
}

void BookmarkRows::reload() {
    const Bookmarks now = source_.bookmarks();
    if (now != bookmarks_) {
        takeMembers(now);
        takeOrder(now);
    }
    rowsChanged();
}

/// Afterwards the rows are those of `now`, the new ones last.
void BookmarkRows::takeMembers(const Bookmarks& now) {
    const std::unordered_set<std::shared_ptr<Bookmark>> wanted(now.begin(), now.end());
    const std::unordered_set<std::shared_ptr<Bookmark>> shown(bookmarks_.begin(), bookmarks_.end());
    Bookmarks added;
    for (const auto& bookmark : now)
        if (!shown.contains(bookmark)) added.push_back(bookmark);
    const size_t removed = bookmarks_.size() + added.size() - now.size();
    if (added.size() + removed > mostRowsOneByOne || now.empty() || bookmarks_.empty()) {
        beginResetModel();
        bookmarks_ = now;
        endResetModel();
        return;
    }
    for (int row = int(bookmarks_.size()) - 1; row >= 0; --row) {
        if (wanted.contains(bookmarks_[size_t(row)])) continue;
        beginRemoveRows({}, row, row);
        bookmarks_.erase(bookmarks_.begin() + row);
        endRemoveRows();
    }
    if (added.empty()) return;
    beginInsertRows({}, int(bookmarks_.size()), int(bookmarks_.size() + added.size()) - 1);
    bookmarks_.insert(bookmarks_.end(), added.begin(), added.end());
    endInsertRows();
}

void BookmarkRows::takeOrder(const Bookmarks& now) {
    if (now == bookmarks_) return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::unordered_map<std::shared_ptr<Bookmark>, int> rows;
    for (size_t row = 0; row < now.size(); ++row)
        rows[now[row]] = int(row);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& old : before)
        after << index(rows[bookmarks_[size_t(old.row())]], old.column());
    bookmarks_ = now;
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void BookmarkRows::rowsChanged() {
    if (!bookmarks_.empty())
        Q_EMIT dataChanged(index(0, 0), index(int(bookmarks_.size()) - 1, columnsInAll - 1));
}

} // namespace daylark
