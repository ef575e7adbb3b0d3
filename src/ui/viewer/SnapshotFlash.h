#pragma once

#include <QWidget>

class QGraphicsOpacityEffect;
class QPropertyAnimation;

namespace daylark {

/// The short brightening over the picture that acknowledges a snapshot: there at once, held for a moment,
/// faded out. Takes no mouse. A child of what it covers; interface thread.
class SnapshotFlash : public QWidget {
    Q_OBJECT
public:
    explicit SnapshotFlash(QWidget* covered);
    void flash();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QGraphicsOpacityEffect* opacity_;
    QPropertyAnimation* fading_;
};

} // namespace daylark
