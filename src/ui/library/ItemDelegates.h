#pragma once

#include <QStyledItemDelegate>

namespace daylark {

class MoviesModel;

/// How rows and tiles are painted. The delegates hold measures only; everything shown comes from the models.
/// Owned by their views; interface thread.

/// A playlist's row: type icon, name, count; a divider as a line with its date, when it has one.
class PlaylistDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] static int rowHeight(); ///< points, by the font
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
};

/// A cell of the items table: thumbnail, centred icon or text elided where its kind allows.
class ItemCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit ItemCellDelegate(const MoviesModel& model, QObject* parent = nullptr);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    static constexpr int rowHeight = 64; ///< points

private:
    const MoviesModel& model_;
};

/// A tile: 16:9 picture with its flag in the corner, icons, name, frames · rate · duration.
class TileDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit TileDelegate(const MoviesModel& model, QObject* parent = nullptr);
    void setScale(double scale) { scale_ = scale; } ///< 1 to 4
    [[nodiscard]] QSize tileSize() const;           ///< points
    [[nodiscard]] int pictureWidth() const { return int(150 * scale_) - 16; } ///< points
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const MoviesModel& model_;
    double scale_ = 1.0;
};

} // namespace daylark
