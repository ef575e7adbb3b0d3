#pragma once

#include <QAbstractSlider>
#include <QString>
#include <QWheelEvent>

#include <functional>
#include <utility>
#include <vector>

namespace daylark {

/// The position slider, in ticks of the movie's clock: the playhead, a tick mark for each frame of a short
/// movie (the pointer then snaps to them), a thin strip under the track where pictures are ready, the
/// bookmarks as bars under that. Pressing or dragging asks to be there at once. As a slider for keyboard and
/// screen reader its value is the frame number. Owned by the viewer window; interface thread.
class PositionSlider : public QAbstractSlider {
    Q_OBJECT
public:
    static constexpr int sliderMargin = 12; ///< so that the playhead is whole at both ends

    struct Bar {
        double from = 0, to = 0; ///< ticks: start of the first frame, end of the last
        bool active = false;
        bool muted = false;
        bool operator==(const Bar&) const = default;
    };

    explicit PositionSlider(QWidget* parent = nullptr);

    /// `last` is the start of the last frame in ticks, `end` where it ends; `tickMarks` 0: none, any value.
    void setMovie(double last, double end, qint64 frames, qint64 tickMarks);
    void setPosition(double ticks, qint64 frame); ///< `frame` from 1
    void setBars(std::vector<Bar> bars);
    void setReady(std::vector<std::pair<double, double>> ranges); ///< ticks: starts and ends, in order
    [[nodiscard]] const std::vector<std::pair<double, double>>& ready() const { return ready_; }
    void setMissing(std::vector<std::pair<double, double>> ranges); ///< likewise: where a run has no pictures
    [[nodiscard]] const std::vector<std::pair<double, double>>& missing() const { return missing_; }
    void setDescription(std::function<QString(double ticks)> text) { describe_ = std::move(text); }

    [[nodiscard]] double position() const { return position_; } ///< ticks
    [[nodiscard]] int xOf(double ticks) const;                  ///< where a position lies on the widget
    [[nodiscard]] double ticksAt(int x) const;                  ///< snapped where there are tick marks
    [[nodiscard]] QSize sizeHint() const override { return {600, 36}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {200, 36}; }

Q_SIGNALS:
    void dragging(bool begins);     ///< a hand takes the playhead, or lets it go
    void sought(double ticks);      ///< the pointer wants to be there
    void frameSought(qint64 frame); ///< a key or a screen reader does

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    void seek(int x);
    [[nodiscard]] bool isUsable() const { return end_ > 0; }
    void paintTicks(QPainter& painter) const;
    void paintBars(QPainter& painter) const;
    void paintReady(QPainter& painter) const;
    void paintMissing(QPainter& painter) const;

    double last_ = 0, end_ = 0, position_ = 0;
    qint64 frames_ = 0, tickMarks_ = 0;
    std::vector<Bar> bars_;
    std::vector<std::pair<double, double>> ready_, missing_;
    std::function<QString(double)> describe_;
    int hoverX_ = -1;
    bool dragging_ = false;
};

} // namespace daylark
