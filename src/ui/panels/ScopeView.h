#pragma once

#include "preferences/PreferenceWords.h"

#include <QWidget>

class QPainter;

namespace daylark {

class ViewerScopes;

/// A scope with its graticule: levels in per cent, the vectorscope's targets of bars at 75 and 100 % and the line of skin.
/// Renders what the viewer's part has made. Interface thread.
class ScopeView : public QWidget {
    Q_OBJECT
public:
    explicit ScopeView(ViewerScopes& scopes, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {384, 256}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {216, 144}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF plot() const; ///< where the trace lies
    void paintLevels(QPainter& painter, const QRectF& plot) const;
    void paintLevelsAcross(QPainter& painter, const QRectF& plot) const;
    void paintVectorscope(QPainter& painter, const QRectF& plot) const;

    ViewerScopes& scopes_;
};

} // namespace daylark
