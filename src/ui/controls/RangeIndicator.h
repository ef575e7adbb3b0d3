#pragma once

#include <QWidget>

namespace daylark {

class PlaybackRange;

/// The thin bar under a position slider that shows the playback range: a coloured child, 4 points high at the
/// foot, moved and sized over the view's width. Gone while no range is in force, its place stays. There are
/// two, both following the same range. Owned by its window; interface thread.
class RangeIndicator : public QWidget {
    Q_OBJECT
public:
    explicit RangeIndicator(const PlaybackRange& range, QWidget* parent = nullptr);

    void setMaxValue(qint64 frames) { maxValue_ = frames; } ///< the movie's frame count
    void setRangeFrom(qint64 start, qint64 end);            ///< frames from 1, inclusive
    [[nodiscard]] qint64 rangeStart() const { return rangeStart_; }
    [[nodiscard]] qint64 rangeEnd() const { return rangeEnd_; }
    [[nodiscard]] QRect rangeBarGeometry() const { return rangeBar_->geometry(); }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showRange(const PlaybackRange& range);
    void makeDisplay();

    qint64 rangeStart_ = 1, rangeEnd_ = 1, maxValue_ = 1;
    QWidget* rangeBar_;
};

} // namespace daylark
