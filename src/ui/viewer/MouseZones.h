#pragma once

#include <QObject>
#include <QRect>
#include <QString>

class QWidget;

namespace daylark {

/// The strips along the player area's edges that the mouse enters: "movieListArea" at the right, "notesArea"
/// at the left, "playbackArea" at the foot. They follow the area's size and take no events away; a button
/// held down (a stroke, a drag) enters nothing. Owned by the viewer's window; interface thread.
class MouseZones : public QObject {
    Q_OBJECT
public:
    static constexpr int side = 24, foot = 40; ///< how wide and how high they are, points

    explicit MouseZones(QWidget& area);
    void setEnabled(bool enabled);                                           ///< disabled at first
    [[nodiscard]] static QRect zone(const QString& name, const QSize& area); ///< empty for an unknown name

Q_SIGNALS:
    void entered(const QString& namedArea);
    void exited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void moveTo(const QString& zone);

    QWidget& area_;
    QString inside_; ///< the zone that the mouse is in; empty: none
    bool enabled_ = false;
};

} // namespace daylark
