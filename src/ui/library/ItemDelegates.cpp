#include "ui/library/ItemDelegates.h"

#include "app/relinking/FileExistence.h"
#include "base/PlainText.h"
#include "ui/library/MoviesModel.h"
#include "ui/library/PlaylistsModel.h"
#include "ui/common/Theme.h"
#include "ui/common/text/NameText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>

namespace daylark {

namespace {

constexpr int tilePadding = 6;
constexpr int iconSide = 16;
constexpr int flagSide = 20;
constexpr int nameLines = 2; ///< of an item's name, in both views

bool isSelected(const QStyleOptionViewItem& option) {
    return option.state & QStyle::State_Selected;
}

/// What names have in common is dimmed.
QColor dimmedIn(const QStyleOptionViewItem& option) {
    return isSelected(option) ? QColor(0xb8, 0xc6, 0xd6) : QColor(0x96, 0x96, 0x96);
}

void fillRow(QPainter& painter, const QStyleOptionViewItem& option) {
    if (isSelected(option)) painter.fillRect(option.rect, theme::selection);
}

/// A list that has the keyboard shows which of its rows is the current one, selected or not.
void paintCurrentRow(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (!view || !view->hasFocus() || view->currentIndex().row() != index.row()) return;
    painter.setPen(theme::focus);
    painter.drawLine(option.rect.topLeft(), option.rect.topRight());
    painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
}

/// The picture letterboxed in its frame; without one, what the record says in its place.
void paintThumbnail(QPainter& painter, const QRect& frame, const MoviesModel& model,
                    const QModelIndex& index) {
    painter.fillRect(frame, Qt::black);
    const QPixmap picture = model.thumbnailAt(index.row());
    const auto movie = model.movieAt(index.row());
    const QString text = movie ? plain::line(movie->creatingThumbnailText) : QString();
    const bool missing = movie && FileExistence::isMarkedMissing(*movie);
    if (!picture.isNull()) {
        QRect target = frame;
        const double wider =
            double(picture.width()) * frame.height() / (double(picture.height()) * frame.width());
        if (wider < 0.98 || wider > 1.02) { // a pixel more or less is not worth a black line
            target.setSize(picture.size().scaled(frame.size(), Qt::KeepAspectRatio));
            target.moveCenter(frame.center());
        }
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setOpacity(missing ? 0.35 : 1.0);
        painter.drawPixmap(target, picture);
        painter.setOpacity(1.0);
    }
    if (movie && model.cameByLink(*movie)) {
        const QRect corner(frame.left() + 2, frame.bottom() - iconSide - 1, iconSide, iconSide);
        painter.fillRect(corner, QColor(0, 0, 0, 150));
        theme::icon(QStringLiteral("link")).paint(&painter, corner.adjusted(1, 1, -1, -1));
    }
    if (text.isEmpty()) return;
    painter.setFont(theme::smallFont());
    painter.setPen(missing ? theme::warning : theme::text);
    // Two lines: the label's four or five blanks stand where the line breaks.
    QString lines = text;
    static const QRegularExpression blanks(QStringLiteral(" {4,}"));
    lines.replace(blanks, QStringLiteral("\n"));
    painter.drawText(frame, Qt::AlignCenter | Qt::TextWordWrap, lines);
}

} // namespace

// Playlists

void PlaylistDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    painter->save();
    fillRow(*painter, option);
    const QRect inside = option.rect.adjusted(8, 0, -8, 0);
    const QColor colour =
        isSelected(option) ? theme::selectedText : index.data(Qt::ForegroundRole).value<QColor>();
    painter->setPen(colour);
    if (index.data(PlaylistsModel::dividerRole).toBool()) {
        QString name = index.column() == PlaylistsModel::nameColumn ? index.data().toString() : QString();
        name = name.remove(QLatin1Char('=')).trimmed();
        painter->setFont(theme::smallFont());
        const bool count = index.column() == PlaylistsModel::countColumn;
        int left = count ? option.rect.left() : inside.left();
        const int right = count ? inside.right() : option.rect.right();
        const int middle = option.rect.center().y();
        if (!name.isEmpty()) {
            name = painter->fontMetrics().elidedText(name, Qt::ElideMiddle, inside.width() - 24);
            painter->drawText(QRect(inside.left(), inside.top(), inside.width(), inside.height()),
                              Qt::AlignLeft | Qt::AlignVCenter, name);
            left += painter->fontMetrics().horizontalAdvance(name) + 8;
        }
        painter->setPen(isSelected(option) ? theme::selectedText : QColor(0x4a, 0x4a, 0x4a));
        painter->drawLine(left, middle, right, middle);
    } else if (index.column() == PlaylistsModel::nameColumn) {
        const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
        icon.paint(painter,
                   QRect(inside.left(), inside.top() + (inside.height() - iconSide) / 2, iconSide, iconSide));
        const QRect text = inside.adjusted(iconSide + 8, 0, 8, 0);
        painter->setFont(option.font);
        const auto* model = qobject_cast<const PlaylistsModel*>(index.model());
        if (model) nameText::paint(*painter, text, model->shownName(index.row()), 1, colour, dimmedIn(option));
    } else {
        painter->setFont(theme::smallFont());
        painter->drawText(inside, Qt::AlignRight | Qt::AlignVCenter, index.data().toString());
    }
    paintCurrentRow(*painter, option, index);
    painter->restore();
}

int PlaylistDelegate::rowHeight() {
    return std::max(24, QFontMetrics(QApplication::font()).height() + 8);
}

QSize PlaylistDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {120, rowHeight()};
}

QWidget* PlaylistDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                        const QModelIndex&) const {
    auto* editor = new QLineEdit(parent);
    editor->setAccessibleName(tr("Playlist name"));
    editor->setStyleSheet(QStringLiteral("padding: 0 2px;"));
    return editor;
}

void PlaylistDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const {
    const bool divider = index.data(PlaylistsModel::dividerRole).toBool();
    editor->setGeometry(option.rect.adjusted(divider ? 4 : iconSide + 12, 0, 0, 0));
}

// The table

ItemCellDelegate::ItemCellDelegate(const MoviesModel& model, QObject* parent)
    : QStyledItemDelegate(parent)
    , model_(model) {}

void ItemCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    painter->save();
    fillRow(*painter, option);
    painter->setPen(QColor(0x2d, 0x2d, 0x2d));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    const int column = index.column();
    if (column == Column::thumbnail) {
        const QRect inside = option.rect.adjusted(4, 4, -4, -4);
        QRect frame(QPoint(), QSize(16, 9).scaled(inside.size(), Qt::KeepAspectRatio));
        frame.moveCenter(inside.center());
        paintThumbnail(*painter, frame, model_, index);
    } else if (column >= Column::notes && column <= Column::instance) {
        QRect place(0, 0, iconSide, iconSide);
        place.moveCenter(option.rect.center());
        index.data(Qt::DecorationRole).value<QIcon>().paint(painter, place);
    } else {
        const bool name = column == Column::name;
        const QFont font = name ? option.font : theme::smallFont();
        QRect inside = option.rect.adjusted(6, 0, -6, 0);
        if (column == Column::flag) { // by shape and by word
            QRect place(inside.left(), 0, flagSide, flagSide);
            place.moveCenter({place.center().x(), option.rect.center().y()});
            index.data(Qt::DecorationRole).value<QIcon>().paint(painter, place);
            inside.setLeft(place.right() + 6);
        }
        painter->setFont(font);
        const QColor colour = isSelected(option) ? theme::selectedText : index.data(Qt::ForegroundRole).value<QColor>();
        painter->setPen(colour);
        const auto movie = name ? model_.movieAt(index.row()) : nullptr;
        if (movie) nameText::paint(*painter, inside, model_.shownName(*movie), nameLines, colour, dimmedIn(option));
        const auto alignment = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt());
        if (!movie)
            painter->drawText(inside, int(alignment),
                              QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideMiddle, inside.width()));
    }
    paintCurrentRow(*painter, option, index);
    painter->restore();
}

// The tiles

TileDelegate::TileDelegate(const MoviesModel& model, QObject* parent)
    : QStyledItemDelegate(parent)
    , model_(model) {}

QSize TileDelegate::tileSize() const {
    const int width = int(150 * scale_);
    const int picture = (width - 2 * tilePadding) * 9 / 16;
    const int name = QFontMetrics(QApplication::font()).height();
    const int facts = QFontMetrics(theme::smallFont()).height();
    return {width, tilePadding + picture + 4 + nameLines * name + 2 + facts + 4 + std::max(iconSide, facts) + tilePadding};
}

QSize TileDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return tileSize();
}

void TileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto movie = model_.movieAt(index.row());
    if (!movie) return;
    painter->save();
    const QRect tile = QRect(option.rect.topLeft(), tileSize()).adjusted(2, 2, -2, -2);
    const bool selected = isSelected(option);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(selected ? theme::selection : theme::raised);
    painter->drawRoundedRect(tile, 4, 4);
    if ((option.state & QStyle::State_HasFocus) && option.widget && option.widget->hasFocus()) {
        painter->setPen(QPen(theme::focus, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(tile).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    painter->setRenderHint(QPainter::Antialiasing, false);

    const QRect inside = tile.adjusted(tilePadding - 2, tilePadding - 2, 2 - tilePadding, 2 - tilePadding);
    const QRect picture(inside.left(), inside.top(), inside.width(), inside.width() * 9 / 16);
    paintThumbnail(*painter, picture, model_, index);
    if (const auto flag = index.siblingAtColumn(Column::flag).data(Qt::DecorationRole); flag.isValid()) {
        const QRect corner(picture.right() - flagSide - 1, picture.top() + 2, flagSide, flagSide);
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(0, 0, 0, 150));
        painter->drawRect(corner);
        flag.value<QIcon>().paint(painter, corner.adjusted(2, 2, -2, -2));
    }

    const QColor colour = index.siblingAtColumn(Column::name).data(Qt::ForegroundRole).value<QColor>();
    const QFontMetrics nameMetrics(QApplication::font());
    QRect line(inside.left(), picture.bottom() + 5, inside.width(), nameLines * nameMetrics.height());
    painter->setFont(QApplication::font());
    nameText::paint(*painter, line, model_.shownName(*movie), nameLines, selected ? theme::selectedText : colour,
                    dimmedIn(option), Qt::AlignTop);
    const QFontMetrics factsMetrics(theme::smallFont());
    line = QRect(inside.left(), line.bottom() + 3, inside.width(), factsMetrics.height());
    painter->setFont(theme::smallFont());
    painter->setPen(selected ? QColor(0xe6, 0xe6, 0xe6) : QColor(0xa4, 0xa4, 0xa4));
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                      factsMetrics.elidedText(plain::line(model_.factsOf(*movie)), Qt::ElideRight, line.width()));
    QRect place(inside.left(), line.bottom() + 4, iconSide, iconSide);
    for (const QString& name : MoviesModel::iconNames(*movie)) {
        theme::icon(name).paint(painter, place);
        place.translate(iconSide + 6, 0);
    }
    place.setRight(inside.right());
    painter->drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                      factsMetrics.elidedText(plain::line(model_.flagName(*movie)), Qt::ElideRight, place.width()));
    painter->restore();
}

} // namespace daylark
