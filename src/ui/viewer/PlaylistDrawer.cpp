#include "ui/viewer/PlaylistDrawer.h"

#include "app/relinking/FileExistence.h"
#include "base/PlainText.h"
#include "model/Movie.h"
#include "review/ReviewEdits.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/common/FlagPopUp.h"
#include "ui/common/ReorderView.h"
#include "ui/common/Theme.h"
#include "ui/common/ThumbnailCache.h"
#include "ui/common/text/NameText.h"
#include "viewer/review/ViewerList.h"

#include <QAbstractListModel>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace daylark {

namespace {

constexpr int rowHeight = 64;
constexpr QSize drawerThumbnail(96, 54);
constexpr double passedOverOpacity = 0.4;
enum DrawerRole {
    flagRole = Qt::UserRole,
    flagTitleRole, ///< empty without a flag
    currentRole,
    missingRole,
    commonRole ///< how much of the name all names of the list begin with
};

} // namespace

/// The viewer's list as rows.
class PlaylistDrawer::Rows : public QAbstractListModel {
public:
    Rows(ViewerList& list, Preferences& preferences)
        : list_(list)
        , preferences_(preferences) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(list_.count());
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const Movie* movie = movieAt(index.row());
        if (!movie) return {};
        switch (role) {
        case Qt::DisplayRole:
            return names().shown(movie->shownName()).text;
        case commonRole:
            return names().shown(movie->shownName()).common;
        case Qt::ToolTipRole:
            return plain::toolTip(movie->filepathString);
        case Qt::DecorationRole:
            return pictures_.pixmap(movie->thumbnail);
        case Qt::AccessibleDescriptionRole:
            return FileExistence::isMarkedMissing(*movie) ? PlaylistDrawer::tr("File not found") : flagTitle(*movie);
        case flagRole:
            return movie->flagString.toInt();
        case flagTitleRole:
            return flagTitle(*movie);
        case currentRole:
            return index.row() == list_.selectionIndex();
        case missingRole:
            return FileExistence::isMarkedMissing(*movie);
        default:
            return {};
        }
    }
    void moviesReplaced() {
        beginResetModel();
        names_.reset();
        endResetModel();
    }
    void namesChanged() {
        names_.reset();
        rowsChanged();
    }
    void rowsChanged() {
        if (list_.count() > 0) Q_EMIT dataChanged(index(0), index(int(list_.count()) - 1));
    }

private:
    const ShownNames& names() const {
        if (!names_) {
            QStringList all;
            for (const auto& movie : list_.movies())
                all << movie->shownName();
            names_.emplace(all, ShownNames::Looks{preferences_.displayFileExtensions(), preferences_.dimCommonBeginnings()});
        }
        return *names_;
    }
    QString flagTitle(const Movie& movie) const {
        const int tag = movie.flagString.toInt();
        return tag > status::none && tag <= status::skip ? FlagPopUp::flagTitle(tag, preferences_)
                                                         : QString();
    }
    const Movie* movieAt(int row) const {
        return row >= 0 && row < list_.count() ? list_.movies()[size_t(row)].get() : nullptr;
    }
    ViewerList& list_;
    Preferences& preferences_;
    mutable ThumbnailCache pictures_{32 * 1024};
    mutable std::optional<ShownNames> names_; ///< made when it is asked for
};

class PlaylistDrawer::RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {160, rowHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        painter->save();
        const QRect row = option.rect;
        const bool selected = option.state & QStyle::State_Selected;
        if (selected)
            painter->fillRect(row, theme::selection);
        else if (option.state & QStyle::State_MouseOver)
            painter->fillRect(row, theme::raised);
        if (index.data(currentRole).toBool()) {
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(selected ? theme::selectedText : theme::text);
            const QPointF tip(row.left() + 11, row.center().y() + 0.5);
            painter->drawPolygon(QPolygonF({tip, tip + QPointF(-6, -5), tip + QPointF(-6, 5)}));
        }
        paintThumbnail(*painter, thumbnailRect(row), index);
        paintTexts(*painter, option, index);
        if ((option.state & QStyle::State_HasFocus) && option.widget && option.widget->hasFocus()) {
            painter->setBrush(Qt::NoBrush);
            painter->setPen(theme::focus);
            painter->drawRect(row.adjusted(0, 0, -1, -1));
        }
        painter->restore();
    }

private:
    static QRect thumbnailRect(const QRect& row) {
        return {QPoint(row.left() + 16, row.top() + (rowHeight - drawerThumbnail.height()) / 2),
                drawerThumbnail};
    }
    /// Next and previous pass it over.
    static bool isPassedOver(const QModelIndex& index) {
        return index.data(missingRole).toBool() || index.data(flagRole).toInt() == status::skip;
    }

    static void paintThumbnail(QPainter& painter, const QRect& frame, const QModelIndex& index) {
        painter.fillRect(frame, Qt::black);
        const auto picture = index.data(Qt::DecorationRole).value<QPixmap>();
        if (!picture.isNull()) {
            const QSize size = picture.size().scaled(frame.size(), Qt::KeepAspectRatio);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.setOpacity(isPassedOver(index) ? passedOverOpacity : 1.0);
            painter.drawPixmap(
                QRect(frame.topLeft() +
                          QPoint(frame.width() - size.width(), frame.height() - size.height()) / 2,
                      size),
                picture);
            painter.setOpacity(1.0);
        } else if (index.data(missingRole).toBool()) {
            theme::icon(QStringLiteral("dl-missing")).paint(&painter, frame.adjusted(36, 15, -36, -15));
        }
    }

    /// The name, and under it what is to be known: missing, else the flag by its name.
    static void paintTexts(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) {
        const bool selected = option.state & QStyle::State_Selected;
        const bool missing = index.data(missingRole).toBool();
        const QString flagTitle = index.data(flagTitleRole).toString();
        int right = option.rect.right() - 8;
        if (!flagTitle.isEmpty()) {
            theme::icon(FlagPopUp::flagIcon(index.data(flagRole).toInt()))
                .paint(&painter, QRect(right - 16, option.rect.center().y() - 7, 16, 16));
            right -= 24;
        }
        const int left = thumbnailRect(option.rect).right() + 9;
        const QString under = missing ? PlaylistDrawer::tr("File not found") : flagTitle;
        const int lineHeight = option.fontMetrics.height();
        painter.setFont(option.font);
        const ShownName name{index.data().toString(), index.data(commonRole).toLongLong()};
        // Of a name and what stands under it, as many lines as the row has room for.
        const int room = std::max(1, (rowHeight - 4) / lineHeight - (under.isEmpty() ? 0 : 1));
        const int lines = int(nameText::layOut(name, painter.fontMetrics(), right - left, std::min(2, room)).size());
        const int height = lines * lineHeight + (under.isEmpty() ? 0 : lineHeight + 2);
        QRect line(left, option.rect.center().y() - height / 2, right - left, lines * lineHeight);
        const QColor colour = selected ? theme::selectedText : isPassedOver(index) ? theme::dimText : theme::text;
        nameText::paint(painter, line, name, lines, colour, selected ? QColor(0xb8, 0xc6, 0xd6) : QColor(0x96, 0x96, 0x96));
        if (under.isEmpty()) return;
        line = QRect(left, line.bottom() + 3, right - left, lineHeight);
        painter.setFont(theme::smallFont());
        painter.setPen(missing ? theme::warning : selected ? theme::selectedText : theme::dimText);
        painter.drawText(line, Qt::AlignVCenter | Qt::AlignLeft,
                         painter.fontMetrics().elidedText(under, Qt::ElideRight, line.width()));
    }
};

/// Tells when a press has become a choice.
class PlaylistDrawer::RowsView : public ReorderView<QListView> {
public:
    RowsView(PlaylistDrawer& drawer)
        : ReorderView<QListView>(QStringLiteral("application/x-daylark-viewer-rows"), false, &drawer)
        , drawer_(drawer) {}
    [[nodiscard]] bool isPressed() const { return pressed_; }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        pressed_ = event->button() == Qt::LeftButton;
        ReorderView::mousePressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        pressed_ = event->button() == Qt::LeftButton;
        ReorderView::mouseDoubleClickEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        ReorderView::mouseReleaseEvent(event);
        if (std::exchange(pressed_, false)) drawer_.adoptSelection();
    }
    void startDrag(Qt::DropActions actions) override {
        ReorderView::startDrag(actions);
        pressed_ = false;
        drawer_.showSelection(); // what was dragged was not chosen
    }

private:
    PlaylistDrawer& drawer_;
    bool pressed_ = false;
};

PlaylistDrawer::PlaylistDrawer(ViewerList& list, ReviewEdits& edits, Preferences& preferences,
                               QWidget* parent)
    : QWidget(parent)
    , list_(list)
    , rows_(std::make_unique<Rows>(list, preferences))
    , view_(new RowsView(*this)) {
    setObjectName(QStringLiteral("playlistDrawer"));
    view_->setObjectName(QStringLiteral("playlistDrawerList"));
    view_->setAccessibleName(tr("Playlist"));
    view_->setModel(rows_.get());
    view_->setItemDelegate(new RowDelegate(view_));
    view_->setUniformItemSizes(true);
    view_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view_->setMouseTracking(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    setMinimumWidth(168);

    view_->rowsDropped = [this](const std::vector<qsizetype>& rows, qsizetype gap) {
        list_.moveMovies(rows, gap);
    };
    connect(&list_, &ViewerList::moviesChanged, this, [this] {
        const QScopedValueRollback<bool> own(showing_, true); // a reset empties the view's selection
        rows_->moviesReplaced();
        showSelection();
    });
    connect(&list_, &ViewerList::selectionChanged, this, &PlaylistDrawer::showSelection);
    connect(&list_, &ViewerList::selectedMoviesChanged, this, &PlaylistDrawer::showSelection);
    connect(&edits, &ReviewEdits::movieChanged, this, &PlaylistDrawer::movieUpdated);
    for (const Preference<QString>& name : preferences.statusNames)
        connect(&name, &PreferenceItem::changed, this, [this] { rows_->rowsChanged(); });
    for (const PreferenceItem* looks : {static_cast<PreferenceItem*>(&preferences.dimCommonBeginnings),
                                        static_cast<PreferenceItem*>(&preferences.displayFileExtensions)})
        connect(looks, &PreferenceItem::changed, this, [this] { rows_->namesChanged(); });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PlaylistDrawer::adoptSelection);
    showSelection();
}

PlaylistDrawer::~PlaylistDrawer() {
    view_->setModel(nullptr);
}

QListView* PlaylistDrawer::view() const {
    return view_;
}

void PlaylistDrawer::movieUpdated(const std::shared_ptr<Movie>&) {
    rows_->namesChanged(); // its file may be another now
}

void PlaylistDrawer::adoptSelection() {
    if (showing_ || view_->isPressed()) return;
    const std::vector<qsizetype> rows = RowDrag::selectedRows(*view_);
    if (rows.empty())
        showSelection(); // one movie is always chosen
    else
        list_.setSelectionIndexes(rows);
}

void PlaylistDrawer::showSelection() {
    rows_->rowsChanged();
    const qsizetype shown = list_.selectionIndex();
    if (shown < 0 || shown >= list_.count()) return;
    const QScopedValueRollback<bool> own(showing_, true);
    QItemSelection selection;
    for (const qsizetype row : list_.selectionIndexes())
        selection.select(rows_->index(int(row)), rows_->index(int(row)));
    QItemSelectionModel& model = *view_->selectionModel();
    // A person who extends the selection by key goes on from where they are.
    if (!model.currentIndex().isValid() || list_.selectionIndexes().size() == 1)
        model.setCurrentIndex(rows_->index(int(shown)), QItemSelectionModel::NoUpdate);
    if (model.selection() != selection) model.select(selection, QItemSelectionModel::ClearAndSelect);
    view_->scrollTo(list_.selectionIndexes().size() == 1 ? rows_->index(int(shown)) : model.currentIndex());
}

} // namespace daylark
