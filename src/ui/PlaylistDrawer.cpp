#include "ui/PlaylistDrawer.h"

#include "model/Movie.h"
#include "model/ReviewEdits.h"
#include "ui/FlagPopUp.h"
#include "ui/Theme.h"
#include "ui/ThumbnailCache.h"
#include "viewer/ViewerList.h"

#include <QAbstractListModel>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

constexpr int rowHeight = 64;
constexpr QSize drawerThumbnail(96, 54);
constexpr int flagRole = Qt::UserRole, currentRole = Qt::UserRole + 1, missingRole = Qt::UserRole + 2;

} // namespace

/// The viewer's list as rows.
class PlaylistDrawer::Rows : public QAbstractListModel {
public:
    Rows(ViewerList& list, UserDefaults& defaults)
        : list_(list)
        , defaults_(defaults) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(list_.count());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const Movie* movie = movieAt(index.row());
        if (!movie) return {};
        switch (role) {
        case Qt::DisplayRole:
            return movie->filenameString;
        case Qt::ToolTipRole:
            return movie->filepathString;
        case Qt::DecorationRole:
            return pictures_.pixmap(movie->thumbnail);
        case Qt::AccessibleDescriptionRole:
            return FlagPopUp::flagTitle(movie->flagString.toInt(), defaults_);
        case flagRole:
            return movie->flagString.toInt();
        case currentRole:
            return index.row() == list_.selectionIndex();
        case missingRole:
            return movie->creatingThumbnailText == fileNotFoundText;
        default:
            return {};
        }
    }
    void moviesReplaced() {
        beginResetModel();
        endResetModel();
    }
    void rowsChanged() {
        if (list_.count() > 0) Q_EMIT dataChanged(index(0), index(int(list_.count()) - 1));
    }

private:
    const Movie* movieAt(int row) const {
        return row >= 0 && row < list_.count() ? list_.movies()[size_t(row)].get() : nullptr;
    }
    ViewerList& list_;
    UserDefaults& defaults_;
    mutable ThumbnailCache pictures_{32 * 1024};
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
        const bool current = index.data(currentRole).toBool();
        const bool missing = index.data(missingRole).toBool();
        if (current)
            painter->fillRect(row, theme::selection);
        else if (option.state & QStyle::State_MouseOver)
            painter->fillRect(row, theme::raised);
        if (current) {
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(theme::selectedText);
            const QPointF tip(row.left() + 11, row.center().y() + 0.5);
            painter->drawPolygon(QPolygonF({tip, tip + QPointF(-6, -5), tip + QPointF(-6, 5)}));
        }
        const QRect frame(QPoint(row.left() + 16, row.top() + (rowHeight - drawerThumbnail.height()) / 2),
                          drawerThumbnail);
        painter->fillRect(frame, Qt::black);
        const auto picture = index.data(Qt::DecorationRole).value<QPixmap>();
        if (!picture.isNull()) {
            const QSize size = picture.size().scaled(frame.size(), Qt::KeepAspectRatio);
            painter->setRenderHint(QPainter::SmoothPixmapTransform);
            painter->drawPixmap(
                QRect(frame.topLeft() +
                          QPoint(frame.width() - size.width(), frame.height() - size.height()) / 2,
                      size),
                picture);
        } else if (missing) {
            theme::icon(QStringLiteral("dl-missing")).paint(painter, frame.adjusted(36, 15, -36, -15));
        }
        int right = row.right() - 8;
        if (const QString flag = FlagPopUp::flagIcon(index.data(flagRole).toInt());
            !flag.isEmpty() && flag != FlagPopUp::flagIcon(900)) {
            theme::icon(flag).paint(painter, QRect(right - 16, row.center().y() - 7, 16, 16));
            right -= 20;
        }
        const QRect text(QPoint(frame.right() + 9, row.top()), QPoint(right, row.bottom()));
        painter->setPen(current ? theme::selectedText : missing ? theme::dimText : theme::text);
        painter->setFont(option.font);
        painter->drawText(
            text, Qt::AlignVCenter | Qt::AlignLeft,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle, text.width()));
        if ((option.state & QStyle::State_HasFocus) && option.widget && option.widget->hasFocus()) {
            painter->setBrush(Qt::NoBrush);
            painter->setPen(theme::focus);
            painter->drawRect(row.adjusted(0, 0, -1, -1));
        }
        painter->restore();
    }
};

PlaylistDrawer::PlaylistDrawer(ViewerList& list, ReviewEdits& edits, UserDefaults& defaults, QWidget* parent)
    : QWidget(parent)
    , list_(list)
    , rows_(std::make_unique<Rows>(list, defaults))
    , view_(new QListView(this)) {
    setObjectName(QStringLiteral("playlistDrawer"));
    view_->setObjectName(QStringLiteral("playlistDrawerList"));
    view_->setAccessibleName(tr("Playlist"));
    view_->setModel(rows_.get());
    view_->setItemDelegate(new RowDelegate(view_));
    view_->setUniformItemSizes(true);
    view_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view_->setMouseTracking(true);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    setMinimumWidth(168);

    connect(&list_, &ViewerList::moviesChanged, this, [this] {
        rows_->moviesReplaced();
        showSelection();
    });
    connect(&list_, &ViewerList::selectionChanged, this, &PlaylistDrawer::showSelection);
    connect(&edits, &ReviewEdits::movieChanged, this, &PlaylistDrawer::movieUpdated);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid() && current.row() != list_.selectionIndex())
                    list_.setSelectionIndex(current.row());
            });
    showSelection();
}

PlaylistDrawer::~PlaylistDrawer() {
    view_->setModel(nullptr);
}

void PlaylistDrawer::movieUpdated(const std::shared_ptr<Movie>&) {
    rows_->rowsChanged();
}

void PlaylistDrawer::showSelection() {
    rows_->rowsChanged();
    const qsizetype row = list_.selectionIndex();
    if (row < 0 || row >= list_.count()) return;
    const QModelIndex index = rows_->index(int(row));
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
}

} // namespace daylark
