#include "ui/common/RowSlide.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace daylark {

namespace {
constexpr int slideMs = 120;
}

RowSlide::RowSlide(QTableView* table, std::function<const void*(int row)> identity)
    : QWidget(table->viewport())
    , table_(table)
    , identity_(std::move(identity)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setObjectName(QStringLiteral("rowSlide"));
    progress_.setDuration(slideMs);
    progress_.setStartValue(0.0);
    progress_.setEndValue(1.0);
    progress_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&progress_, &QVariantAnimation::valueChanged, this, QOverload<>::of(&QWidget::update));
    connect(&progress_, &QVariantAnimation::finished, this, &QWidget::hide);
    hide();
}

RowSlide::Places RowSlide::placesInSight() const {
    Places places;
    const int rows = table_->model() ? table_->model()->rowCount() : 0;
    if (rows == 0) return places;
    const int first = std::max(0, table_->rowAt(0));
    for (int row = first; row < rows && table_->rowViewportPosition(row) < table_->viewport()->height();
         ++row)
        places[identity_(row)] = table_->rowViewportPosition(row);
    return places;
}

void RowSlide::remember() {
    progress_.stop();
    hide();
    before_.clear();
    if (!table_->isVisible()) return;
    before_ = placesInSight();
    pictureBefore_ = table_->viewport()->grab();
}

void RowSlide::play() {
    if (before_.empty()) return;
    after_ = placesInSight();
    const bool moves = std::any_of(before_.begin(), before_.end(), [this](const auto& place) {
        const auto now = after_.find(place.first);
        return now == after_.end() || now->second != place.second;
    });
    if (!moves) return;
    rowHeight_ = table_->verticalHeader()->defaultSectionSize();
    pictureAfter_ = table_->viewport()->grab();
    setGeometry(table_->viewport()->rect());
    raise();
    show();
    progress_.start();
}

void RowSlide::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), table_->palette().base());
    const double part = progress_.currentValue().toDouble();
    const auto paintRow = [&](const QPixmap& picture, int from, int to) {
        const double ratio = picture.devicePixelRatio();
        const QRectF source(0, from * ratio, picture.width(), rowHeight_ * ratio);
        painter.drawPixmap(QRectF(0, to, width(), rowHeight_), picture, source);
    };
    for (const auto& [row, y] : before_)
        if (!after_.contains(row)) paintRow(pictureBefore_, y, y);
    for (const auto& [row, y] : after_) {
        const auto old = before_.find(row);
        const int from = old == before_.end() ? y : old->second;
        paintRow(pictureAfter_, y, from + int((y - from) * part));
    }
}

} // namespace daylark
